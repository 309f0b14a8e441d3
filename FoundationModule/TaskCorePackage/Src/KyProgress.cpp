// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyProgress.h"

#include "KyLongWork.h"

#include "KyCallSignatures.h"
#include "KyCast.h"
#include "KyThread.h"
#include "KyTypeBuilder.h"

const KyType* KyProgress::msType = nullptr;

KyProgress& KyProgress::get() {
    static KyProgress& progress = *new KyProgress;
    return progress;
}

void KyProgress::initializeType() {
    if (msType)
        return;
    KyObject::initializeType();
    msType = KyTypeBuilder<KyProgress>("KyProgress", KyObject::getType())
                 .attribute("Active", &KyProgress::isActive)
                 .attribute("Title", &KyProgress::getTitle)
                 .attribute("Share", &KyProgress::getShare)
                 .attribute("Seconds", &KyProgress::getSeconds)
                 .method("cancel", &KyProgress::cancel)
                 .signal<&KyProgress::changedSignal>("changed")
                 .build();
    KyCallSignatures::add("KyProgress", {"changed(title, share)"});
}

void KyProgress::finalizeType() {
    KyType::remove(msType);
}

const KyType* KyProgress::getType() {
    if (!msType)
        initializeType();
    return msType;
}

const KyType* KyProgress::getObjectType() const {
    return getType();
}

KyProgress* KyProgress::cast(KyObject* object) {
    return kyCast<KyProgress>(object);
}

void KyProgress::open() {
    mThread = KyThread::getCurrentThreadID();
}

void KyProgress::close() {
    mThread = 0;
}

bool KyProgress::isOpenHere() const {
    return mThread == KyThread::getCurrentThreadID();
}

const std::string& KyProgress::getTitle() const {
    static const std::string none;
    return isActive() ? mWorks.back()->getTitle() : none;
}

double KyProgress::getShare() const {
    return isActive() ? mWorks.back()->getTracker().getProgress() : 0.0;
}

double KyProgress::getSeconds() const {
    return isActive() ? mWorks.back()->getSeconds() : 0.0;
}

bool KyProgress::cancel() {
    if (!isActive())
        return false;
    mWorks.back()->editTracker().cancel();
    return true;
}

// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyHost.h"

#include "KyCast.h"
#include "KyTypeBuilder.h"

const KyType* KyHost::msType = nullptr;

const KyType* KyHost::getType() {
    return msType;
}

KyHost* KyHost::cast(KyObject* object) {
    return kyCast<KyHost>(object);
}

void KyHost::initializeType() {
    if (msType)
        return;
    KyObject::initializeType();
    msType = KyTypeBuilder<KyHost>("KyHost", KyObject::getType())
                 .attribute("FrameCount", &KyHost::getFrameCount)
                 .attribute("FrameTime", &KyHost::getFrameTime)
                 .method("quit", &KyHost::quit)
                 .build();
}

void KyHost::finalizeType() {
    KyType::remove(msType);
}

const KyType* KyHost::getObjectType() const {
    return msType;
}

void KyHost::countFrame(long long now) {
    constexpr double cSecondsPerMicrosecond = 1e-6;
    if (mLastFrame != cNoFrame)
        mFrameTime = static_cast<double>(now - mLastFrame) * cSecondsPerMicrosecond;
    mLastFrame = now;
    ++mFrameCount;
}

// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyModificationScope.h"

#include "KyObject.h"

KyModificationScope* KyModificationScope::msInnermost = nullptr;

KyModificationScope::KyModificationScope(KyObject& object)
    : mObject(&object)
    , mOuter(msInnermost) {
    msInnermost = this;
}

KyModificationScope::~KyModificationScope() {
    msInnermost = mOuter;
}

void KyModificationScope::finish(KyObjectModificationType kind, const std::string& attribute, int index) {
    if (mObject && !mIsNotified)
        mObject->notifyModified(kind, attribute, index);
}

void KyModificationScope::onNotified(const KyObject* object) {
    if (msInnermost && msInnermost->mObject == object)
        msInnermost->mIsNotified = true;
}

void KyModificationScope::onEnded(const KyObject* object) {
    for (KyModificationScope* scope = msInnermost; scope; scope = scope->mOuter)
        if (scope->mObject == object)
            scope->mObject = nullptr;
}

// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyTask.h"

#include "KyCompositeTask.h"

KyTask& KyTask::operator=(const KyTask& other) {
    if (this != &other) {
        mName = other.mName;
        mIsEnabled = other.mIsEnabled;
    }
    return *this;
}

KyTask::~KyTask() {
    if (mParent)
        mParent->removeTask(this);
}

void KyTask::setEnabled(bool enabled) {
    mIsEnabled = enabled;
    setEnabledVirtual(enabled);
}

bool KyTask::execute() {
    return false;
}

void KyTask::update() {
    if (mIsEnabled)
        execute();
}

void KyTask::setEnabledVirtual(bool) {}

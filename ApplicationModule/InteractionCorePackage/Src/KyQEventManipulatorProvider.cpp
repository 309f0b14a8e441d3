// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyQEventManipulatorProvider.h"

#include "KyManipulator.h"

KyManipulator* KyQEventManipulatorProvider::getManipulator() const {
    KyObject* manipulator = mManipulator.get();
    return manipulator && !manipulator->isEnding() ? static_cast<KyManipulator*>(manipulator) : nullptr;
}

void KyQEventManipulatorProvider::setManipulator(KyManipulator* manipulator) {
    mManipulator = KyObjectReference(manipulator);
}

void KyQEventManipulatorProvider::setInputEvent(KyInputEvent& event) {
    if (KyManipulator* manipulator = getManipulator())
        event.setInternalEventReturn(manipulator->setInputEvent(event));
}

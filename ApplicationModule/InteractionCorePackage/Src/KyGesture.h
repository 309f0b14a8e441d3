// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyApplicationExport.h"

/// A gesture of fingers that KyGestureRecognizer found between two touch events. Every manipulator owns one of each
/// kind, which holds the last gesture of its kind.
class KYAPPLICATION_EXPORT KyGesture {
public:
    /// What KyInputEvent::getGestureKind tells.
    enum Kind { eNone = -1, ePan = 0, ePinch = 1, eTap = 2, eTilt = 3, eNbKinds = 4 };

    virtual ~KyGesture() = default;
    /// Which gesture it is.
    virtual Kind getKind() const = 0;
};

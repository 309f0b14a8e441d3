// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyFoundationExport.h"

/// Something that is brought up to date once a frame.
class KYFOUNDATION_EXPORT KyUpdatable {
public:
    virtual ~KyUpdatable();
    /// Brings the object up to date.
    virtual void update() = 0;
};

// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyTask.h"

/// Asks every window that is shown, redraws by itself and needs it for a redraw, once a frame.
class KyWindowRedrawTask : public KyTask {
public:
    KyWindowRedrawTask()
        : KyTask("KyWindowRedrawTask") {}

    bool execute() override;
};

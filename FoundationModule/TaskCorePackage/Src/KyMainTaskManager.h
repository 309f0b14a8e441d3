// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyCompositeTask.h"

/// The root of the task tree: the host calls update() once a frame, on the thread of the event loop.
class KYFOUNDATION_EXPORT KyMainTaskManager : public KyCompositeTask {
public:
    /// Never destroyed.
    static KyMainTaskManager& get();

    /// As insertTask: position -1 is the end, phases 0, 1, 2 run in this order.
    bool addTask(KyTask* task, int position = -1, int phase = cDefaultPhase) {
        return insertTask(task, position, phase);
    }

private:
    KyMainTaskManager()
        : KyCompositeTask("KyMainTaskManager") {}
};

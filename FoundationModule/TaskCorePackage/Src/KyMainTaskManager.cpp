// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyMainTaskManager.h"

KyMainTaskManager& KyMainTaskManager::get() {
    static KyMainTaskManager* const instance = new KyMainTaskManager;
    return *instance;
}

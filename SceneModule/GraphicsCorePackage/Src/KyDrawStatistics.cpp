// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyDrawStatistics.h"

KyDrawStatistics& KyDrawStatistics::edit() {
    static KyDrawStatistics statistics;
    return statistics;
}

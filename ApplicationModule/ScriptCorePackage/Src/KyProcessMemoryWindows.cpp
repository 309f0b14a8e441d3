// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyProcessMemory_p.h"

#include <windows.h>

#include <psapi.h>

std::size_t kyGetProcessMemory() {
    PROCESS_MEMORY_COUNTERS counters = {};
    return K32GetProcessMemoryInfo(GetCurrentProcess(), &counters, sizeof(counters)) ? counters.WorkingSetSize : 0;
}

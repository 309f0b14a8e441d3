// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT

#include "KyLocalTime_p.h"

#include <windows.h>

double KyLocalTime::getSecondsOfDay() {
    SYSTEMTIME local;
    GetLocalTime(&local);
    return local.wHour * 3600.0 + local.wMinute * 60.0 + local.wSecond + local.wMilliseconds / 1000.0;
}

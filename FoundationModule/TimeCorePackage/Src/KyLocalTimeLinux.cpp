// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT

#include "KyLocalTime_p.h"

#include <ctime>

double KyLocalTime::getSecondsOfDay() {
    std::timespec now{};
    std::timespec_get(&now, TIME_UTC);
    std::tm local{};
    localtime_r(&now.tv_sec, &local);
    return local.tm_hour * 3600.0 + local.tm_min * 60.0 + local.tm_sec + static_cast<double>(now.tv_nsec) * 1e-9;
}

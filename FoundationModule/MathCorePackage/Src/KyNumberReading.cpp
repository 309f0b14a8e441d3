// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT

#include "KyNumberReading.h"

#include "KyDoublePrecision_p.h"

std::from_chars_result KyNumberReading::read(const char* first, const char* last, double& value) {
    const KyDoublePrecision precision;
    return std::from_chars(first, last, value);
}

std::from_chars_result KyNumberReading::read(const char* first, const char* last, float& value) {
    const KyDoublePrecision precision;
    return std::from_chars(first, last, value);
}

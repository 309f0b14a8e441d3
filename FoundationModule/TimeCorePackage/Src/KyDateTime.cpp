// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT

#include "KyDateTime.h"

#include <ostream>

std::string KyDateTime::toString() const {
    return date.toString() + "T" + time.toString();
}

std::ostream& operator<<(std::ostream& stream, const KyDateTime& dateTime) {
    return stream << dateTime.toString();
}

bool fromString(std::string_view text, KyDateTime& dateTime) {
    const std::size_t separator = text.find('T');
    KyDateTime result;
    if (separator == std::string_view::npos || !fromString(text.substr(0, separator), result.date) ||
        !fromString(text.substr(separator + 1), result.time))
        return false;
    dateTime = result;
    return true;
}

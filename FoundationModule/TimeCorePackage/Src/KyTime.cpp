// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT

#include "KyTime.h"

#include "KyLocalTime_p.h"
#include "KyNumberText.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <fmt/format.h>
#include <ostream>

namespace {

constexpr double cSecondsPerDay = 86400.0;
constexpr double cLargestMilliseconds = 1e15;
constexpr std::int64_t cLastMillisecondOfDay = 86399999;

std::int64_t getMilliseconds(double seconds) {
    const double limited = std::min(seconds * 1000.0, cLargestMilliseconds);
    const std::int64_t rounded = std::llround(limited);
    return seconds < cSecondsPerDay ? std::min(rounded, cLastMillisecondOfDay) : rounded;
}

bool isDigits(std::string_view text) {
    return !text.empty() && text.find_first_not_of("0123456789") == std::string_view::npos;
}

/// Reads a number of plain digits below `limit`, with decimals where `allowsDecimals`.
bool readPart(std::string_view text, bool allowsDecimals, double limit, double& part) {
    const std::size_t point = allowsDecimals ? text.find('.') : std::string_view::npos;
    const bool hasDecimals = point != std::string_view::npos;
    if (!isDigits(text.substr(0, point)) || (hasDecimals && !isDigits(text.substr(point + 1))))
        return false;
    return KyNumberText::parse(text, {&part, 1}) && part < limit;
}

} // namespace

void KyTime::setToNow() {
    mSeconds = KyLocalTime::getSecondsOfDay();
}

std::string KyTime::toString() const {
    const double seconds = std::isnan(mSeconds) ? 0.0 : mSeconds;
    const std::int64_t total = getMilliseconds(std::abs(seconds));
    const char* const sign = seconds < 0.0 && total != 0 ? "-" : "";
    return fmt::format("{}{:02}:{:02}:{:02}.{:03}", sign, total / 3600000, total / 60000 % 60, total / 1000 % 60,
                       total % 1000);
}

std::ostream& operator<<(std::ostream& stream, const KyTime& time) {
    return stream << time.toString();
}

bool fromString(std::string_view text, KyTime& time) {
    const bool isNegative = !text.empty() && text.front() == '-';
    text.remove_prefix(isNegative ? 1 : 0);
    const std::size_t first = text.find(':');
    if (first == std::string_view::npos)
        return false;
    const std::size_t second = text.find(':', first + 1);
    const bool hasSeconds = second != std::string_view::npos;
    const std::string_view minuteText = text.substr(first + 1, hasSeconds ? second - first - 1 : second);
    double hours = 0.0, minutes = 0.0, seconds = 0.0;
    const bool isRead = readPart(text.substr(0, first), false, 1e12, hours) &&
                        readPart(minuteText, false, 60.0, minutes) &&
                        (!hasSeconds || readPart(text.substr(second + 1), true, 60.0, seconds));
    if (!isRead)
        return false;
    const double total = hours * 3600.0 + minutes * 60.0 + seconds;
    time.setTime(isNegative ? -total : total);
    return true;
}

// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT

#include "KyDate.h"

#include <array>
#include <charconv>
#include <fmt/format.h>
#include <limits>
#include <optional>
#include <ostream>

namespace {

constexpr std::int64_t cDaysPerEra = 146097;
constexpr std::int64_t cYearsPerEra = 400;
/// Julian day of 1 March of the astronomical year 0.
constexpr std::int64_t cJulianDayOfEpoch = 1721120;

/// Counts years with a year 0, so that leap years repeat evenly.
constexpr std::int64_t toAstronomicalYear(std::int64_t year) {
    return year < 0 ? year + 1 : year;
}

constexpr bool isLeapYear(std::int64_t astronomicalYear) {
    return astronomicalYear % 4 == 0 && (astronomicalYear % 100 != 0 || astronomicalYear % cYearsPerEra == 0);
}

constexpr int getDaysInMonth(std::int64_t astronomicalYear, int month) {
    constexpr std::array<int, 12> cDays{31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    return cDays[static_cast<std::size_t>(month - 1)] + (month == 2 && isLeapYear(astronomicalYear) ? 1 : 0);
}

constexpr std::int64_t divideDown(std::int64_t value, std::int64_t divisor) {
    return (value >= 0 ? value : value - divisor + 1) / divisor;
}

/// Reads the digits before `end` as a whole; nothing else may stand there.
std::optional<int> readNumber(std::string_view digits) {
    int value = 0;
    const char* const last = digits.data() + digits.size();
    const auto [end, error] = std::from_chars(digits.data(), last, value);
    if (error != std::errc() || end != last || digits.front() == '-')
        return std::nullopt;
    return value;
}

} // namespace

KyDate KyDate::fromJulianDay(std::int64_t julianDay) {
    constexpr std::int64_t cReach = std::int64_t{std::numeric_limits<int>::max()} * 366;
    if (julianDay < -cReach || julianDay > cReach)
        return KyDate();
    // Years begin in March here, so that the leap day is the last day of the year.
    const std::int64_t days = julianDay - cJulianDayOfEpoch;
    const std::int64_t era = divideDown(days, cDaysPerEra);
    const std::int64_t dayOfEra = days - era * cDaysPerEra;
    const std::int64_t yearOfEra = (dayOfEra - dayOfEra / 1460 + dayOfEra / 36524 - dayOfEra / 146096) / 365;
    const std::int64_t dayOfYear = dayOfEra - (365 * yearOfEra + yearOfEra / 4 - yearOfEra / 100);
    const std::int64_t marchMonth = (5 * dayOfYear + 2) / 153;
    const int day = static_cast<int>(dayOfYear - (153 * marchMonth + 2) / 5 + 1);
    const int month = static_cast<int>(marchMonth < 10 ? marchMonth + 3 : marchMonth - 9);
    const std::int64_t astronomicalYear = yearOfEra + era * cYearsPerEra + (month <= 2 ? 1 : 0);
    const std::int64_t year = astronomicalYear <= 0 ? astronomicalYear - 1 : astronomicalYear;
    const bool fits = year >= std::numeric_limits<int>::min() && year <= std::numeric_limits<int>::max();
    return fits ? KyDate(static_cast<int>(year), month, day) : KyDate();
}

std::int64_t KyDate::getJulianDay() const {
    if (!isValid())
        return cInvalidJulianDay;
    const std::int64_t marchYear = toAstronomicalYear(mYear) - (mMonth <= 2 ? 1 : 0);
    const std::int64_t era = divideDown(marchYear, cYearsPerEra);
    const std::int64_t yearOfEra = marchYear - era * cYearsPerEra;
    const std::int64_t marchMonth = mMonth > 2 ? mMonth - 3 : mMonth + 9;
    const std::int64_t dayOfYear = (153 * marchMonth + 2) / 5 + mDay - 1;
    return era * cDaysPerEra + yearOfEra * 365 + yearOfEra / 4 - yearOfEra / 100 + dayOfYear + cJulianDayOfEpoch;
}

bool KyDate::setYMD(int year, int month, int day) {
    if (year == 0 || month < 1 || month > 12 || day < 1 || day > getDaysInMonth(toAstronomicalYear(year), month))
        return false;
    mYear = year;
    mMonth = static_cast<std::int16_t>(month);
    mDay = static_cast<std::int16_t>(day);
    return true;
}

std::string KyDate::toString() const {
    if (!isValid())
        return {};
    const std::int64_t year = mYear;
    return fmt::format("{}{:04}-{:02}-{:02}", year < 0 ? "-" : "", year < 0 ? -year : year, mMonth, mDay);
}

std::ostream& operator<<(std::ostream& stream, const KyDate& date) {
    return stream << date.toString();
}

bool fromString(std::string_view text, KyDate& date) {
    if (text.empty()) {
        date = KyDate();
        return true;
    }
    const bool isNegative = text.front() == '-';
    const std::string_view digits = text.substr(isNegative ? 1 : 0);
    // From the right: two digits of day, two of month, four or more of year.
    if (digits.size() < 10 || digits[digits.size() - 3] != '-' || digits[digits.size() - 6] != '-')
        return false;
    const auto year = readNumber(digits.substr(0, digits.size() - 6));
    const auto month = readNumber(digits.substr(digits.size() - 5, 2));
    const auto day = readNumber(digits.substr(digits.size() - 2));
    return year && month && day && date.setYMD(isNegative ? -*year : *year, *month, *day);
}

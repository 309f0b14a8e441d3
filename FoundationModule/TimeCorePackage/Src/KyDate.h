// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyFoundationExport.h"

#include <cstdint>
#include <iosfwd>
#include <string>
#include <string_view>

/// A day of the proleptic Gregorian calendar, without time zone. There is no year 0: -1 comes before 1.
/// The default is invalid and comes before every valid day.
///
///     KyDate day(2024, 2, 29);
///     day.getJulianDay();            // 2460370
///     day.setYMD(2023, 2, 29);       // false, day is unchanged
class KYFOUNDATION_EXPORT KyDate {
public:
    /// Julian day of an invalid date.
    static constexpr std::int64_t cInvalidJulianDay = INT64_MIN;

    /// Invalid.
    KyDate() = default;
    /// Invalid when there is no such day.
    KyDate(int year, int month, int day) { setYMD(year, month, day); }
    /// Invalid when the year does not fit an int.
    static KyDate fromJulianDay(std::int64_t julianDay);

    /// False for the default, and for what was made from numbers that are no day.
    bool isValid() const { return mMonth != 0; }
    /// Year, month 1 ... 12 and day 1 ... 31; 0 when invalid.
    int getYear() const { return mYear; }
    /// 1 to 12; 0 when invalid.
    int getMonth() const { return mMonth; }
    /// 1 to 31; 0 when invalid.
    int getDay() const { return mDay; }
    /// Days since 24 November 4714 BC; `cInvalidJulianDay` when invalid.
    std::int64_t getJulianDay() const;

    /// False, unchanged, when there is no such day.
    bool setYMD(int year, int month, int day);

    bool operator==(const KyDate&) const = default;
    /// By year, then month, then day.
    bool operator<(const KyDate& other) const { return getJulianDay() < other.getJulianDay(); }
    bool operator<=(const KyDate& other) const { return !(other < *this); }
    bool operator>(const KyDate& other) const { return other < *this; }
    bool operator>=(const KyDate& other) const { return !(*this < other); }

    /// "YYYY-MM-DD", with a sign before negative years; empty when invalid.
    std::string toString() const;

private:
    std::int32_t mYear = 0;
    std::int16_t mMonth = 0;
    std::int16_t mDay = 0;
};

KYFOUNDATION_EXPORT std::ostream& operator<<(std::ostream& stream, const KyDate& date);

/// Reads what `toString` writes; an empty text is the invalid date. False leaves `date` unchanged.
KYFOUNDATION_EXPORT bool fromString(std::string_view text, KyDate& date);

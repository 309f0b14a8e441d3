// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyFoundationExport.h"

#include <iosfwd>
#include <string>
#include <string_view>

/// A time of day as seconds since midnight, without time zone. Any number of seconds is kept, so that it may also
/// stand for a span.
///
///     const KyTime lunch(12, 30, 15.25);
///     lunch.toString();            // "12:30:15.250"
///     lunch - KyTime(12, 0, 0.0);  // 1815.25
class KYFOUNDATION_EXPORT KyTime {
public:
    /// Midnight.
    KyTime() = default;
    explicit constexpr KyTime(double seconds)
        : mSeconds(seconds) {}
    /// Sums up the three, without limits.
    constexpr KyTime(int hours, int minutes, double seconds)
        : mSeconds(hours * 3600.0 + minutes * 60.0 + seconds) {}

    /// Seconds since midnight.
    double getTime() const { return mSeconds; }
    void setTime(double seconds) { mSeconds = seconds; }
    /// The local time of day.
    void setToNow();

    bool operator==(const KyTime&) const = default;
    /// @{
    /// By seconds.
    bool operator<(const KyTime& other) const { return mSeconds < other.mSeconds; }
    bool operator<=(const KyTime& other) const { return mSeconds <= other.mSeconds; }
    bool operator>(const KyTime& other) const { return other < *this; }
    bool operator>=(const KyTime& other) const { return other <= *this; }
    /// @}
    /// Seconds from `other` to this time.
    double operator-(const KyTime& other) const { return mSeconds - other.mSeconds; }

    /// "HH:MM:SS.mmm", rounded to milliseconds but never up to the next day; spans may have more hours and a sign.
    /// NaN gives "00:00:00.000".
    std::string toString() const;

private:
    double mSeconds = 0.0;
};

KYFOUNDATION_EXPORT std::ostream& operator<<(std::ostream& stream, const KyTime& time);

/// Reads "HH:MM", "HH:MM:SS" or "HH:MM:SS.m" with any number of decimals and an optional sign; minutes and seconds
/// must be below 60. False leaves `time` unchanged.
KYFOUNDATION_EXPORT bool fromString(std::string_view text, KyTime& time);

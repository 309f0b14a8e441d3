// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyDate.h"
#include "KyTime.h"

/// A day and a time of day, without time zone. Compares by date, then by time.
///
///     KyDateTime(KyDate(2024, 2, 29), KyTime(12, 30, 0.0)).toString();   // "2024-02-29T12:30:00.000"
class KYFOUNDATION_EXPORT KyDateTime {
public:
    /// The day.
    KyDate date;
    /// The time of that day.
    KyTime time;

    /// An invalid date, midnight.
    KyDateTime() = default;
    KyDateTime(const KyDate& dateValue, const KyTime& timeValue)
        : date(dateValue)
        , time(timeValue) {}

    bool operator==(const KyDateTime&) const = default;
    /// @{
    /// By date, then by time.
    bool operator<(const KyDateTime& other) const { return date == other.date ? time < other.time : date < other.date; }
    bool operator<=(const KyDateTime& other) const {
        return date == other.date ? time <= other.time : date < other.date;
    }
    bool operator>(const KyDateTime& other) const { return other < *this; }
    bool operator>=(const KyDateTime& other) const { return other <= *this; }
    /// @}

    /// Date and time joined by "T"; nothing stands before the "T" of an invalid date.
    std::string toString() const;
};

KYFOUNDATION_EXPORT std::ostream& operator<<(std::ostream& stream, const KyDateTime& dateTime);

/// Reads what `toString` writes; false leaves `dateTime` unchanged.
KYFOUNDATION_EXPORT bool fromString(std::string_view text, KyDateTime& dateTime);

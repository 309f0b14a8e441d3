// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

/// The operating system's clock in the local time zone.
struct KyLocalTime {
    /// Seconds since local midnight, with fractions.
    static double getSecondsOfDay();
};

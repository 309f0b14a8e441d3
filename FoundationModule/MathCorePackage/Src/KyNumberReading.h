// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyFoundationExport.h"

#include <charconv>

/// `std::from_chars` for numbers with a fraction, giving the nearest number on every machine: on 32-bit x86 the one of
/// the standard library rounds twice now and then, and a number written in full comes back with another last digit.
/// Usable on any thread.
class KYFOUNDATION_EXPORT KyNumberReading {
public:
    /// Result, error and what stays unchanged on errors are those of `std::from_chars`.
    static std::from_chars_result read(const char* first, const char* last, double& value);
    static std::from_chars_result read(const char* first, const char* last, float& value);
};

// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyFoundationExport.h"

#include <cstddef>
#include <memory>
#include <string>

/// A regular expression (ECMAScript grammar), compiled once and matched against short texts such as
/// names. An invalid expression is reported and matches nothing. Matching may be done on any
/// thread.
///
///     static const KyRegexp cName("[a-zA-Z_][a-zA-Z0-9_]*");
///     cName.exactMatch("wheel_1");  // true
class KYFOUNDATION_EXPORT KyRegexp {
public:
    /// Longest text that is matched, in bytes; n groups divide it by n + 1. The matcher's need of stack
    /// grows with both, here up to half a megabyte.
    static constexpr std::size_t cMaxTextLength = 1024;

    /// What is no expression is reported, and matches nothing.
    explicit KyRegexp(const std::string& expression);
    KyRegexp(const KyRegexp&) = delete;
    KyRegexp& operator=(const KyRegexp&) = delete;
    ~KyRegexp();

    /// Whether the expression could be compiled.
    [[nodiscard]] bool isValid() const;
    /// Whether the whole text matches; a text that is too long is reported and does not.
    [[nodiscard]] bool exactMatch(const std::string& text) const;

private:
    struct Compiled;
    std::unique_ptr<const Compiled> mCompiled;
};

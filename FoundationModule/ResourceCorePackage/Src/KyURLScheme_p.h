// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

/// What a text without a scheme means, by `KyURL::SchemeType`.
namespace KyURLScheme {
/// The scheme of the type; empty for `eURL`, `eLocalPath` and other numbers.
std::string_view getText(int schemeType);
/// The text with the type's scheme before it, if it needs one.
std::string addDefault(std::string_view text, int schemeType);
/// Whether what is given as a local path is a URL: a file name may hold ":", so that only a "/" behind it makes the
/// text before it a scheme.
bool isWholeURL(std::string_view path);
} // namespace KyURLScheme

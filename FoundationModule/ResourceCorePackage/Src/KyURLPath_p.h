// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <string_view>

/// Arithmetic on the paths of URLs, with "/" between the segments.
namespace KyURLPath {
/// Up to the last "/", which is kept; empty when there is none.
std::string_view getDirectory(std::string_view path);
/// What follows the last "/".
std::string_view getFileName(std::string_view path);
/// Resolves "." and ".."; leading ".." of a relative path stay.
std::string resolveDots(std::string_view path);
/// The reference seen from the base, dots resolved.
std::string makeAbsolute(std::string_view reference, std::string_view base);
/// The reference that `makeAbsolute` turns into the target; none when there is none, also when the
/// target is empty.
std::optional<std::string> makeRelative(std::string_view target, std::string_view base);
} // namespace KyURLPath

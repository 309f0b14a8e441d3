// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyField.h"

#include <functional>
#include <string>
#include <string_view>

/// The text forms that style sheets take.
namespace KyStyleText {

/// Gives the text of a name; false when there is none.
using Lookup = std::function<bool(std::string_view name, std::string& text)>;

/// [A-Za-z_][A-Za-z0-9_]*, the whole text.
bool isName(std::string_view text);

/// False, and the text unchanged, for a value that a style sheet has no form for: not finite, or of another type than
/// bool, number, text, colour and URL.
bool format(const KyField& value, std::string& text);

/// Replaces each @name that the look-up knows, and @@ by @. What was put in is not looked at again.
std::string replaceNames(std::string_view text, const Lookup& lookup);

} // namespace KyStyleText

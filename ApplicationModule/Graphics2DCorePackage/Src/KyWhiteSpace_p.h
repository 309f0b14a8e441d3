// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <cstdint>
#include <string>
#include <string_view>

/// The white-space rules of texts, by bytes.
namespace KyWhiteSpace {

inline bool isLineBreak(char c) {
    return c == '\r' || c == '\n';
}

/// Line breaks go, a tab counts as a blank, and words are separated by one blank each.
inline std::string collapse(std::string_view text) {
    std::string result;
    bool isAfterBlank = false;
    for (const char c : text) {
        if (isLineBreak(c))
            continue;
        const bool isBlank = c == ' ' || c == '\t';
        if (!isBlank && isAfterBlank && !result.empty())
            result += ' ';
        if (!isBlank)
            result += c;
        isAfterBlank = isBlank;
    }
    return result;
}

/// Every line break becomes a blank.
inline std::string preserve(std::string text) {
    std::replace_if(text.begin(), text.end(), &isLineBreak, ' ');
    return text;
}

/// By the numbers of Ky2DText::WhiteSpaceHandling.
inline std::string handle(const std::string& text, std::int32_t handling) {
    if (handling == 1)
        return collapse(text);
    return handling == 2 ? preserve(text) : text;
}

} // namespace KyWhiteSpace

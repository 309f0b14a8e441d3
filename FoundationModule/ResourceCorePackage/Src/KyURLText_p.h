// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

/// The characters of URLs: which may stand where, and how the others are written.
namespace KyURLText {
/// What stands in a part unencoded besides letters, digits and "-._~".
inline constexpr std::string_view cHostCharacters = "!$&'()*+,;=";
inline constexpr std::string_view cUserCharacters = "!$&'()*+,;=:";
inline constexpr std::string_view cPathCharacters = "!$&'()*+,;=:@/";
inline constexpr std::string_view cQueryCharacters = "!$&'()*+,;=:@/?";

/// What becomes of a "%" that begins an escape; any other "%" is encoded.
enum class Escapes {
    eEncode,   ///< the text is plain: encoded as well
    eKeep,     ///< kept as it stands
    eNormalize ///< kept in upper case, or decoded where it need not be an escape
};

std::string encode(std::string_view text, std::string_view allowed, Escapes escapes);
std::string decode(std::string_view text);
std::string toLower(std::string_view text);
std::string_view trim(std::string_view text);

/// Lower case; what is in brackets or holds ":" is taken for an address and not encoded.
std::string encodeHost(std::string_view host);
/// False for anything but 0 to 65535; `port` is unchanged for an empty text.
bool readPort(std::string_view text, int& port);

/// Whether the text is a scheme; one letter is a drive and not a scheme.
bool isScheme(std::string_view text);
/// The scheme that the text begins with, without ":"; empty when there is none.
std::string_view findScheme(std::string_view text);
/// Whether the text begins with a letter, ":" and a separator or nothing more.
bool isDrivePath(std::string_view text);
/// Whether the whole text is a URL or a relative reference by the grammar.
bool isWellFormed(const std::string& text);
} // namespace KyURLText

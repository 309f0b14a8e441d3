// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyURLText_p.h"

#include <uriparser/Uri.h>

#include <algorithm>
#include <charconv>
#include <optional>

namespace {
constexpr std::string_view cDigits = "0123456789ABCDEF";

// The character classes of the C library depend on the locale.
constexpr bool isLetter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

constexpr bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

constexpr bool isUnreserved(char c) {
    return isLetter(c) || isDigit(c) || c == '-' || c == '.' || c == '_' || c == '~';
}

std::optional<char> readEscape(std::string_view text, std::size_t at) {
    if (text[at] != '%' || at + 2 >= text.size())
        return std::nullopt;
    unsigned value = 0;
    const char* end = text.data() + at + 3;
    if (std::from_chars(text.data() + at + 1, end, value, 16).ptr != end)
        return std::nullopt;
    return static_cast<char>(value);
}

void appendEscape(std::string& out, char c) {
    const auto byte = static_cast<unsigned char>(c);
    out += '%';
    out += cDigits[byte >> 4U];
    out += cDigits[byte & 15U];
}

void appendEncoded(std::string& out, char c, std::string_view allowed) {
    if (isUnreserved(c) || allowed.find(c) != std::string_view::npos)
        out += c;
    else
        appendEscape(out, c);
}
} // namespace

std::string KyURLText::encode(std::string_view text, std::string_view allowed, Escapes escapes) {
    std::string out;
    out.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        const auto escaped = escapes == Escapes::eEncode ? std::nullopt : readEscape(text, i);
        if (!escaped) {
            appendEncoded(out, text[i], allowed);
            continue;
        }
        if (escapes == Escapes::eKeep)
            out += text.substr(i, 3);
        else
            appendEncoded(out, *escaped, {});
        i += 2;
    }
    return out;
}

std::string KyURLText::decode(std::string_view text) {
    std::string out;
    out.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        const auto escaped = readEscape(text, i);
        out += escaped.value_or(text[i]);
        i += escaped ? 2 : 0;
    }
    return out;
}

std::string KyURLText::toLower(std::string_view text) {
    std::string out(text);
    std::ranges::transform(out, out.begin(),
                           [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
    return out;
}

std::string_view KyURLText::trim(std::string_view text) {
    constexpr std::string_view cBlanks = " \t\r\n\f\v";
    const auto first = text.find_first_not_of(cBlanks);
    if (first == std::string_view::npos)
        return {};
    return text.substr(first, text.find_last_not_of(cBlanks) - first + 1);
}

std::string KyURLText::encodeHost(std::string_view host) {
    if (host.starts_with('[') && host.ends_with(']'))
        host = host.substr(1, host.size() - 2);
    if (host.find(':') != std::string_view::npos)
        return toLower(host);
    return toLower(encode(host, cHostCharacters, Escapes::eNormalize));
}

bool KyURLText::readPort(std::string_view text, int& port) {
    if (text.empty())
        return true;
    const char* end = text.data() + text.size();
    unsigned value = 0;
    const auto [stop, error] = std::from_chars(text.data(), end, value);
    if (error != std::errc() || stop != end || value > 65535)
        return false;
    port = static_cast<int>(value);
    return true;
}

bool KyURLText::isScheme(std::string_view text) {
    const auto allowed = [](char c) { return isLetter(c) || isDigit(c) || c == '+' || c == '-' || c == '.'; };
    return text.size() > 1 && isLetter(text.front()) && std::ranges::all_of(text, allowed);
}

std::string_view KyURLText::findScheme(std::string_view text) {
    const auto colon = text.find(':');
    if (colon == std::string_view::npos || !isScheme(text.substr(0, colon)))
        return {};
    return text.substr(0, colon);
}

bool KyURLText::isDrivePath(std::string_view text) {
    if (text.size() < 2 || !isLetter(text[0]) || text[1] != ':')
        return false;
    return text.size() == 2 || text[2] == '/' || text[2] == '\\';
}

bool KyURLText::isWellFormed(const std::string& text) {
    UriUriA uri;
    const char* errorAt = nullptr;
    // On failure the parser has freed everything already.
    if (uriParseSingleUriExA(&uri, text.data(), text.data() + text.size(), &errorAt) != URI_SUCCESS)
        return false;
    uriFreeUriMembersA(&uri);
    return true;
}

// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyFieldOperations.h"

#include "KyNumberText.h"

#include <charconv>
#include <span>

#include <fmt/format.h>

namespace KyFieldDetail {

namespace {

std::string_view trimmed(std::string_view text) {
    const auto first = text.find_first_not_of(" \t\r\n");
    if (first == std::string_view::npos)
        return {};
    return text.substr(first, text.find_last_not_of(" \t\r\n") - first + 1);
}

template <class T>
bool parseWhole(std::string_view text, T& value) {
    text = trimmed(text);
    if (text.size() > 1 && text.front() == '+' && text[1] != '-')
        text.remove_prefix(1);
    T parsed{};
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), parsed);
    if (text.empty() || error != std::errc() || end != text.data() + text.size())
        return false;
    value = parsed;
    return true;
}

} // namespace

std::string formatNumber(double value, int precision) {
    return KyNumberText::format(std::span<const double>(&value, 1), precision);
}

std::string formatInteger(std::int64_t value) {
    return fmt::format("{}", value);
}

std::string formatUnsigned(std::uint64_t value) {
    return fmt::format("{}", value);
}

std::string formatObject(const KyObjectReference& reference) {
    return reference ? fmt::format("{:X}", reinterpret_cast<std::uintptr_t>(reference.get())) : std::string();
}

bool parseNumber(std::string_view text, double& value) {
    return KyNumberText::parse(text, std::span<double>(&value, 1));
}

bool parseInteger(std::string_view text, std::int64_t& value) {
    return parseWhole(text, value);
}

bool parseUnsigned(std::string_view text, std::uint64_t& value) {
    return parseWhole(text, value);
}

} // namespace KyFieldDetail

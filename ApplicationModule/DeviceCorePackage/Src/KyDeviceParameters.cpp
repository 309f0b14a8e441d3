// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyDeviceParameters_p.h"

#include <charconv>
#include <cstdint>
#include <string>

namespace {

constexpr std::string_view cBlanks = " \t\r\n";

std::string_view trim(std::string_view text) {
    const std::size_t begin = text.find_first_not_of(cBlanks);
    if (begin == std::string_view::npos)
        return {};
    return text.substr(begin, text.find_last_not_of(cBlanks) - begin + 1);
}

std::string_view takePair(std::string_view& text) {
    const std::size_t end = text.find(';');
    const std::string_view pair = text.substr(0, end);
    text = end == std::string_view::npos ? std::string_view() : text.substr(end + 1);
    return trim(pair);
}

std::optional<std::int64_t> toInteger(std::string_view text) {
    const bool isHexadecimal = text.starts_with("0x") || text.starts_with("0X");
    if (isHexadecimal)
        text.remove_prefix(2);
    std::int64_t number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number, isHexadecimal ? 16 : 10);
    const bool isWhole = error == std::errc() && end == text.data() + text.size();
    return isWhole && !(isHexadecimal && number < 0) ? std::optional(number) : std::nullopt;
}

KyField toValue(std::string_view text) {
    const std::optional<std::int64_t> number = toInteger(text);
    return number ? KyField(*number) : KyField(std::string(text));
}

} // namespace

std::optional<KyDeviceManager::KyDeviceParameterVector> KyDeviceParameters::parse(std::string_view text) {
    KyDeviceManager::KyDeviceParameterVector parameters;
    while (!text.empty()) {
        const std::string_view pair = takePair(text);
        if (pair.empty())
            continue;
        const std::size_t equals = pair.find('=');
        const std::string_view name = trim(pair.substr(0, equals));
        if (equals == std::string_view::npos || name.empty())
            return std::nullopt;
        parameters.push_back({std::string(name), toValue(trim(pair.substr(equals + 1)))});
    }
    return parameters;
}

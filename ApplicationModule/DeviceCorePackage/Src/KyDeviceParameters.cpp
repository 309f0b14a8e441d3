// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyDeviceParameters_p.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <iterator>
#include <string>
#include <utility>

namespace {

constexpr std::string_view cBlanks = " \t\r\n";
/// What only a number can say.
constexpr std::string_view cNumbers[] = {"VendorID", "ProductID"};

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

std::optional<KyDeviceManager::KyDeviceParameterStruct> toParameter(std::string_view pair) {
    const std::size_t equals = pair.find('=');
    const std::string_view name = trim(pair.substr(0, equals));
    if (equals == std::string_view::npos || name.empty())
        return std::nullopt;
    const std::string_view text = trim(pair.substr(equals + 1));
    const std::optional<std::int64_t> number = toInteger(text);
    if (!number && std::ranges::find(cNumbers, name) != std::end(cNumbers))
        return std::nullopt;
    return {{std::string(name), number ? KyField(*number) : KyField(std::string(text))}};
}

} // namespace

std::optional<KyDeviceManager::KyDeviceParameterVector> KyDeviceParameters::parse(std::string_view text) {
    KyDeviceManager::KyDeviceParameterVector parameters;
    while (!text.empty()) {
        const std::string_view pair = takePair(text);
        if (pair.empty())
            continue;
        auto parameter = toParameter(pair);
        if (!parameter)
            return std::nullopt;
        parameters.push_back(std::move(*parameter));
    }
    return parameters;
}

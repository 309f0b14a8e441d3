// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT

#include "KyNumberText.h"

#include "KyNumberReading.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <vector>

namespace {

constexpr int cMostDigits = 17;
constexpr std::string_view cWhiteSpace = " \t\r\n";

/// Room for a sign, 17 digits, a point and an exponent.
using Buffer = std::array<char, 32>;

char* write(Buffer& buffer, double value, int precision) {
    const double printed = std::isnan(value) ? std::abs(value) : value;
    return std::to_chars(buffer.data(), buffer.data() + buffer.size(), printed, std::chars_format::general,
                         std::clamp(precision, 1, cMostDigits))
        .ptr;
}

char* write(Buffer& buffer, float value, int precision) {
    return write(buffer, static_cast<double>(value), precision);
}

char* write(Buffer& buffer, int value, int) {
    return std::to_chars(buffer.data(), buffer.data() + buffer.size(), value).ptr;
}

template <class T>
std::string formatAll(std::span<const T> values, int precision) {
    std::string result;
    Buffer buffer;
    for (const T value : values) {
        if (!result.empty())
            result += ' ';
        result.append(buffer.data(), write(buffer, value, precision));
    }
    return result;
}

/// Takes the next word off `text`; empty when there is none.
std::string_view takeWord(std::string_view& text) {
    text.remove_prefix(std::min(text.find_first_not_of(cWhiteSpace), text.size()));
    const std::string_view word = text.substr(0, text.find_first_of(cWhiteSpace));
    text.remove_prefix(word.size());
    return word;
}

std::from_chars_result read(const char* first, const char* last, int& value) {
    return std::from_chars(first, last, value);
}

template <class T>
std::from_chars_result read(const char* first, const char* last, T& value) {
    return KyNumberReading::read(first, last, value);
}

template <class T>
bool parseWord(std::string_view word, T& value) {
    if (word.size() > 1 && word.front() == '+' && word[1] != '-')
        word.remove_prefix(1);
    const char* const last = word.data() + word.size();
    const auto [end, error] = read(word.data(), last, value);
    return error == std::errc() && end == last;
}

template <class T>
bool parseAll(std::string_view text, std::span<T> values) {
    std::vector<T> numbers(values.size());
    for (T& number : numbers)
        if (!parseWord(takeWord(text), number))
            return false;
    if (!takeWord(text).empty())
        return false;
    std::copy(numbers.begin(), numbers.end(), values.begin());
    return true;
}

} // namespace

std::string KyNumberText::format(std::span<const double> values, int precision) {
    return formatAll(values, precision);
}

std::string KyNumberText::format(std::span<const float> values, int precision) {
    return formatAll(values, precision);
}

std::string KyNumberText::format(std::span<const int> values, int precision) {
    return formatAll(values, precision);
}

bool KyNumberText::parse(std::string_view text, std::span<double> values) {
    return parseAll(text, values);
}

bool KyNumberText::parse(std::string_view text, std::span<float> values) {
    return parseAll(text, values);
}

bool KyNumberText::parse(std::string_view text, std::span<int> values) {
    return parseAll(text, values);
}

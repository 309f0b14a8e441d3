// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QTransform>

#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// Texts of SVG's attributes to numbers. Nothing gives a value that is not finite.
namespace KySvgValues {

constexpr std::string_view cBlanks = " \t\r\n\f";

std::string_view trim(std::string_view text);
std::string toLower(std::string_view text);
/// Without the blanks and at most one comma at the front.
std::string_view skipSeparator(std::string_view text);

/// Takes a number off the front; nothing changes when there is none.
std::optional<double> takeNumber(std::string_view& text);
/// Takes the numbers between blanks and commas off the front; what is left begins with an error.
std::vector<double> takeNumbers(std::string_view& text);
inline std::vector<double> readNumbers(std::string_view text) {
    return takeNumbers(text);
}

/// What relative lengths refer to, in user units.
struct LengthBase {
    double fontSize = 16.0;
    double percent = 0.0;
};
/// In user units.
std::optional<double> readLength(std::string_view text, const LengthBase& base);
/// The same with lengths.
std::vector<double> takeLengths(std::string_view& text, const LengthBase& base);
/// A number or a percentage, limited to 0 ... 1.
std::optional<double> readRatio(std::string_view text);

/// Of a list of transforms; an empty one is the identity.
std::optional<QTransform> readTransform(std::string_view text);

/// How a box is fitted into a viewport; align is 0, 0.5 or 1.
struct AspectRatio {
    double alignX = 0.5;
    double alignY = 0.5;
    bool isKept = true;
    bool isSlice = false;
};
AspectRatio readAspectRatio(std::string_view text);
/// x, y, width, height; none unless both sizes are positive.
std::optional<std::array<double, 4>> readViewBox(std::string_view text);
/// Maps the box into the viewport at the origin.
QTransform fitViewBox(const std::array<double, 4>& box, const AspectRatio& ratio, double width, double height);

bool isFinite(const QTransform& transform);

/// The value of a key in a table of pairs.
template <class Value, std::size_t Count>
std::optional<Value> findValue(const std::array<std::pair<std::string_view, Value>, Count>& table,
                               std::string_view key) {
    for (const auto& [name, value] : table)
        if (name == key)
            return value;
    return std::nullopt;
}

} // namespace KySvgValues

// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KySvgColor_p.h"

#include "KySvgValues_p.h"

#include <QColor>
#include <QString>

#include <algorithm>
#include <array>
#include <cmath>

namespace {

using KySvgValues::skipSeparator;
using Components = std::array<double, 4>;

/// What stands in parentheses; percentages are of the bases. The last, alpha, may be missing.
std::optional<Components> readComponents(std::string_view inside, const Components& bases) {
    Components values{0.0, 0.0, 0.0, 1.0};
    std::size_t count = 0;
    inside = KySvgValues::trim(inside.substr(0, inside.find(')')));
    for (; !inside.empty(); inside = skipSeparator(inside), ++count) {
        if (count == 3 && inside[0] == '/')
            inside = skipSeparator(inside.substr(1));
        const std::size_t end = std::min(inside.find_first_of(" \t\r\n\f,/"), inside.size());
        const std::string_view text = inside.substr(0, inside.substr(0, end).ends_with("deg") ? end - 3 : end);
        const auto value = count < 4 ? KySvgValues::readLength(text, {1.0, bases[count]}) : std::nullopt;
        if (!value)
            return std::nullopt;
        values[count] = *value;
        inside.remove_prefix(end);
    }
    return count >= 3 ? std::optional(values) : std::nullopt;
}

float limit(double part) {
    return float(std::clamp(part, 0.0, 1.0));
}

std::optional<KyColor> readRgb(std::string_view inside) {
    const auto v = readComponents(inside, {255.0, 255.0, 255.0, 1.0});
    if (!v)
        return std::nullopt;
    return KyColor(limit((*v)[0] / 255.0), limit((*v)[1] / 255.0), limit((*v)[2] / 255.0), limit((*v)[3]));
}

std::optional<KyColor> readHsl(std::string_view inside) {
    const auto v = readComponents(inside, {360.0, 1.0, 1.0, 1.0});
    if (!v)
        return std::nullopt;
    const double turns = (*v)[0] / 360.0;
    const QColor color = QColor::fromHslF(turns - std::floor(turns), double(limit((*v)[1])), double(limit((*v)[2])));
    return KyColor(float(color.redF()), float(color.greenF()), float(color.blueF()), limit((*v)[3]));
}

struct Function {
    std::string_view name;
    std::optional<KyColor> (*read)(std::string_view inside);
};
constexpr std::array<Function, 4> cFunctions{
    {{"rgb(", &readRgb}, {"rgba(", &readRgb}, {"hsl(", &readHsl}, {"hsla(", &readHsl}}};

/// Digits as Qt reads them: it takes alpha first, and no other short form.
std::string toQtDigits(std::string_view digits) {
    std::string wide;
    for (const char digit : digits)
        wide.append(digits.size() < 6 ? 2 : 1, digit);
    const bool isKnown = digits.size() == 3 || digits.size() == 4 || digits.size() == 6 || digits.size() == 8;
    if (wide.size() == 8)
        std::rotate(wide.begin(), wide.end() - 2, wide.end());
    return isKnown ? "#" + wide : std::string();
}

} // namespace

std::optional<KyColor> KySvgColor::read(std::string_view text) {
    std::string lower = KySvgValues::toLower(KySvgValues::trim(text).substr(0, 200));
    lower = KySvgValues::trim(std::string_view(lower).substr(0, lower.find("icc-color(")));
    for (const Function& function : cFunctions)
        if (lower.starts_with(function.name))
            return function.read(std::string_view(lower).substr(function.name.size()));
    if (lower == "transparent")
        return KyColor(0.0F, 0.0F, 0.0F, 0.0F);
    if (lower.starts_with('#'))
        lower = toQtDigits(std::string_view(lower).substr(1));
    const QColor color(QString::fromStdString(lower));
    if (!color.isValid())
        return std::nullopt;
    return KyColor(float(color.redF()), float(color.greenF()), float(color.blueF()), float(color.alphaF()));
}

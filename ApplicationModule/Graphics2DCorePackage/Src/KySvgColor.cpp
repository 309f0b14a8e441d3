// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KySvgColor_p.h"

#include "KySvgValues_p.h"

#include <QColor>
#include <QString>

#include <algorithm>

namespace {

/// One component in parentheses; percentages are of 255.
float toComponent(double value) {
    return float(std::clamp(value, 0.0, 255.0) / 255.0);
}

std::optional<KyColor> readFunction(std::string_view inside) {
    const std::vector<double> values = KySvgValues::readLengths(inside.substr(0, inside.find(')')), {1.0, 255.0});
    if (values.size() != 3)
        return std::nullopt;
    return KyColor(toComponent(values[0]), toComponent(values[1]), toComponent(values[2]));
}

} // namespace

std::optional<KyColor> KySvgColor::read(std::string_view text) {
    const std::string lower = KySvgValues::toLower(KySvgValues::trim(text).substr(0, 200));
    if (lower.starts_with("rgb("))
        return readFunction(std::string_view(lower).substr(4));
    if (lower == "transparent")
        return KyColor(0.0F, 0.0F, 0.0F, 0.0F);
    // Qt also reads forms of other lengths.
    if (lower.empty() || (lower[0] == '#' && lower.size() != 4 && lower.size() != 7))
        return std::nullopt;
    const QColor color(QString::fromStdString(lower));
    if (!color.isValid())
        return std::nullopt;
    return KyColor(float(color.redF()), float(color.greenF()), float(color.blueF()));
}

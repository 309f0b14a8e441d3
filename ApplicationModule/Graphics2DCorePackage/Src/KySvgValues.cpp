// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KySvgValues_p.h"

#include "KyNumberReading.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <numbers>
#include <utility>

namespace KySvgValues {

namespace {

constexpr bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

/// The library's reader also takes "inf" and "nan", and no plus sign.
bool beginsNumber(std::string_view text) {
    if (!text.empty() && (text[0] == '+' || text[0] == '-'))
        text.remove_prefix(1);
    if (!text.empty() && text[0] == '.')
        text.remove_prefix(1);
    return !text.empty() && isDigit(text[0]);
}

/// User units in one unit, at 96 to an inch.
constexpr std::array<std::pair<std::string_view, double>, 8> cUnits{{{"", 1.0},
                                                                     {"px", 1.0},
                                                                     {"pt", 96.0 / 72.0},
                                                                     {"pc", 16.0},
                                                                     {"mm", 96.0 / 25.4},
                                                                     {"cm", 96.0 / 2.54},
                                                                     {"in", 96.0},
                                                                     {"q", 96.0 / 101.6}}};

std::optional<double> findUnit(std::string_view unit, const LengthBase& base) {
    if (unit == "%")
        return base.percent / 100.0;
    if (unit == "em")
        return base.fontSize;
    if (unit == "ex")
        return base.fontSize / 2.0;
    return findValue(cUnits, unit);
}

std::optional<double> keepFinite(double value) {
    return std::isfinite(value) ? std::optional(value) : std::nullopt;
}

QTransform makeSkew(double horizontal, double vertical) {
    const double degree = std::numbers::pi / 180.0;
    return QTransform(1.0, std::tan(vertical * degree), std::tan(horizontal * degree), 1.0, 0.0, 0.0);
}

QTransform makeRotation(const std::vector<double>& n) {
    QTransform transform;
    if (n.size() == 3)
        transform.translate(n[1], n[2]);
    transform.rotate(n[0]);
    if (n.size() == 3)
        transform.translate(-n[1], -n[2]);
    return transform;
}

struct TransformKind {
    std::string_view name;
    /// Bit n is set when n numbers will do.
    unsigned counts;
    QTransform (*make)(const std::vector<double>&);
};

constexpr unsigned allow(unsigned count) {
    return 1U << count;
}

constexpr std::array cTransforms{
    TransformKind{"matrix", allow(6),
                  [](const std::vector<double>& n) { return QTransform(n[0], n[1], n[2], n[3], n[4], n[5]); }},
    TransformKind{
        "translate", allow(1) | allow(2),
        [](const std::vector<double>& n) { return QTransform::fromTranslate(n[0], n.size() > 1 ? n[1] : 0.0); }},
    TransformKind{"scale", allow(1) | allow(2),
                  [](const std::vector<double>& n) { return QTransform::fromScale(n[0], n[n.size() > 1 ? 1 : 0]); }},
    TransformKind{"rotate", allow(1) | allow(3), &makeRotation},
    TransformKind{"skewX", allow(1), [](const std::vector<double>& n) { return makeSkew(n[0], 0.0); }},
    TransformKind{"skewY", allow(1), [](const std::vector<double>& n) { return makeSkew(0.0, n[0]); }},
};

/// One function off the front of the list.
std::optional<QTransform> takeTransform(std::string_view& text) {
    const std::size_t open = text.find('(');
    const std::size_t close = text.find(')');
    if (open == std::string_view::npos || close == std::string_view::npos || close < open)
        return std::nullopt;
    const std::string_view name = trim(text.substr(0, open));
    const std::string_view inside = text.substr(open + 1, close - open - 1);
    const auto* kind = std::ranges::find(cTransforms, name, &TransformKind::name);
    const std::vector<double> numbers = readNumbers(inside);
    if (kind == cTransforms.end() || numbers.size() > 6 || !(kind->counts & allow(unsigned(numbers.size()))))
        return std::nullopt;
    text = skipSeparator(text.substr(close + 1));
    return kind->make(numbers);
}

} // namespace

std::string_view trim(std::string_view text) {
    const std::size_t first = text.find_first_not_of(cBlanks);
    if (first == std::string_view::npos)
        return {};
    return text.substr(first, text.find_last_not_of(cBlanks) - first + 1);
}

std::string toLower(std::string_view text) {
    std::string lower(text);
    std::ranges::transform(lower, lower.begin(), [](char c) { return c >= 'A' && c <= 'Z' ? char(c + 32) : c; });
    return lower;
}

std::string_view skipSeparator(std::string_view text) {
    const auto skipBlanks = [&text] { text.remove_prefix(std::min(text.find_first_not_of(cBlanks), text.size())); };
    skipBlanks();
    if (!text.empty() && text[0] == ',') {
        text.remove_prefix(1);
        skipBlanks();
    }
    return text;
}

std::optional<double> takeNumber(std::string_view& text) {
    if (!beginsNumber(text))
        return std::nullopt;
    const char* first = text.data() + (text[0] == '+' ? 1 : 0);
    double value = 0.0;
    const auto [end, failure] = KyNumberReading::read(first, text.data() + text.size(), value);
    if (failure != std::errc() || !std::isfinite(value))
        return std::nullopt;
    text.remove_prefix(std::size_t(end - text.data()));
    return value;
}

std::vector<double> takeNumbers(std::string_view& text) {
    std::vector<double> numbers;
    text = trim(text);
    while (const std::optional<double> number = takeNumber(text)) {
        numbers.push_back(*number);
        text = skipSeparator(text);
    }
    return numbers;
}

std::optional<double> readLength(std::string_view text, const LengthBase& base) {
    text = trim(text);
    const std::optional<double> number = takeNumber(text);
    const std::optional<double> unit = number ? findUnit(toLower(text.substr(0, 3)), base) : std::nullopt;
    return unit ? keepFinite(*number * *unit) : std::nullopt;
}

std::vector<double> takeLengths(std::string_view& text, const LengthBase& base) {
    std::vector<double> lengths;
    text = trim(text);
    while (!text.empty()) {
        const std::size_t end = std::min(text.find_first_of(", \t\r\n\f"), text.size());
        const std::optional<double> length = readLength(text.substr(0, end), base);
        if (!length)
            break;
        lengths.push_back(*length);
        text = skipSeparator(text.substr(end));
    }
    return lengths;
}

std::optional<double> readRatio(std::string_view text) {
    const std::optional<double> ratio = readLength(text, {1.0, 1.0});
    return ratio ? std::optional(std::clamp(*ratio, 0.0, 1.0)) : std::nullopt;
}

std::optional<QTransform> readTransform(std::string_view text) {
    QTransform transform;
    text = trim(text);
    while (!text.empty()) {
        const std::optional<QTransform> next = takeTransform(text);
        if (!next)
            return std::nullopt;
        transform = *next * transform;
    }
    return isFinite(transform) ? std::optional(transform) : std::nullopt;
}

AspectRatio readAspectRatio(std::string_view text) {
    constexpr std::array<std::pair<std::string_view, double>, 3> aligns{{{"Min", 0.0}, {"Mid", 0.5}, {"Max", 1.0}}};
    AspectRatio ratio;
    text = trim(text);
    if (text.starts_with("defer"))
        text = trim(text.substr(5));
    ratio.isKept = !text.starts_with("none");
    ratio.isSlice = text.ends_with("slice");
    if (text.size() >= 8 && text[0] == 'x' && text[4] == 'Y') {
        ratio.alignX = findValue(aligns, text.substr(1, 3)).value_or(0.5);
        ratio.alignY = findValue(aligns, text.substr(5, 3)).value_or(0.5);
    }
    return ratio;
}

std::optional<std::array<double, 4>> readViewBox(std::string_view text) {
    const std::vector<double> n = readNumbers(text);
    if (n.size() != 4 || n[2] <= 0.0 || n[3] <= 0.0)
        return std::nullopt;
    return std::array{n[0], n[1], n[2], n[3]};
}

QTransform fitViewBox(const std::array<double, 4>& box, const AspectRatio& ratio, double width, double height) {
    double sx = width / box[2];
    double sy = height / box[3];
    if (ratio.isKept)
        sx = sy = ratio.isSlice ? std::max(sx, sy) : std::min(sx, sy);
    const double dx = ratio.isKept ? (width - box[2] * sx) * ratio.alignX : 0.0;
    const double dy = ratio.isKept ? (height - box[3] * sy) * ratio.alignY : 0.0;
    const QTransform fit(sx, 0.0, 0.0, sy, dx - box[0] * sx, dy - box[1] * sy);
    return isFinite(fit) ? fit : QTransform();
}

bool isFinite(const QTransform& t) {
    return std::ranges::all_of(std::array{t.m11(), t.m12(), t.m21(), t.m22(), t.dx(), t.dy()},
                               [](double v) { return std::isfinite(v); });
}

} // namespace KySvgValues

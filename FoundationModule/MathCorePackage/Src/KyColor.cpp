// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT

#include "KyColor.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <fmt/format.h>
#include <ostream>

namespace {

struct NamedColor {
    std::string_view mText;
    std::uint32_t mRGB;
};

constexpr std::array<NamedColor, KyColor::eNbNames> cNamedColors{{{"aqua", 0x00ffff},
                                                                  {"black", 0x000000},
                                                                  {"blue", 0x0000ff},
                                                                  {"fuchsia", 0xff00ff},
                                                                  {"gray", 0x808080},
                                                                  {"green", 0x008000},
                                                                  {"lime", 0x00ff00},
                                                                  {"maroon", 0x800000},
                                                                  {"navy", 0x000080},
                                                                  {"olive", 0x808000},
                                                                  {"orange", 0xffa500},
                                                                  {"purple", 0x800080},
                                                                  {"red", 0xff0000},
                                                                  {"silver", 0xc0c0c0},
                                                                  {"teal", 0x008080},
                                                                  {"white", 0xffffff},
                                                                  {"yellow", 0xffff00}}};

constexpr float toComponent(std::uint32_t rgba, unsigned shift) {
    return static_cast<float>((rgba >> shift) & 0xffu) / 255.0f;
}

constexpr KyColor fromRGBA(std::uint32_t rgba) {
    return KyColor(toComponent(rgba, 24), toComponent(rgba, 16), toComponent(rgba, 8), toComponent(rgba, 0));
}

constexpr KyColor fromRGB(std::uint32_t rgb) {
    return fromRGBA(rgb << 8 | 0xffu);
}

std::uint32_t toByte(float component) {
    // The negated comparison takes NaN as 0.
    if (!(component > 0.0f))
        return 0;
    return static_cast<std::uint32_t>(std::lround(std::min(component, 1.0f) * 255.0f));
}

bool isEqualIgnoringCase(std::string_view text, std::string_view lowerCase) {
    return std::equal(text.begin(), text.end(), lowerCase.begin(), lowerCase.end(),
                      [](char a, char b) { return (a >= 'A' && a <= 'Z' ? a + 'a' - 'A' : a) == b; });
}

/// "rgb" as "rrggbb".
std::string doubleDigits(std::string_view digits) {
    std::string result;
    for (const char digit : digits)
        result.append(2, digit);
    return result;
}

bool readHexDigits(std::string_view digits, KyColor& color) {
    std::uint32_t number = 0;
    const char* const last = digits.data() + digits.size();
    const auto [end, error] = std::from_chars(digits.data(), last, number, 16);
    if (error != std::errc() || end != last || (digits.size() != 6 && digits.size() != 8))
        return false;
    color = digits.size() == 8 ? fromRGBA(number) : fromRGB(number);
    return true;
}

float raise(float component, float exponent) {
    return component > 0.0f ? std::pow(component, exponent) : component;
}

} // namespace

KyColor::KyColor(Name name) {
    if (name >= 0 && name < eNbNames)
        *this = fromRGB(cNamedColors[static_cast<std::size_t>(name)].mRGB);
}

KyColor::KyColor(std::string_view htmlText) {
    fromHtml(htmlText, *this);
}

bool KyColor::fromHtml(std::string_view htmlText, KyColor& color) {
    if (!htmlText.empty() && htmlText.front() == '#') {
        const std::string_view digits = htmlText.substr(1);
        return readHexDigits(digits.size() == 3 ? std::string_view(doubleDigits(digits)) : digits, color);
    }
    const auto named = std::find_if(cNamedColors.begin(), cNamedColors.end(), [htmlText](const NamedColor& candidate) {
        return isEqualIgnoringCase(htmlText, candidate.mText);
    });
    if (named == cNamedColors.end())
        return false;
    color = fromRGB(named->mRGB);
    return true;
}

std::string KyColor::getHtmlName() const {
    return fmt::format("#{:02x}{:02x}{:02x}", toByte(red), toByte(green), toByte(blue));
}

std::uint32_t KyColor::toR8G8B8A8() const {
    return toByte(red) << 24 | toByte(green) << 16 | toByte(blue) << 8 | toByte(alpha);
}

KyColor KyColor::RGB2HSV() const {
    const float value = std::max({red, green, blue});
    const float range = value - std::min({red, green, blue});
    if (!(range > 0.0f))
        return KyColor(0.0f, 0.0f, value, alpha);
    float sector = (green - blue) / range;
    if (value == green)
        sector = 2.0f + (blue - red) / range;
    else if (value == blue)
        sector = 4.0f + (red - green) / range;
    const float hue = sector / 6.0f;
    return KyColor(hue < 0.0f ? hue + 1.0f : hue, range / value, value, alpha);
}

KyColor KyColor::HSV2RGB() const {
    KyColor result = *this;
    result.setHSV(red, green, blue);
    return result;
}

void KyColor::setGamma(float gamma) {
    if (!(gamma > 0.0f) || !std::isfinite(gamma))
        return;
    const float exponent = 1.0f / gamma;
    red = raise(red, exponent);
    green = raise(green, exponent);
    blue = raise(blue, exponent);
}

void KyColor::setHSV(float hue, float saturation, float value) {
    const float turn = std::isfinite(hue) ? hue - std::floor(hue) : 0.0f;
    const auto component = [=](float shift) {
        const float sector = std::fmod(shift + turn * 6.0f, 6.0f);
        return value - value * saturation * std::clamp(std::min(sector, 4.0f - sector), 0.0f, 1.0f);
    };
    red = component(5.0f);
    green = component(3.0f);
    blue = component(1.0f);
}

std::string KyColor::toString(int precision) const {
    return KyNumberText::format(std::array<float, 4>{red, green, blue, alpha}, precision);
}

std::ostream& operator<<(std::ostream& stream, const KyColor& color) {
    return stream << color.toString();
}

bool fromString(std::string_view text, KyColor& color) {
    std::array<float, 4> numbers{0.0f, 0.0f, 0.0f, 1.0f};
    const std::span<float> all(numbers);
    if (!KyNumberText::parse(text, all) && !KyNumberText::parse(text, all.first(3)))
        return false;
    color = KyColor(numbers[0], numbers[1], numbers[2], numbers[3]);
    return true;
}

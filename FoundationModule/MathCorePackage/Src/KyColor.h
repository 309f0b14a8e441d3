// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyFoundationExport.h"
#include "KyNumberText.h"

#include <cstdint>
#include <iosfwd>
#include <string>
#include <string_view>

/// A colour: red, green, blue and alpha, nominally 0 to 1; values outside are kept (bright light sources).
///
///     KyColor sky("#87ceeb");
///     KyColor(KyColor::eOrange).getHtmlName();   // "#ffa500"
class KYFOUNDATION_EXPORT KyColor {
public:
    /// Colours of HTML that have a name.
    enum Name : int {
        eAqua,
        eBlack,
        eBlue,
        eFuchsia,
        eGray,
        eGreen,
        eLime,
        eMaroon,
        eNavy,
        eOlive,
        eOrange,
        ePurple,
        eRed,
        eSilver,
        eTeal,
        eWhite,
        eYellow,
        eNbNames
    };

    /// @{
    /// 0 to 1; values beyond are kept.
    float red = 0.0f;
    float green = 0.0f;
    float blue = 0.0f;
    /// @}
    /// 0 is transparent, 1 is opaque.
    float alpha = 1.0f;

    /// Opaque black.
    KyColor() = default;
    constexpr KyColor(float redValue, float greenValue, float blueValue, float alphaValue = 1.0f)
        : red(redValue)
        , green(greenValue)
        , blue(blueValue)
        , alpha(alphaValue) {}
    /// HTML's values; opaque black for a number outside the enumeration.
    KyColor(Name name);
    /// From "#rgb", "#rrggbb", "#rrggbbaa" or one of the names ("orange"), in any case; else opaque black.
    explicit KyColor(std::string_view htmlText);

    /// Reads what the constructor from html text reads; false leaves `color` unchanged.
    static bool fromHtml(std::string_view htmlText, KyColor& color);

    /// Components 0 to 3 are red, green, blue and alpha; every other index is alpha.
    constexpr float operator[](int index) const {
        return index == 0 ? red : (index == 1 ? green : (index == 2 ? blue : alpha));
    }
    constexpr float& operator[](int index) {
        return index == 0 ? red : (index == 1 ? green : (index == 2 ? blue : alpha));
    }

    /// "#rrggbb", each component rounded and limited to 0 ... 255; alpha is left out.
    std::string getHtmlName() const;
    /// Red in the highest byte, alpha in the lowest; each rounded and limited to 0 ... 255.
    std::uint32_t toR8G8B8A8() const;
    /// Hue, saturation and value (each 0 to 1) in place of red, green and blue; grey has hue 0.
    KyColor RGB2HSV() const;
    /// The inverse: reads red, green and blue as hue (one turn is 1, any number of turns), saturation and value.
    KyColor HSV2RGB() const;

    /// Raises red, green and blue to the power 1 / gamma (above 1 brightens); not positive or not finite: unchanged.
    void setGamma(float gamma);
    /// Sets red, green and blue from hue (one turn is 1), saturation and value; alpha stays.
    void setHSV(float hue, float saturation, float value);

    /// Component by component, alpha too.
    constexpr KyColor operator+(const KyColor& other) const {
        return KyColor(red + other.red, green + other.green, blue + other.blue, alpha + other.alpha);
    }
    constexpr KyColor operator-(const KyColor& other) const {
        return KyColor(red - other.red, green - other.green, blue - other.blue, alpha - other.alpha);
    }
    constexpr KyColor operator*(const KyColor& other) const {
        return KyColor(red * other.red, green * other.green, blue * other.blue, alpha * other.alpha);
    }
    constexpr KyColor operator*(float factor) const {
        return KyColor(red * factor, green * factor, blue * factor, alpha * factor);
    }
    friend constexpr KyColor operator*(float factor, const KyColor& color) { return color * factor; }
    bool operator==(const KyColor&) const = default;

    /// "red green blue alpha".
    std::string toString(int precision = KyNumberText::cDefaultPrecision) const;
};

KYFOUNDATION_EXPORT std::ostream& operator<<(std::ostream& stream, const KyColor& color);

/// Reads "red green blue alpha" or "red green blue" (alpha 1); false leaves `color` unchanged.
KYFOUNDATION_EXPORT bool fromString(std::string_view text, KyColor& color);

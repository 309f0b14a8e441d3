// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "Ky2DStyle.h"

#include "Ky2DNode.h"

#include <algorithm>
#include <array>
#include <cctype>

namespace {

const std::string cDashPatternAttribute = "StrokeCustomDashPattern";

struct FontHint {
    std::string_view word;
    std::int32_t hint;
};

constexpr std::int32_t cSerifHint = 1;
/// The first word that stands anywhere in the family decides.
constexpr std::array<FontHint, 4> cFontHints = {{{"sans-serif", 0}, {"cursive", 3}, {"fantasy", 3}, {"monospace", 2}}};

bool containsWord(std::string_view text, std::string_view lowerWord) {
    const auto matches = [](char c, char lower) { return std::tolower(static_cast<unsigned char>(c)) == lower; };
    return std::search(text.begin(), text.end(), lowerWord.begin(), lowerWord.end(), matches) != text.end();
}

std::int32_t findFontHint(std::string_view family) {
    const auto found = std::find_if(cFontHints.begin(), cFontHints.end(),
                                    [family](const FontHint& entry) { return containsWord(family, entry.word); });
    return found != cFontHints.end() ? found->hint : cSerifHint;
}

} // namespace

Ky2DStyle::Ky2DStyle() = default;

Ky2DStyle::Ky2DStyle(const Ky2DStyle& other)
    : KyObject(other) {
    mIsModified = false;
    *this = other;
    mIsModified = other.mIsModified;
}

Ky2DStyle& Ky2DStyle::operator=(const Ky2DStyle& other) {
    if (this == &other)
        return *this;
    mIsStrokeConstantWidth = other.mIsStrokeConstantWidth;
    mStrokeMode = other.mStrokeMode;
    mStrokeCustomDashPattern = other.mStrokeCustomDashPattern;
    mStrokeDashOffset = other.mStrokeDashOffset;
    mStrokeJoin = other.mStrokeJoin;
    mStrokeCap = other.mStrokeCap;
    mStrokeColor = other.mStrokeColor;
    mStrokeWidth = other.mStrokeWidth;
    mStrokeMiterLimit = other.mStrokeMiterLimit;
    mFillMode = other.mFillMode;
    mFillRule = other.mFillRule;
    mFillColor = other.mFillColor;
    mFontFamily = other.mFontFamily;
    mFontStyleHint = other.mFontStyleHint;
    mFontSize = other.mFontSize;
    mFontWeight = other.mFontWeight;
    mFontStyle = other.mFontStyle;
    mTextAnchor = other.mTextAnchor;
    mTextVerticalAnchor = other.mTextVerticalAnchor;
    modified(true);
    return *this;
}

Ky2DStyle::~Ky2DStyle() {
    if (mOwner)
        mOwner->styleDestroyed();
}

Ky2DStyle* Ky2DStyle::clone() const {
    return new Ky2DStyle(*this);
}

bool Ky2DStyle::modified(bool isModified) {
    Ky2DNode* const owner = mOwner;
    const bool isOwnerNew = isModified && owner && !owner->isModified();
    mIsModified = isModified;
    // Who is told of the node may end it, or take its style away.
    return !isOwnerNew || (Ky2DNode::nodeModified(owner) && owner->getStyle() == this);
}

template <class T>
void Ky2DStyle::set(T& member, const T& value, std::string_view attribute) {
    member = value;
    if (modified(true) && isWatched())
        notifyModified(attribute);
}

void Ky2DStyle::setStrokeConstantWidth(bool isConstant) {
    set(mIsStrokeConstantWidth, isConstant, "StrokeConstantWidth");
}

void Ky2DStyle::setStrokeMode(KyStrokeMode mode) {
    set(mStrokeMode, mode, "StrokeMode");
}

void Ky2DStyle::setStrokeJoin(KyStrokeJoin join) {
    set(mStrokeJoin, join, "StrokeJoin");
}

void Ky2DStyle::setStrokeCap(KyStrokeCap cap) {
    set(mStrokeCap, cap, "StrokeCap");
}

void Ky2DStyle::setStrokeColor(const KyColor& color) {
    set(mStrokeColor, color, "StrokeColor");
}

void Ky2DStyle::setStrokeWidth(double width) {
    set(mStrokeWidth, width, "StrokeWidth");
}

void Ky2DStyle::setStrokeMiterLimit(double limit) {
    set(mStrokeMiterLimit, limit, "StrokeMiterLimit");
}

void Ky2DStyle::setStrokeDashOffset(double offset) {
    set(mStrokeDashOffset, offset, "StrokeDashOffset");
}

void Ky2DStyle::setStrokeCustomDashPattern(const std::vector<double>& pattern) {
    set(mStrokeCustomDashPattern, pattern, cDashPatternAttribute);
}

double Ky2DStyle::getDashElement(unsigned index) const {
    return index < mStrokeCustomDashPattern.size() ? mStrokeCustomDashPattern[index] : 0.0;
}

void Ky2DStyle::setDashElement(double value, unsigned index) {
    if (index >= mStrokeCustomDashPattern.size())
        return;
    mStrokeCustomDashPattern[index] = value;
    if (modified(true) && isWatched())
        notifyModified(eElementChanged, cDashPatternAttribute, static_cast<int>(index));
}

void Ky2DStyle::insertDashElement(double value, unsigned index) {
    const unsigned position = std::min(index, getNbDashElements());
    mStrokeCustomDashPattern.insert(mStrokeCustomDashPattern.begin() + position, value);
    if (modified(true))
        notifyModified(eElementInserted, cDashPatternAttribute, static_cast<int>(position));
}

void Ky2DStyle::removeDashElement(unsigned index, bool) {
    if (index >= mStrokeCustomDashPattern.size())
        return;
    mStrokeCustomDashPattern.erase(mStrokeCustomDashPattern.begin() + index);
    if (modified(true))
        notifyModified(eElementRemoved, cDashPatternAttribute, static_cast<int>(index));
}

void Ky2DStyle::setFillMode(KyFillMode mode) {
    set(mFillMode, mode, "FillMode");
}

void Ky2DStyle::setFillRule(KyFillRule rule) {
    set(mFillRule, rule, "FillRule");
}

void Ky2DStyle::setFillColor(const KyColor& color) {
    set(mFillColor, color, "FillColor");
}

void Ky2DStyle::setFontFamily(const std::string& family) {
    mFontStyleHint = findFontHint(family);
    set(mFontFamily, family, "FontFamily");
}

void Ky2DStyle::setFontSize(double size) {
    set(mFontSize, size, "FontSize");
}

void Ky2DStyle::setFontWeight(std::int32_t weight) {
    set(mFontWeight, weight, "FontWeight");
}

void Ky2DStyle::setFontStyle(KyFontStyle style) {
    set(mFontStyle, style, "FontStyle");
}

void Ky2DStyle::setTextAnchor(KyTextAnchor anchor) {
    set(mTextAnchor, anchor, "TextAnchor");
}

void Ky2DStyle::setTextVerticalAnchor(KyTextVerticalAnchor anchor) {
    set(mTextVerticalAnchor, anchor, "TextVerticalAnchor");
}

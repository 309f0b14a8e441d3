// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyApplicationExport.h"

#include "KyFillMode.h"
#include "KyFillRule.h"
#include "KyFontStyle.h"
#include "KyFontWeight.h"
#include "KyStrokeCap.h"
#include "KyStrokeJoin.h"
#include "KyStrokeMode.h"
#include "KyTextAnchor.h"
#include "KyTextVerticalAnchor.h"

#include "KyColor.h"
#include "KyObject.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

class Ky2DNode;
class QBrush;
class QFont;
class QPen;

/// How a 2D node is drawn: outline, filling and font. A new style fills black and draws no outline.
///
/// Every node has a style of its own, which ends with it; a style made without node belongs to who made it until it is
/// given to one (Ky2DNode::setStyle). Setters store any value and mark the style, equal values too: the node's item is
/// brought up to date at the next Ky2DNode::applyModification. What Qt takes badly (NaN, colours beyond 1, patterns
/// without length) is kept here and left out in the pen, brush and font. GUI thread.
///
/// ```
/// Ky2DStyle* style = rect->editStyle();
/// style->setStrokeMode(eDashLine);
/// style->setStrokeWidth(2.0);
/// style->setFillColor(KyColor("#87ceeb"));
/// ```
class KYAPPLICATION_EXPORT Ky2DStyle : public KyObject {
public:
    static const KyType* getType();
    static Ky2DStyle* cast(KyObject* object);
    static KyObject* factory() { return create(); }
    static void initializeType();
    static void finalizeType();
    static void initializeClass() { initializeType(); }
    static void finalizeClass() { finalizeType(); }
    const KyType* getObjectType() const override;

    static Ky2DStyle* create() { return new Ky2DStyle; }
    Ky2DStyle();
    /// Copies all but the owner: the copy has none.
    Ky2DStyle(const Ky2DStyle& other);
    /// Copies all but the owner and marks the style.
    Ky2DStyle& operator=(const Ky2DStyle& other);
    ~Ky2DStyle() override;
    Ky2DStyle* clone() const override;

    /// The outline keeps its width whatever the scale at which it is seen.
    bool isStrokeConstantWidth() const { return mIsStrokeConstantWidth; }
    void setStrokeConstantWidth(bool isConstant);
    /// See setStrokeMode.
    KyStrokeMode getStrokeMode() const { return mStrokeMode; }
    /// A number that names no mode draws no outline.
    void setStrokeMode(KyStrokeMode mode);
    /// @{
    /// How two lines of the outline meet.
    KyStrokeJoin getStrokeJoin() const { return mStrokeJoin; }
    void setStrokeJoin(KyStrokeJoin join);
    /// @}
    /// @{
    /// How the outline's open ends look.
    KyStrokeCap getStrokeCap() const { return mStrokeCap; }
    void setStrokeCap(KyStrokeCap cap);
    /// @}
    /// See setStrokeColor.
    const KyColor& getStrokeColor() const { return mStrokeColor; }
    /// Components count as 0 to 1 when drawn.
    void setStrokeColor(const KyColor& color);
    /// See setStrokeWidth.
    double getStrokeWidth() const { return mStrokeWidth; }
    /// In the node's units; 0 draws one pixel at any scale.
    void setStrokeWidth(double width);
    /// See setStrokeMiterLimit.
    double getStrokeMiterLimit() const { return mStrokeMiterLimit; }
    /// Length of a mitre in widths of the stroke; 0, the start, draws mitred corners as bevels.
    void setStrokeMiterLimit(double limit);

    /// Dashes and gaps in turn, in widths of the stroke, of the mode eCustomDashLine.
    const std::vector<double>& getStrokeCustomDashPattern() const { return mStrokeCustomDashPattern; }
    /// A pattern that is empty, has a negative or not finite element, or is shorter than 0.001 draws a solid line.
    void setStrokeCustomDashPattern(const std::vector<double>& pattern);
    /// Dashes and gaps together.
    unsigned getNbDashElements() const { return static_cast<unsigned>(mStrokeCustomDashPattern.size()); }
    /// 0.0 when out of range.
    double getDashElement(unsigned index) const;
    /// Nothing when out of range.
    void setDashElement(double value, unsigned index);
    /// Before the element of that index; appended when out of range.
    void insertDashElement(double value, unsigned index);
    /// Nothing when out of range. The second argument is not used.
    void removeDashElement(unsigned index, bool destroy = false);
    /// See setStrokeDashOffset.
    double getStrokeDashOffset() const { return mStrokeDashOffset; }
    /// Where in the pattern of modes 2 to 6 the outline begins, in widths of the stroke.
    void setStrokeDashOffset(double offset);

    /// See setFillMode.
    KyFillMode getFillMode() const { return mFillMode; }
    /// A number that names no mode fills nothing.
    void setFillMode(KyFillMode mode);
    /// See setFillRule.
    KyFillRule getFillRule() const { return mFillRule; }
    /// Used by paths alone.
    void setFillRule(KyFillRule rule);
    /// See setFillColor.
    const KyColor& getFillColor() const { return mFillColor; }
    /// Components count as 0 to 1 when drawn.
    void setFillColor(const KyColor& color);

    /// See setFontFamily.
    const std::string& getFontFamily() const { return mFontFamily; }
    /// Also derives the style hint from the words "sans-serif", "cursive", "fantasy" and "monospace" in the text.
    void setFontFamily(const std::string& family);
    /// A number of QFont::StyleHint: what Qt looks for when there is no such family. 1, serif, at the start.
    std::int32_t getFontStyleHint() const { return mFontStyleHint; }
    /// See setFontSize.
    double getFontSize() const { return mFontSize; }
    /// In points; a size that is not above 0, or beyond 10,000, leaves Qt's own.
    void setFontSize(double size);
    /// See setFontWeight.
    std::int32_t getFontWeight() const { return mFontWeight; }
    /// A number of KyFontWeight or between them; counts as 0 to 99 when drawn.
    void setFontWeight(std::int32_t weight);
    /// @{
    /// Upright, italic or oblique.
    KyFontStyle getFontStyle() const { return mFontStyle; }
    void setFontStyle(KyFontStyle style);
    /// @}
    /// @{
    /// Which end of the text stands at its position.
    KyTextAnchor getTextAnchor() const { return mTextAnchor; }
    void setTextAnchor(KyTextAnchor anchor);
    /// @}
    /// @{
    /// Which height of the text stands at its position.
    KyTextVerticalAnchor getTextVerticalAnchor() const { return mTextVerticalAnchor; }
    void setTextVerticalAnchor(KyTextVerticalAnchor anchor);
    /// @}

    /// Gives a pen that draws the outline; what was in it before is lost.
    void configureLineStyle(QPen* pen) const;
    /// The pen as above and a brush for the filling.
    void configureShapeStyle(QPen* pen, QBrush* brush) const;
    /// Both as above; of the font, which is changed in place, family, hint, size, weight and style.
    void configureTextStyle(QPen* pen, QBrush* brush, QFont* font) const;

protected:
    /// The node owns the style and is told of changes; null for none.
    void setOwner(Ky2DNode* owner) { mOwner = owner; }
    Ky2DNode* getOwner() const { return mOwner; }
    /// True while the owner waits for its next update.
    bool isModified() const { return mIsModified; }
    /// True marks, and enters the owner in the list of modified nodes when it was clean; false only clears the mark.
    /// The result is false when a listener ended the style meanwhile.
    bool modified(bool isModified);

private:
    friend class Ky2DNode;

    template <class T>
    void set(T& member, const T& value, std::string_view attribute);

    bool mIsStrokeConstantWidth = false;
    KyStrokeMode mStrokeMode = eNoPen;
    std::vector<double> mStrokeCustomDashPattern;
    double mStrokeDashOffset = 0.0;
    KyStrokeJoin mStrokeJoin = eMiterJoin;
    KyStrokeCap mStrokeCap = eFlatCap;
    KyColor mStrokeColor;
    double mStrokeWidth = 1.0;
    double mStrokeMiterLimit = 0.0;
    KyFillMode mFillMode = eSolidPattern;
    KyFillRule mFillRule = eNonZero;
    KyColor mFillColor;
    std::string mFontFamily;
    std::int32_t mFontStyleHint = 1;
    double mFontSize = 14.0;
    std::int32_t mFontWeight = eNormal;
    KyFontStyle mFontStyle = eStyleNormal;
    KyTextAnchor mTextAnchor = eStart;
    /// None of the named values: the text is not shifted.
    KyTextVerticalAnchor mTextVerticalAnchor{};
    bool mIsModified = true;
    Ky2DNode* mOwner = nullptr;

    static const KyType* msType;
};

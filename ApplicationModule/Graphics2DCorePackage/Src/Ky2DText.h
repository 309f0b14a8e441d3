// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "Ky2DNode.h"

#include <cstdint>
#include <string>

/// A text at a position, in the style's font, filling and outline. The style's anchors say which place of the text lies
/// at the position; without them it is the top left corner. The text turns and scales about the node's origin.
///
/// ```
/// Ky2DText* text = Ky2DText::create();
/// text->setText("Caption");
/// text->setX(100.0);
/// text->editStyle()->setTextAnchor(eMiddle);
/// ```
class KYAPPLICATION_EXPORT Ky2DText : public Ky2DNode {
public:
    /// What is done with blanks and line breaks before the text is shown, as in SVG.
    enum WhiteSpaceHandling : std::int32_t {
        /// Shown as it is, line breaks included.
        eWhiteSpaceUnchanged = 0,
        /// Line breaks go, tabs become blanks, runs of blanks become one, those at both ends go.
        eWhiteSpaceDefault = 1,
        /// Every line break becomes a blank.
        eWhiteSpacePreserve = 2
    };

    static const KyType* getType();
    static Ky2DText* cast(KyObject* object);
    static KyObject* factory() { return create(); }
    static void initializeType();
    static void finalizeType();
    static void initializeClass() { initializeType(); }
    static void finalizeClass() { finalizeType(); }
    const KyType* getObjectType() const override;

    static Ky2DText* create() { return new Ky2DText; }
    Ky2DText();
    /// As clone.
    Ky2DText(const Ky2DText& other);
    Ky2DText* clone() const override;

    /// @{
    /// Where the anchor of the text stands, in the node's units.
    double getX() const { return mX; }
    void setX(double x) { setGeometry(mX, x, "X"); }
    double getY() const { return mY; }
    void setY(double y) { setGeometry(mY, y, "Y"); }
    /// @}
    /// Bytes in the default character set.
    const std::string& getText() const { return mText; }
    void setText(const std::string& text) { setGeometry(mText, text, "Text"); }
    /// See setWhiteSpaceHandling.
    std::int32_t getWhiteSpaceHandling() const { return mWhiteSpaceHandling; }
    /// A number of WhiteSpaceHandling; others leave the text unchanged.
    void setWhiteSpaceHandling(std::int32_t handling);
    /// The text as it is shown.
    std::string getWhiteSpaceHandledText() const;

    void update() override;

protected:
    void updateQGraphicsItemGeometry() override;
    void updateQGraphicsItemStyle() override;
    /// The position, qtOffset and the shift of the anchors are part of the item's transform.
    void updateQGraphicsItemPosition() override;

private:
    double mX = 0.0;
    double mY = 0.0;
    std::string mText;
    std::int32_t mWhiteSpaceHandling = eWhiteSpaceUnchanged;

    static const KyType* msType;
};

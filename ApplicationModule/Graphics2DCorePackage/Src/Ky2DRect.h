// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyApplicationExport.h"

#include "Ky2DNode.h"

/// A rectangle, its corners rounded where both radii are above 0. Driven item: a QGraphicsPathItem. GUI thread.
///
/// Radii are taken as in SVG: one that is 0 or less follows the other, both are limited to half the side. The getters
/// give what was set. A width or height that is not above 0 draws nothing, nor does a rectangle of which a side lies at
/// 1e128 or beyond, or at no number. All values are 0 at first.
///
/// ```
/// Ky2DRect* card = Ky2DRect::create();
/// card->setWidth(85.6);
/// card->setHeight(54);
/// card->setRX(3);
/// ```
class KYAPPLICATION_EXPORT Ky2DRect : public Ky2DNode {
public:
    static const KyType* getType();
    static Ky2DRect* cast(KyObject* object);
    static Ky2DRect* create();
    static KyObject* factory();
    static void initializeClass() { initializeType(); }
    static void finalizeClass() { finalizeType(); }
    static void initializeType();
    static void finalizeType();
    const KyType* getObjectType() const override;

    Ky2DRect();
    /// As clone.
    Ky2DRect(const Ky2DRect& other);
    Ky2DRect& operator=(const Ky2DRect&) = delete;
    Ky2DRect* clone() const override;

    /// The left side.
    double getX() const { return mX; }
    void setX(double x);
    /// The side of least y.
    double getY() const { return mY; }
    void setY(double y);
    /// @{
    /// In the node's units.
    double getWidth() const { return mWidth; }
    void setWidth(double width);
    double getHeight() const { return mHeight; }
    void setHeight(double height);
    /// @}
    /// Radii of the corners along x and y.
    double getRX() const { return mRX; }
    void setRX(double radius);
    /// @{
    /// See getRX.
    double getRY() const { return mRY; }
    void setRY(double radius);
    /// @}

protected:
    void updateQGraphicsItemGeometry() override;
    void updateQGraphicsItemStyle() override;

private:
    double mX = 0.0;
    double mY = 0.0;
    double mWidth = 0.0;
    double mHeight = 0.0;
    double mRX = 0.0;
    double mRY = 0.0;

    static const KyType* msType;
};

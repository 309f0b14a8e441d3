// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyApplicationExport.h"

#include "Ky2DNode.h"

/// An ellipse, or a sector of one. Driven item: a QGraphicsEllipseItem. GUI thread.
///
/// Angles are degrees, counter-clockwise on screen from the positive x axis, in steps of a sixteenth (truncated). All
/// values are 0 at first but the span, 360: the whole ellipse. A span of 0 fills nothing; a pen draws one radius.
///
/// ```
/// Ky2DEllipse* dot = Ky2DEllipse::create();
/// dot->setRX(2);
/// dot->setRY(2);
/// ```
class KYAPPLICATION_EXPORT Ky2DEllipse : public Ky2DNode {
public:
    static const KyType* getType();
    static Ky2DEllipse* cast(KyObject* object);
    static Ky2DEllipse* create();
    static KyObject* factory();
    static void initializeClass() { initializeType(); }
    static void finalizeClass() { finalizeType(); }
    static void initializeType();
    static void finalizeType();
    const KyType* getObjectType() const override;

    Ky2DEllipse();
    /// As clone.
    Ky2DEllipse(const Ky2DEllipse& other);
    Ky2DEllipse& operator=(const Ky2DEllipse&) = delete;
    Ky2DEllipse* clone() const override;

    /// The centre.
    double getX() const { return mX; }
    void setX(double x);
    /// @{
    /// See getX.
    double getY() const { return mY; }
    void setY(double y);
    /// @}
    /// See setRX.
    double getRX() const { return mRX; }
    /// A negative radius draws what its amount draws.
    void setRX(double radius);
    /// @{
    /// See setRX.
    double getRY() const { return mRY; }
    void setRY(double radius);
    /// @}
    /// @{
    /// Degrees at which the outline begins.
    double getStartAngle() const { return mStartAngle; }
    void setStartAngle(double degrees);
    /// @}
    /// @{
    /// Degrees that the outline goes on for; 360 is the whole ellipse.
    double getSpanAngle() const { return mSpanAngle; }
    void setSpanAngle(double degrees);
    /// @}

protected:
    void updateQGraphicsItemGeometry() override;
    void updateQGraphicsItemStyle() override;

private:
    double mX = 0.0;
    double mY = 0.0;
    double mRX = 0.0;
    double mRY = 0.0;
    double mStartAngle = 0.0;
    double mSpanAngle = 360.0;

    static const KyType* msType;
};

// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyGesture.h"

#include "KyVec2.h"

/// Two fingers moved: nearer together or farther apart, and round each other.
class KYAPPLICATION_EXPORT KyPinchGesture : public KyGesture {
public:
    Kind getKind() const override { return ePinch; }

    /// The former distance of the fingers divided by the present one: below 1 when they part. 1 when either is 0.
    double getScaleFactor() const { return mScaleFactor; }
    void setScaleFactor(double factor) { mScaleFactor = factor; }
    /// Degrees, -180 to 180, clockwise on the screen.
    double getRotationAngle() const { return mRotationAngle; }
    void setRotationAngle(double angle) { mRotationAngle = angle; }
    /// Pixels of the canvas, nearer to the finger that moved less.
    const KyVec2i& getRotationCenter() const { return mRotationCenter; }
    void setRotationCenter(const KyVec2i& center) { mRotationCenter = center; }

private:
    double mScaleFactor = 1.0;
    double mRotationAngle = 0.0;
    KyVec2i mRotationCenter;
};

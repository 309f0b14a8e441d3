// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyGesture.h"

#include "KyVec2.h"

/// Three fingers of which one moves and two rest.
class KYAPPLICATION_EXPORT KyTiltGesture : public KyGesture {
public:
    Kind getKind() const override { return eTilt; }

    /// Where the moving finger is, pixels of the canvas.
    const KyVec2i& getOrientationPoint() const { return mOrientationPoint; }
    void setOrientationPoint(const KyVec2i& point) { mOrientationPoint = point; }
    /// The moving finger's place in the event's touch points; -1 when there is none.
    int getIndex() const { return mIndex; }
    void setIndex(int index) { mIndex = index; }

private:
    KyVec2i mOrientationPoint;
    int mIndex = -1;
};

// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyGesture.h"

#include "KyVec2.h"

/// One finger moved.
class KYAPPLICATION_EXPORT KyPanGesture : public KyGesture {
public:
    Kind getKind() const override { return ePan; }

    /// Where the finger is, pixels of the canvas.
    const KyVec2i& getPoint() const { return mPoint; }
    void setPoint(const KyVec2i& point) { mPoint = point; }

private:
    KyVec2i mPoint;
};

// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyVolume.h"

class KyHostStage;

/// What the keys of the window do to the camera of a stage. The trackball's centre is what the camera looks at and
/// turns about afterwards.
class KyHostNavigation {
public:
    enum Direction { eFront, eBack, eRight, eLeft, eTop, eBottom, eNbDirections };

    explicit KyHostNavigation(KyHostStage& stage)
        : mStage(stage) {}

    /// Shows the whole model from where the camera looks now. The ground's grid does not count, unless there is nothing
    /// else.
    void frameModel();
    /// Looks at the trackball's centre along an axis, from as far as before.
    void lookFrom(Direction direction);
    /// Changes between perspective and parallel projection; what lies at the centre keeps its size.
    void toggleOrthographic();

private:
    KyVolumed getModelVolume() const;
    double getDepthOfCenter() const;

    KyHostStage& mStage;
};

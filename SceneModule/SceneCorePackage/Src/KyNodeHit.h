// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyVec3.h"

#include <limits>

class KyNode;

/// Where a ray first meets a scene, in world coordinates. `distance` counts lengths of the ray's direction; what is
/// farther than its value before the test is not looked at.
struct KyNodeHit {
    KyNode* node = nullptr;
    KyVec3d point;
    KyVec3d normal;
    double distance = std::numeric_limits<double>::max();
};

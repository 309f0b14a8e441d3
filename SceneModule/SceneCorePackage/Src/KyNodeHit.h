// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyVec2.h"
#include "KyVec3.h"

#include <limits>

class KyNode;

/// Where a ray first meets a surface, in the coordinates of the surface. `distance` counts lengths of the ray's
/// direction; what is farther than its value before the test is not looked at.
struct KySurfaceHit {
    /// See above; what is farther than it before the test is not looked at.
    double distance = std::numeric_limits<double>::max();
    /// Of the surface, length 1.
    KyVec3d normal;
    /// Of the point itself, however the surface is seen; false for surfaces that have none.
    bool hasTexCoord = false;
    /// (0, 0) when there is none.
    KyVec2d texCoord;
    /// Number of the triangle among those of the mesh.
    unsigned triangle = 0;
};

/// Where a ray first meets a scene, in world coordinates. `distance` counts lengths of the ray's direction; what is
/// farther than its value before the test is not looked at.
struct KyNodeHit : KySurfaceHit {
    /// Null before something was met.
    KyNode* node = nullptr;
    /// In world coordinates.
    KyVec3d point;
};

// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KySceneExport.h"

#include "KyVertex.h"

/// Makes the data of simple shapes, centred on the origin, y up, faces seen from outside counter-clockwise. Sizes are
/// taken without sign; segments are limited to 3 ... 4096.
struct KYSCENE_EXPORT KyMeshBuilder {
    KyMeshBuilder() = delete;

    /// Along x, y and z.
    static KyMeshData makeBox(double width, double height, double depth);
    /// `segments` around, half as many from pole to pole.
    static KyMeshData makeSphere(double radius, int segments);
    /// Stands on y, closed at both ends.
    static KyMeshData makeCylinder(double radius, double height, int segments);
    /// Stands on y with its tip up, closed below.
    static KyMeshData makeCone(double radius, double height, int segments);
    /// A ring around y: `radius` to the middle of the tube.
    static KyMeshData makeTorus(double radius, double tubeRadius, int segments);
    /// In the plane of x and z, seen from above.
    static KyMeshData makePlane(double width, double depth);
    /// A plane whose texture coordinates count the cells from the middle.
    static KyMeshData makeGrid(double size, int divisions);
};

// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstdint>
#include <vector>

/// One corner of a mesh, as the device reads it.
struct KyVertex {
    /// In the node's coordinates.
    std::array<float, 3> position{};
    /// Of length 1, away from the surface.
    std::array<float, 3> normal{};
    /// 0 to 1 across the picture, row 0 below.
    std::array<float, 2> texCoord{};
    /// Red, green, blue, alpha; multiplied with the node's colour.
    std::array<std::uint8_t, 4> color{255, 255, 255, 255};
};

/// What three, two or one index in a row make.
enum class KyPrimitive { eTriangles, eLines, ePoints, eNbPrimitives };

/// Vertices and the indices that join them, before they become a mesh.
struct KyMeshData {
    /// Corners, used by any number of faces.
    std::vector<KyVertex> vertices;
    /// Positions in `vertices`, three for a triangle.
    std::vector<std::uint32_t> indices;
    /// How the indices are read.
    KyPrimitive primitive = KyPrimitive::eTriangles;
};

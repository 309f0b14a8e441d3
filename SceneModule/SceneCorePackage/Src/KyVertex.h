// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstdint>
#include <vector>

/// One corner of a mesh, as the device reads it.
struct KyVertex {
    std::array<float, 3> position{};
    std::array<float, 3> normal{};
    std::array<float, 2> texCoord{};
    /// Red, green, blue, alpha; multiplied with the node's colour.
    std::array<std::uint8_t, 4> color{255, 255, 255, 255};
};

/// What three, two or one index in a row make.
enum class KyPrimitive { eTriangles, eLines, ePoints, eNbPrimitives };

/// Vertices and the indices that join them, before they become a mesh.
struct KyMeshData {
    std::vector<KyVertex> vertices;
    std::vector<std::uint32_t> indices;
    KyPrimitive primitive = KyPrimitive::eTriangles;
};

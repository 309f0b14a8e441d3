// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyMeshBuilder.h"

#include "KyVec3.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>
#include <span>

namespace {

constexpr int cMinSegments = 3;
constexpr int cMaxSegments = 4096;

/// A point of an outline that is turned about y: distance from the axis, height, and the normal in that plane.
struct OutlinePoint {
    double radius;
    double height;
    double normalOut;
    double normalUp;
};

std::array<float, 3> toFloats(const KyVec3d& v) {
    return {static_cast<float>(v.x), static_cast<float>(v.y), static_cast<float>(v.z)};
}

KyVertex makeVertex(const KyVec3d& position, const KyVec3d& normal, double u, double v) {
    KyVertex vertex;
    vertex.position = toFloats(position);
    vertex.normal = toFloats(normal);
    vertex.texCoord = {static_cast<float>(u), static_cast<float>(v)};
    return vertex;
}

/// Two triangles between the columns at `first` and `second`; those without area are left out.
void addQuad(KyMeshData& data, std::uint32_t lowerLeft, std::uint32_t lowerRight, std::uint32_t upperRight,
             std::uint32_t upperLeft) {
    const auto isSame = [&data](std::uint32_t a, std::uint32_t b) {
        return data.vertices[a].position == data.vertices[b].position;
    };
    if (!isSame(lowerLeft, lowerRight))
        data.indices.insert(data.indices.end(), {lowerLeft, lowerRight, upperRight});
    if (!isSame(upperLeft, upperRight))
        data.indices.insert(data.indices.end(), {lowerLeft, upperRight, upperLeft});
}

/// Turns an outline, given from below upwards on the outside, about y.
void addRevolved(KyMeshData& data, std::span<const OutlinePoint> outline, int segments) {
    const auto first = static_cast<std::uint32_t>(data.vertices.size());
    const auto count = static_cast<std::uint32_t>(outline.size());
    for (int column = 0; column <= segments; ++column) {
        // The last column repeats the first exactly: a seam would show as a line of light.
        const double angle = 2.0 * std::numbers::pi * (column % segments) / segments;
        const double sine = std::sin(angle), cosine = std::cos(angle);
        for (std::uint32_t row = 0; row < count; ++row) {
            const OutlinePoint& p = outline[row];
            data.vertices.push_back(makeVertex(KyVec3d(p.radius * sine, p.height, p.radius * cosine),
                                               KyVec3d(p.normalOut * sine, p.normalUp, p.normalOut * cosine),
                                               static_cast<double>(column) / segments,
                                               static_cast<double>(row) / (count - 1)));
        }
    }
    for (std::uint32_t column = 0; column < static_cast<std::uint32_t>(segments); ++column)
        for (std::uint32_t row = 0; row + 1 < count; ++row) {
            const std::uint32_t left = first + column * count + row;
            addQuad(data, left, left + count, left + count + 1, left + 1);
        }
}

int limitSegments(int segments) {
    return std::clamp(segments, cMinSegments, cMaxSegments);
}

} // namespace

KyMeshData KyMeshBuilder::makeBox(double width, double height, double depth) {
    const KyVec3d half = KyVec3d(std::abs(width), std::abs(height), std::abs(depth)) / 2.0;
    KyMeshData data;
    for (int face = 0; face < 6; ++face) {
        const int axis = face / 2;
        const double sign = face % 2 == 0 ? 1.0 : -1.0;
        KyVec3d normal, right, up;
        normal[axis] = sign;
        right[(axis + 1) % 3] = sign;
        up[(axis + 2) % 3] = 1.0;
        const auto first = static_cast<std::uint32_t>(data.vertices.size());
        for (const auto& [u, v] : {std::pair{0, 0}, {1, 0}, {1, 1}, {0, 1}})
            data.vertices.push_back(
                makeVertex((normal + right * (2.0 * u - 1.0) + up * (2.0 * v - 1.0)) * half, normal, u, v));
        addQuad(data, first, first + 1, first + 2, first + 3);
    }
    return data;
}

KyMeshData KyMeshBuilder::makeSphere(double radius, int segments) {
    segments = limitSegments(segments);
    const int rings = std::max(segments / 2, 2);
    std::vector<OutlinePoint> outline;
    for (int i = 0; i <= rings; ++i) {
        const double angle = std::numbers::pi * (static_cast<double>(i) / rings - 0.5);
        // Exactly 0 at the poles, so that no slivers are left.
        const double out = i == 0 || i == rings ? 0.0 : std::cos(angle);
        outline.push_back({std::abs(radius) * out, std::abs(radius) * std::sin(angle), out, std::sin(angle)});
    }
    KyMeshData data;
    addRevolved(data, outline, segments);
    return data;
}

KyMeshData KyMeshBuilder::makeCylinder(double radius, double height, int segments) {
    segments = limitSegments(segments);
    const double r = std::abs(radius), h = std::abs(height) / 2.0;
    KyMeshData data;
    addRevolved(data, std::array<OutlinePoint, 2>{{{0, -h, 0, -1}, {r, -h, 0, -1}}}, segments);
    addRevolved(data, std::array<OutlinePoint, 2>{{{r, -h, 1, 0}, {r, h, 1, 0}}}, segments);
    addRevolved(data, std::array<OutlinePoint, 2>{{{r, h, 0, 1}, {0, h, 0, 1}}}, segments);
    return data;
}

KyMeshData KyMeshBuilder::makeCone(double radius, double height, int segments) {
    segments = limitSegments(segments);
    const double r = std::abs(radius), h = std::abs(height) / 2.0;
    const double slope = std::hypot(r, 2.0 * h);
    const double out = slope > 0.0 ? 2.0 * h / slope : 1.0, up = slope > 0.0 ? r / slope : 0.0;
    KyMeshData data;
    addRevolved(data, std::array<OutlinePoint, 2>{{{0, -h, 0, -1}, {r, -h, 0, -1}}}, segments);
    addRevolved(data, std::array<OutlinePoint, 2>{{{r, -h, out, up}, {0, h, out, up}}}, segments);
    return data;
}

KyMeshData KyMeshBuilder::makeTorus(double radius, double tubeRadius, int segments) {
    segments = limitSegments(segments);
    const int rings = std::max(segments / 2, cMinSegments);
    std::vector<OutlinePoint> outline;
    for (int i = 0; i <= rings; ++i) {
        const double angle = 2.0 * std::numbers::pi * (i % rings) / rings - std::numbers::pi;
        const double out = std::cos(angle), up = std::sin(angle);
        outline.push_back({std::abs(radius) + std::abs(tubeRadius) * out, std::abs(tubeRadius) * up, out, up});
    }
    KyMeshData data;
    addRevolved(data, outline, segments);
    return data;
}

KyMeshData KyMeshBuilder::makePlane(double width, double depth) {
    const double x = std::abs(width) / 2.0, z = std::abs(depth) / 2.0;
    const KyVec3d up(0, 1, 0);
    KyMeshData data;
    data.vertices = {makeVertex(KyVec3d(-x, 0, z), up, 0, 0), makeVertex(KyVec3d(x, 0, z), up, 1, 0),
                     makeVertex(KyVec3d(x, 0, -z), up, 1, 1), makeVertex(KyVec3d(-x, 0, -z), up, 0, 1)};
    data.indices = {0, 1, 2, 0, 2, 3};
    return data;
}

KyMeshData KyMeshBuilder::makeGrid(double size, int divisions) {
    KyMeshData data = makePlane(size, size);
    const auto cells = static_cast<float>(std::max(divisions, 1));
    for (KyVertex& vertex : data.vertices)
        vertex.texCoord = {(vertex.texCoord[0] - 0.5f) * cells, (0.5f - vertex.texCoord[1]) * cells};
    return data;
}

// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyMesh.h"

#include "KyMeshDrawing_p.h"
#include "KyNodeHit.h"

#include "KyRay.h"
#include "KyTypeBuilder.h"

#include <algorithm>
#include <cmath>

const KyType* KyMesh::msType = nullptr;

namespace {

KyVec3d toVector(const std::array<float, 3>& numbers) {
    return KyVec3d(static_cast<double>(numbers[0]), static_cast<double>(numbers[1]), static_cast<double>(numbers[2]));
}

bool isFinite(const KyVertex& vertex) {
    return std::ranges::all_of(vertex.position, [](float number) { return std::isfinite(number); });
}

bool isConsistent(const KyMeshData& data) {
    return data.primitive < KyPrimitive::eNbPrimitives &&
           data.indices.size() % kyGetPrimitiveSize(data.primitive) == 0 &&
           std::ranges::all_of(data.indices, [&data](std::uint32_t index) { return index < data.vertices.size(); }) &&
           std::ranges::all_of(data.vertices, isFinite);
}

KyVec2d toVector(const std::array<float, 2>& numbers) {
    return KyVec2d(static_cast<double>(numbers[0]), static_cast<double>(numbers[1]));
}

/// Where a ray passes the plane of a triangle: lengths of its direction, and shares of the second and third corner.
struct Crossing {
    double distance;
    double u;
    double v;

    bool isInside() const { return u >= 0.0 && v >= 0.0 && u + v <= 1.0; }
};

/// False for a ray along the plane.
bool cross(const KyRayd& ray, const KyVec3d& a, const KyVec3d& ab, const KyVec3d& ac, Crossing& crossing) {
    const KyVec3d p = ray.direction.cross(ac);
    const double determinant = ab.dot(p);
    if (determinant == 0.0)
        return false;
    const KyVec3d toOrigin = ray.origin - a;
    const KyVec3d q = toOrigin.cross(ab);
    crossing = {ac.dot(q) / determinant, toOrigin.dot(p) / determinant, ray.direction.dot(q) / determinant};
    return true;
}

KyVec2d getTexCoord(const KyMeshData& data, std::size_t firstIndex, const Crossing& crossing) {
    const auto corner = [&data, firstIndex](std::size_t i) {
        return toVector(data.vertices[data.indices[firstIndex + i]].texCoord);
    };
    return corner(0) * (1.0 - crossing.u - crossing.v) + corner(1) * crossing.u + corner(2) * crossing.v;
}

} // namespace

void KyMesh::initializeType() {
    if (msType)
        return;
    msType = KyTypeBuilder<KyMesh>("KyMesh", KyObject::getType())
                 .factory()
                 .attribute("NbVertices", &KyMesh::getNbVertices)
                 .attribute("NbPrimitives", &KyMesh::getNbPrimitives)
                 .attribute("BoundingVolume", &KyMesh::getBoundingVolume)
                 .method("computeNormals", &KyMesh::computeNormals)
                 .build();
}

void KyMesh::finalizeType() {
    KyType::remove(msType);
}

const KyType* KyMesh::getType() {
    if (!msType)
        initializeType();
    return msType;
}

const KyType* KyMesh::getObjectType() const {
    return getType();
}

KyMesh* KyMesh::cast(KyObject* object) {
    return kyCast<KyMesh>(object);
}

KyObject* KyMesh::factory() {
    return new KyMesh;
}

KyMesh::KyMesh()
    : mBuffers(std::make_unique<KyMeshBuffers>()) {}

KyMesh::KyMesh(KyMeshData data)
    : KyMesh() {
    setData(std::move(data));
}

KyMesh::~KyMesh() = default;

KyMesh* KyMesh::clone() const {
    return new KyMesh(mData);
}

unsigned KyMesh::getNbPrimitives() const {
    return static_cast<unsigned>(mData.indices.size()) / kyGetPrimitiveSize(mData.primitive);
}

bool KyMesh::setData(KyMeshData data) {
    if (!isConsistent(data))
        return false;
    mData = std::move(data);
    update();
    return true;
}

void KyMesh::update() {
    mBoundingVolume.setNull();
    if (!mData.vertices.empty()) {
        KyVec3d low = toVector(mData.vertices.front().position), high = low;
        for (const KyVertex& vertex : mData.vertices)
            for (int i = 0; i < 3; ++i) {
                const double number = static_cast<double>(vertex.position[static_cast<std::size_t>(i)]);
                low[i] = std::min(low[i], number);
                high[i] = std::max(high[i], number);
            }
        mBoundingVolume.setMinMax(low, high);
    }
    mBuffers->isStale = true;
    notifyModified("Data");
}

void KyMesh::computeNormals() {
    if (mData.primitive != KyPrimitive::eTriangles)
        return;
    std::vector<KyVec3d> sums(mData.vertices.size());
    const auto& indices = mData.indices;
    for (std::size_t i = 0; i + 2 < indices.size(); i += 3) {
        const KyVec3d a = toVector(mData.vertices[indices[i]].position);
        const KyVec3d normal = (toVector(mData.vertices[indices[i + 1]].position) - a)
                                   .cross(toVector(mData.vertices[indices[i + 2]].position) - a);
        for (std::size_t j = 0; j < 3; ++j)
            sums[indices[i + j]] += normal;
    }
    for (std::size_t i = 0; i < sums.size(); ++i) {
        if (!sums[i].normalize())
            sums[i] = KyVec3d(0, 1, 0);
        mData.vertices[i].normal = {static_cast<float>(sums[i].x), static_cast<float>(sums[i].y),
                                    static_cast<float>(sums[i].z)};
    }
    update();
}

bool KyMesh::intersect(const KyRayd& ray, KySurfaceHit& hit) const {
    if (mData.primitive != KyPrimitive::eTriangles)
        return false;
    bool isHit = false;
    Crossing nearest{};
    const auto& indices = mData.indices;
    for (std::size_t i = 0; i + 2 < indices.size(); i += 3) {
        const KyVec3d a = toVector(mData.vertices[indices[i]].position);
        const KyVec3d ab = toVector(mData.vertices[indices[i + 1]].position) - a;
        const KyVec3d ac = toVector(mData.vertices[indices[i + 2]].position) - a;
        Crossing found{};
        if (!cross(ray, a, ab, ac, found) || !found.isInside() ||
            !(found.distance >= 0.0 && found.distance <= hit.distance))
            continue;
        isHit = true;
        nearest = found;
        hit.distance = found.distance;
        hit.normal = ab.cross(ac);
        hit.triangle = static_cast<unsigned>(i / 3);
    }
    if (!isHit)
        return false;
    if (hit.normal.dot(ray.direction) > 0.0)
        hit.normal = -hit.normal;
    hit.normal.normalize();
    hit.hasTexCoord = true;
    hit.texCoord = getTexCoord(mData, hit.triangle * std::size_t{3}, nearest);
    return true;
}

bool KyMesh::projectToTriangle(const KyRayd& ray, unsigned triangle, KyVec2d& texCoord) const {
    if (mData.primitive != KyPrimitive::eTriangles || triangle >= getNbPrimitives())
        return false;
    const std::size_t first = triangle * std::size_t{3};
    const auto corner = [this, first](std::size_t i) {
        return toVector(mData.vertices[mData.indices[first + i]].position);
    };
    const KyVec3d a = corner(0);
    Crossing found{};
    if (!cross(ray, a, corner(1) - a, corner(2) - a, found) || found.distance < 0.0)
        return false;
    texCoord = getTexCoord(mData, first, found);
    return true;
}

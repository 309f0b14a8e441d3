// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyMesh.h"

#include "KyMeshDrawing_p.h"

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

/// Distance along the ray where it passes the triangle, negative when it does not.
double intersectTriangle(const KyRayd& ray, const KyVec3d& a, const KyVec3d& ab, const KyVec3d& ac) {
    const KyVec3d p = ray.direction.cross(ac);
    const double determinant = ab.dot(p);
    if (determinant == 0.0)
        return -1.0;
    const KyVec3d toOrigin = ray.origin - a;
    const double u = toOrigin.dot(p) / determinant;
    const KyVec3d q = toOrigin.cross(ab);
    const double v = ray.direction.dot(q) / determinant;
    const bool isInside = u >= 0.0 && v >= 0.0 && u + v <= 1.0;
    return isInside ? ac.dot(q) / determinant : -1.0;
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

bool KyMesh::intersect(const KyRayd& ray, double& distance, KyVec3d& normal) const {
    if (mData.primitive != KyPrimitive::eTriangles)
        return false;
    bool isHit = false;
    const auto& indices = mData.indices;
    for (std::size_t i = 0; i + 2 < indices.size(); i += 3) {
        const KyVec3d a = toVector(mData.vertices[indices[i]].position);
        const KyVec3d ab = toVector(mData.vertices[indices[i + 1]].position) - a;
        const KyVec3d ac = toVector(mData.vertices[indices[i + 2]].position) - a;
        const double found = intersectTriangle(ray, a, ab, ac);
        if (!(found >= 0.0 && found <= distance))
            continue;
        isHit = true;
        distance = found;
        normal = ab.cross(ac);
    }
    if (isHit && normal.dot(ray.direction) > 0.0)
        normal = -normal;
    if (isHit)
        normal.normalize();
    return isHit;
}

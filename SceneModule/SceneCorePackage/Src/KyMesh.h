// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KySceneExport.h"

#include "KyVertex.h"

#include "KyObject.h"
#include "KyReferenceCounted.h"
#include "KyVec2.h"
#include "KyVolume.h"

#include <memory>
#include <vector>

class KyMeshBuffers;
struct KySurfaceHit;
template <class T>
class KyRay;

/// Geometry that mesh nodes show; any number of them may share one. Reference counted. Its copy on the device is made
/// when it is first drawn.
///
/// ```
/// KyHolder<KyMesh> mesh(new KyMesh(KyMeshBuilder::makeBox(1, 1, 1)));
/// node->setMesh(mesh.get());
/// ```
class KYSCENE_EXPORT KyMesh : public KyObject, public KyReferenceCounted {
public:
    static const KyType* getType();
    static KyMesh* cast(KyObject* object);
    static KyObject* factory();
    static void initializeType();
    static void finalizeType();
    const KyType* getObjectType() const override;

    KyMesh();
    /// Takes the data over.
    explicit KyMesh(KyMeshData data);
    ~KyMesh() override;
    KyMesh* clone() const override;

    /// As it was given.
    const KyMeshData& getData() const { return mData; }
    /// Of the data.
    unsigned getNbVertices() const { return static_cast<unsigned>(mData.vertices.size()); }
    /// Triangles, lines or points.
    unsigned getNbPrimitives() const;
    /// In the mesh's own coordinates; null without vertices.
    const KyVolumed& getBoundingVolume() const { return mBoundingVolume; }
    /// The nearest triangle that the ray hits, from either side, within the hit's distance; the hit is set then, its
    /// normal of length 1 towards the ray's origin. Lines and points are never hit.
    bool intersect(const KyRay<double>& ray, KySurfaceHit& hit) const;
    /// Texture coordinates where the ray passes the plane of a triangle, outside of it too: they go on evenly. False,
    /// and nothing set, out of range, for a ray that does not come there and for what is no mesh of triangles.
    bool projectToTriangle(const KyRay<double>& ray, unsigned triangle, KyVec2d& texCoord) const;

    /// False, and nothing changed, when an index points past the vertices, the indices do not come in whole primitives
    /// or a position is not finite.
    bool setData(KyMeshData data);
    /// Normals from the faces, weighted by their areas; for meshes that come without.
    void computeNormals();

private:
    friend class KyMeshDrawing;

    void update();

    KyMeshData mData;
    KyVolumed mBoundingVolume;
    std::unique_ptr<KyMeshBuffers> mBuffers;

    static const KyType* msType;
};

/// How many indices make one primitive.
constexpr unsigned kyGetPrimitiveSize(KyPrimitive primitive) {
    return 3u - static_cast<unsigned>(primitive);
}

// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyMesh.h"
#include "KyMeshBuilder.h"
#include "KyNodeHit.h"

#include "KyRay.h"

#include <gtest/gtest.h>

#include <functional>
#include <limits>

namespace {

KyVec3d getPosition(const KyMeshData& data, std::uint32_t index) {
    const auto& p = data.vertices[index].position;
    return KyVec3d(static_cast<double>(p[0]), static_cast<double>(p[1]), static_cast<double>(p[2]));
}

struct Shape {
    const char* name;
    KyMeshData data;
    double volume;
};

class KyMeshBuilderTest : public testing::TestWithParam<Shape> {};

TEST_P(KyMeshBuilderTest, ItIsClosedOfTheRightVolumeAndItsNormalsPointWhereTheFacesDo) {
    const KyMeshData& data = GetParam().data;
    double volume = 0.0;
    for (std::size_t i = 0; i < data.indices.size(); i += 3) {
        const KyVec3d a = getPosition(data, data.indices[i]);
        const KyVec3d b = getPosition(data, data.indices[i + 1]);
        const KyVec3d c = getPosition(data, data.indices[i + 2]);
        volume += a.dot(b.cross(c)) / 6.0;
        const auto& n = data.vertices[data.indices[i]].normal;
        const KyVec3d normal(static_cast<double>(n[0]), static_cast<double>(n[1]), static_cast<double>(n[2]));
        EXPECT_NEAR(normal.length(), 1.0, 1e-5);
        EXPECT_GT(normal.dot((b - a).cross(c - a)), 0.0);
    }
    EXPECT_NEAR(volume, GetParam().volume, 0.01 * GetParam().volume);
}

constexpr double cPi = 3.14159265358979323846;

INSTANTIATE_TEST_SUITE_P(Shapes, KyMeshBuilderTest,
                         testing::Values(Shape{"Box", KyMeshBuilder::makeBox(1, 2, 3), 6.0},
                                         Shape{"Sphere", KyMeshBuilder::makeSphere(2, 96), 32.0 / 3.0 * cPi},
                                         Shape{"Cylinder", KyMeshBuilder::makeCylinder(1, 3, 96), 3.0 * cPi},
                                         Shape{"Cone", KyMeshBuilder::makeCone(1, 3, 96), cPi},
                                         Shape{"Torus", KyMeshBuilder::makeTorus(2, 0.5, 128), cPi* cPi}),
                         [](const auto& test) { return test.param.name; });

TEST(KyMeshTest, SegmentsAreLimited) {
    EXPECT_GE(KyMeshBuilder::makeSphere(1, -5).indices.size(), 6u);
    EXPECT_LT(KyMeshBuilder::makeCone(1, 1, std::numeric_limits<int>::max()).indices.size(), 100000u);
}

TEST(KyMeshTest, InconsistentDataIsRefusedAndNothingChanges) {
    KyMesh mesh(KyMeshBuilder::makeBox(1, 1, 1));
    const std::function<void(KyMeshData&)> cFaults[] = {
        [](KyMeshData& data) { data.indices[5] = 24; },
        [](KyMeshData& data) { data.indices.pop_back(); },
        [](KyMeshData& data) { data.vertices[3].position[1] = std::numeric_limits<float>::quiet_NaN(); },
        [](KyMeshData& data) { data.primitive = KyPrimitive::eNbPrimitives; },
    };
    for (const auto& fault : cFaults) {
        KyMeshData data = mesh.getData();
        fault(data);
        EXPECT_FALSE(mesh.setData(data));
        EXPECT_EQ(mesh.getNbPrimitives(), 12u);
    }
}

TEST(KyMeshTest, ARayIsMetFromBothSidesWithinItsDistance) {
    const KyMesh mesh(KyMeshBuilder::makePlane(2, 2));
    const auto intersect = [&mesh](double height, double distance) {
        KySurfaceHit hit;
        hit.distance = distance;
        const bool isHit = mesh.intersect(KyRayd(KyVec3d(0.2, height, 0.1), KyVec3d(0, -height, 0)), hit);
        EXPECT_EQ(isHit, hit.hasTexCoord);
        return hit;
    };
    for (const double side : {1.0, -1.0}) {
        const KySurfaceHit hit = intersect(3 * side, 10.0);
        EXPECT_NEAR(hit.distance, 1.0, 1e-12);
        EXPECT_EQ(hit.normal, KyVec3d(0, side, 0));
        EXPECT_LT((hit.texCoord - KyVec2d(0.6, 0.45)).length(), 1e-6) << hit.texCoord;
    }
    EXPECT_FALSE(intersect(3, 0.9).hasTexCoord);
}

} // namespace

// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT

#include "KyPlane.h"

#include "KyMathNear.h"

namespace {

/// x + 2y + 2z = 6: two units from the origin.
const KyPlaned cSlanted(KyVec3d(1, 2, 2), 6.0);

} // namespace

TEST(KyPlaneTest, DistancesAreSignedAndProjectionFindsTheNearestPoint) {
    EXPECT_EQ(KyPlaned(KyVec3d(2, 1, 1), KyVec3d(1, 2, 2)), cSlanted);
    EXPECT_TRUE(isNear(cSlanted.projectPoint(KyVec3d()), KyVec3d(2, 4, 4) / 3.0));
    EXPECT_NEAR(cSlanted.getDistanceTo(KyVec3d()), -2.0, 1e-15);
}

TEST(KyPlaneTest, RaysMeetWhatLiesBeforeThem) {
    const KyVec3d untouched(9, 9, 9);
    const std::pair<KyRayd, KyVec3d> rows[] = {{KyRayd(KyVec3d(1, 1, 5), KyVec3d(0, 0, -2)), KyVec3d(1, 1, 0)},
                                               {KyRayd(KyVec3d(0, 0, -5), KyVec3d(1, 0, 1)), KyVec3d(5, 0, 0)},
                                               {KyRayd(KyVec3d(1, 1, 0), KyVec3d(0, 0, 1)), KyVec3d(1, 1, 0)},
                                               {KyRayd(KyVec3d(1, 1, 5), KyVec3d(0, 0, 1)), untouched},
                                               {KyRayd(KyVec3d(1, 1, 0), KyVec3d(1, 0, 0)), untouched},
                                               {KyRayd(KyVec3d(1, 1, 5), KyVec3d()), untouched}};
    for (const auto& [ray, expected] : rows) {
        KyVec3d point = untouched;
        EXPECT_EQ(KyPlaned().intersectsRay(ray, point), expected != untouched) << ray;
        EXPECT_TRUE(isNear(point, expected)) << ray;
    }
}

TEST(KyPlaneTest, TwoPlanesShareALine) {
    KyRayd line;
    ASSERT_TRUE(cSlanted.intersectsPlane(KyPlaned(KyVec3d(1, -1, 3), 2.0), line));
    for (const double distance : {-3.0, 0.0, 5.0}) {
        EXPECT_NEAR(cSlanted.getDistanceTo(line.getPoint(distance)), 0.0, 1e-12);
        EXPECT_NEAR(KyPlaned(KyVec3d(1, -1, 3), 2.0).getDistanceTo(line.getPoint(distance)), 0.0, 1e-12);
    }
    EXPECT_NEAR(line.direction.dot(line.origin), 0.0, 1e-12);
    const KyRayd before = line;
    EXPECT_FALSE(cSlanted.intersectsPlane(KyPlaned(KyVec3d(-2, -4, -4), 1.0), line)) << "parallel";
    EXPECT_EQ(line, before);
}

TEST(KyPlaneTest, ANullNormalMeetsNothing) {
    const KyPlaned null(KyVec3d(), 1.0);
    KyVec3d point;
    KyRayd line;
    EXPECT_EQ(null.getDistanceTo(KyVec3d(1, 2, 3)), 0.0);
    EXPECT_EQ(null.projectPoint(KyVec3d(1, 2, 3)), KyVec3d(1, 2, 3));
    EXPECT_FALSE(null.intersectsRay(KyRayd(KyVec3d(), KyVec3d(1, 0, 0)), point));
    EXPECT_FALSE(null.intersectsPlane(cSlanted, line));
}

// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT

#include "KyPlane.h"

#include "KyMathNear.h"

namespace {

/// x + 2y + 2z = 6: two units from the origin.
const KyPlaned cSlanted(KyVec3d(1, 2, 2), 6.0);

} // namespace

TEST(KyPlaneTest, DistancesAreSigned) {
    EXPECT_NEAR(cSlanted.getDistanceTo(KyVec3d()), -2.0, 1e-15);
    EXPECT_NEAR(cSlanted.getDistanceTo(KyVec3d(2, 4, 4)), 4.0, 1e-15);
    EXPECT_EQ(KyPlaned().getDistanceTo(KyVec3d(7, 8, 3)), 3.0);
    EXPECT_NEAR(KyPlanei(KyVec3i(1, 2, 2), 6).getDistanceTo(KyVec3i()), -2.0, 1e-15);
}

TEST(KyPlaneTest, APointAndANormalGiveThePlaneThroughThePoint) {
    EXPECT_EQ(KyPlaned(KyVec3d(2, 1, 1), KyVec3d(1, 2, 2)), cSlanted);
    EXPECT_EQ(KyPlanei(KyVec3i(2, 1, 1), KyVec3i(1, 2, 2)), KyPlanei(KyVec3i(1, 2, 2), 6));
    EXPECT_EQ(KyPlanei(cSlanted), KyPlanei(KyVec3i(1, 2, 2), 6));
}

TEST(KyPlaneTest, ProjectionFindsTheNearestPoint) {
    EXPECT_TRUE(isNear(cSlanted.projectPoint(KyVec3d()), KyVec3d(2, 4, 4) / 3.0));
    EXPECT_TRUE(isNear(cSlanted.projectPoint(KyVec3d(2, 1, 1)), KyVec3d(2, 1, 1)));
    EXPECT_EQ(KyPlanei(KyVec3i(1, 2, 2), 6).projectPoint(KyVec3i()), KyVec3i(1, 1, 1));
}

TEST(KyPlaneTest, RaysMeetWhatLiesBeforeThem) {
    struct Row {
        KyVec3d mOrigin, mDirection;
        bool mMeets;
        KyVec3d mPoint;
    };
    const Row cRows[] = {{KyVec3d(1, 1, 5), KyVec3d(0, 0, -2), true, KyVec3d(1, 1, 0)},
                         {KyVec3d(0, 0, -5), KyVec3d(1, 0, 1), true, KyVec3d(5, 0, 0)},
                         {KyVec3d(1, 1, 0), KyVec3d(0, 0, 1), true, KyVec3d(1, 1, 0)},
                         {KyVec3d(1, 1, 5), KyVec3d(0, 0, 1), false, KyVec3d()},
                         {KyVec3d(1, 1, 5), KyVec3d(1, 0, 0), false, KyVec3d()},
                         {KyVec3d(1, 1, 0), KyVec3d(1, 0, 0), false, KyVec3d()},
                         {KyVec3d(1, 1, 5), KyVec3d(), false, KyVec3d()}};
    for (const Row& row : cRows) {
        KyVec3d point(9, 9, 9);
        const KyRayd ray(row.mOrigin, row.mDirection);
        EXPECT_EQ(KyPlaned().intersectsRay(ray, point), row.mMeets) << ray;
        EXPECT_TRUE(isNear(point, row.mMeets ? row.mPoint : KyVec3d(9, 9, 9))) << ray;
    }
}

TEST(KyPlaneTest, IntegerPlanesMeetRaysOfDoubles) {
    KyVec3d point;
    EXPECT_TRUE(KyPlanei(KyVec3i(0, 0, 2), 1).intersectsRay(KyRayd(KyVec3d(0.5, 0, 3), KyVec3d(0, 0, -1)), point));
    EXPECT_EQ(point, KyVec3d(0.5, 0, 0.5));
}

TEST(KyPlaneTest, TwoPlanesShareALine) {
    KyRayd line;
    ASSERT_TRUE(KyPlaned(KyVec3d(2, 0, 0), 6.0).intersectsPlane(KyPlaned(KyVec3d(0, 1, 0), -4.0), line));
    EXPECT_TRUE(isNear(line.origin, KyVec3d(3, -4, 0)));
    EXPECT_TRUE(isNear(line.direction, KyVec3d(0, 0, 1)));
    ASSERT_TRUE(cSlanted.intersectsPlane(KyPlaned(KyVec3d(1, -1, 3), 2.0), line));
    for (const double distance : {-3.0, 0.0, 5.0}) {
        EXPECT_NEAR(cSlanted.getDistanceTo(line.getPoint(distance)), 0.0, 1e-12);
        EXPECT_NEAR(KyPlaned(KyVec3d(1, -1, 3), 2.0).getDistanceTo(line.getPoint(distance)), 0.0, 1e-12);
    }
    EXPECT_NEAR(line.direction.dot(line.origin), 0.0, 1e-12);
}

TEST(KyPlaneTest, ParallelPlanesShareNone) {
    KyRayd line(KyVec3d(1, 2, 3), KyVec3d(4, 5, 6));
    EXPECT_FALSE(cSlanted.intersectsPlane(KyPlaned(KyVec3d(-2, -4, -4), 1.0), line));
    EXPECT_FALSE(cSlanted.intersectsPlane(cSlanted, line));
    EXPECT_EQ(line, KyRayd(KyVec3d(1, 2, 3), KyVec3d(4, 5, 6)));
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

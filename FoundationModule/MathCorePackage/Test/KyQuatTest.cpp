// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT

#include "KyMathNear.h"

namespace {

constexpr double cPi = std::numbers::pi;
const KyVec3d cX(1, 0, 0), cY(0, 1, 0), cZ(0, 0, 1);
const KyQuatd cZero(0, 0, 0, 0);

} // namespace

TEST(KyQuatTest, RotationsAreRightHanded) {
    EXPECT_TRUE(isNear(KyQuatd(cZ, cPi / 2).rotate(cX), cY));
    EXPECT_TRUE(isNear(KyQuatd(cX, cPi / 2).rotate(cY), cZ));
    EXPECT_TRUE(isNear(KyQuatd(cY, cPi / 2).rotate(cZ), cX));
    const KyQuatd quat(KyVec3d(2, 3, 6), 1.25), longer(quat.x * 3, quat.y * 3, quat.z * 3, quat.w * 3);
    EXPECT_NEAR(quat.angle(), 1.25, 1e-15);
    EXPECT_TRUE(isNear(quat.axis(), KyVec3d(2, 3, 6) / 7.0));
    EXPECT_TRUE(isNear(longer.rotate(cX), quat.rotate(cX))) << "whatever the length";
    EXPECT_TRUE(isNear(longer.getInverse().rotate(longer.rotate(cX)), cX));
}

TEST(KyQuatTest, TheRightOperandActsFirst) {
    EXPECT_EQ(KyQuatd(1, 2, 3, 4) * KyQuatd(5, 6, 7, 8), KyQuatd(24, 48, 48, -6));
}

TEST(KyQuatTest, NullVectorsAndQuaternionsGiveNoNaN) {
    EXPECT_EQ(KyQuatd(KyVec3d(), 1.0), KyQuatd());
    EXPECT_EQ(cZero.rotate(cX), cX);
    EXPECT_EQ(cZero.getInverse(), KyQuatd());
    EXPECT_EQ(cZero.axis(), cZ);
    EXPECT_EQ(cZero.angle(), 0.0);
    EXPECT_EQ(cZero.getEulerAngles(), KyVec3d());
    EXPECT_EQ(cZero.getMatrix(), KyMat4d());
    EXPECT_EQ(cZero.slerp(cZero, 0.5), KyQuatd());
    KyQuatd quat(cX, 0.5);
    const KyQuatd before = quat;
    quat.setFrontDirectionAndTwist(KyVec3d(), 1.0);
    EXPECT_EQ(quat, before);
}

TEST(KyQuatTest, EulerAnglesTurnAboutYThenXThenZAndComeBack) {
    EXPECT_TRUE(isSameRotation(KyQuatd::fromEuler(KyVec3d(0.3, -0.5, 1.1)),
                               KyQuatd(cY, 0.3) * KyQuatd(cX, -0.5) * KyQuatd(cZ, 1.1)));
    for (const double a : {-3.0, -1.0, 0.0, 0.5, 3.1})
        for (const double b : {-1.5, -0.3, 0.0, 0.7, 1.5})
            for (const double c : {-3.1, -0.2, 0.0, 1.0, 3.0})
                EXPECT_TRUE(isNear(KyQuatd::fromEuler(KyVec3d(a, b, c)).toEuler(), KyVec3d(a, b, c)));
}

TEST(KyQuatTest, ARotationAboutZGivesItsExactAngle) {
    for (const double c : {-cPi, -3.0, -cPi / 2, -1e-9, 0.0, 1e-9, 0.5, cPi / 2, 3.0, cPi}) {
        EXPECT_TRUE(isNear(KyQuatd(cZ, c).toEuler(), KyVec3d(0, 0, c), 1e-15));
        const KyVec3d same = (-KyQuatd(cZ, c)).toEuler();
        EXPECT_TRUE(isNear(KyVec3d(same.x, same.y, std::remainder(same.z - c, 2 * cPi)), KyVec3d(), 1e-15));
    }
}

TEST(KyQuatTest, LookingStraightUpOrDownLeavesTheLastAngleZero) {
    for (const double b : {-cPi / 2, cPi / 2}) {
        const KyQuatd quat = KyQuatd::fromEuler(KyVec3d(0.4, b, 0.3));
        const KyVec3d angles = quat.getEulerAngles();
        EXPECT_EQ(angles.z, 0.0);
        EXPECT_NEAR(angles.y, b, 1e-7);
        EXPECT_TRUE(isSameRotation(KyQuatd::fromEuler(angles), quat, 1e-7));
    }
}

TEST(KyQuatTest, FrontAndTwistKeepTheHorizonLevel) {
    for (const KyVec3d& direction : {KyVec3d(1, 2, 3), KyVec3d(-1, 0, 0), KyVec3d(0, 0, 5), KyVec3d(0, 3, 0), -cY}) {
        KyQuatd quat;
        quat.setFrontDirectionAndTwist(direction, 0.0);
        EXPECT_TRUE(isNear(quat.frontDirection(), direction / direction.length()));
        EXPECT_NEAR(quat.rotate(cX).y, 0.0, 1e-15);
        EXPECT_GE(quat.rotate(cY).y, -1e-15);
        KyQuatd twisted;
        twisted.setFrontDirectionAndTwist(direction, 0.7);
        EXPECT_TRUE(isSameRotation(twisted, KyQuatd(direction, 0.7) * quat));
    }
}

TEST(KyQuatTest, SlerpGoesEvenlyAlongTheShorterWay) {
    const KyQuatd from(cZ, 0.2), to(cZ, 1.4);
    EXPECT_TRUE(isSameRotation(from.slerp(to, 0.25), KyQuatd(cZ, 0.5)));
    EXPECT_TRUE(isSameRotation(from.slerp(-to, 0.25), KyQuatd(cZ, 0.5)));
    EXPECT_TRUE(isSameRotation(from.slerp(KyQuatd(cZ, 0.2 + 1e-10), 0.5), from, 1e-9));
    EXPECT_TRUE(isSameRotation(KyQuatd().slerp(KyQuatd(cX, cPi), 0.5), KyQuatd(cX, cPi / 2)));
}

TEST(KyQuatTest, MatricesOfEveryRotationComeBack) {
    for (const KyVec3d& axis : {cX, cY, cZ, KyVec3d(1, 1, 1), KyVec3d(-1, 2, -3)})
        for (const double angle : {0.0, 0.5, cPi / 2, 3.0, cPi, 4.0}) {
            const KyMat4d matrix = KyQuatd(axis, angle).getMatrix();
            const KyQuatd back = KyQuatd::fromAxes(matrix.getColumn(0), matrix.getColumn(1), matrix.getColumn(2));
            EXPECT_TRUE(isSameRotation(back, KyQuatd(axis, angle)));
            EXPECT_GE(back.w, 0.0);
        }
}

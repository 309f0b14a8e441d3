// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT

#include "KyMathNear.h"

namespace {

constexpr double cPi = std::numbers::pi;
const KyVec3d cX(1, 0, 0), cY(0, 1, 0), cZ(0, 0, 1);
const KyQuatd cZero(0, 0, 0, 0);

} // namespace

TEST(KyQuatTest, TheDefaultAndNullAreTheIdentity) {
    KyQuatf quat(1, 2, 3, 4);
    quat.setNull();
    EXPECT_EQ(quat, KyQuatf(0, 0, 0, 1));
    EXPECT_EQ(KyQuatf(), quat);
    EXPECT_EQ(KyQuatd().rotate(KyVec3d(1, 2, 3)), KyVec3d(1, 2, 3));
}

TEST(KyQuatTest, RotationsAreRightHanded) {
    EXPECT_TRUE(isNear(KyQuatd(cZ, cPi / 2).rotate(cX), cY));
    EXPECT_TRUE(isNear(KyQuatd(cX, cPi / 2).rotate(cY), cZ));
    EXPECT_TRUE(isNear(KyQuatd(cY, cPi / 2).rotate(cZ), cX));
}

TEST(KyQuatTest, TheRightOperandActsFirst) {
    const KyQuatd aboutZ(cZ, cPi / 2), aboutX(cX, cPi / 2);
    EXPECT_TRUE(isNear((aboutX * aboutZ).rotate(cX), cZ));
    EXPECT_TRUE(isNear((aboutZ * aboutX).rotate(cX), cY));
    EXPECT_EQ(KyQuatd(1, 2, 3, 4) * KyQuatd(5, 6, 7, 8), KyQuatd(24, 48, 48, -6));
}

TEST(KyQuatTest, AxisAndAngleComeBack) {
    const KyQuatd quat(KyVec3d(2, 3, 6), 1.25);
    EXPECT_NEAR(quat.angle(), 1.25, 1e-15);
    EXPECT_TRUE(isNear(quat.axis(), KyVec3d(2, 3, 6) / 7.0));
    EXPECT_NEAR(quat.length(), 1.0, 1e-15);
    EXPECT_EQ(KyQuatd::fromAxisAngle(KyVec3d(2, 3, 6), 1.25), quat);
    EXPECT_EQ(KyQuatd().angle(), 0.0);
    EXPECT_EQ(KyQuatd().axis(), cZ);
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
    KyQuatd zero = cZero;
    EXPECT_FALSE(zero.normalize());
    EXPECT_EQ(zero, cZero);
    KyQuatd quat(cX, 0.5);
    const KyQuatd before = quat;
    quat.setFrontDirectionAndTwist(KyVec3d(), 1.0);
    EXPECT_EQ(quat, before);
}

TEST(KyQuatTest, RotatingIgnoresTheLength) {
    const KyQuatd quat(KyVec3d(1, 2, 3), 0.8);
    const KyQuatd longer(quat.x * 3, quat.y * 3, quat.z * 3, quat.w * 3);
    EXPECT_TRUE(isNear(longer.rotate(KyVec3d(4, 5, 6)), quat.rotate(KyVec3d(4, 5, 6))));
    EXPECT_TRUE(isNear((longer * longer.getInverse()).rotate(cX), cX));
}

TEST(KyQuatTest, TheInverseRotatesBack) {
    const KyQuatd quat(KyVec3d(1, -2, 3), 2.5);
    EXPECT_TRUE(isNear(quat.getInverse().rotate(quat.rotate(KyVec3d(4, 5, 6))), KyVec3d(4, 5, 6)));
}

TEST(KyQuatTest, EulerAnglesFollowTheGivenFormula) {
    const double a = 0.3, b = -0.5, c = 1.1;
    const double sa = std::sin(a / 2), ca = std::cos(a / 2), sb = std::sin(b / 2), cb = std::cos(b / 2);
    const double sc = std::sin(c / 2), cc = std::cos(c / 2);
    const KyQuatd expected(sb * ca * cc + cb * sa * sc, cb * sa * cc - sb * ca * sc, cb * ca * sc - sb * sa * cc,
                           cb * ca * cc + sb * sa * sc);
    EXPECT_EQ(KyQuatd::fromEuler(KyVec3d(a, b, c)), expected);
    EXPECT_TRUE(isSameRotation(expected, KyQuatd(cY, a) * KyQuatd(cX, b) * KyQuatd(cZ, c)));
}

TEST(KyQuatTest, EulerAnglesComeBack) {
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

TEST(KyQuatTest, FrontLooksAlongMinusZ) {
    EXPECT_EQ(KyQuatd().frontDirection(), -cZ);
    EXPECT_TRUE(isNear(KyQuatd(cY, cPi / 2).frontDirection(), -cX));
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
    EXPECT_TRUE(isSameRotation(from.slerp(to, 0.0), from));
    EXPECT_TRUE(isSameRotation(from.slerp(to, 1.0), to));
    EXPECT_TRUE(isSameRotation(from.slerp(to, 0.25), KyQuatd(cZ, 0.5)));
    EXPECT_TRUE(isSameRotation(from.slerp(-to, 0.25), KyQuatd(cZ, 0.5)));
    EXPECT_TRUE(isSameRotation(from.slerp(KyQuatd(cZ, 0.2 + 1e-10), 0.5), from, 1e-9));
    EXPECT_TRUE(isSameRotation(KyQuatd().slerp(KyQuatd(cX, cPi), 0.5), KyQuatd(cX, cPi / 2)));
}

TEST(KyQuatTest, NormalizingMakesTheLengthOne) {
    KyQuatf quat(0, 3, 0, 4);
    EXPECT_TRUE(quat.normalize());
    EXPECT_EQ(quat, KyQuatf(0, 0.6f, 0, 0.8f));
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

TEST(KyQuatTest, ArithmeticWorksComponentByComponent) {
    const KyQuatd a(1, 2, 3, 4), b(5, 7, 9, 11);
    EXPECT_EQ(b - a, KyQuatd(4, 5, 6, 7));
    EXPECT_EQ(b + a, KyQuatd(6, 9, 12, 15));
    EXPECT_EQ(-a, KyQuatd(-1, -2, -3, -4));
    EXPECT_FALSE(a == -a);
}

// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT

#include "KyMathNear.h"

#include <array>

namespace {

constexpr double cPi = std::numbers::pi;
const KyMat4d cAnything = KyMat4d::fromRows({2, 1, 0, 5, -1, 3, 4, 6, 0, 2, 1, 7, 0, 0, 0, 1});
const KyMat4d cProjective = KyMat4d::fromRows({2, 1, 0, 5, -1, 3, 4, 6, 0, 2, 1, 7, 1, 0, 2, 3});

KyMat4d compose(const KyVec3d& translation, const KyQuatd& rotation, const KyVec3d& scale) {
    return KyMat4d(rotation, translation) * KyMat4d::fromScale(scale);
}

/// A matrix of the plane: a point (x, y) goes to (m11 x + m21 y, m12 x + m22 y).
KyMat4d fromPlane(double m11, double m12, double m21, double m22) {
    return KyMat4d::fromRows({m11, m21, 0, 0, m12, m22, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1});
}

} // namespace

TEST(KyMat4Test, AccessOutsideReadsZeroAndWritesNothing) {
    KyMat4d matrix = cAnything;
    for (const int outside : {-1, 4, 1000000}) {
        matrix.set(outside, 0, 9.0);
        matrix.set(0, outside, 9.0);
        matrix.setColumn(outside, KyVec3d(9, 9, 9));
        EXPECT_EQ(matrix.get(0, outside), 0.0);
        EXPECT_EQ(matrix.getColumn(outside), KyVec3d());
    }
    EXPECT_EQ(matrix, cAnything);
}

TEST(KyMat4Test, TheRightOperandActsFirst) {
    const KyMat4d move = KyMat4d::fromTranslation(KyVec3d(1, 2, 3)), stretch = KyMat4d::fromScale(KyVec3d(2, 3, 4));
    EXPECT_EQ((move * stretch) * KyVec3d(1, 1, 1), KyVec3d(3, 5, 7));
    EXPECT_EQ((move * stretch).transformVector(KyVec3d(1, 1, 1)), KyVec3d(2, 3, 4)) << "without the translation";
    EXPECT_EQ((cAnything * cProjective).toString(), "8 5 14 31 1 16 28 59 5 8 23 40 1 0 2 3");
    EXPECT_EQ(move.data()[12], 1.0) << "stored column by column";
}

TEST(KyMat4Test, TheInverseUndoesTheMatrix) {
    const KyMat4d tiny = compose(KyVec3d(1e6, 0, 0), KyQuatd(KyVec3d(1, 2, 3), 1.0), KyVec3d(1e-6, 1e-6, 1e-6));
    for (const KyMat4d& matrix : {cAnything, cProjective, KyMat4d::perspective(1.0, 1.5, 0.001, 1e6)})
        EXPECT_TRUE(isNear(matrix * matrix.getInverse(), KyMat4d(), 1e-9));
    EXPECT_TRUE(isNear(tiny.getInverse() * (tiny * KyVec3d(1, 2, 3)), KyVec3d(1, 2, 3), 1e-3));
}

TEST(KyMat4Test, SingularMatricesAreNotInverted) {
    const KyMat4d counting = KyMat4d::fromRows({1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16});
    const KyMat4d nearly = KyMat4d::fromRows({0.1, 0.7, 0, 0, 0.3, 2.1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1});
    KyMat4d broken;
    broken.set(0, 0, std::nan(""));
    for (const KyMat4d& matrix : {counting, nearly, broken}) {
        KyMat4d inverted = matrix;
        EXPECT_FALSE(inverted.invert());
        EXPECT_EQ(inverted.toString(17), matrix.toString(17));
    }
    EXPECT_EQ(counting.getInverse(), KyMat4d());
}

TEST(KyMat4Test, DecompositionFindsTheParts) {
    const KyVec3d translation(1, -2, 3);
    const KyQuatd rotation(KyVec3d(1, 2, -1), 2.0);
    for (const KyVec3d& scale : {KyVec3d(2, 3, 4), KyVec3d(2, -3, 4), KyVec3d(1e-3, 1e3, 1), KyVec3d(2, 0, 0)}) {
        KyVec3d foundTranslation, foundScale;
        KyQuatd foundRotation;
        compose(translation, rotation, scale).decompose(foundTranslation, foundRotation, foundScale);
        EXPECT_EQ(foundTranslation, translation);
        EXPECT_TRUE(scale.y == 0 || isSameRotation(foundRotation, rotation));
        EXPECT_TRUE(isNear(foundRotation.rotate(KyVec3d(1, 0, 0)), rotation.rotate(KyVec3d(1, 0, 0)), 1e-9));
        EXPECT_TRUE(isNear(foundScale, scale, 1e-9));
    }
}

TEST(KyMat4Test, DecompositionInThePlaneKeepsTheFirstAxis) {
    constexpr std::array<double, 4> cRows[] = {{0, 2, -2, 0},  {1, 0.5, -0.25, 2}, {-1, 0, 0, 1}, {1, 0, 0, -1},
                                               {-1, 0, 0, -1}, {0.3, -4, 5, 0.1},  {1, 1, 2, 2},  {3, 0, 0, 0}};
    KyVec3d translation, scale;
    KyQuatd rotation;
    for (const auto& [m11, m12, m21, m22] : cRows) {
        fromPlane(m11, m12, m21, m22).decompose(translation, rotation, scale);
        const double scaleX = std::hypot(m11, m12);
        EXPECT_NEAR(std::remainder(rotation.toEuler().z - std::atan2(m12, m11), 2 * cPi), 0.0, 1e-12);
        EXPECT_TRUE(isNear(scale, KyVec3d(scaleX, (m11 * m22 - m12 * m21) / scaleX, 1.0)));
    }
    fromPlane(0, 0, 3, 4).decompose(translation, rotation, scale);
    EXPECT_EQ(rotation, KyQuatd()) << "without a first axis";
    EXPECT_EQ(scale, KyVec3d(0, 5, 1));
}

TEST(KyMat4Test, ProjectionsFillTheCube) {
    const KyMat4d perspective = KyMat4d::perspective(cPi / 2, 2.0, 1.0, 10.0);
    EXPECT_TRUE(isNear(perspective * KyVec3d(2, 1, -1), KyVec3d(1, 1, -1)));
    EXPECT_TRUE(isNear(perspective * KyVec3d(-20, -10, -10), KyVec3d(-1, -1, 1)));
    const KyMat4d orthographic = KyMat4d::orthographic(4.0, 1.5, 1.0, 10.0);
    EXPECT_TRUE(isNear(orthographic * KyVec3d(3, 2, -1), KyVec3d(1, 1, -1)));
    EXPECT_TRUE(isNear(orthographic * KyVec3d(-3, -2, -10), KyVec3d(-1, -1, 1)));
}

TEST(KyMat4Test, ImpossibleProjectionsAreTheIdentity) {
    const double notANumber = std::nan("");
    for (const KyMat4d& matrix : {KyMat4d::perspective(cPi, 1, 1, 2), KyMat4d::perspective(1, 0, 1, 2),
                                  KyMat4d::perspective(1, 1, 0, 2), KyMat4d::perspective(notANumber, 1, 1, 2),
                                  KyMat4d::orthographic(0, 1, 1, 2), KyMat4d::orthographic(1, 1, 2, 2)})
        EXPECT_EQ(matrix, KyMat4d());
}

TEST(KyMat4Test, LookAtGivesTheFrameOfACameraWhereverItLooks) {
    const KyMat4d frame = KyMat4d::lookAt(KyVec3d(5, 0, 0), KyVec3d(), KyVec3d(0, 3, 0));
    EXPECT_TRUE(isNear(frame.getColumn(0), KyVec3d(0, 0, -1)));
    EXPECT_TRUE(isNear(frame.getColumn(1), KyVec3d(0, 1, 0)));
    EXPECT_EQ(frame.translation(), KyVec3d(5, 0, 0));
    for (const KyVec3d& up : {KyVec3d(0, 1, 0), KyVec3d()}) {
        const KyMat4d down = KyMat4d::lookAt(KyVec3d(0, 5, 0), KyVec3d(), up);
        EXPECT_TRUE(isNear(down.getColumn(2), KyVec3d(0, 1, 0)));
        EXPECT_NEAR(down.determinant(), 1.0, 1e-12);
    }
}

// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT

#include "KyMathNear.h"

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

TEST(KyMat4Test, TheDefaultIsTheIdentity) {
    KyMat4d matrix = cAnything;
    matrix.identity();
    EXPECT_EQ(matrix, KyMat4d());
    EXPECT_EQ(cAnything * KyMat4d(), cAnything);
    EXPECT_EQ(KyMat4d().transformPoint(KyVec3d(1, 2, 3)), KyVec3d(1, 2, 3));
}

TEST(KyMat4Test, NumbersAreStoredColumnByColumn) {
    const KyMat4d matrix = KyMat4d::fromRows({1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16});
    EXPECT_EQ(matrix.get(0, 3), 4.0);
    EXPECT_EQ(matrix.get(3, 0), 13.0);
    EXPECT_EQ(matrix.data()[1], 5.0);
    EXPECT_EQ(matrix.data()[12], 4.0);
    EXPECT_EQ(matrix.getColumn(1), KyVec3d(2, 6, 10));
    EXPECT_EQ(matrix.toString(), "1 2 3 4 5 6 7 8 9 10 11 12 13 14 15 16");
    KyMat4d transposed = KyMat4d::fromColumns({1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16});
    transposed.transpose();
    EXPECT_EQ(transposed, matrix);
}

TEST(KyMat4Test, AccessOutsideReadsZeroAndWritesNothing) {
    KyMat4d matrix = cAnything;
    for (const int outside : {-1, 4, 1000000}) {
        matrix.set(outside, 0, 9.0);
        matrix.set(0, outside, 9.0);
        matrix.setColumn(outside, KyVec3d(9, 9, 9));
        EXPECT_EQ(matrix.get(outside, 0), 0.0);
        EXPECT_EQ(matrix.get(0, outside), 0.0);
        EXPECT_EQ(matrix.getColumn(outside), KyVec3d());
    }
    EXPECT_EQ(matrix, cAnything);
    matrix.set(1, 2, 9.0);
    EXPECT_EQ(matrix.get(1, 2), 9.0);
}

TEST(KyMat4Test, TheRightOperandActsFirst) {
    const KyMat4d move = KyMat4d::fromTranslation(KyVec3d(1, 2, 3)), stretch = KyMat4d::fromScale(KyVec3d(2, 3, 4));
    EXPECT_EQ((move * stretch) * KyVec3d(1, 1, 1), KyVec3d(3, 5, 7));
    EXPECT_EQ((stretch * move) * KyVec3d(1, 1, 1), KyVec3d(4, 9, 16));
    EXPECT_EQ((cAnything * cProjective).toString(), "8 5 14 31 1 16 28 59 5 8 23 40 1 0 2 3");
}

TEST(KyMat4Test, DirectionsIgnoreTheTranslation) {
    const KyMat4d matrix = compose(KyVec3d(5, 6, 7), KyQuatd(KyVec3d(0, 0, 1), cPi / 2), KyVec3d(2, 2, 2));
    EXPECT_TRUE(isNear(matrix.transformVector(KyVec3d(1, 0, 0)), KyVec3d(0, 2, 0)));
    EXPECT_TRUE(isNear(matrix.transformPoint(KyVec3d(1, 0, 0)), KyVec3d(5, 8, 7)));
}

TEST(KyMat4Test, DeterminantsMultiply) {
    EXPECT_EQ(cAnything.determinant(), -9.0);
    EXPECT_EQ(cProjective.determinant(), -54.0);
    EXPECT_EQ((cAnything * cProjective).determinant(), 486.0);
    EXPECT_EQ(KyMat4f::fromScale(KyVec3f(2, 3, 4)).determinant(), 24.0f);
}

TEST(KyMat4Test, TheInverseUndoesTheMatrix) {
    const KyMat4d tiny = compose(KyVec3d(1e6, 0, 0), KyQuatd(KyVec3d(1, 2, 3), 1.0), KyVec3d(1e-6, 1e-6, 1e-6));
    for (const KyMat4d& matrix : {cAnything, cProjective, KyMat4d::perspective(1.0, 1.5, 0.001, 1e6)}) {
        EXPECT_TRUE(isNear(matrix * matrix.getInverse(), KyMat4d(), 1e-9));
        EXPECT_TRUE(isNear(matrix.getInverse() * matrix, KyMat4d(), 1e-9));
    }
    EXPECT_TRUE(isNear(tiny.getInverse() * (tiny * KyVec3d(1, 2, 3)), KyVec3d(1, 2, 3), 1e-3));
}

TEST(KyMat4Test, SingularMatricesAreNotInverted) {
    const KyMat4d counting = KyMat4d::fromRows({1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16});
    const KyMat4d nearly = KyMat4d::fromRows({0.1, 0.7, 0, 0, 0.3, 2.1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1});
    const KyMat4d flat = KyMat4d::fromScale(KyVec3d(1, 0, 1));
    KyMat4d broken;
    broken.set(0, 0, std::nan(""));
    for (const KyMat4d& matrix : {counting, nearly, flat, broken}) {
        KyMat4d inverted = matrix;
        EXPECT_FALSE(inverted.invert());
        EXPECT_EQ(inverted.toString(17), matrix.toString(17));
        EXPECT_EQ(matrix.getInverse(), KyMat4d());
    }
}

TEST(KyMat4Test, DecompositionFindsTheParts) {
    const KyVec3d translation(1, -2, 3);
    const KyQuatd rotation(KyVec3d(1, 2, -1), 2.0);
    for (const KyVec3d& scale : {KyVec3d(1, 1, 1), KyVec3d(2, 3, 4), KyVec3d(2, -3, 4), KyVec3d(1e-3, 1e3, 1)}) {
        KyVec3d foundTranslation, foundScale;
        KyQuatd foundRotation;
        compose(translation, rotation, scale).decompose(foundTranslation, foundRotation, foundScale);
        EXPECT_EQ(foundTranslation, translation);
        EXPECT_TRUE(isSameRotation(foundRotation, rotation));
        EXPECT_TRUE(isNear(foundScale, scale, 1e-9));
    }
    EXPECT_TRUE(isSameRotation(compose(translation, rotation, KyVec3d(2, 3, 4)).rotation(), rotation));
    EXPECT_EQ(compose(translation, rotation, KyVec3d(2, 3, 4)).translation(), translation);
}

TEST(KyMat4Test, DecompositionInThePlaneKeepsTheFirstAxis) {
    struct Row {
        double m11, m12, m21, m22;
    };
    constexpr Row cRows[] = {{1, 0, 0, 1},   {0, 2, -2, 0},     {1, 0.5, -0.25, 2}, {-1, 0, 0, 1}, {1, 0, 0, -1},
                             {-1, 0, 0, -1}, {0.3, -4, 5, 0.1}, {1, 1, 2, 2},       {3, 0, 0, 0}};
    for (const Row& row : cRows) {
        KyVec3d translation, scale;
        KyQuatd rotation;
        fromPlane(row.m11, row.m12, row.m21, row.m22).decompose(translation, rotation, scale);
        const double scaleX = std::hypot(row.m11, row.m12);
        EXPECT_NEAR(std::remainder(rotation.toEuler().z - std::atan2(row.m12, row.m11), 2 * cPi), 0.0, 1e-12);
        EXPECT_NEAR(scale.x, scaleX, 1e-12);
        EXPECT_NEAR(scale.y, (row.m11 * row.m22 - row.m12 * row.m21) / scaleX, 1e-12);
        EXPECT_NEAR(scale.z, 1.0, 1e-12);
    }
}

TEST(KyMat4Test, WithoutAFirstAxisThereIsNoRotation) {
    KyVec3d translation, scale;
    KyQuatd rotation(1, 2, 3, 4);
    fromPlane(0, 0, 3, 4).decompose(translation, rotation, scale);
    EXPECT_EQ(rotation, KyQuatd());
    EXPECT_EQ(scale, KyVec3d(0, 5, 1));
    KyMat4d::fromScale(KyVec3d()).decompose(translation, rotation, scale);
    EXPECT_EQ(rotation, KyQuatd());
    EXPECT_EQ(scale, KyVec3d());
}

TEST(KyMat4Test, FlatMatricesStillGiveARotation) {
    for (const KyVec3d& scale : {KyVec3d(2, 0, 0), KyVec3d(2, 0, 3), KyVec3d(2, 3, 0)}) {
        KyVec3d translation, foundScale;
        KyQuatd rotation;
        compose(KyVec3d(), KyQuatd(KyVec3d(1, 2, 3), 1.0), scale).decompose(translation, rotation, foundScale);
        EXPECT_NEAR(rotation.length(), 1.0, 1e-12);
        EXPECT_TRUE(isNear(foundScale, scale, 1e-12));
        EXPECT_TRUE(isNear(rotation.rotate(KyVec3d(1, 0, 0)), KyQuatd(KyVec3d(1, 2, 3), 1.0).rotate(KyVec3d(1, 0, 0))));
    }
}

TEST(KyMat4Test, PerspectiveFillsTheCube) {
    const KyMat4d projection = KyMat4d::perspective(cPi / 2, 2.0, 1.0, 10.0);
    EXPECT_TRUE(isNear(projection * KyVec3d(0, 0, -1), KyVec3d(0, 0, -1)));
    EXPECT_TRUE(isNear(projection * KyVec3d(0, 0, -10), KyVec3d(0, 0, 1)));
    EXPECT_TRUE(isNear(projection * KyVec3d(2, 1, -1), KyVec3d(1, 1, -1)));
    EXPECT_TRUE(isNear(projection * KyVec3d(-20, -10, -10), KyVec3d(-1, -1, 1)));
}

TEST(KyMat4Test, OrthographicFillsTheCube) {
    const KyMat4d projection = KyMat4d::orthographic(4.0, 1.5, 1.0, 10.0);
    EXPECT_TRUE(isNear(projection * KyVec3d(3, 2, -1), KyVec3d(1, 1, -1)));
    EXPECT_TRUE(isNear(projection * KyVec3d(-3, -2, -10), KyVec3d(-1, -1, 1)));
}

TEST(KyMat4Test, ImpossibleProjectionsAreTheIdentity) {
    const double notANumber = std::nan("");
    for (const KyMat4d& matrix :
         {KyMat4d::perspective(0, 1, 1, 2), KyMat4d::perspective(cPi, 1, 1, 2), KyMat4d::perspective(1, 0, 1, 2),
          KyMat4d::perspective(1, 1, 0, 2), KyMat4d::perspective(1, 1, 2, 2), KyMat4d::perspective(notANumber, 1, 1, 2),
          KyMat4d::orthographic(0, 1, 1, 2), KyMat4d::orthographic(1, -1, 1, 2), KyMat4d::orthographic(1, 1, 2, 2)})
        EXPECT_EQ(matrix, KyMat4d());
}

TEST(KyMat4Test, LookAtGivesTheFrameOfACamera) {
    const KyMat4d frame = KyMat4d::lookAt(KyVec3d(5, 0, 0), KyVec3d(), KyVec3d(0, 3, 0));
    EXPECT_TRUE(isNear(frame.getColumn(0), KyVec3d(0, 0, -1)));
    EXPECT_TRUE(isNear(frame.getColumn(1), KyVec3d(0, 1, 0)));
    EXPECT_TRUE(isNear(frame.getColumn(2), KyVec3d(1, 0, 0)));
    EXPECT_EQ(frame.translation(), KyVec3d(5, 0, 0));
}

TEST(KyMat4Test, LookAtCopesWithDegenerateDirections) {
    EXPECT_EQ(KyMat4d::lookAt(KyVec3d(1, 2, 3), KyVec3d(1, 2, 3), KyVec3d(0, 1, 0)),
              KyMat4d::fromTranslation(KyVec3d(1, 2, 3)));
    for (const KyVec3d& up : {KyVec3d(0, 1, 0), KyVec3d()}) {
        const KyMat4d frame = KyMat4d::lookAt(KyVec3d(0, 5, 0), KyVec3d(), up);
        EXPECT_TRUE(isNear(frame.getColumn(2), KyVec3d(0, 1, 0)));
        EXPECT_NEAR(frame.determinant(), 1.0, 1e-12);
    }
}

TEST(KyMat4Test, ElementTypesConvert) {
    EXPECT_EQ(KyMat4d(KyMat4f(cAnything)), cAnything);
}

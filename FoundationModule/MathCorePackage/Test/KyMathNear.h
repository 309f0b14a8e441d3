// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT

#pragma once

#include "KyMat4.h"

#include <gtest/gtest.h>

/// EXPECT_TRUE(isNear(a, b)): equal but for rounding, with both values in the message.
inline testing::AssertionResult isNear(const KyVec3d& actual, const KyVec3d& expected, double tolerance = 1e-12) {
    if ((actual - expected).length() <= tolerance)
        return testing::AssertionSuccess();
    return testing::AssertionFailure() << actual.toString(17) << " is not " << expected.toString(17);
}

/// q and -q are the same rotation.
inline testing::AssertionResult isSameRotation(const KyQuatd& actual, const KyQuatd& expected,
                                               double tolerance = 1e-12) {
    if ((actual - expected).length() <= tolerance || (actual + expected).length() <= tolerance)
        return testing::AssertionSuccess();
    return testing::AssertionFailure() << actual.toString(17) << " is not " << expected.toString(17);
}

inline testing::AssertionResult isNear(const KyMat4d& actual, const KyMat4d& expected, double tolerance = 1e-12) {
    for (int row = 0; row < 4; ++row)
        for (int column = 0; column < 4; ++column)
            if (!(std::abs(actual.get(row, column) - expected.get(row, column)) <= tolerance))
                return testing::AssertionFailure() << actual << " is not " << expected;
    return testing::AssertionSuccess();
}

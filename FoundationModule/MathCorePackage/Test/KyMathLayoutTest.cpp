// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT

#include "KyBox.h"
#include "KyColor.h"
#include "KyIntersectionPoint.h"
#include "KyPlane.h"
#include "KyWayPoint.h"

#include <gtest/gtest.h>
#include <sstream>

// Scripts bind every member of every variant, so every one has to compile; doubles are like floats.
template class KyVec2<int>;
template class KyVec2<float>;
template class KyVec3<int>;
template class KyVec3<float>;
template class KyQuat<float>;
template class KyMat4<float>;
template class KyRay<float>;
template class KyPlane<int>;
template class KyPlane<float>;
template class KyIntersectionPoint<float>;
template class KyWayPoint<float>;
template class KyRect<int>;
template class KyRect<float>;
template class KyVolume<int>;
template class KyVolume<float>;
template class KyBox<float>;

static_assert(sizeof(KyRectd) <= 48);

template <class V>
class KyMathLayoutTest : public testing::Test {};

using Values =
    testing::Types<KyVec2i, KyVec2f, KyVec2d, KyVec3i, KyVec3f, KyVec3d, KyQuatf, KyQuatd, KyMat4f, KyMat4d, KyRayf,
                   KyRayd, KyPlanei, KyPlanef, KyPlaned, KyIntersectionPointf, KyIntersectionPointd, KyWayPointf,
                   KyWayPointd, KyRecti, KyRectf, KyRectd, KyVolumei, KyVolumef, KyVolumed, KyBoxf, KyBoxd, KyColor>;
TYPED_TEST_SUITE(KyMathLayoutTest, Values);

TYPED_TEST(KyMathLayoutTest, ValuesAreCopiedAsBytesAndNeedNoSpecialAlignment) {
    static_assert(std::is_trivially_copyable_v<TypeParam>);
    EXPECT_LE(alignof(TypeParam), 8u);
}

TYPED_TEST(KyMathLayoutTest, AnyNumbersSurviveTheirText) {
    // The longest of these texts that the type can read is taken.
    constexpr const char* cNumbers[] = {"1 -2 3 -4 5 -6 7 -8 9 -10 11 -12 13 -14 15 -16",
                                        "1 -2 3 -4 5 -6 7 8 9 10",
                                        "1 -2 3 -4 5 -6 7",
                                        "-1 -2 -3 4 5 6",
                                        "1 -2 3 -4",
                                        "1 -2 3",
                                        "1 -2"};
    TypeParam value;
    const auto text = std::find_if(std::begin(cNumbers), std::end(cNumbers),
                                   [&value](const char* candidate) { return fromString(candidate, value); });
    ASSERT_NE(text, std::end(cNumbers));
    std::ostringstream stream;
    stream << value;
    EXPECT_EQ(stream.str(), *text);
    EXPECT_NE(value, TypeParam());
}

TYPED_TEST(KyMathLayoutTest, UnreadableTextLeavesTheValueAlone) {
    for (const char* text : {"", "x", "1", "1 2 x", "1 2 3 4 5 6 7 8", "1;2;3"}) {
        TypeParam value;
        EXPECT_FALSE(fromString(text, value)) << text;
        EXPECT_EQ(value, TypeParam()) << text;
        EXPECT_TRUE(fromString(TypeParam().toString(), value)) << value;
        EXPECT_EQ(value, TypeParam());
    }
}

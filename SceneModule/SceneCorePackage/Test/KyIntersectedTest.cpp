// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyIntersected.h"

#include <gtest/gtest.h>

#include <memory>

namespace {

class OwnIntersected : public KyIntersected {};

TEST(KyIntersectedTest, ANewRecordIsNotValid) {
    const std::unique_ptr<KyIntersected> record(KyIntersected::create());
    EXPECT_FALSE(record->isValid());
    EXPECT_EQ(record->getDistance(), 0.0);
}

TEST(KyIntersectedTest, ACreatorComesFromAFunctionAndMakesItsKind) {
    const KyIntersectedCreator creator(+[]() -> KyIntersected* { return new OwnIntersected; });
    const std::unique_ptr<KyIntersected> own(creator.make()), plain(KyIntersectedCreator().make());
    EXPECT_TRUE(dynamic_cast<OwnIntersected*>(own.get()));
    EXPECT_FALSE(dynamic_cast<OwnIntersected*>(plain.get()));
    EXPECT_EQ(creator.distanceLimit, std::numeric_limits<double>::max());
}

} // namespace

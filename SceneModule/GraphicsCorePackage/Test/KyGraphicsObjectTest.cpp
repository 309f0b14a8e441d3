// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyHolder.h"
#include "KyProgramSourceManager.h"
#include "KyTexture.h"

#include <gtest/gtest.h>

namespace {

class EndCounter : public KyHasSlots {
public:
    void onModified(KyObject*, KyObjectModificationType kind, const std::string&, int) {
        nbEnds += kind == eObjectEnded ? 1 : 0;
    }
    int nbEnds = 0;
};

TEST(KyGraphicsObjectTest, GivingTheLastReferenceBackDoesNotEndTheObjectYet) {
    EndCounter counter;
    KyTexture* texture = KyTexture::create();
    texture->connectModified(&counter, &EndCounter::onModified);
    texture->incrementReference();
    texture->incrementReference();
    texture->decrementReference();
    texture->deleteIfUnused();
    EXPECT_EQ(counter.nbEnds, 0);
    texture->decrementReference();
    EXPECT_EQ(counter.nbEnds, 0);
    texture->decrementReference();
    EXPECT_EQ(texture->getNbReferences(), 0u);
    texture->deleteIfUnused();
    EXPECT_EQ(counter.nbEnds, 1);
}

TEST(KyGraphicsObjectTest, AHolderEndsWhatNobodyElseHolds) {
    EndCounter counter;
    KyHolder<KyTexture> first(KyTexture::create());
    first->connectModified(&counter, &EndCounter::onModified);
    KyHolder<KyTexture> second = first;
    first.reset();
    EXPECT_EQ(counter.nbEnds, 0);
    second = KyHolder<KyTexture>();
    EXPECT_EQ(counter.nbEnds, 1);
}

TEST(KyProgramSourceManagerTest, ALabelFallsBackToTheDefaultOne) {
    KyProgramSourceManager& manager = KyProgramSourceManager::get();
    manager.setSource("Test_vp.glsl", "plain");
    manager.setSource("Test_vp.glsl", "special", "other");
    EXPECT_EQ(manager.getSource("Test_vp.glsl", "other"), "special");
    EXPECT_EQ(manager.getSource("Test_vp.glsl", "unknown"), "plain");
    EXPECT_TRUE(manager.removeSource("Test_vp.glsl", "other"));
    EXPECT_EQ(manager.getSource("Test_vp.glsl", "other"), "plain");
    EXPECT_TRUE(manager.removeSource("Test_vp.glsl"));
    EXPECT_FALSE(manager.removeSource("Test_vp.glsl"));
    EXPECT_EQ(manager.getSource("Test_vp.glsl"), "");
}

} // namespace

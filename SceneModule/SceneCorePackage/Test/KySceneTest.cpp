// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyHolder.h"
#include "KyLight.h"
#include "KyScene.h"

#include <gtest/gtest.h>

namespace {

TEST(KySceneTest, LightsAreThoseThatAreVisible) {
    const KyHolder<KyScene> scene(new KyScene);
    auto* group = new KyNode;
    auto* inGroup = new KyLight;
    auto* top = new KyLight;
    group->addChild(inGroup);
    scene->addChild(group);
    scene->addChild(top);
    EXPECT_EQ(scene->getLights(), (std::vector<KyLight*>{inGroup, top}));
    group->setVisible(false);
    EXPECT_EQ(scene->getLights(), std::vector<KyLight*>{top});
}

TEST(KySceneTest, ABackgroundIsOneColourOrTwo) {
    KyScene scene;
    const auto revision = scene.getRevision();
    ASSERT_TRUE(scene.getAttribute("Background")->setValue(scene, KyField(KyColor(1, 0, 0))));
    EXPECT_EQ(scene.getBackgroundTop(), KyColor(1, 0, 0));
    EXPECT_EQ(scene.getBackgroundBottom(), KyColor(1, 0, 0));
    EXPECT_NE(scene.getRevision(), revision);
}

} // namespace

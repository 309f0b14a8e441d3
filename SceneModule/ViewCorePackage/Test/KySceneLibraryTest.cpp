// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KySceneLibrary.h"

#include "KyHolder.h"
#include "KyMeshNode.h"

#include "KyFoundationLibrary.h"
#include "KyModuleManager.h"
#include "KyType.h"

#include <gtest/gtest.h>

namespace {

TEST(KySceneLibraryTest, TheModuleBringsAndTakesItsTypes) {
    KyFoundationLibrary::registerModule();
    KySceneLibrary::registerModule();
    KySceneLibrary::registerModule();
    KyModuleManager& manager = KyModuleManager::get();
    for (int round = 0; round < 3; ++round) {
        ASSERT_TRUE(manager.initializeModule("KyScene/KyScene"));
        EXPECT_TRUE(manager.isInitialized("KyFoundation/KyFoundation"));
        const KyHolder<KyMeshNode> node(KyMeshNode::cast(KyObject::create("KyMeshNode")));
        ASSERT_TRUE(node);
        for (const char* name : {"KyCamera", "KyScene", "KyLight", "KyCanvas", "KyScenePass", "KyImage", "KyTexture"})
            EXPECT_TRUE(KyType::getType(name)) << name;
        manager.finalize();
        EXPECT_EQ(KyType::getType("KyMeshNode"), nullptr);
        EXPECT_EQ(KyObject::create("KyCanvas"), nullptr);
    }
}

} // namespace

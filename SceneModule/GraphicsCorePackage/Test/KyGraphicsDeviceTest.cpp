// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyGlTest.h"

#include "KyGraphicsDeviceManager.h"
#include "KyHolder.h"
#include "KyTexture.h"

#include <epoxy/gl.h>

namespace {

class KyGraphicsDeviceTest : public KyGlTest {};

TEST_F(KyGraphicsDeviceTest, TheManagerSwitchesDevicesAndForgetsThoseThatEnd) {
    std::string error;
    auto other = KyOffscreenContext::create(error);
    ASSERT_TRUE(other) << error;
    KyGraphicsDeviceManager& manager = KyGraphicsDeviceManager::get();
    EXPECT_FALSE(manager.makeCurrent(nullptr));
    EXPECT_TRUE(manager.makeCurrent(other.get()));
    EXPECT_EQ(manager.getCurrent(), other.get());
    other.reset();
    EXPECT_EQ(manager.getCurrent(), nullptr);
    EXPECT_FALSE(KyGraphicsDevice::hasCurrentContext());
    EXPECT_TRUE(manager.makeCurrent(mContext.get()));
    EXPECT_TRUE(KyGraphicsDevice::hasCurrentContext());
}

TEST_F(KyGraphicsDeviceTest, NamesOfObjectsThatEndWithoutContextAreDeletedLater) {
    KyHolder<KyTexture> texture(KyTexture::create());
    texture->setSize(8, 8);
    ASSERT_TRUE(texture->bind());
    const unsigned name = texture->getHandle();
    ASSERT_TRUE(glIsTexture(name));
    mContext->doneCurrent();
    const std::size_t before = KyGraphicsDeviceManager::get().getNbPending();
    texture.reset();
    EXPECT_EQ(KyGraphicsDeviceManager::get().getNbPending(), before + 1);
    ASSERT_TRUE(KyGraphicsDeviceManager::get().makeCurrent(mContext.get()));
    EXPECT_EQ(KyGraphicsDeviceManager::get().getNbPending(), before);
    EXPECT_FALSE(glIsTexture(name));
}

TEST_F(KyGraphicsDeviceTest, AnotherContextsNamesAreNeverDeletedHere) {
    KyHolder<KyTexture> mine(KyTexture::create());
    mine->setSize(8, 8);
    ASSERT_TRUE(mine->bind());
    std::string error;
    const auto other = KyOffscreenContext::create(error);
    ASSERT_TRUE(other) << error;
    KyHolder<KyTexture> theirs(KyTexture::create());
    theirs->setSize(8, 8);
    ASSERT_TRUE(theirs->bind());
    const unsigned name = theirs->getHandle();
    ASSERT_EQ(mine->getHandle(), name) << "both contexts count their names from 1";
    const auto sharing = KyOffscreenContext::create(error, KyOffscreenContext::eCore, other.get());
    ASSERT_TRUE(sharing) << error;
    mine.reset();
    EXPECT_TRUE(glIsTexture(name)) << "contexts that share see it, and it is not deleted here";
}

} // namespace

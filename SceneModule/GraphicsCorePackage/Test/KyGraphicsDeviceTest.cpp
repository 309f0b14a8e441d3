// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyGlTest.h"

#include "KyFrameBuffer.h"
#include "KyGraphicsDeviceManager.h"
#include "KyGraphicsStateScope.h"
#include "KyTexture.h"

#include <epoxy/gl.h>

namespace {

class KyGraphicsDeviceTest : public KyGlTest {};

TEST_F(KyGraphicsDeviceTest, TheDeviceTellsWhatItIs) {
    EXPECT_TRUE(mContext->isUsable());
    EXPECT_GE(mContext->getVersion(), 32);
    EXPECT_FALSE(mContext->getRendererName().empty());
    EXPECT_EQ(mContext->isSoftware(), mContext->getRendererName().find("llvmpipe") != std::string::npos);
    EXPECT_GE(mContext->getMaxSamples(), 1);
}

TEST_F(KyGraphicsDeviceTest, ACompatibilityContextSuffices) {
    std::string error;
    const auto context = KyOffscreenContext::create(error, KyOffscreenContext::eCompatibility);
    ASSERT_TRUE(context) << error;
    EXPECT_TRUE(context->isUsable());
}

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
    mine.reset();
    EXPECT_TRUE(glIsTexture(name));
}

TEST_F(KyGraphicsDeviceTest, ContextsThatShareSeeEachOthersTextures) {
    KyHolder<KyTexture> texture(KyTexture::create());
    texture->setSize(8, 8);
    ASSERT_TRUE(texture->bind());
    std::string error;
    const auto sharing = KyOffscreenContext::create(error, KyOffscreenContext::eCore, mContext.get());
    ASSERT_TRUE(sharing) << error;
    EXPECT_TRUE(glIsTexture(texture->getHandle()));
    const unsigned name = texture->getHandle();
    ASSERT_TRUE(texture->bind());
    EXPECT_EQ(texture->getHandle(), name);
}

TEST_F(KyGraphicsDeviceTest, TheStateScopePutsEverythingBack) {
    glViewport(3, 4, 50, 60);
    glEnable(GL_BLEND);
    glBlendFunc(GL_DST_COLOR, GL_ZERO);
    glDepthMask(GL_FALSE);
    glClearColor(0.25f, 0.5f, 0.75f, 1.0f);
    {
        const KyGraphicsStateScope scope;
        KyFrameBuffer buffer;
        buffer.setSize(16, 16);
        ASSERT_TRUE(buffer.bind());
        glDisable(GL_BLEND);
        glEnable(GL_SCISSOR_TEST);
        glBlendFunc(GL_ONE, GL_ONE);
        glDepthMask(GL_TRUE);
        glClearColor(0, 0, 0, 0);
    }
    GLint viewport[4], source = 0, handle = -1;
    GLfloat color[4];
    GLboolean writesDepth = GL_TRUE;
    glGetIntegerv(GL_VIEWPORT, viewport);
    glGetIntegerv(GL_BLEND_SRC_RGB, &source);
    glGetIntegerv(GL_FRAMEBUFFER_BINDING, &handle);
    glGetFloatv(GL_COLOR_CLEAR_VALUE, color);
    glGetBooleanv(GL_DEPTH_WRITEMASK, &writesDepth);
    EXPECT_EQ(viewport[0], 3);
    EXPECT_EQ(viewport[3], 60);
    EXPECT_TRUE(glIsEnabled(GL_BLEND));
    EXPECT_FALSE(glIsEnabled(GL_SCISSOR_TEST));
    EXPECT_EQ(source, GL_DST_COLOR);
    EXPECT_FALSE(writesDepth);
    EXPECT_EQ(handle, 0);
    EXPECT_EQ(color[2], 0.75f);
    EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
}

} // namespace

// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyGlTest.h"

#include "KyFrameBuffer.h"
#include "KyImage.h"

#include <epoxy/gl.h>

namespace {

class KyFrameBufferTest : public KyGlTest {
protected:
    static void fill(float red, float green, float blue) {
        glClearColor(red, green, blue, 1.0f);
        glClear(GL_COLOR_BUFFER_BIT);
    }
};

TEST_F(KyFrameBufferTest, PixelsReadBackTopRowFirst) {
    KyFrameBuffer buffer;
    buffer.setSize(8, 6);
    ASSERT_TRUE(buffer.bind());
    fill(0, 0, 1);
    glEnable(GL_SCISSOR_TEST);
    glScissor(0, 5, 8, 1);
    fill(1, 0, 0);
    const KyHolder<KyImage> image(buffer.readPixels());
    ASSERT_TRUE(image);
    EXPECT_EQ(image->getPixel(3, 0), KyColor(1, 0, 0));
    EXPECT_EQ(image->getPixel(3, 1), KyColor(0, 0, 1));
}

TEST_F(KyFrameBufferTest, SamplesAreResolvedForReadingAtTheNewSize) {
    KyFrameBuffer buffer;
    buffer.setSize(8, 8);
    buffer.setSamples(4);
    ASSERT_TRUE(buffer.bind());
    GLint samples = 0;
    glGetIntegerv(GL_SAMPLES, &samples);
    EXPECT_GT(samples, 1);
    buffer.setSize(10, 7);
    ASSERT_TRUE(buffer.bind());
    fill(0, 1, 0);
    const KyHolder<KyImage> image(buffer.readPixels());
    ASSERT_TRUE(image);
    EXPECT_EQ(image->getPixel(9, 6), KyColor(0, 1, 0));
}

TEST_F(KyFrameBufferTest, ReadingKeepsTheBinding) {
    KyFrameBuffer buffer, other;
    buffer.setSize(8, 8);
    other.setSize(4, 4);
    ASSERT_TRUE(other.bind());
    const KyHolder<KyImage> image(buffer.readPixels());
    GLint handle = 0;
    glGetIntegerv(GL_DRAW_FRAMEBUFFER_BINDING, &handle);
    EXPECT_EQ(static_cast<unsigned>(handle), other.getHandle());
}

TEST_F(KyFrameBufferTest, ItCannotBeBoundWithoutSizeOrContext) {
    KyFrameBuffer buffer;
    EXPECT_FALSE(buffer.bind());
    EXPECT_EQ(buffer.readPixels(), nullptr);
    buffer.setSize(4, 4);
    mContext->doneCurrent();
    EXPECT_FALSE(buffer.bind());
    EXPECT_EQ(buffer.readPixels(), nullptr);
    ASSERT_TRUE(mContext->makeCurrent());
    EXPECT_TRUE(buffer.bind());
}

TEST_F(KyFrameBufferTest, AForeignHandleIsBoundAndNeverDeleted) {
    GLuint texture = 0, foreign = 0;
    glGenTextures(1, &texture);
    glBindTexture(GL_TEXTURE_2D, texture);
    glTexImage2D(GL_TEXTURE_2D, 0, GL_RGBA8, 4, 4, 0, GL_RGBA, GL_UNSIGNED_BYTE, nullptr);
    glGenFramebuffers(1, &foreign);
    glBindFramebuffer(GL_FRAMEBUFFER, foreign);
    glFramebufferTexture2D(GL_FRAMEBUFFER, GL_COLOR_ATTACHMENT0, GL_TEXTURE_2D, texture, 0);
    {
        const KyHolder<KyFrameBuffer> buffer(KyFrameBuffer::create(KyTexture::create()));
        buffer->setHandle(foreign);
        buffer->getColorTexture()->setHandle(texture);
        buffer->setSize(4, 4);
        ASSERT_TRUE(buffer->bind());
        fill(1, 1, 0);
        const KyHolder<KyImage> image(buffer->readPixels());
        EXPECT_EQ(image->getPixel(0, 0), KyColor(1, 1, 0));
    }
    EXPECT_TRUE(glIsFramebuffer(foreign));
    EXPECT_TRUE(glIsTexture(texture));
}

} // namespace

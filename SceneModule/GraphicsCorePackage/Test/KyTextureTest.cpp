// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyGlTest.h"

#include "KyFrameBuffer.h"
#include "KyImage.h"
#include "KyTexture.h"

#include <epoxy/gl.h>

namespace {

class KyTextureTest : public KyGlTest {};

TEST_F(KyTextureTest, AnImageArrivesOnTheDeviceUpright) {
    KyImage image(3, 2, 24);
    image.setPixel(0, 0, KyColor(1, 0, 0));
    image.setPixel(2, 1, KyColor(0, 1, 0));
    const KyHolder<KyTexture> texture(KyTexture::create());
    ASSERT_TRUE(texture->setImage(&image));
    const KyHolder<KyFrameBuffer> buffer(KyFrameBuffer::create(texture.get()));
    buffer->setSize(3, 2);
    const KyHolder<KyImage> back(buffer->readPixels());
    ASSERT_TRUE(back);
    EXPECT_EQ(back->getPixel(0, 0), KyColor(1, 0, 0));
    EXPECT_EQ(back->getPixel(2, 1), KyColor(0, 1, 0));
}

TEST_F(KyTextureTest, ATextureThatOutlivesItsContextIsMadeAnewInTheNext) {
    KyImage image(2, 2, 24);
    image.setPixel(1, 1, KyColor(0, 0, 1));
    const KyHolder<KyTexture> texture(KyTexture::create());
    ASSERT_TRUE(texture->setImage(&image));
    ASSERT_TRUE(texture->bind());
    mContext.reset();
    EXPECT_FALSE(texture->bind());
    std::string error;
    mContext = KyOffscreenContext::create(error);
    ASSERT_TRUE(mContext) << error;
    ASSERT_TRUE(texture->bind());
    const KyHolder<KyFrameBuffer> buffer(KyFrameBuffer::create(texture.get()));
    buffer->setSize(2, 2);
    const KyHolder<KyImage> back(buffer->readPixels());
    ASSERT_TRUE(back);
    EXPECT_EQ(back->getPixel(1, 1), KyColor(0, 0, 1));
}

TEST_F(KyTextureTest, NothingIsBoundWithoutPixelsOrBeyondTheUnits) {
    KyTexture texture;
    EXPECT_FALSE(texture.bind());
    texture.setSize(2, 2);
    EXPECT_FALSE(texture.bind(99));
    EXPECT_TRUE(texture.bind(3));
}

} // namespace

// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyDrawingTest.h"

#include "KyScreenPass.h"

#include <string>

namespace {

/// A pass whose own buffer holds a picture: red above, blue below, in GL's order of rows; half transparent on demand.
class PicturePass : public KyGraphicsPass {
public:
    explicit PicturePass(const KyColor& below) {
        KyImage image(4, 4, 32);
        for (int y = 0; y < 4; ++y)
            for (int x = 0; x < 4; ++x)
                image.setPixel(x, y, y < 2 ? KyColor(1, 0, 0) : below);
        const KyHolder<KyTexture> texture(KyTexture::create());
        texture->setImage(&image);
        texture->setMagFilter(KyTexture::eNearest);
        setFrameBuffer(KyFrameBuffer::create(texture.get()));
    }
};

class OrderPass : public KyGraphicsPass {
public:
    OrderPass(std::string& log, char name)
        : mLog(log)
        , mName(name) {}
    bool adaptView(const KyGraphicsViewMultiPass& view) override {
        mLog += std::string("a") + mName;
        return KyGraphicsPass::adaptView(view);
    }
    void preRender(KyRendererContext&) override { mLog += std::string("b") + mName; }
    void doRender(KyRendererContext&, KyGraphicsViewMultiPass&) override { mLog += std::string("d") + mName; }
    void postRender(KyRendererContext&) override { mLog += std::string("p") + mName + ' '; }

private:
    std::string& mLog;
    char mName;
};

class KyScreenPassTest : public KyDrawingTest {
protected:
    KyScreenPass* addPicture(const KyColor& below) {
        mView->setMainPass(new PicturePass(below));
        auto* screen = KyScreenPass::create();
        mView->addPass(screen);
        return screen;
    }
};

TEST_F(KyScreenPassTest, ThePictureOfTheMainPassCoversTheViewAndIsDrawnAgainWhenTouched) {
    KyScreenPass* screen = addPicture(KyColor(0, 0, 1));
    const auto image = draw();
    kyExpectColor(image->getPixel(1, 1), KyColor(1, 0, 0));
    kyExpectColor(image->getPixel(158, 118), KyColor(0, 0, 1));
    screen->setVerticalFlip(true);
    kyExpectColor(draw()->getPixel(1, 1), KyColor(0, 0, 1));
    draw();
    EXPECT_FALSE(mCanvas->needsRedraw());
    mView->getMainPass()->getFrameBuffer()->getColorTexture()->touch();
    EXPECT_TRUE(mCanvas->needsRedraw());
}

TEST_F(KyScreenPassTest, PremultipliedPixelsAreBlendedOverWhatIsThere) {
    mView->setClearColor(KyColor(1, 1, 1));
    addPicture(KyColor(0, 0, 0.5f, 0.5f))->editShader()->setBlendFunction({});
    const auto image = draw();
    kyExpectColor(image->getPixel(80, 100), KyColor(0.5f, 0.5f, 1.0f));
}

TEST_F(KyScreenPassTest, AChildViewThatClearsNothingKeepsWhatIsBelow) {
    mView->setClearColor(KyColor(0, 1, 0));
    auto* overlay = KyGraphicsViewMultiPass::create();
    overlay->setClearOrder(KyGraphicsViewMultiPass::eClearNothing);
    overlay->setArea(KyRectd(0, 0, 0.5, 1));
    overlay->setMainPass(new PicturePass(KyColor(0, 0, 1)));
    overlay->addPass(KyScreenPass::create());
    mView->insert(overlay);
    const auto image = draw();
    kyExpectColor(image->getPixel(40, 10), KyColor(1, 0, 0));
    kyExpectColor(image->getPixel(120, 10), KyColor(0, 1, 0));
}

TEST_F(KyScreenPassTest, EachPassRunsToItsEndBeforeTheNextByPriority) {
    std::string log;
    auto* late = new OrderPass(log, '2');
    late->setPriority(1.0f);
    auto* early = new OrderPass(log, '1');
    early->setPriority(-1.0f);
    auto* off = new OrderPass(log, '0');
    off->setEnabled(false);
    mView->addPass(late);
    mView->addPass(off);
    mView->addPass(early);
    draw();
    EXPECT_EQ(log, "a1b1d1p1 a2b2d2p2 ");
}

} // namespace

// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyDrawingTest.h"

#include "KyDrawStatistics.h"
#include "KyGpuTimer.h"
#include "KyLight.h"

#include <epoxy/gl.h>

#include <numbers>
#include <utility>
#include <vector>

namespace {

class KyScenePassTest : public KyDrawingTest {
protected:
    KyScenePassTest()
        : mScene(new KyScene)
        , mCamera(new KyCamera)
        , mPass(KyScenePass::create()) {
        mCamera->lookAt(KyVec3d(0, 0, 10), KyVec3d());
        mScene->setBackground(KyColor(0.2f, 0.4f, 0.6f));
        mPass->setScene(mScene.get());
        mPass->setCamera(mCamera.get());
        mView->setMainPass(mPass.get());
    }

    KyMeshNode* addBox(const KyColor& color, int shading = KyMeshNode::eUnlit) {
        auto* box = new KyMeshNode;
        box->makeBox(2, 2, 2);
        box->setColor(color);
        box->setShading(shading);
        mScene->addChild(box);
        return box;
    }

    KyHolder<KyScene> mScene;
    KyHolder<KyCamera> mCamera;
    KyHolder<KyScenePass> mPass;
};

const KyColor cBackground(0.2f, 0.4f, 0.6f);

TEST_F(KyScenePassTest, AGradientGoesFromTopToBottom) {
    mScene->setBackgroundTop(KyColor(1, 0, 0));
    mScene->setBackgroundBottom(KyColor(0, 0, 1));
    const auto image = draw();
    kyExpectColor(image->getPixel(80, 0), KyColor(1, 0, 0), 0.05);
    kyExpectColor(image->getPixel(80, 119), KyColor(0, 0, 1), 0.05);
}

TEST_F(KyScenePassTest, ANodeIsSeenWhereItStandsUntilItIsHidden) {
    KyMeshNode* box = addBox(KyColor(1, 0.5f, 0));
    box->setPosition(KyVec3d(2, 1, 0));
    const auto image = draw();
    kyExpectColor(image->getPixel(109, 45), KyColor(1, 0.5f, 0));
    kyExpectColor(image->getPixel(51, 75), cBackground);
    EXPECT_FALSE(mCanvas->needsRedraw());
    box->setVisible(false);
    EXPECT_TRUE(mCanvas->needsRedraw());
    kyExpectColor(draw()->getPixel(109, 45), cBackground);
}

TEST_F(KyScenePassTest, WhatIsBehindIsHiddenOrShinesThrough) {
    KyMeshNode* front = addBox(KyColor(0, 1, 0));
    addBox(KyColor(1, 0, 0))->setPosition(KyVec3d(0, 0, -3));
    kyExpectColor(draw()->getPixel(80, 60), KyColor(0, 1, 0));
    front->setColor(KyColor(0, 1, 0, 0.5f));
    // The front and the back of the box are both half transparent.
    kyExpectColor(draw()->getPixel(80, 60), KyColor(0.25f, 0.75f, 0), 0.15);
}

TEST_F(KyScenePassTest, EdgesAreSmoothedUnlessNotWanted) {
    KyMeshNode* box = addBox(KyColor(1, 1, 1));
    box->rotate(KyVec3d(0, 0, 1), 0.3);
    const auto countMixed = [this] {
        const auto image = draw();
        int count = 0;
        for (int y = 0; y < 120; ++y)
            for (int x = 0; x < 160; ++x) {
                const float red = image->getPixel(x, y).red;
                count += red > 0.25f && red < 0.95f ? 1 : 0;
            }
        return count;
    };
    EXPECT_GT(countMixed(), 60);
    mPass->setSamples(1);
    EXPECT_EQ(countMixed(), 0);
}

TEST_F(KyScenePassTest, WithoutLightTheKeyLightFollowsTheCamera) {
    addBox(KyColor(0.8f, 0.8f, 0.8f), KyMeshNode::eSmooth);
    const KyColor front = draw()->getPixel(80, 60);
    EXPECT_GT(front.red, 0.4f);
    mCamera->lookAt(KyVec3d(0, 0, -10), KyVec3d());
    kyExpectColor(draw()->getPixel(80, 60), front);
}

TEST_F(KyScenePassTest, ALightShinesOnTheSideThatFacesItAsFarAsItsRange) {
    addBox(KyColor(0.8f, 0.8f, 0.8f), KyMeshNode::eSmooth);
    auto* light = new KyLight;
    mScene->addChild(light);
    const auto getRed = [this] { return draw()->getPixel(80, 60).red; };
    light->lookAt(KyVec3d(0, 0, -10), KyVec3d());
    const float unlit = getRed();
    EXPECT_GT(unlit, 0.02f) << "the sky lights it still";
    light->lookAt(KyVec3d(0, 0, 10), KyVec3d());
    EXPECT_GT(getRed(), unlit + 0.2f);
    light->setKind(KyLight::ePoint);
    light->setPosition(KyVec3d(0, 0, 4));
    const float endless = getRed();
    light->setRange(2.0);
    EXPECT_LT(getRed(), endless - 0.2f);
}

TEST_F(KyScenePassTest, AGridShowsLinesOnTheGround) {
    auto* grid = new KyMeshNode;
    grid->makeGrid(20, 20);
    mScene->addChild(grid);
    mCamera->lookAt(KyVec3d(0.3, 12, 0.2), KyVec3d(0.3, 0, 0.2), KyVec3d(0, 0, -1));
    const auto image = draw();
    int nbLines = 0;
    for (int y = 0; y < 120; ++y)
        nbLines += std::abs(image->getPixel(82, y).red - cBackground.red) > 0.08f ? 1 : 0;
    EXPECT_GT(nbLines, 4);
}

TEST_F(KyScenePassTest, AViewDrawsInItsAreaOnlyAndWithoutBackgroundItsClearColourShows) {
    mView->setArea(KyRectd(0.5, 0.0, 0.5, 0.5));
    ASSERT_TRUE(mTarget->bind());
    glClearColor(0, 1, 0, 1);
    glClear(GL_COLOR_BUFFER_BIT);
    for (const int samples : {4, 1}) {
        mPass->setSamples(samples);
        mPass->setBackgroundVisible(true);
        const auto image = draw();
        kyExpectColor(image->getPixel(81, 58), cBackground);
        kyExpectColor(image->getPixel(78, 1), KyColor(0, 1, 0));
        kyExpectColor(image->getPixel(159, 62), KyColor(0, 1, 0));
        mPass->setBackgroundVisible(false);
        mView->setClearColor(KyColor(1, 1, 0));
        kyExpectColor(draw()->getPixel(81, 1), KyColor(1, 1, 0));
    }
}

TEST_F(KyScenePassTest, AreasFarBeyondTheTargetDrawOrRefuseAndTheNextOneShowsAgain) {
    addBox(KyColor(1, 0, 0));
    const auto expected = draw();
    for (const int samples : {4, 1})
        for (const KyRectd& area :
             {KyRectd(0, 0, 1e5, 1e5), KyRectd(0, 0, 1e9, 1e9), KyRectd(-1e9, -1e9, 1e9, 1e9),
              KyRectd(-5e8, -5e8, 1e9, 1e9), KyRectd(1e9, 1e9, 1, 1), KyRectd(0, 0, 1e9, 1e-9), KyRectd(0, -50, 1, 99)})
            for (const bool isOfView : {true, false}) {
                mPass->setSamples(samples);
                mView->setArea(isOfView ? area : KyRectd(0, 0, 1, 1));
                mPass->setArea(isOfView ? KyRectd(0, 0, 1, 1) : area);
                EXPECT_TRUE(draw()) << area;
                EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR)) << area;
            }
    mPass->setArea(KyRectd(0, 0, 1, 1));
    mPass->setSamples(4);
    EXPECT_LT(draw()->getDifference(*expected), 0.01);
}

TEST_F(KyScenePassTest, AnAreaPartlyOutsideShowsItsPart) {
    addBox(KyColor(1, 0, 0));
    mPass->setSamples(1);
    for (const double size : {2.0, 20.0}) {
        // Its centre, where the box is, lies at a fourth of the target from the left and from above.
        mView->setArea(KyRectd(0.25 - size / 2, 0.25 - size / 2, size, size));
        const auto image = draw();
        kyExpectColor(image->getPixel(40, 30), KyColor(1, 0, 0));
        kyExpectColor(image->getPixel(159, 119), size > 4 ? KyColor(1, 0, 0) : cBackground);
    }
}

TEST_F(KyScenePassTest, DrawingLeavesTheStateAsItWas) {
    addBox(KyColor(1, 0, 0));
    GLuint vertexArray = 0;
    glGenVertexArrays(1, &vertexArray);
    glBindVertexArray(vertexArray);
    glEnable(GL_BLEND);
    glBlendFunc(GL_DST_COLOR, GL_ZERO);
    glEnable(GL_SCISSOR_TEST);
    glScissor(1, 2, 3, 4);
    glViewport(5, 6, 7, 8);
    glDepthMask(GL_FALSE);
    glColorMask(GL_TRUE, GL_FALSE, GL_TRUE, GL_TRUE);
    KyRendererContext context(mContext.get());
    context.setTarget(mTarget.get());
    ASSERT_TRUE(mCanvas->render(context));
    const std::pair<GLenum, std::vector<GLint>> cExpected[] = {
        {GL_DRAW_FRAMEBUFFER_BINDING, {0}}, {GL_CURRENT_PROGRAM, {0}},
        {GL_TEXTURE_BINDING_2D, {0}},       {GL_DEPTH_FUNC, {GL_LESS}},
        {GL_DEPTH_WRITEMASK, {GL_FALSE}},   {GL_BLEND, {GL_TRUE}},
        {GL_BLEND_SRC_RGB, {GL_DST_COLOR}}, {GL_VERTEX_ARRAY_BINDING, {static_cast<GLint>(vertexArray)}},
        {GL_SCISSOR_TEST, {GL_TRUE}},       {GL_SCISSOR_BOX, {1, 2, 3, 4}},
        {GL_VIEWPORT, {5, 6, 7, 8}},        {GL_COLOR_WRITEMASK, {GL_TRUE, GL_FALSE, GL_TRUE, GL_TRUE}}};
    for (const auto& [name, expected] : cExpected) {
        std::vector<GLint> values(4);
        glGetIntegerv(name, values.data());
        values.resize(expected.size());
        EXPECT_EQ(values, expected) << std::hex << name;
    }
    EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
    glColorMask(GL_TRUE, GL_TRUE, GL_TRUE, GL_TRUE);
    glDepthMask(GL_TRUE);
}

TEST_F(KyScenePassTest, ItDrawsInACompatibilityContextAndInTheNextContextTheSame) {
    addBox(KyColor(1, 0, 0), KyMeshNode::eSmooth);
    const auto first = draw();
    std::string error;
    for (const auto profile : {KyOffscreenContext::eCompatibility, KyOffscreenContext::eCore}) {
        mContext = KyOffscreenContext::create(error, profile);
        ASSERT_TRUE(mContext) << error;
        EXPECT_LT(draw()->getDifference(*first), 0.002);
        EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
    }
}

/// Two columns: red as strong as its alpha of a half, and green.
KyHolder<KyTexture> makePicture(bool isPremultiplied) {
    KyImage image(2, 2, 32);
    for (int y = 0; y < 2; ++y) {
        image.setPixel(0, y, KyColor(isPremultiplied ? 0.5f : 1.0f, 0, 0, 0.5f));
        image.setPixel(1, y, KyColor(0, 1, 0, 1));
    }
    KyHolder<KyTexture> texture(KyTexture::create());
    texture->setImage(&image);
    texture->setMagFilter(KyTexture::eNearest);
    return texture;
}

TEST_F(KyScenePassTest, ATextureIsMultipliedAndItsAlphaCountsAsTold) {
    KyMeshNode* box = addBox(KyColor(1, 0.5f, 1));
    addBox(KyColor(0, 0, 1))->setPosition(KyVec3d(0, 0, -4));
    const KyColor cOverBlue(0.5f, 0, 0.5f), cGreen(0, 0.5f, 0);
    struct Case {
        int alpha;
        bool isPremultiplied;
        KyColor left;
    };
    const Case cCases[] = {{KyMeshNode::eIgnored, false, KyColor(1, 0, 0)},
                           {KyMeshNode::eStraight, false, cOverBlue},
                           {KyMeshNode::ePremultiplied, true, cOverBlue}};
    for (const Case& c : cCases) {
        box->setTexture(makePicture(c.isPremultiplied).get());
        box->setTextureAlpha(c.alpha);
        // Only the front: the box's other sides would be blended as well.
        box->makePlane(2, 2);
        box->setOrientation(KyQuatd::fromAxisAngle(KyVec3d(1, 0, 0), std::numbers::pi / 2.0));
        const auto image = draw();
        kyExpectColor(image->getPixel(72, 60), c.left);
        kyExpectColor(image->getPixel(88, 60), cGreen);
    }
    box->setTexture(nullptr);
    kyExpectColor(draw()->getPixel(72, 60), KyColor(1, 0.5f, 1));
}

TEST_F(KyScenePassTest, ATextureStandsUprightAndIsDrawnAnewWithItsVersion) {
    KyImage image(1, 2, 32);
    image.setPixel(0, 0, KyColor(1, 0, 0));
    image.setPixel(0, 1, KyColor(0, 1, 0));
    const KyHolder<KyTexture> texture(KyTexture::create());
    texture->setMagFilter(KyTexture::eNearest);
    texture->setImage(&image);
    KyMeshNode* box = addBox(KyColor(1, 1, 1));
    box->setTexture(texture.get());
    kyExpectColor(draw()->getPixel(80, 52), KyColor(1, 0, 0));
    box->setTextureFlipped(true);
    kyExpectColor(draw()->getPixel(80, 52), KyColor(0, 1, 0));
    EXPECT_FALSE(mCanvas->needsRedraw());
    image.setPixel(0, 1, KyColor(0, 0, 1));
    texture->setImage(&image);
    EXPECT_TRUE(mCanvas->needsRedraw());
    kyExpectColor(draw()->getPixel(80, 52), KyColor(0, 0, 1));
}

TEST_F(KyScenePassTest, APictureThatIsMuchLargerThanItsNodeShowsItsMean) {
    KyImage image(256, 256, 32);
    for (int y = 0; y < 256; ++y)
        for (int x = 0; x < 256; ++x)
            image.setPixel(x, y, x / 2 % 2 ? KyColor(1, 1, 1) : KyColor(0, 0, 0));
    const KyHolder<KyTexture> texture(KyTexture::create());
    texture->setImage(&image);
    addBox(KyColor(1, 1, 1))->setTexture(texture.get());
    const auto drawn = draw();
    for (int x = 70; x < 90; ++x)
        EXPECT_NEAR(drawn->getPixel(x, 60).red, 0.5f, 0.17f) << x;
}

TEST_F(KyScenePassTest, DrawCallsAreCountedAndTheDeviceTellsHowLongItTook) {
    addBox(KyColor(1, 1, 1));
    addBox(KyColor(1, 0, 0))->setPosition(KyVec3d(0, 0, 100));
    mPass->setSamples(1);
    KyGpuTimer timer;
    EXPECT_LT(timer.getMilliseconds(), 0.0);
    for (int i = 0; i < 3; ++i) {
        const KyDrawStatistics before = KyDrawStatistics::get();
        KyRendererContext context(mContext.get());
        context.setTarget(mTarget.get());
        timer.begin();
        mCanvas->render(context);
        timer.end();
        EXPECT_EQ(KyDrawStatistics::get().nbCalls - before.nbCalls, 2u) << "the background, and what is in view";
        EXPECT_EQ(KyDrawStatistics::get().nbPrimitives - before.nbPrimitives, 1u + 12u);
    }
    glFinish();
    timer.begin();
    timer.end();
    EXPECT_GT(timer.getMilliseconds(), 0.0);
    EXPECT_LT(timer.getMilliseconds(), 10000.0);
}

} // namespace

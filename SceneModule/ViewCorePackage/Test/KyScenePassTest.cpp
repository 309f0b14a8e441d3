// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyDrawingTest.h"

#include "KyLight.h"

#include <epoxy/gl.h>

#include <array>

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

TEST_F(KyScenePassTest, AnEmptySceneIsItsBackground) {
    const auto image = draw();
    for (const auto& [x, y] : {std::pair{0, 0}, {159, 119}, {80, 60}})
        kyExpectColor(image->getPixel(x, y), cBackground);
}

TEST_F(KyScenePassTest, AGradientGoesFromTopToBottom) {
    mScene->setBackgroundTop(KyColor(1, 0, 0));
    mScene->setBackgroundBottom(KyColor(0, 0, 1));
    const auto image = draw();
    kyExpectColor(image->getPixel(80, 0), KyColor(1, 0, 0), 0.05);
    kyExpectColor(image->getPixel(80, 119), KyColor(0, 0, 1), 0.05);
}

TEST_F(KyScenePassTest, ANodeIsSeenWhereItStandsInItsColour) {
    KyMeshNode* box = addBox(KyColor(1, 0.5f, 0));
    box->setPosition(KyVec3d(2, 1, 0));
    const auto image = draw();
    kyExpectColor(image->getPixel(80 + 29, 60 - 15), KyColor(1, 0.5f, 0));
    kyExpectColor(image->getPixel(80 - 29, 60 + 15), cBackground);
    box->setVisible(false);
    kyExpectColor(draw()->getPixel(80 + 29, 60 - 15), cBackground);
}

TEST_F(KyScenePassTest, NearerSurfacesHideThoseBehind) {
    addBox(KyColor(1, 0, 0))->setPosition(KyVec3d(0, 0, -3));
    addBox(KyColor(0, 1, 0));
    kyExpectColor(draw()->getPixel(80, 60), KyColor(0, 1, 0));
}

TEST_F(KyScenePassTest, WhatIsBehindShinesThrough) {
    addBox(KyColor(0, 1, 0, 0.5f));
    addBox(KyColor(1, 0, 0))->setPosition(KyVec3d(0, 0, -3));
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

TEST_F(KyScenePassTest, ALightShinesOnTheSideThatFacesIt) {
    addBox(KyColor(0.8f, 0.8f, 0.8f), KyMeshNode::eSmooth);
    auto* light = new KyLight;
    mScene->addChild(light);
    light->lookAt(KyVec3d(0, 0, 10), KyVec3d());
    const float lit = draw()->getPixel(80, 60).red;
    light->lookAt(KyVec3d(0, 0, -10), KyVec3d());
    const float unlit = draw()->getPixel(80, 60).red;
    EXPECT_GT(lit, unlit + 0.2f);
    EXPECT_GT(unlit, 0.02f) << "the sky lights it still";
}

TEST_F(KyScenePassTest, APointLightReachesAsFarAsItsRange) {
    addBox(KyColor(0.8f, 0.8f, 0.8f), KyMeshNode::eSmooth);
    auto* light = new KyLight;
    light->setKind(KyLight::ePoint);
    light->setPosition(KyVec3d(0, 0, 4));
    mScene->addChild(light);
    const float endless = draw()->getPixel(80, 60).red;
    light->setRange(2.0);
    EXPECT_LT(draw()->getPixel(80, 60).red, endless - 0.2f);
}

TEST_F(KyScenePassTest, AnOrthographicCameraShowsItsExtent) {
    addBox(KyColor(1, 0, 0));
    mCamera->setOrthographic(true);
    mCamera->setVerticalExtent(4.0);
    const auto image = draw();
    kyExpectColor(image->getPixel(80, 32), KyColor(1, 0, 0));
    kyExpectColor(image->getPixel(80, 27), cBackground);
    kyExpectColor(image->getPixel(80 + 28, 60), KyColor(1, 0, 0));
    kyExpectColor(image->getPixel(80 + 33, 60), cBackground);
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
    EXPECT_LT(nbLines, 60);
}

TEST_F(KyScenePassTest, AViewDrawsInItsAreaOnly) {
    mView->setArea(KyRectd(0.5, 0.0, 0.5, 0.5));
    ASSERT_TRUE(mTarget->bind());
    glClearColor(0, 1, 0, 1);
    glClear(GL_COLOR_BUFFER_BIT);
    for (const int samples : {4, 1}) {
        mPass->setSamples(samples);
        const auto image = draw();
        kyExpectColor(image->getPixel(81, 1), cBackground);
        kyExpectColor(image->getPixel(159, 58), cBackground);
        kyExpectColor(image->getPixel(78, 1), KyColor(0, 1, 0));
        kyExpectColor(image->getPixel(159, 62), KyColor(0, 1, 0));
    }
}

TEST_F(KyScenePassTest, WithoutBackgroundTheTargetShowsThrough) {
    mPass->setBackgroundVisible(false);
    mView->setClearColor(KyColor(1, 1, 0));
    addBox(KyColor(0, 0, 1));
    for (const int samples : {4, 1}) {
        mPass->setSamples(samples);
        const auto image = draw();
        kyExpectColor(image->getPixel(2, 2), KyColor(1, 1, 0));
        kyExpectColor(image->getPixel(80, 60), KyColor(0, 0, 1));
    }
}

TEST_F(KyScenePassTest, DrawingLeavesTheStateAsItWas) {
    addBox(KyColor(1, 0, 0));
    GLuint vertexArray = 0;
    glGenVertexArrays(1, &vertexArray);
    glBindVertexArray(vertexArray);
    glEnable(GL_BLEND);
    glEnable(GL_SCISSOR_TEST);
    glScissor(1, 2, 3, 4);
    glViewport(5, 6, 7, 8);
    glColorMask(GL_TRUE, GL_FALSE, GL_TRUE, GL_TRUE);
    KyRendererContext context(mContext.get());
    context.setTarget(mTarget.get());
    ASSERT_TRUE(mCanvas->render(context));
    constexpr std::array<std::pair<GLenum, int>, 7> cExpected{{{GL_DRAW_FRAMEBUFFER_BINDING, 0},
                                                               {GL_READ_FRAMEBUFFER_BINDING, 0},
                                                               {GL_CURRENT_PROGRAM, 0},
                                                               {GL_ARRAY_BUFFER_BINDING, 0},
                                                               {GL_TEXTURE_BINDING_2D, 0},
                                                               {GL_ACTIVE_TEXTURE, GL_TEXTURE0},
                                                               {GL_DEPTH_FUNC, GL_LESS}}};
    for (const auto& [name, expected] : cExpected) {
        GLint value = -1;
        glGetIntegerv(name, &value);
        EXPECT_EQ(value, expected) << std::hex << name;
    }
    GLint bound = 0, scissor[4], viewport[4];
    GLboolean mask[4];
    glGetIntegerv(GL_VERTEX_ARRAY_BINDING, &bound);
    glGetIntegerv(GL_SCISSOR_BOX, scissor);
    glGetIntegerv(GL_VIEWPORT, viewport);
    glGetBooleanv(GL_COLOR_WRITEMASK, mask);
    EXPECT_EQ(static_cast<GLuint>(bound), vertexArray);
    EXPECT_EQ(scissor[3], 4);
    EXPECT_EQ(viewport[2], 7);
    EXPECT_FALSE(mask[1]);
    EXPECT_TRUE(glIsEnabled(GL_BLEND));
    EXPECT_TRUE(glIsEnabled(GL_SCISSOR_TEST));
    EXPECT_FALSE(glIsEnabled(GL_DEPTH_TEST));
    EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
    glColorMask(GL_TRUE, GL_TRUE, GL_TRUE, GL_TRUE);
}

TEST_F(KyScenePassTest, AFrameIsWantedAfterAChangeOnly) {
    KyMeshNode* box = addBox(KyColor(1, 0, 0));
    EXPECT_TRUE(mCanvas->needsRedraw());
    draw();
    EXPECT_FALSE(mCanvas->needsRedraw());
    box->translate(KyVec3d(0.1, 0, 0));
    EXPECT_TRUE(mCanvas->needsRedraw());
    draw();
    EXPECT_FALSE(mCanvas->needsRedraw());
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

TEST_F(KyScenePassTest, NothingIsDrawnWithoutContext) {
    mContext->doneCurrent();
    KyRendererContext context;
    EXPECT_FALSE(mCanvas->render(context));
    EXPECT_TRUE(mCanvas->needsRedraw());
}

TEST_F(KyScenePassTest, TheContextReadsAPartOfItsTarget) {
    addBox(KyColor(1, 0, 0));
    KyRendererContext context(mContext.get());
    context.setTarget(mTarget.get());
    ASSERT_TRUE(mCanvas->render(context));
    const KyHolder<KyImage> image(context.readPixels(KyRecti(80, 0, 20, 61)));
    ASSERT_TRUE(image);
    EXPECT_EQ(image->getHeight(), 61);
    kyExpectColor(image->getPixel(0, 60), KyColor(1, 0, 0));
    kyExpectColor(image->getPixel(0, 0), cBackground);
}

} // namespace

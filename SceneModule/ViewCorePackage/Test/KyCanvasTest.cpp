// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyCamera.h"
#include "KyCanvas.h"
#include "KyMeshNode.h"
#include "KyScenePass.h"

#include "KyInputEvent.h"

#include <gtest/gtest.h>

namespace {

struct RemovalList : KyHasSlots {
    void onRemoved(KyGraphicsViewMultiPass* view) { views.push_back(view); }
    std::vector<KyGraphicsViewMultiPass*> views;
};

class KyCanvasTest : public testing::Test {
protected:
    KyCanvasTest()
        : mCanvas(new KyCanvas)
        , mBack(new KyGraphicsViewMultiPass)
        , mFront(new KyGraphicsViewMultiPass) {
        mCanvas->setSize(101, 50);
        mCanvas->insertView(mBack.get());
        mCanvas->insertView(mFront.get());
        mFront->setArea(KyRectd(0.5, 0.0, 0.5, 1.0));
    }

    KyHolder<KyCanvas> mCanvas;
    KyHolder<KyGraphicsViewMultiPass> mBack;
    KyHolder<KyGraphicsViewMultiPass> mFront;
    RemovalList mRemoved;
};

TEST_F(KyCanvasTest, AreasThatFitInFractionsFitInPixels) {
    mBack->setArea(KyRectd(0.0, 0.0, 0.5, 1.0));
    const KyRecti left = mBack->getAbsoluteArea(), right = mFront->getAbsoluteArea();
    EXPECT_EQ(left.origin.x + left.getWidth(), right.origin.x);
    EXPECT_EQ(right.origin.x + right.getWidth(), 101);
}

TEST_F(KyCanvasTest, PickedViewsComeFrontFirst) {
    const KyHolder<KyGraphicsViewMultiPass> overlay(new KyGraphicsViewMultiPass);
    mFront->insert(overlay.get(), -1);
    using Views = std::vector<KyGraphicsViewMultiPass*>;
    EXPECT_EQ(mCanvas->pickViews(80, 10), (Views{overlay.get(), mFront.get(), mBack.get()}));
    EXPECT_EQ(mCanvas->pickViews(10, 10), Views{mBack.get()});
    EXPECT_EQ(mCanvas->pickViews(101, 10), Views{});
    EXPECT_EQ(mCanvas->pickViews(10, -1), Views{});
}

TEST_F(KyCanvasTest, RemovedViewsAreToldTheDeepestFirst) {
    mCanvas->viewRemovedSignal().connect(&mRemoved, &RemovalList::onRemoved);
    const KyHolder<KyGraphicsViewMultiPass> overlay(new KyGraphicsViewMultiPass);
    mFront->insert(overlay.get());
    ASSERT_TRUE(mCanvas->removeView(mFront.get()));
    EXPECT_EQ(mRemoved.views, (std::vector{overlay.get(), mFront.get()}));
    EXPECT_EQ(mFront->getCanvas(), nullptr);
    EXPECT_TRUE(mFront->getAbsoluteArea().isNull());
    EXPECT_FALSE(mCanvas->removeView(mFront.get()));
}

TEST_F(KyCanvasTest, AViewThatIsDestroyedLeavesTheCanvas) {
    mCanvas->viewRemovedSignal().connect(&mRemoved, &RemovalList::onRemoved);
    auto* view = new KyGraphicsViewMultiPass;
    mCanvas->insertView(view);
    view->destroy();
    EXPECT_EQ(mCanvas->getNbViews(), 2u);
    EXPECT_EQ(mRemoved.views, std::vector{view});
}

TEST_F(KyCanvasTest, ACanvasThatEndsLeavesHeldViewsAlone) {
    mCanvas.reset();
    EXPECT_EQ(mBack->getCanvas(), nullptr);
    EXPECT_EQ(mBack->getNbReferences(), 1u);
}

TEST_F(KyCanvasTest, WithoutStereoAPointStaysWhereItIs) {
    int x = 77, y = 13;
    mCanvas->transformStereoPoint(x, y);
    EXPECT_EQ(x, 77);
    EXPECT_EQ(y, 13);
}

TEST_F(KyCanvasTest, ARevisionChangesWithWhatIsShownAndOnlyThen) {
    const KyHolder<KyScene> scene(new KyScene);
    const KyHolder<KyCamera> camera(new KyCamera);
    auto* pass = KyScenePass::create();
    pass->setScene(scene.get());
    pass->setCamera(camera.get());
    mBack->setMainPass(pass);
    auto* box = new KyMeshNode;
    scene->addChild(box);
    std::uint64_t last = mCanvas->getRevision();
    const auto changes = [&] { return std::exchange(last, mCanvas->getRevision()) != last; };
    EXPECT_FALSE(changes());
    box->setPosition(KyVec3d(1, 0, 0));
    EXPECT_TRUE(changes());
    camera->setNear(0.2);
    EXPECT_TRUE(changes());
    scene->setBackground(KyColor(1, 1, 1));
    EXPECT_TRUE(changes());
    box->makeBox(1, 1, 1);
    EXPECT_TRUE(changes());
    mFront->setEnabled(false);
    EXPECT_TRUE(changes());
    mCanvas->setSize(200, 100);
    EXPECT_TRUE(changes());
    box->setPosition(KyVec3d(1, 0, 0));
    EXPECT_FALSE(changes());
    EXPECT_TRUE(mCanvas->needsRedraw()) << "never drawn";
}

TEST_F(KyCanvasTest, APointIsPickedThroughThePixelItIsSeenAt) {
    const KyHolder<KyScene> scene(new KyScene);
    const KyHolder<KyCamera> camera(new KyCamera);
    camera->lookAt(KyVec3d(0, 0, 10), KyVec3d());
    auto* box = new KyMeshNode;
    box->makeBox(2, 2, 2);
    scene->addChild(box);
    auto* pass = KyScenePass::create();
    pass->setScene(scene.get());
    pass->setCamera(camera.get());
    mFront->setMainPass(pass);
    const KyRecti area = mFront->getAreaPixels();
    const int x = area.origin.x + area.getWidth() / 2, y = area.getHeight() / 2;
    KyVec3d point(7, 7, 7);
    ASSERT_TRUE(mFront->pickPoint(x, y, point));
    EXPECT_NEAR(point.z, 1.0, 1e-9);
    EXPECT_LT(std::abs(point.x), 0.2);
    point = KyVec3d(7, 7, 7);
    EXPECT_FALSE(mFront->pickPoint(area.origin.x, 0, point));
    EXPECT_FALSE(mFront->pickPoint(10, y, point)) << "outside the view";
    EXPECT_EQ(point, KyVec3d(7, 7, 7));
    std::vector<KyIntersected*> results;
    KyIntersectedCreator nearer;
    nearer.distanceLimit = 5.0;
    EXPECT_FALSE(pass->pick(*mFront, x, y, results, nearer));
    ASSERT_TRUE(pass->pick(*mFront, x, y, results));
    ASSERT_EQ(results.size(), 1u);
    EXPECT_TRUE(results[0]->isValid());
    EXPECT_NEAR(results[0]->getDistance(), 9.0, 0.1);
    results[0]->destroy();
}

} // namespace

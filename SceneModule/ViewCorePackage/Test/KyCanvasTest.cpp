// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyCamera.h"
#include "KyCanvas.h"
#include "KyMeshNode.h"
#include "KyScenePass.h"

#include "KyInputEvent.h"
#include "KyObjectReference.h"

#include <gtest/gtest.h>

#include <functional>

namespace {

struct RemovalList : KyHasSlots {
    void onRemoved(KyGraphicsViewMultiPass* view) { views.push_back(view); }
    std::vector<KyGraphicsViewMultiPass*> views;
};

struct Asked : KyGraphicsViewMultiPass {
    bool handleEvent(const KyInputEvent&) override { return action(), false; }
    std::function<void()> action = [] {};
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

    /// A box of size 2 in front of a camera.
    KyScenePass* addScene(KyGraphicsViewMultiPass& view) {
        mCamera->lookAt(KyVec3d(0, 0, 10), KyVec3d());
        mBox->makeBox(2, 2, 2);
        mScene->addChild(mBox.get());
        auto* pass = KyScenePass::create();
        pass->setScene(mScene.get());
        pass->setCamera(mCamera.get());
        view.setMainPass(pass);
        return pass;
    }

    const KyHolder<KyScene> mScene{new KyScene};
    const KyHolder<KyCamera> mCamera{new KyCamera};
    const KyHolder<KyMeshNode> mBox{new KyMeshNode};
    KyHolder<KyCanvas> mCanvas;
    KyHolder<KyGraphicsViewMultiPass> mBack;
    KyHolder<KyGraphicsViewMultiPass> mFront;
    RemovalList mRemoved;
};

TEST_F(KyCanvasTest, PickedViewsComeFrontFirst) {
    const KyHolder<KyGraphicsViewMultiPass> overlay(new KyGraphicsViewMultiPass);
    mFront->insert(overlay.get(), -1);
    using Views = std::vector<KyGraphicsViewMultiPass*>;
    EXPECT_EQ(mCanvas->pickViews(80, 10), (Views{overlay.get(), mFront.get(), mBack.get()}));
    EXPECT_EQ(mCanvas->pickViews(10, 10), Views{mBack.get()});
    EXPECT_EQ(mCanvas->pickViews(101, 10), Views{});
}

TEST_F(KyCanvasTest, RemovedViewsAreToldTheDeepestFirst) {
    mCanvas->viewRemovedSignal().connect(&mRemoved, &RemovalList::onRemoved);
    const KyHolder<KyGraphicsViewMultiPass> overlay(new KyGraphicsViewMultiPass);
    mFront->insert(overlay.get());
    ASSERT_TRUE(mCanvas->removeView(mFront.get()));
    EXPECT_EQ(mRemoved.views, (std::vector{overlay.get(), mFront.get()}));
    EXPECT_EQ(mFront->getCanvas(), nullptr);
    auto* destroyed = new KyGraphicsViewMultiPass;
    mCanvas->insertView(destroyed);
    destroyed->destroy();
    EXPECT_EQ(mCanvas->getNbViews(), 1u);
    EXPECT_EQ(mRemoved.views.back(), destroyed);
    mCanvas.reset();
    EXPECT_EQ(mBack->getCanvas(), nullptr);
    EXPECT_EQ(mBack->getNbReferences(), 1u);
}

TEST_F(KyCanvasTest, HandlersMayTakeViewsAndTheCanvasAway) {
    const KyHolder<Asked> parent(new Asked), child(new Asked);
    mCanvas->insertView(parent.get());
    parent->insert(child.get());
    parent->action = [] { ADD_FAILURE() << "disabled, then removed"; };
    child->action = [&] { mCanvas->removeView(parent.get()); };
    for (const bool isEnabled : {false, true}) {
        EXPECT_EQ(parent->getCanvas(), mCanvas.get());
        parent->setEnabled(isEnabled);
        mCanvas->handleEvent(KyInputEvent());
    }
    parent->action = [] {};
    const std::function<void()> calls[] = {[&] { mCanvas->handleEvent(KyInputEvent()); },
                                           [&] { mCanvas->removeView(parent.get()); },
                                           [&] { parent->remove(child.get()); }};
    for (const auto& call : calls) {
        mCanvas.reset(new KyCanvas);
        mCanvas->setSize(1, 1);
        mCanvas->insertView(parent.get());
        parent->insert(child.get());
        const KyObjectReference canvas(mCanvas.get());
        bool isAlive = false;
        child->action = [&] { mCanvas.reset(), isAlive = canvas.get(); };
        mCanvas->viewRemovedSignal().connect([&](KyGraphicsViewMultiPass*) { child->action(); });
        call();
        EXPECT_TRUE(isAlive) << "the canvas until the call is through";
        EXPECT_FALSE(canvas);
    }
}

TEST_F(KyCanvasTest, ARevisionChangesWithWhatIsShownAndOnlyThen) {
    addScene(*mBack);
    std::uint64_t last = mCanvas->getRevision();
    const auto changes = [&] { return std::exchange(last, mCanvas->getRevision()) != last; };
    EXPECT_FALSE(changes());
    mBox->setPosition(KyVec3d(1, 0, 0));
    EXPECT_TRUE(changes());
    mCamera->setNear(0.2);
    EXPECT_TRUE(changes());
    mFront->setEnabled(false);
    EXPECT_TRUE(changes());
    mBox->setPosition(KyVec3d(1, 0, 0));
    EXPECT_FALSE(changes());
}

TEST_F(KyCanvasTest, APointIsPickedThroughThePixelItIsSeenAt) {
    KyScenePass* pass = addScene(*mFront);
    const KyRecti area = mFront->getAreaPixels();
    const int x = area.origin.x + area.getWidth() / 2, y = area.getHeight() / 2;
    KyVec3d point;
    ASSERT_TRUE(mFront->pickPoint(x, y, point));
    EXPECT_NEAR(point.z, 1.0, 1e-9);
    EXPECT_FALSE(mFront->pickPoint(10, y, point)) << "outside the view";
    std::vector<KyIntersected*> results;
    KyIntersectedCreator nearer;
    nearer.distanceLimit = 5.0;
    EXPECT_FALSE(pass->pick(*mFront, x, y, results, nearer));
    ASSERT_TRUE(pass->pick(*mFront, x, y, results));
    ASSERT_EQ(results.size(), 1u);
    EXPECT_NEAR(results[0]->getDistance(), 9.0, 0.1);
    results[0]->destroy();
}

} // namespace

// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyCanvas.h"
#include "KyGraphicsPass.h"
#include "KyRendererContext.h"

#include "KyInputEvent.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>

namespace {

class EventLog : public KyPassEventHandler {
public:
    EventLog(std::string& log, std::string name, bool handles, bool setsReturn = false)
        : mLog(log)
        , mName(std::move(name))
        , mHandles(handles)
        , mSetsReturn(setsReturn) {}

    using KyPassEventHandler::handleEvent;
    bool handleEvent(const KyInputEvent& event, KyGraphicsViewMultiPass* view, KyBaseGraphicsPass* pass) override {
        mLog += mName + (view && pass && pass->getEventHandler() == this ? " " : "? ");
        event.setInternalEventReturn(mSetsReturn);
        return mHandles;
    }

private:
    std::string& mLog;
    std::string mName;
    bool mHandles;
    bool mSetsReturn;
};

class KyGraphicsViewMultiPassTest : public testing::Test {
protected:
    KyGraphicsViewMultiPassTest()
        : mCanvas(new KyCanvas)
        , mView(KyGraphicsViewMultiPass::create()) {
        mCanvas->setSize(100, 100);
        mCanvas->insertView(mView.get());
    }

    void addPass(const char* name, float priority, bool handles = false, bool setsReturn = false) {
        auto* pass = new KyGraphicsPass;
        pass->setPriority(priority);
        pass->setEventHandler(new EventLog(mLog, name, handles, setsReturn));
        mView->addPass(pass);
    }

    KyHolder<KyCanvas> mCanvas;
    KyHolder<KyGraphicsViewMultiPass> mView;
    std::string mLog;
};

TEST_F(KyGraphicsViewMultiPassTest, EventsGoToPassesFrontFirst) {
    addPass("middle", 0.0f);
    addPass("back", -1.0f);
    addPass("front", 2.0f);
    KyInputEvent event;
    event.setInternalEventReturn(true);
    EXPECT_FALSE(mView->handleEvent(event)) << "a former return is not taken for this one";
    EXPECT_EQ(mLog, "front middle back ");
    mView->setEnabled(false);
    mView->handleEvent(event);
    EXPECT_EQ(mLog, "front middle back ");
}

TEST_F(KyGraphicsViewMultiPassTest, AnEventThatWasUsedOrReturnsInternallyGoesNoFurther) {
    addPass("back", 0.0f);
    addPass("middle", 1.0f, false, true);
    EXPECT_TRUE(mView->handleEvent(KyInputEvent()));
    EXPECT_EQ(mLog, "middle ");
    addPass("front", 2.0f, true);
    EXPECT_TRUE(mView->handleEvent(KyInputEvent()));
    EXPECT_EQ(mLog, "middle front ");
}

TEST_F(KyGraphicsViewMultiPassTest, ViewsAndPassesCoverTheirAreas) {
    addPass("main", 0.0f);
    auto* overlay = KyGraphicsViewMultiPass::create();
    auto* pass = new KyGraphicsPass;
    pass->setEventHandler(new EventLog(mLog, "overlay", false));
    overlay->addPass(pass);
    mView->insert(overlay);
    KyInputEvent event;
    event.setPosition(50, 50);
    EXPECT_FALSE(mCanvas->handleEvent(event));
    EXPECT_EQ(mLog, "overlay main ");
    event.setPosition(150, 50);
    EXPECT_FALSE(mCanvas->handleEvent(event));
    EXPECT_EQ(mLog, "overlay main ");
    pass->setArea(KyRectd(0.5, 0.25, 0.5, 0.5));
    EXPECT_EQ(pass->getAreaPixels(mView.get()), KyRecti(50, 25, 50, 50));
    EXPECT_TRUE(pass->adaptView(*mView));
    EXPECT_FALSE(pass->adaptView(*mView)) << "a size is told once";
    constexpr int cMin = std::numeric_limits<int>::min(), cMax = std::numeric_limits<int>::max();
    mView->setArea(KyRectd(-1e300, 0, 2e300, 1));
    EXPECT_EQ(mView->getAbsoluteArea(), KyRecti(cMin, 0, cMax, 100));
    mView->setArea(KyRectd(1e300, 0, 1, 1));
    overlay->setArea(KyRectd(1, 0, 1e300, 1));
    EXPECT_EQ(overlay->getAbsoluteArea(), KyRecti(cMax, 0, 0, 100));
}

TEST_F(KyGraphicsViewMultiPassTest, AViewIsNeverInsertedIntoItself) {
    auto* child = KyGraphicsViewMultiPass::create();
    ASSERT_TRUE(mView->insert(child));
    EXPECT_FALSE(mView->insert(mView.get()));
    EXPECT_FALSE(child->insert(mView.get()));
}

TEST_F(KyGraphicsViewMultiPassTest, TheMainPassIsOneOfThePasses) {
    const KyHolder<KyGraphicsPass> first(new KyGraphicsPass), second(new KyGraphicsPass);
    mView->addPass(second.get());
    mView->setMainPass(first.get());
    EXPECT_EQ(mView->getNbPasses(), 2u);
    EXPECT_FALSE(mView->addPass(first.get()));
    mView->setMainPass(second.get());
    EXPECT_EQ(mView->getNbPasses(), 1u);
    EXPECT_EQ(first->getNbReferences(), 1u);
}

} // namespace

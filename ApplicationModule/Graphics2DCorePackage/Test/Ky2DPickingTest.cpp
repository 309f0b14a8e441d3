// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "Ky2DGroup.h"
#include "Ky2DIntersected.h"
#include "Ky2DProxy.h"
#include "Ky2DRect.h"
#include "Ky2DScene.h"
#include "Ky2DStyle.h"
#include "KyQGraphicsItemIntersected.h"
#include "KyQGraphicsSceneViewItem.h"

#include <QGraphicsRectItem>

#include <gtest/gtest.h>

#include <limits>
#include <memory>

namespace {

class Ky2DPickingTest : public testing::Test {
protected:
    Ky2DRect* insertRect(const char* name, double x, double y, double size, Ky2DNode* parent = nullptr) {
        Ky2DRect* rect = Ky2DRect::create();
        rect->setName(name);
        rect->setX(x);
        rect->setY(y);
        rect->setWidth(size);
        rect->setHeight(size);
        (parent ? parent : &mScene)->insertChild(rect, Ky2DNode::cAppend);
        return rect;
    }

    /// The names that are found, "-" for records without a node.
    std::string pick(double x, double y) {
        std::vector<KyIntersected*> results;
        mScene.pick(x, y, results, &Ky2DIntersected::create);
        std::string names;
        for (KyIntersected* result : results) {
            const std::unique_ptr<KyIntersected> owner(result);
            EXPECT_TRUE(result->isValid() && result->getDistance() == 0.0);
            EXPECT_EQ(KyVec3d(x, y, 0), result->getPoint());
            const Ky2DNode* node = Ky2DIntersected::cast(result)->getElement();
            names += (names.empty() ? "" : " ") + (node ? node->getName() : std::string("-"));
        }
        return names;
    }

    Ky2DScene mScene;
};

} // namespace

TEST_F(Ky2DPickingTest, TheAreaModeFindsAllWithinTenUnitsAndTheOtherTheTopmostAtThePoint) {
    insertRect("low", 0, 0, 100);
    insertRect("high", 50, 50, 100)->setZValue(-1);
    insertRect("last", 90, 0, 10);
    const std::tuple<double, double, const char*, const char*> rows[] = {
        {20, 50, "low", "low"},   {95, 95, "low high", "low"}, {95, 5, "last low", "last"}, {120, 5, "", ""},
        {109, 5, "last low", ""}, {110.5, 5, "", ""},          {-9.5, 50, "low", ""},       {159, 159, "high", ""}};
    for (const auto& [x, y, area, topmost] : rows) {
        EXPECT_TRUE(mScene.setPickMode(Ky2DScene::eArea));
        EXPECT_EQ(area, pick(x, y)) << x << " " << y;
        EXPECT_TRUE(mScene.setPickMode(Ky2DScene::eTopmost));
        EXPECT_EQ(topmost, pick(x, y)) << x << " " << y;
    }
    EXPECT_FALSE(mScene.setPickMode(Ky2DScene::eNbPickModes) || mScene.setPickMode(Ky2DScene::PickMode(-1)));
    EXPECT_EQ(Ky2DScene::eTopmost, mScene.getPickMode());
}

TEST_F(Ky2DPickingTest, ANodeThatWasMovedIsFoundAtItsNewPlaceAtOnce) {
    Ky2DRect* rect = insertRect("moved", 0, 0, 10);
    EXPECT_EQ("moved", pick(5, 5));
    rect->setTranslation(200, 0);
    EXPECT_EQ("", pick(5, 5));
    EXPECT_EQ("moved", pick(205, 5));
}

TEST_F(Ky2DPickingTest, WhatIsHiddenOrTransparentIsNotFoundAndWhatIsOnlyUnfilledIs) {
    auto* group = Ky2DGroup::create();
    mScene.insertChild(group, Ky2DNode::cAppend);
    Ky2DRect* rect = insertRect("rect", 0, 0, 10, group);
    rect->editStyle()->setFillMode(eNoBrush);
    for (const auto mode : {Ky2DScene::eArea, Ky2DScene::eTopmost}) {
        mScene.setPickMode(mode);
        EXPECT_EQ("rect", pick(5, 5));
        for (Ky2DNode* node : std::initializer_list<Ky2DNode*>{rect, group}) {
            node->setVisible(false);
            EXPECT_EQ("", pick(5, 5));
            node->setVisible(true);
        }
        rect->getQGraphicsItem()->setOpacity(0);
        EXPECT_EQ("", pick(5, 5));
        rect->getQGraphicsItem()->setOpacity(1);
    }
}

TEST_F(Ky2DPickingTest, ItemsThatShowA3DViewAreDropped) {
    insertRect("below", 0, 0, 10);
    auto* view = new KyQGraphicsSceneViewItem;
    view->setZValue(100);
    mScene.getQGraphicsScene()->addItem(view);
    EXPECT_EQ("below", pick(5, 5));
    EXPECT_EQ("", pick(100, 100));
    mScene.setPickMode(Ky2DScene::eTopmost);
    EXPECT_EQ("", pick(5, 5));
}

TEST_F(Ky2DPickingTest, AnItemThatNoNodeDrivesGivesARecordWithoutNode) {
    insertRect("node", 0, 0, 10);
    auto* foreign = mScene.getQGraphicsScene()->addRect(0, 0, 10, 10);
    foreign->setZValue(5);
    EXPECT_EQ("- node", pick(5, 5));
    auto* proxied = new QGraphicsRectItem(0, 0, 10, 10);
    auto* child = new QGraphicsRectItem(0, 0, 10, 10, proxied);
    auto* proxy = new Ky2DProxy(proxied);
    proxy->setName("proxy");
    proxy->setZValue(9);
    mScene.insertChild(proxy, Ky2DNode::cAppend);
    EXPECT_EQ("- proxy - node", pick(5, 5));
    std::vector<KyIntersected*> results;
    mScene.pickQGraphicsItem(5, 5, results, &KyQGraphicsItemIntersected::create);
    ASSERT_EQ(4u, results.size());
    EXPECT_EQ(child, KyQGraphicsItemIntersected::cast(results[0])->getQGraphicsItem());
    EXPECT_EQ(foreign, KyQGraphicsItemIntersected::cast(results[2])->getQGraphicsItem());
    for (KyIntersected* result : results)
        delete result;
    proxy->destroy();
    delete proxied;
}

TEST_F(Ky2DPickingTest, ResultsAreAppendedMadeByTheCreatorAndForgetNodesThatEnd) {
    Ky2DRect* rect = insertRect("rect", 0, 0, 10);
    std::vector<KyIntersected*> results{nullptr};
    mScene.pick(5, 5, results);
    mScene.pickQGraphicsItem(5, 5, results);
    mScene.pick(5, 5, results, &KyQGraphicsItemIntersected::create);
    mScene.pick(5, 5, results, KyIntersectedCreator([]() -> KyIntersected* { return nullptr; }));
    mScene.pick(5, 5, results, &Ky2DIntersected::create);
    ASSERT_EQ(5u, results.size());
    EXPECT_EQ(nullptr, results[0]);
    EXPECT_EQ(KyIntersected::getType(), results[1]->getObjectType());
    EXPECT_EQ(KyQGraphicsItemIntersected::getType(), results[3]->getObjectType());
    EXPECT_EQ(rect, Ky2DIntersected::cast(results[4])->getElement());
    rect->destroy();
    EXPECT_EQ(nullptr, Ky2DIntersected::cast(results[4])->getElement());
    for (KyIntersected* result : results)
        delete result;
}

TEST_F(Ky2DPickingTest, WhatIsScaledBeyondAllNumbersIsNotFound) {
    insertRect("rect", 0, 0, 10);
    auto* group = Ky2DGroup::create();
    mScene.insertChild(group, Ky2DNode::cAppend);
    Ky2DRect* huge = insertRect("huge", 0, 0, 10, group);
    huge->setScale(1e200, 1e200);
    group->setScale(1e200, 1e200);
    for (const auto mode : {Ky2DScene::eArea, Ky2DScene::eTopmost}) {
        mScene.setPickMode(mode);
        EXPECT_EQ("rect", pick(5, 5));
        EXPECT_EQ("", pick(-5000, -5000));
    }
}

TEST_F(Ky2DPickingTest, PointsThatAreNoneAndScenesThatAreGoneFindNothing) {
    insertRect("rect", -1e6, -1e6, 2e6);
    const double bad[] = {std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::infinity(), 1e308};
    for (const auto mode : {Ky2DScene::eArea, Ky2DScene::eTopmost}) {
        mScene.setPickMode(mode);
        for (const double value : bad)
            EXPECT_EQ("", pick(value, 0) + pick(0, -value));
    }
    delete mScene.getQGraphicsScene();
    EXPECT_EQ("", pick(0, 0));
}

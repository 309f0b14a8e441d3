// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "Ky2DProxy.h"
#include "Ky2DScene.h"
#include "Ky2DTestNodes.h"

#include <QGraphicsObject>

#include <gtest/gtest.h>

#include <initializer_list>
#include <memory>

namespace {

constexpr unsigned cAppend = Ky2DNode::cAppend;

struct Ky2DSceneTest : testing::Test {
    Ky2DSceneTest() {
        group->insertChild(child, cAppend);
        scene->insertChild(group, cAppend);
    }

    std::unique_ptr<Ky2DScene> scene = std::make_unique<Ky2DScene>();
    Ky2DGroup* group = new Ky2DGroup;
    CountingNode* child = new CountingNode;
};

/// Tells when its visibility changes, as items that are objects do.
class TellingItem : public QGraphicsObject {
public:
    QRectF boundingRect() const override { return QRectF(0, 0, 5, 5); }
    void paint(QPainter*, const QStyleOptionGraphicsItem*, QWidget*) override {}
};

} // namespace

TEST_F(Ky2DSceneTest, EnteringAndLeavingReachesAllBelow) {
    EXPECT_EQ(child->getScene(), scene.get());
    EXPECT_EQ(scene->getScene(), scene.get());
    EXPECT_EQ(child->getQGraphicsItem()->scene(), scene->getQGraphicsScene());
    EXPECT_EQ(scene->getNode(child->getQGraphicsItem()), child);
    EXPECT_EQ(scene->getNbRegisteredNodes(), 2U);
    Ky2DScene other;
    EXPECT_TRUE(other.insertChild(group, cAppend));
    EXPECT_EQ(child->getScene(), &other);
    EXPECT_EQ(child->getQGraphicsItem()->scene(), other.getQGraphicsScene());
    EXPECT_EQ(scene->getNbRegisteredNodes(), 0U);
    EXPECT_EQ(scene->getNbNodes(), 0U);
    EXPECT_EQ(other.removeChildByIndex(0, false), group);
    EXPECT_EQ(child->getScene(), nullptr);
    EXPECT_EQ(child->getQGraphicsItem()->scene(), nullptr);
    EXPECT_EQ(child->getQGraphicsItem()->parentItem(), group->getQGraphicsItem());
    EXPECT_TRUE(scene->getQGraphicsScene()->items().isEmpty());
    group->destroy();
}

TEST_F(Ky2DSceneTest, TheQtSceneIsDeletedWhenOwned) {
    for (const bool own : {true, false}) {
        const QPointer<QGraphicsScene> borrowed = new QGraphicsScene;
        auto* owner = Ky2DScene::create(borrowed, own);
        EXPECT_EQ(owner->ownsQGraphicsScene(), own);
        owner->insertChild(new CountingNode, cAppend);
        owner->destroy();
        EXPECT_EQ(borrowed.isNull(), own);
        EXPECT_TRUE(own || borrowed->items().isEmpty());
        delete borrowed.data();
    }
    const QPointer<QGraphicsScene> made = scene->getQGraphicsScene();
    EXPECT_TRUE(Ky2DScene(nullptr, false).ownsQGraphicsScene());
    scene.reset();
    EXPECT_TRUE(made.isNull());
}

TEST_F(Ky2DSceneTest, AQtSceneMayEndFirst) {
    delete scene->getQGraphicsScene();
    EXPECT_EQ(scene->getQGraphicsScene(), nullptr);
    EXPECT_EQ(child->getQGraphicsItem(), nullptr);
    EXPECT_EQ(scene->getNbRegisteredNodes(), 0U);
    child->setTranslation(1, 1);
    EXPECT_TRUE(scene->getBound().isNull());
    EXPECT_TRUE(scene->insertChild(new CountingNode, cAppend));
    EXPECT_EQ(scene->pickNode(0, 0), nullptr);
}

TEST_F(Ky2DSceneTest, ChangesAreToldOnceUntilTheyAreApplied) {
    Ky2DNode::applyModification();
    int nbTold = 0;
    scene->changesPendingSignal().connect([&](Ky2DScene* told) {
        EXPECT_EQ(told, scene.get());
        ++nbTold;
    });
    child->rotate(1);
    child->editStyle();
    group->rotate(1);
    EXPECT_EQ(nbTold, 1);
    EXPECT_TRUE(scene->hasPendingChanges());
    Ky2DNode::applyModification();
    EXPECT_FALSE(scene->hasPendingChanges());
    // One that is dirty enters.
    group->insertChild(new CountingNode, cAppend);
    EXPECT_EQ(nbTold, 2);
    Ky2DNode::applyModification();
    CountingNode elsewhere;
    elsewhere.rotate(1);
    EXPECT_EQ(nbTold, 2);
    // Even one that ends before it is updated leaves nothing pending.
    child->rotate(1);
    child->destroy();
    EXPECT_EQ(nbTold, 3);
    Ky2DNode::applyModification();
    EXPECT_FALSE(scene->hasPendingChanges());
}

TEST_F(Ky2DSceneTest, WhoIsToldOfChangesMayEndTheScene) {
    Ky2DNode::applyModification();
    Ky2DNode* const moved = child;
    const KyObjectReference life(moved);
    scene->changesPendingSignal().connect([this](Ky2DScene*) { scene.reset(); });
    moved->setTranslation(1, 1);
    EXPECT_EQ(life.get(), nullptr);
    EXPECT_EQ(scene, nullptr);
    Ky2DNode::applyModification();
}

TEST_F(Ky2DSceneTest, ACopyOfANodeIsShownOnceItIsInserted) {
    Ky2DGroup* copy = group->clone();
    EXPECT_EQ(copy->getScene(), scene.get());
    EXPECT_EQ(scene->getNode(copy->getQGraphicsItem()), nullptr);
    EXPECT_EQ(copy->getQGraphicsItem()->scene(), nullptr);
    EXPECT_TRUE(scene->insertChild(copy, cAppend));
    EXPECT_EQ(scene->getNode(copy->getQGraphicsItem()), copy);
    EXPECT_EQ(scene->getNode(copy->getChild(0)->getQGraphicsItem()), copy->getChild(0));
    EXPECT_EQ(copy->getChild(0)->getQGraphicsItem()->scene(), scene->getQGraphicsScene());
    const std::unique_ptr<Ky2DNode> left(copy->clone());
    scene.reset();
    EXPECT_EQ(left->getScene(), nullptr);
    EXPECT_EQ(left->getChild(0)->getScene(), nullptr);
}

TEST_F(Ky2DSceneTest, AProxysItemIsItsMakers) {
    for (const bool isSceneFirst : {true, false}) {
        auto item = std::make_unique<TellingItem>();
        auto* proxy = Ky2DProxy::create(item.get());
        scene->insertChild(proxy, cAppend);
        proxy->setTranslation(3, 4);
        proxy->setZValue(5);
        proxy->setVisible(false);
        Ky2DNode::applyModification();
        EXPECT_EQ(item->scene(), scene->getQGraphicsScene());
        EXPECT_EQ(item->transform(), QTransform::fromTranslate(3, 4));
        EXPECT_EQ(item->zValue(), 5);
        EXPECT_FALSE(item->isVisible());
        EXPECT_EQ(scene->getNode(item.get()), proxy);
        const std::unique_ptr<Ky2DProxy> copy(proxy->clone());
        EXPECT_EQ(copy->getQGraphicsItem(), nullptr);
        if (isSceneFirst) {
            scene = std::make_unique<Ky2DScene>();
            EXPECT_EQ(item->scene(), nullptr);
            EXPECT_TRUE(item->childItems().isEmpty());
        } else {
            item.reset();
            EXPECT_EQ(proxy->getQGraphicsItem(), nullptr);
            EXPECT_EQ(scene->getNbRegisteredNodes(), 0U);
        }
    }
}

TEST_F(Ky2DSceneTest, AProxysItemLeavesTheQtSceneItWasIn) {
    QGraphicsScene former;
    for (Ky2DNode* parent : std::initializer_list<Ky2DNode*>{group, scene.get()}) {
        auto* proxy = Ky2DProxy::create(former.addRect(0, 0, 10, 10));
        EXPECT_TRUE(parent->insertChild(proxy, cAppend));
        EXPECT_EQ(proxy->getQGraphicsItem()->scene(), scene->getQGraphicsScene());
        EXPECT_EQ(proxy->getQGraphicsItem()->parentItem(), parent->getQGraphicsItem());
        const std::unique_ptr<QGraphicsItem> item(proxy->getQGraphicsItem());
    }
}

TEST_F(Ky2DSceneTest, OnlyMembersAreRegistered) {
    Ky2DScene other;
    CountingNode stranger;
    for (Ky2DNode* node : {&stranger, child}) {
        other.registerNode(node);
        EXPECT_EQ(other.getNode(node->getQGraphicsItem()), nullptr);
    }
}

TEST_F(Ky2DSceneTest, WhatEndsEntersNoSceneAndTakesNoStyle) {
    auto* style = new Ky2DStyle;
    int nbTold = 0;
    const Listener listener(*child->editStyle(), [&] {
        child->setScene(nullptr);
        child->setScene(scene.get());
        child->setStyle(style);
        ++nbTold;
    });
    child->destroy();
    EXPECT_GT(nbTold, 0);
    EXPECT_EQ(scene->getNbNodes(), 1U);
    CountingNode late;
    late.setStyle(style);
    EXPECT_EQ(late.getStyle(), style);
    const Listener atEnd(*scene, [&, ending = scene.get()] {
        late.setScene(ending);
        EXPECT_FALSE(group->insertChild(&late, cAppend));
    });
    scene.release()->destroy();
    EXPECT_EQ(late.getScene(), nullptr);
}

TEST_F(Ky2DSceneTest, TwoProxiesMayShareAnItem) {
    TellingItem item;
    auto* first = Ky2DProxy::create(&item);
    auto* second = Ky2DProxy::create(&item);
    scene->insertChild(first, cAppend);
    group->insertChild(second, cAppend);
    EXPECT_EQ(scene->getNode(&item), second);
    first->destroy();
    EXPECT_EQ(scene->getNode(&item), second);
    second->destroy();
    EXPECT_EQ(item.scene(), nullptr);
    EXPECT_TRUE(item.childItems().isEmpty());
}

TEST_F(Ky2DSceneTest, AProxyOfAnItemAboveIsNotPutBelowItself) {
    auto* proxy = Ky2DProxy::create(group->getQGraphicsItem());
    EXPECT_TRUE(group->insertChild(proxy, cAppend));
    EXPECT_EQ(group->getQGraphicsItem()->parentItem(), nullptr);
    EXPECT_FALSE(scene->getQGraphicsScene()->items().isEmpty());
}

TEST_F(Ky2DSceneTest, WhoListensToAnItemMayEndItsNode) {
    TellingItem item;
    auto* proxy = Ky2DProxy::create(&item);
    const KyObjectReference life(proxy);
    scene->insertChild(proxy, cAppend);
    Ky2DNode::applyModification();
    QObject::connect(&item, &QGraphicsObject::zChanged, [&] { proxy->destroy(); });
    proxy->setZValue(1);
    Ky2DNode::applyModification();
    EXPECT_EQ(life.get(), nullptr);
    EXPECT_EQ(item.scene(), nullptr);
}

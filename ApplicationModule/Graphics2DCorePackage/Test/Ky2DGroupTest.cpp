// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "Ky2DGroup.h"
#include "Ky2DScene.h"
#include "Ky2DTestNodes.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <memory>

namespace {

constexpr unsigned cAppend = Ky2DNode::cAppend;

struct Ky2DGroupTest : testing::Test {
    Ky2DGroupTest() {
        for (Ky2DNode*& child : children) {
            child = new CountingNode;
            group->insertChild(child, cAppend);
        }
    }

    std::string getOrder() const {
        std::string order;
        for (unsigned i = 0; i < group->getNbChildren(); ++i) {
            const Ky2DNode* child = group->getChild(i);
            EXPECT_EQ(child->getIndex(), static_cast<int>(i));
            EXPECT_EQ(child->getParent(), group.get());
            EXPECT_EQ(child->getQGraphicsItem()->parentItem(), group->getQGraphicsItem());
            const auto found = std::find(std::begin(children), std::end(children), child);
            order += found == std::end(children) ? '-' : static_cast<char>('0' + (found - std::begin(children)));
        }
        return order;
    }

    std::unique_ptr<Ky2DGroup> group = std::make_unique<Ky2DGroup>();
    Ky2DNode* children[3]{};
};

/// That many groups below each other under the top.
Ky2DGroup* makeChain(unsigned levels) {
    auto* top = new Ky2DGroup;
    for (unsigned i = 0; i < levels; ++i) {
        auto* above = new Ky2DGroup;
        above->insertChild(top, cAppend);
        top = above;
    }
    return top;
}

} // namespace

TEST_F(Ky2DGroupTest, ChildrenAreNumbered) {
    EXPECT_EQ(getOrder(), "012");
    CountingNode added;
    EXPECT_FALSE(group->insertChild(&added, 3));
    EXPECT_EQ(added.getIndex(), -1);
    EXPECT_TRUE(group->insertChild(&added, 1));
    EXPECT_EQ(getOrder(), "0-12");
    EXPECT_EQ(group->removeChildByIndex(1, false), &added);
    EXPECT_EQ(added.getIndex(), -1);
    EXPECT_EQ(added.getParent(), nullptr);
    EXPECT_EQ(added.getQGraphicsItem()->parentItem(), nullptr);
    EXPECT_EQ(group->removeChildByIndex(0, true), nullptr);
    EXPECT_EQ(getOrder(), "12");
    EXPECT_EQ(group->removeChildByIndex(2, true), nullptr);
    EXPECT_EQ(group->getChild(2), nullptr);
    children[2]->setName("x");
    children[1]->setName("x");
    EXPECT_EQ(group->editChildByName("x"), children[1]);
    EXPECT_EQ(group->getChildByName("y"), nullptr);
    group->removeAllChildren();
    EXPECT_EQ(group->getNbChildren(), 0U);
}

TEST_F(Ky2DGroupTest, InsertingTakesFromTheFormerParent) {
    Ky2DGroup other;
    EXPECT_TRUE(other.insertChild(children[1], cAppend));
    EXPECT_EQ(getOrder(), "02");
    EXPECT_TRUE(group->insertChild(children[1], 0));
    EXPECT_EQ(getOrder(), "102");
    EXPECT_EQ(other.getNbChildren(), 0U);
    EXPECT_TRUE(group->insertChild(children[1], 1));
    EXPECT_EQ(getOrder(), "012");
    // The index counts without the child itself.
    EXPECT_FALSE(group->insertChild(children[2], 2));
    EXPECT_EQ(getOrder(), "01");
    children[2]->setParent(group.get());
    EXPECT_EQ(getOrder(), "012");
    children[2]->setParent(nullptr);
    EXPECT_EQ(getOrder(), "01");
    EXPECT_EQ(group->removeChild(children[2], true), nullptr);
    children[2]->destroy();
}

TEST_F(Ky2DGroupTest, WhatCannotBeAChildIsRefusedAndNothingChanges) {
    Ky2DScene scene;
    auto* inner = new Ky2DGroup;
    auto* innermost = new Ky2DGroup;
    group->insertChild(inner, cAppend);
    inner->insertChild(innermost, cAppend);
    Ky2DNode* const refused[] = {nullptr, innermost, inner, group.get(), &scene};
    for (Ky2DNode* child : refused) {
        EXPECT_FALSE(innermost->insertChild(child, cAppend));
        innermost->insertChild(new CountingNode, cAppend);
        EXPECT_FALSE(innermost->setChild(0, child));
        EXPECT_EQ(innermost->getNbChildren(), 1U);
        innermost->removeAllChildren();
    }
    EXPECT_EQ(inner->getParent(), group.get());
    EXPECT_EQ(innermost->getParent(), inner);
    EXPECT_FALSE(children[0]->insertChild(children[1], cAppend));
    Ky2DNode added;
    EXPECT_FALSE(group->setChild(4, &added));
    EXPECT_EQ(group->getNbChildren(), 4U);
}

TEST_F(Ky2DGroupTest, ANodeLeavesItsParentForOneThatRefusesIt) {
    children[0]->setParent(children[1]);
    EXPECT_EQ(children[0]->getParent(), nullptr);
    children[1]->setParent(children[1]);
    EXPECT_EQ(children[1]->getIndex(), -1);
    EXPECT_EQ(getOrder(), "2");
    // Whom a listener of the former parent placed elsewhere stays there.
    Ky2DGroup other;
    const Listener listener(*group, [&] { other.insertChild(children[2], cAppend); });
    children[2]->setParent(children[1]);
    EXPECT_EQ(children[2]->getParent(), &other);
    children[0]->destroy();
    children[1]->destroy();
}

TEST_F(Ky2DGroupTest, TreesHaveADepthLimit) {
    auto* top = makeChain(Ky2DNode::cMaxDepth);
    Ky2DNode* bottom = top;
    while (bottom->getNbChildren())
        bottom = bottom->editChild(0);
    auto* more = new CountingNode;
    EXPECT_FALSE(bottom->insertChild(more, cAppend));
    EXPECT_FALSE(group->insertChild(top, cAppend));
    EXPECT_TRUE(bottom->editParent()->insertChild(more, 0));
    EXPECT_FALSE(more->isEnding());
    // Without its lowest level it fits.
    bottom->destroy();
    more->destroy();
    EXPECT_TRUE(group->insertChild(top, cAppend));
    const std::unique_ptr<Ky2DGroup> copy(group->clone());
    EXPECT_EQ(copy->getNbChildren(), 4U);
    Ky2DScene scene;
    EXPECT_FALSE(scene.insertChild(copy.get(), cAppend));
    Ky2DGroup inner;
    EXPECT_FALSE(inner.insertChild(group.get(), cAppend));
    top->removeAllChildren();
    EXPECT_TRUE(inner.insertChild(group.get(), cAppend));
    top->destroy();
    EXPECT_EQ(getOrder(), "012");
    group->setParent(nullptr);
}

TEST_F(Ky2DGroupTest, SettingAChildEndsTheFormerOne) {
    auto* added = new CountingNode;
    EXPECT_TRUE(group->setChild(1, added));
    EXPECT_EQ(getOrder(), "0-2");
    EXPECT_TRUE(group->setChild(1, added));
    EXPECT_EQ(getOrder(), "0-2");
    // One before, which moves the others down.
    EXPECT_TRUE(group->setChild(2, children[0]));
    EXPECT_EQ(getOrder(), "-0");
    // Nodes to come may have the addresses of those that ended.
    children[1] = children[2] = nullptr;
    auto* inner = new Ky2DGroup;
    auto* below = new CountingNode;
    inner->insertChild(below, cAppend);
    group->setChild(0, inner);
    EXPECT_TRUE(group->setChild(0, below));
    EXPECT_EQ(getOrder(), "-0");
    EXPECT_EQ(group->getChild(0), below);
}

TEST_F(Ky2DGroupTest, SiblingsAreDrawnInTheirOrder) {
    Ky2DScene scene;
    for (Ky2DNode* child : children)
        scene.insertChild(child, cAppend);
    scene.insertChild(new CountingNode, 0);
    scene.insertChild(children[2], 1);
    Ky2DNode::applyModification();
    const auto drawn =
        scene.getQGraphicsScene()->items(QRectF(0, 0, 5, 5), Qt::IntersectsItemBoundingRect, Qt::AscendingOrder);
    ASSERT_EQ(drawn.size(), 4);
    for (int i = 0; i < 4; ++i)
        EXPECT_EQ(drawn[i], scene.getChild(static_cast<unsigned>(i))->getQGraphicsItem()) << i;
}

TEST_F(Ky2DGroupTest, ListenersAreToldOfChildren) {
    const Listener listener(*group);
    group->insertChild(children[0], cAppend);
    EXPECT_EQ(listener.entries, (std::vector<std::string>{"Children 5 0", "Children 4 2"}));
    children[1]->destroy();
    EXPECT_EQ(listener.entries.back(), "Children 5 0");
}

TEST_F(Ky2DGroupTest, AListenerOfTheFormerParentMayUndoTheMove) {
    Ky2DGroup other;
    Ky2DNode* child = children[0];
    Listener listener(*group, [&] {
        if (!child->getParent())
            child->setParent(group.get());
    });
    EXPECT_FALSE(other.insertChild(child, cAppend));
    EXPECT_EQ(getOrder(), "120");
}

TEST_F(Ky2DGroupTest, BoundsAreThoseOfTheChildren) {
    EXPECT_TRUE(Ky2DGroup().getBound().isNull());
    for (Ky2DNode* child : children)
        static_cast<QGraphicsRectItem*>(child->getQGraphicsItem())->setPen(Qt::NoPen);
    children[0]->setTranslation(100, 100);
    children[1]->setTranslation(200, 50);
    children[1]->setVisible(false);
    children[2]->destroy();
    group->insertChild(new Ky2DNode, 0);
    group->insertChild(new Ky2DGroup, 0);
    group->setScale(2, 2);
    EXPECT_EQ(group->getBound(), KyRectd(200, 100, 220, 120));
    EXPECT_EQ(group->getLocalBound(), KyRectd(0, 0, 220, 120));
    children[1]->setQtOffset(KyVec2d(std::nan(""), 0));
    children[1]->setTranslation(-100, 0);
    EXPECT_TRUE(std::isfinite(group->getBound().width));
}

TEST_F(Ky2DGroupTest, VisibilityAndDepthComeFromAbove) {
    Ky2DGroup top;
    top.insertChild(group.get(), cAppend);
    top.setZValue(1000);
    group->setZValue(10);
    children[0]->setZValue(1);
    int z = 100;
    children[0]->getOffsetZValue(z);
    EXPECT_EQ(z, 111);
    top.getOffsetZValue(z);
    EXPECT_EQ(z, 111);
    group->setZValue(std::numeric_limits<int>::max());
    children[0]->getOffsetZValue(z);
    EXPECT_EQ(z, std::numeric_limits<int>::max());
    group->setVisible(false);
    EXPECT_FALSE(children[0]->isVisible());
    EXPECT_TRUE(children[0]->isOwnVisible());
    Ky2DNode::applyModification();
    // Changed while hidden from above: both switches count once the group is shown again.
    children[1]->setVisible(false);
    Ky2DNode::applyModification();
    group->setVisible(true);
    Ky2DNode::applyModification();
    EXPECT_TRUE(children[0]->getQGraphicsItem()->isVisible());
    EXPECT_FALSE(children[1]->getQGraphicsItem()->isVisible());
    EXPECT_EQ(children[0]->getQGraphicsItem()->zValue(), 1);
    group.release();
}

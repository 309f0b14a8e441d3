// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyHolder.h"
#include "KyMeshNode.h"
#include "KyNode.h"
#include "KyNodeHit.h"

#include "KyRay.h"

#include <gtest/gtest.h>

#include <limits>
#include <numbers>
#include <string>
#include <vector>

namespace {

class ChangeList : public KyHasSlots {
public:
    void onModified(KyObject*, KyObjectModificationType kind, const std::string& name, int index) {
        entries.push_back(std::to_string(kind) + " " + name + " " + std::to_string(index));
    }
    std::vector<std::string> entries;
};

void expectNear(const KyVec3d& a, const KyVec3d& b) {
    EXPECT_NEAR((a - b).length(), 0.0, 1e-12) << a << " instead of " << b;
}

/// Puts one node below another as soon as it hears of a change.
class Mover : public KyHasSlots {
public:
    void onModified(KyObject*, KyObjectModificationType, const std::string&, int) { parent->addChild(child); }
    KyNode* parent = nullptr;
    KyNode* child = nullptr;
};

/// A chain of that many levels below its top; `bottom` is the lowest.
KyHolder<KyNode> makeChain(unsigned levels, KyNode*& bottom) {
    KyHolder<KyNode> top(new KyNode);
    bottom = top.get();
    for (unsigned i = 0; i < levels; ++i) {
        auto* next = new KyNode;
        EXPECT_TRUE(bottom->addChild(next));
        bottom = next;
    }
    return top;
}

class KyNodeTest : public testing::Test {
protected:
    KyNodeTest()
        : mRoot(new KyNode)
        , mChild(new KyNode) {
        mRoot->addChild(mChild.get());
    }

    KyHolder<KyNode> mRoot;
    KyHolder<KyNode> mChild;
};

TEST_F(KyNodeTest, AChildMovesWithItsParentAndIsPlacedInTheWorldAllTheSame) {
    mChild->setPosition(KyVec3d(1, 0, 0));
    mRoot->rotate(KyVec3d(0, 1, 0), std::numbers::pi / 2);
    mRoot->setScale(KyVec3d(2, 2, 2));
    mRoot->setPosition(KyVec3d(0, 5, 0));
    expectNear(mChild->getWorldPosition(), KyVec3d(0, 5, -2));
    const KyMat4d wanted = KyMat4d::lookAt(KyVec3d(1, 2, 3), KyVec3d(0, 0, 0), KyVec3d(0, 1, 0));
    mChild->setWorldFrame(wanted);
    for (int column = 0; column < 4; ++column)
        expectNear(mChild->getWorldFrame().getColumn(column), wanted.getColumn(column));
}

TEST_F(KyNodeTest, ValuesThatAreNotFiniteAreIgnored) {
    const double nan = std::numeric_limits<double>::quiet_NaN();
    mChild->setPosition(KyVec3d(nan, 0, 0));
    mChild->setScale(KyVec3d(1, std::numeric_limits<double>::infinity(), 1));
    mChild->lookAt(KyVec3d(nan, 0, 0), KyVec3d());
    KyMat4d frame;
    frame.set(0, 0, nan);
    mChild->setLocalFrame(frame);
    EXPECT_EQ(mChild->getWorldFrame(), KyMat4d());
}

TEST_F(KyNodeTest, AChildHasOneParentAndMakesNoLoop) {
    EXPECT_FALSE(mRoot->addChild(nullptr));
    EXPECT_FALSE(mRoot->addChild(mRoot.get()));
    EXPECT_FALSE(mChild->addChild(mRoot.get()));
    EXPECT_EQ(mChild->getParent(), mRoot.get());
    const KyHolder<KyNode> other(new KyNode);
    ASSERT_TRUE(other->addChild(mChild.get()));
    EXPECT_EQ(mRoot->getNbChildren(), 0u);
    EXPECT_EQ(mChild->getParent(), other.get());
    EXPECT_EQ(mChild->getNbReferences(), 2u);
    mRoot.reset();
    EXPECT_EQ(mChild->getParent(), other.get());
}

TEST_F(KyNodeTest, AChildThatIsDestroyedLeavesItsParentWhichTells) {
    ChangeList changes;
    mRoot->connectModified(&changes, &ChangeList::onModified);
    auto* node = new KyNode;
    mRoot->addChild(node);
    node->destroy();
    EXPECT_EQ(mRoot->getNbChildren(), 1u);
    EXPECT_EQ(changes.entries, (std::vector<std::string>{"4 Children 1", "5 Children 1"}));
}

TEST_F(KyNodeTest, EveryChangeIsToldOnceUnderItsName) {
    ChangeList changes;
    mChild->connectModified(&changes, &ChangeList::onModified);
    mChild->setPosition(KyVec3d(1, 2, 3));
    mChild->setPosition(KyVec3d(1, 2, 3));
    mChild->setVisible(false);
    ASSERT_TRUE(mChild->getAttribute("Name")->setValue(*mChild, KyField("arm")));
    mChild->setLocalFrame(KyMat4d());
    EXPECT_EQ(changes.entries, (std::vector<std::string>{"2 Position -1", "2 Visible -1", "2 Name -1", "2 Position -1",
                                                         "2 Orientation -1", "2 Scale -1"}));
}

TEST_F(KyNodeTest, RevisionsOfAllAboveChangeAndNoOthers) {
    const KyHolder<KyNode> sibling(new KyNode);
    mRoot->addChild(sibling.get());
    const auto root = mRoot->getRevision(), child = mChild->getRevision(), other = sibling->getRevision();
    mChild->translate(KyVec3d(0, 0, 1));
    EXPECT_NE(mRoot->getRevision(), root);
    EXPECT_NE(mChild->getRevision(), child);
    EXPECT_EQ(sibling->getRevision(), other);
}

TEST_F(KyNodeTest, ATreeIsNoDeeperThanItsLimit) {
    KyNode* bottom = nullptr;
    const KyHolder<KyNode> top = makeChain(KyNode::cMaxDepth, bottom), more(new KyNode);
    EXPECT_FALSE(bottom->addChild(more.get()));
    EXPECT_FALSE(bottom->getAttribute("Children")->addValue(*bottom, 0, KyField(more.get())));
    EXPECT_EQ(more->getNbReferences(), 1u);
    EXPECT_TRUE(bottom->getParent()->addChild(more.get()));
}

TEST_F(KyNodeTest, WhatLeavesATreeMakesRoomForOthers) {
    KyNode *deepEnd = nullptr, *flatEnd = nullptr;
    const KyHolder<KyNode> deep = makeChain(KyNode::cMaxDepth - 1, deepEnd);
    const KyHolder<KyNode> flat = makeChain(KyNode::cMaxDepth - 2, flatEnd), stem(new KyNode);
    ASSERT_TRUE(stem->addChild(flat.get()));
    ASSERT_TRUE(stem->addChild(deep.get()));
    EXPECT_FALSE(mRoot->addChild(stem.get()));
    ASSERT_TRUE(stem->removeChild(deep.get()));
    EXPECT_TRUE(mRoot->addChild(stem.get()));
    EXPECT_FALSE(deepEnd->addChild(mRoot.get())) << "together they are too deep";
    flat->getChild(0)->getChild(0)->destroy();
    EXPECT_TRUE(deepEnd->getParent()->getParent()->addChild(flat.get()));
}

TEST_F(KyNodeTest, TheDeepestTreeIsWalkedCopiedAndEnded) {
    KyNode* bottom = nullptr;
    KyHolder<KyNode> top = makeChain(KyNode::cMaxDepth - 1, bottom);
    auto* box = new KyMeshNode;
    box->makeBox(2, 2, 2);
    box->setName("box");
    ASSERT_TRUE(bottom->addChild(box));
    KyHolder<KyNode> copy(top->clone());
    top.reset();
    ASSERT_NE(KyMeshNode::cast(copy->find("box")), nullptr);
    copy->setPosition(KyVec3d(5, 0, 0));
    EXPECT_EQ(copy->getBoundingVolume().getMax(), KyVec3d(6, 1, 1));
    KyNodeHit hit;
    EXPECT_TRUE(copy->intersect(KyRayd(KyVec3d(5, 0, 10), KyVec3d(0, 0, -1)), hit));
    EXPECT_EQ(hit.node, copy->find("box"));
}

TEST_F(KyNodeTest, AListenerThatMovesNodesMeanwhileMakesNoLoop) {
    const KyHolder<KyNode> target(new KyNode);
    Mover mover;
    mover.parent = mChild.get();
    mover.child = target.get();
    mRoot->connectModified(&mover, &Mover::onModified);
    EXPECT_FALSE(target->addChild(mChild.get()));
    EXPECT_EQ(target->getParent(), mChild.get());
    EXPECT_EQ(mChild->getParent(), nullptr);
}

TEST_F(KyNodeTest, TheBoundingVolumeCoversWhatIsVisible) {
    auto* mesh = new KyMeshNode;
    mesh->makeBox(2, 2, 2);
    mChild->addChild(mesh);
    mChild->setPosition(KyVec3d(5, 0, 0));
    expectNear(mRoot->getBoundingVolume().getMax(), KyVec3d(6, 1, 1));
    mChild->setVisible(false);
    EXPECT_TRUE(mRoot->getBoundingVolume().isNull());
}

TEST_F(KyNodeTest, ARayFindsTheNearestVisibleSurface) {
    auto* near = new KyMeshNode;
    near->makeBox(1, 1, 1);
    near->setPosition(KyVec3d(0, 0, 2));
    near->setScale(KyVec3d(2, 2, 2));
    auto* far = new KyMeshNode;
    far->makeSphere(1);
    mRoot->addChild(far);
    mRoot->addChild(near);
    const KyRayd ray(KyVec3d(0.01, 0.02, 10), KyVec3d(0, 0, -1));
    KyNodeHit hit;
    ASSERT_TRUE(mRoot->intersect(ray, hit));
    EXPECT_EQ(hit.node, near);
    EXPECT_NEAR(hit.distance, 7.0, 1e-9);
    expectNear(hit.normal, KyVec3d(0, 0, 1));
    EXPECT_TRUE(hit.hasTexCoord);
    near->setVisible(false);
    hit = KyNodeHit();
    ASSERT_TRUE(mRoot->intersect(ray, hit));
    EXPECT_EQ(hit.node, far);
}

} // namespace

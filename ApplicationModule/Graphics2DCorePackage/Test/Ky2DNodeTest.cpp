// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "Ky2DTestNodes.h"

#include <gtest/gtest.h>

#include <array>
#include <limits>
#include <memory>
#include <utility>

namespace {

constexpr double cNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double cInfinity = std::numeric_limits<double>::infinity();

void expectEqual(const QTransform& a, const QTransform& b, const std::string& what = {}) {
    const std::array<double, 6> of{a.m11() - b.m11(), a.m12() - b.m12(), a.m21() - b.m21(),
                                   a.m22() - b.m22(), a.dx() - b.dx(),   a.dy() - b.dy()};
    for (const double difference : of)
        EXPECT_NEAR(difference, 0.0, 1e-9) << what;
}

struct Ky2DNodeTest : testing::Test {
    Ky2DNodeTest() {
        Ky2DNode::applyModification();
        node = std::make_unique<CountingNode>();
    }

    std::unique_ptr<CountingNode> node;
};

} // namespace

TEST_F(Ky2DNodeTest, FiveChangesUpdateOnce) {
    EXPECT_TRUE(node->isModified());
    Ky2DNode::applyModification();
    EXPECT_EQ(node->steps, "psg");
    EXPECT_FALSE(node->isModified());
    node->setTranslation(1, 2);
    node->rotate(30);
    node->setZValue(4);
    node->editStyle()->setStrokeWidth(3);
    node->setQtOffset(KyVec2d(5, 6));
    EXPECT_EQ(Ky2DNode::getModifiedNodes().size(), 1U);
    Ky2DNode::applyModification();
    EXPECT_EQ(node->steps, "psgpsg");
    EXPECT_EQ(node->nbUpdates, 2);
    EXPECT_TRUE(Ky2DNode::getModifiedNodes().empty());
    Ky2DNode::applyModification();
    EXPECT_EQ(node->nbUpdates, 2);
}

TEST_F(Ky2DNodeTest, EverySetterMarksItsPartAndTells) {
    struct Case {
        const char* attribute;
        const char* steps;
        void (*change)(Ky2DNode&);
    };
    const Case cases[] = {
        {"Translation", "p", [](Ky2DNode& n) { n.setTranslation(0, 0); }},
        {"Translation", "p", [](Ky2DNode& n) { n.translate(1, 1); }},
        {"Scale", "p", [](Ky2DNode& n) { n.setScale(1, 1); }},
        {"Scale", "p", [](Ky2DNode& n) { n.scale(2, 2); }},
        {"Shear", "p", [](Ky2DNode& n) { n.setShear(0, 0); }},
        {"Shear", "p", [](Ky2DNode& n) { n.shear(1, 1); }},
        {"Rotation", "p", [](Ky2DNode& n) { n.setRotation(0); }},
        {"Rotation", "p", [](Ky2DNode& n) { n.rotate(1); }},
        {"TransformOriginPoint", "p", [](Ky2DNode& n) { n.setTransformOriginPoint(KyVec2d()); }},
        {"ZValue", "p", [](Ky2DNode& n) { n.setZValue(0); }},
        {"Enabled", "p", [](Ky2DNode& n) { n.setVisible(false); }},
        {"Enabled", "p", [](Ky2DNode& n) { n.setVisible(true); }},
        {"", "", [](Ky2DNode& n) { n.setVisible(true); }},
        {"Name", "", [](Ky2DNode& n) { n.setName("x"); }},
        {"", "p", [](Ky2DNode& n) { n.setInitialTransform(QTransform()); }},
        {"", "pg", [](Ky2DNode& n) { n.setQtOffset(KyVec2d()); }},
        {"", "s", [](Ky2DNode& n) { n.editStyle(); }},
        {"Style", "s", [](Ky2DNode& n) { n.setStyle(new Ky2DStyle); }},
        {"Style", "", [](Ky2DNode& n) { n.setStyle(nullptr); }},
    };
    for (const Case& test : cases) {
        Ky2DNode::applyModification();
        node->steps.clear();
        const Listener listener(*node);
        test.change(*node);
        EXPECT_EQ(Ky2DNode::getModifiedNodes().size(), *test.steps ? 1U : 0U) << test.attribute;
        Ky2DNode::applyModification();
        EXPECT_EQ(node->steps, test.steps) << test.attribute;
        const std::vector<std::string> told{test.attribute + std::string(" 2 -1")};
        EXPECT_EQ(listener.entries, *test.attribute ? told : std::vector<std::string>()) << test.attribute;
    }
}

TEST_F(Ky2DNodeTest, TheLocalTransformIsThatOfQtsOperations) {
    for (const double rotation : {0.0, 30.0, 90.0, -90.0, 180.0, 270.0, 765.0})
        for (const KyVec2d scale : {KyVec2d(1, 1), KyVec2d(2, -3), KyVec2d(0, 1)})
            for (const KyVec2d shear : {KyVec2d(), KyVec2d(0.5, -0.25)})
                for (const KyVec2d origin : {KyVec2d(), KyVec2d(7, 11)}) {
                    node->setTranslation(3, 5);
                    node->setRotation(rotation);
                    node->setScale(scale);
                    node->setShear(shear);
                    node->setTransformOriginPoint(origin);
                    QTransform expected;
                    expected.translate(3, 5).translate(origin.x, origin.y).rotate(rotation);
                    expected.shear(shear.x, shear.y).scale(scale.x, scale.y).translate(-origin.x, -origin.y);
                    expectEqual(node->getLocalTransform(), expected);
                    Ky2DNode::applyModification();
                    expectEqual(node->getQGraphicsItem()->transform(), expected);
                }
}

TEST_F(Ky2DNodeTest, ALocalTransformIsTakenApart) {
    struct Case {
        const char* what;
        QTransform transform;
        double rotation;
        KyVec2d scale;
    };
    const Case cases[] = {
        {"turned", QTransform().rotate(30), 30, {1, 1}},
        {"turned far", QTransform().rotate(200).scale(2, 3), -160, {2, 3}},
        {"mirrored", QTransform().rotate(10).scale(2, -3), 10, {2, -3}},
        {"flat", QTransform(0, 0, 3, 4, 0, 0), 0, {0, 5}},
        {"sheared", QTransform().rotate(30).shear(0.5, 0), 30, {1, 1}},
    };
    for (const Case& test : cases) {
        node->setShear(9, 9);
        const QTransform moved = test.transform * QTransform::fromTranslate(7, 8);
        node->setLocalTransform(moved);
        EXPECT_NEAR(node->getRotation(), test.rotation, 1e-9) << test.what;
        EXPECT_NEAR((node->getScale() - test.scale).length(), 0.0, 1e-9) << test.what;
        EXPECT_EQ(node->getTranslation(), KyVec2d(7, 8)) << test.what;
        EXPECT_TRUE(node->getShear().isNull()) << test.what;
        if (test.what != std::string("flat") && test.what != std::string("sheared"))
            expectEqual(node->getLocalTransform(), moved, test.what);
    }
}

TEST_F(Ky2DNodeTest, TheInitialTransformActsFirst) {
    node->setInitialTransform(QTransform::fromScale(2, 2));
    node->setTranslation(10, 0);
    Ky2DNode::applyModification();
    EXPECT_EQ(node->getQGraphicsItem()->transform().map(QPointF(1, 1)), QPointF(12, 2));
    // The pen of the item has width 1.
    EXPECT_EQ(node->getBound(), KyRectd(9, -1, 22, 22));
    EXPECT_EQ(node->getLocalBound(), KyRectd(-0.5, -0.5, 11, 11));
}

TEST_F(Ky2DNodeTest, NumbersThatAreNotFiniteLeaveTheItemWhereItWas) {
    node->setTranslation(3, 4);
    Ky2DNode::applyModification();
    const QTransform before = node->getQGraphicsItem()->transform();
    double x = 0, scale = 0, shear = 0, rotation = 0;
    for (const double bad : {cNaN, cInfinity, -cInfinity})
        for (double* part : {&x, &scale, &shear, &rotation}) {
            *part = bad;
            node->setTranslation(x, 1);
            node->setScale(1, scale);
            node->setShear(shear, 0);
            node->setRotation(rotation);
            Ky2DNode::applyModification();
            EXPECT_EQ(node->getQGraphicsItem()->transform(), before);
            *part = 0;
        }
    node->setRotation(0);
    node->setTransformOriginPoint(KyVec2d(cNaN, cNaN));
    Ky2DNode::applyModification();
    EXPECT_EQ(node->getQGraphicsItem()->transform(), before);
    // What overflows on the way is no number to draw with either.
    node->setTransformOriginPoint(KyVec2d());
    node->setScale(1e308, 1e308);
    node->setInitialTransform(QTransform::fromScale(1e308, 1));
    Ky2DNode::applyModification();
    EXPECT_EQ(node->getQGraphicsItem()->transform(), before);
}

TEST_F(Ky2DNodeTest, AStyleHasOneOwner) {
    CountingNode other;
    Ky2DStyle* style = node->editStyle();
    style->setStrokeWidth(7);
    Ky2DNode::applyModification();
    node->setStyle(style);
    EXPECT_FALSE(node->isModified());
    other.setStyle(style);
    EXPECT_NE(other.getStyle(), style);
    EXPECT_EQ(other.getStyle()->getStrokeWidth(), 7);
    EXPECT_EQ(node->getStyle(), style);
    EXPECT_TRUE(other.isStyleModified());
    delete style;
    EXPECT_EQ(node->getStyle(), nullptr);
    EXPECT_EQ(node->editStyle(), nullptr);
    node->setStyle(new Ky2DStyle);
    EXPECT_TRUE(node->isStyleModified());
    Ky2DNode::applyModification();
    node->editStyle()->setStrokeWidth(2);
    EXPECT_EQ(Ky2DNode::getModifiedNodes().size(), 1U);
}

TEST_F(Ky2DNodeTest, UpdatesMayModifyOthersEndThemAndApplyAgain) {
    CountingNode later, other;
    auto* ended = new CountingNode;
    Ky2DNode::applyModification();
    node->onGeometry = [&] {
        other.setTranslation(1, 1);
        delete std::exchange(ended, nullptr);
        Ky2DNode::applyModification();
        EXPECT_EQ(other.nbUpdates, 2);
        EXPECT_EQ(later.nbUpdates, 2);
    };
    node->geometryModified();
    ended->rotate(1);
    later.rotate(1);
    Ky2DNode::applyModification();
    EXPECT_EQ(ended, nullptr);
    EXPECT_EQ(node->nbUpdates, 2);
    EXPECT_EQ(later.nbUpdates, 2);
    EXPECT_TRUE(Ky2DNode::getModifiedNodes().empty());
}

TEST_F(Ky2DNodeTest, ANodeMayEndInItsOwnUpdate) {
    node->onGeometry = [this] { node.reset(); };
    CountingNode later;
    Ky2DNode::applyModification();
    EXPECT_EQ(node, nullptr);
    EXPECT_EQ(later.nbUpdates, 1);
    const KyRectd bound = [] {
        auto* asked = new CountingNode;
        asked->onGeometry = [asked] { asked->destroy(); };
        return asked->getBound();
    }();
    EXPECT_TRUE(bound.isNull());
}

TEST_F(Ky2DNodeTest, ANodeThatModifiesItselfWaitsForTheNextTime) {
    Ky2DNode::applyModification();
    node->onGeometry = [this] { node->rotate(1); };
    node->geometryModified();
    for (int i = 2; i < 5; ++i) {
        Ky2DNode::applyModification();
        EXPECT_EQ(node->nbUpdates, i);
        EXPECT_EQ(Ky2DNode::getModifiedNodes().size(), 1U);
        node->geometryModified();
    }
    node.reset();
    Ky2DNode::applyModification();
    EXPECT_TRUE(Ky2DNode::getModifiedNodes().empty());
}

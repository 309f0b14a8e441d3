// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyBenchmark.h"

#include "Ky2DNode.h"
#include "Ky2DRect.h"
#include "Ky2DScene.h"

#include <QGraphicsPathItem>
#include <QGraphicsScene>

#include <cstdlib>
#include <memory>
#include <vector>

namespace {

constexpr std::size_t cNbNodes = 256;

/// The same shapes as nodes and as Qt items, in scenes that nobody shows.
struct NodeFixture {
    std::unique_ptr<Ky2DScene> scene = std::make_unique<Ky2DScene>();
    std::vector<Ky2DNode*> nodes;
    QGraphicsScene peerScene;
    std::vector<QGraphicsItem*> items;

    NodeFixture() {
        peerScene.setItemIndexMethod(QGraphicsScene::NoIndex);
        for (std::size_t i = 0; i < cNbNodes; ++i) {
            auto* rect = Ky2DRect::create();
            rect->setWidth(10);
            rect->setHeight(10);
            rect->setTranslation(static_cast<double>(i), 0);
            scene->insertChild(rect, Ky2DNode::cAppend);
            nodes.push_back(rect);
        }
        Ky2DNode::applyModification();
        for (const Ky2DNode* node : nodes) {
            auto* item = new QGraphicsPathItem(static_cast<QGraphicsPathItem*>(node->getQGraphicsItem())->path());
            item->setPen(Qt::NoPen);
            item->setTransform(node->getQGraphicsItem()->transform());
            peerScene.addItem(item);
            items.push_back(item);
        }
    }

    static double getX(long i) { return static_cast<double>(i % 1000) + 0.5; }
    static std::size_t getIndex(long i) { return static_cast<std::size_t>(i) % cNbNodes; }

    /// The item must have moved: less would be a measurement of something else.
    static void check(const QGraphicsItem* item) {
        if (item->transform().dy() < 3.0)
            std::abort();
    }
};

/// The values of a node as a program keeps them that sets its item's transform at each change.
struct EagerItem {
    QGraphicsItem* item;
    double x = 0.0, y = 0.0, degrees = 0.0, scale = 1.0, shear = 0.0;

    void update() const {
        QTransform transform;
        transform.translate(x, y);
        transform.rotate(degrees);
        transform.shear(shear, 0.0);
        transform.scale(scale, scale);
        item->setTransform(transform);
    }
};

std::vector<EagerItem> makeEagerItems(const NodeFixture& fixture) {
    std::vector<EagerItem> eager;
    for (QGraphicsItem* item : fixture.items)
        eager.push_back({item, 3.0, 3.0});
    return eager;
}

/// Turns a node that stands somewhere.
KyBenchmarkSides prepareOneChange() {
    const auto fixture = std::make_shared<NodeFixture>();
    const auto eager = std::make_shared<std::vector<EagerItem>>(makeEagerItems(*fixture));
    for (Ky2DNode* node : fixture->nodes)
        node->setTranslation(3.0, 3.0);
    Ky2DNode::applyModification();
    return {[fixture](long count) {
                for (long i = 0; i < count; ++i) {
                    fixture->nodes[NodeFixture::getIndex(i)]->setRotation(NodeFixture::getX(i));
                    Ky2DNode::applyModification();
                }
                NodeFixture::check(fixture->nodes[0]->getQGraphicsItem());
            },
            [fixture, eager](long count) {
                for (long i = 0; i < count; ++i) {
                    EagerItem& item = (*eager)[NodeFixture::getIndex(i)];
                    item.degrees = NodeFixture::getX(i);
                    item.update();
                }
                NodeFixture::check(fixture->items[0]);
            },
            fixture};
}

KyBenchmarkSides prepareFiveChanges() {
    const auto fixture = std::make_shared<NodeFixture>();
    const auto eager = std::make_shared<std::vector<EagerItem>>(makeEagerItems(*fixture));
    return {[fixture](long count) {
                for (long i = 0; i < count; ++i) {
                    Ky2DNode& node = *fixture->nodes[NodeFixture::getIndex(i)];
                    const double x = NodeFixture::getX(i);
                    node.setTranslation(x, 3.0);
                    node.setRotation(x);
                    node.setShear(x, 0.0);
                    node.setScale(x, x);
                    node.translate(1.0, 1.0);
                    Ky2DNode::applyModification();
                }
                NodeFixture::check(fixture->nodes[0]->getQGraphicsItem());
            },
            [fixture, eager](long count) {
                for (long i = 0; i < count; ++i) {
                    EagerItem& item = (*eager)[NodeFixture::getIndex(i)];
                    const double x = NodeFixture::getX(i);
                    item.x = x;
                    item.y = 3.0;
                    item.update();
                    item.degrees = x;
                    item.update();
                    item.shear = x;
                    item.update();
                    item.scale = x;
                    item.update();
                    item.x += 1.0;
                    item.y += 1.0;
                    item.update();
                }
                NodeFixture::check(fixture->items[0]);
            },
            fixture};
}

/// One node that stays dirty, against as many instructions as a setter may take.
KyBenchmarkSides prepareSetter() {
    const auto fixture = std::make_shared<NodeFixture>();
    return {[fixture](long count) {
                Ky2DNode& node = *fixture->nodes[0];
                for (long i = 0; i < count; ++i)
                    node.setTranslation(static_cast<double>(i), 3.0);
            },
            [](long count) {
                for (long i = 0; i < count; ++i)
                    asm volatile(".rept 25\n\tnop\n\t.endr");
            },
            fixture};
}

} // namespace

std::vector<KyBenchmark> get2DNodeBenchmarks() {
    using enum KyBenchmark::Gate;
    return {
        {"2D: one change, apply", "Qt: compose with QTransform, setTransform", 1.2, eInstructions, 20000,
         &prepareOneChange},
        {"2D: five changes, one apply", "the same five times", 0.3, eInstructions, 20000, &prepareFiveChanges},
        {"2D: setter of a dirty node", "25 instructions", 1.0, eInstructions, 20000, &prepareSetter},
    };
}

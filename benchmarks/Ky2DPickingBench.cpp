// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyBenchmark.h"

#include "Ky2DIntersected.h"
#include "Ky2DRect.h"
#include "Ky2DScene.h"

#include <QGraphicsItem>

namespace {

constexpr double cSpacing = 10.0;
constexpr double cReach = 10.0;

/// Squares side by side; ours picks in the middle, the peer asks Qt for the same square and walks what it gets.
struct PickingState {
    explicit PickingState(int nbColumns, int nbRows)
        : x(nbColumns / 2 * cSpacing)
        , y(nbRows / 2 * cSpacing) {
        for (int i = 0; i < nbColumns * nbRows; ++i) {
            Ky2DRect* const rect = Ky2DRect::create();
            rect->setWidth(cSpacing - 2.0);
            rect->setHeight(cSpacing - 2.0);
            rect->setTranslation(i % nbColumns * cSpacing, i / nbColumns * cSpacing);
            scene.insertChild(rect, Ky2DNode::cAppend);
        }
        Ky2DNode::applyModification();
    }

    void pick() {
        scene.pick(x, y, results, &Ky2DIntersected::create);
        for (KyIntersected* const result : results) {
            nbFound += result->isValid();
            delete result;
        }
        results.clear();
    }

    void ask() {
        const QRectF area(x - cReach, y - cReach, 2.0 * cReach, 2.0 * cReach);
        for (const QGraphicsItem* const item : scene.getQGraphicsScene()->items(area, Qt::IntersectsItemShape))
            nbFound += item->isVisible();
    }

    Ky2DScene scene;
    double x;
    double y;
    std::vector<KyIntersected*> results;
    long nbFound = 0;
};

template <int NbColumns, int NbRows>
KyBenchmarkSides preparePicking() {
    const auto state = std::make_shared<PickingState>(NbColumns, NbRows);
    const auto repeat = [state](void (PickingState::*operation)()) {
        return [picking = state.get(), operation](long count) {
            for (long i = 0; i < count; ++i)
                (picking->*operation)();
        };
    };
    return {repeat(&PickingState::pick), repeat(&PickingState::ask), state};
}

} // namespace

std::vector<KyBenchmark> get2DPickingBenchmarks() {
    constexpr const char* cPeer = "QGraphicsScene::items of the square, no index";
    return {{"2D: picking among 10,000 items", cPeer, 1.05, KyBenchmark::Gate::eTime, 100, &preparePicking<100, 100>},
            {"2D: picking among 100,000 items", cPeer, 1.05, KyBenchmark::Gate::eTime, 10, &preparePicking<400, 250>}};
}

// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyQtPassTesting.h"

#include <QGraphicsProxyWidget>
#include <QGraphicsRectItem>

namespace {

class KyQtPassLifeTest : public KyQtPassTest {};

TEST_P(KyQtPassLifeTest, TheFirstPictureIsPaintedOnce) {
    mOverlay.render();
    mOverlay.render();
    EXPECT_EQ(mPass.getNbPaintings(), 1u);
}

TEST_P(KyQtPassLifeTest, WhatBecomesAnotherSceneIsToldAndPainted) {
    auto scene = std::make_unique<QGraphicsScene>();
    scene->addRect(-300, -300, 600, 600, Qt::NoPen, Qt::blue);
    auto* const other = Ky2DScene::create();
    addRect(*other, -300, -300, 600, Qt::red);
    const std::vector<std::tuple<const char*, std::function<void()>, QColor>> cChanges{
        {"none", [&] { mPass.set2DScene(nullptr, false); }, Qt::white},
        {"a 2D scene", [&] { mPass.set2DScene(other, true); }, Qt::red},
        {"a Qt scene", [&] { mPass.connectQGraphicsScene(scene.get()); }, Qt::blue},
        {"the end of the Qt scene", [&] { scene.reset(); }, Qt::white},
    };
    int nbSignals = 0;
    mPass.needUpdateSignal().connect([&nbSignals](const KyQtPass*) { ++nbSignals; });
    for (const auto& [name, change, color] : cChanges) {
        mOverlay.settle();
        mOverlay.render();
        nbSignals = 0;
        change();
        EXPECT_EQ(nbSignals, 1) << name;
        EXPECT_TRUE(mOverlay.canvas->needsRedraw()) << name;
        EXPECT_EQ(mOverlay.draw().pixelColor(80, 60), color) << name;
    }
}

TEST_P(KyQtPassLifeTest, WhoIsToldMayEndThePassOrGiveItAnotherWidget) {
    auto* const pass = KyQtPass::create();
    const KyHolder<KyGraphicsViewMultiPass> view(KyGraphicsViewMultiPass::create());
    view->setMainPass(pass);
    const KyObjectReference alive(pass);
    mOverlay.back->insert(view.get(), -1);
    mOverlay.settle();
    pass->needUpdateSignal().connect([&](const KyQtPass*) { view->setMainPass(nullptr); });
    pass->setViewScale({2.0f, 2.0f});
    EXPECT_FALSE(alive.get());
    mOverlay.back->remove(view.get());

    const auto first = makePanel(), second = makePanel(), third = makePanel();
    mPass.setQWidget(first.get(), false);
    mOverlay.settle();
    mPass.needUpdateSignal().connect([&](const KyQtPass*) { mPass.setQWidget(third.get(), false); });
    EXPECT_FALSE(mPass.setQWidget(second.get(), false)) << "it is not shown any more";
    EXPECT_EQ(mPass.editQWidget(), third.get());
    endDeferred();
    EXPECT_EQ(mPass.editQGraphicsScene()->items().size(), 1);
}

TEST_P(KyQtPassLifeTest, AWidgetThatOthersTookOutCanBeShownAgain) {
    auto panel = makePanel();
    QGraphicsProxyWidget* const proxy = mPass.setQWidget(panel.get(), false);
    proxy->setWidget(nullptr);
    EXPECT_FALSE(mPass.editQWidget());
    EXPECT_TRUE(mPass.setQWidget(panel.get(), false));
    EXPECT_EQ(mPass.editQWidget(), panel.get());
}

/// Changes a node each time it is painted.
struct RestlessItem : QGraphicsRectItem {
    using QGraphicsRectItem::QGraphicsRectItem;
    void paint(QPainter*, const QStyleOptionGraphicsItem*, QWidget*) override {
        node->setTranslation(++nbPaintings, 0);
    }
    Ky2DNode* node = nullptr;
    int nbPaintings = 0;
};

TEST_P(KyQtPassLifeTest, RequestsMadeWhilePaintingAreKept) {
    auto* const item = new RestlessItem(-9, -9, 20, 20);
    item->node = addRect(*mPass.edit2DScene(), 0, 0, 5, Qt::red);
    mPass.editQGraphicsScene()->addItem(item);
    for (int i = 0; i < 20; ++i)
        mOverlay.render();
    EXPECT_EQ(item->nbPaintings, 20);
    EXPECT_TRUE(mPass.isUpdateNeeded());
}

TEST_P(KyQtPassLifeTest, BearsTheEndOfWhatItShows) {
    auto panel = makePanel();
    const QPointer<QWidget> widget = panel.get();
    auto scene = std::make_unique<Ky2DScene>();
    mPass.set2DScene(scene.get(), false);
    mPass.setQWidget(panel.get(), false);
    mOverlay.settle();
    EXPECT_EQ(mOverlay.countPaintings([&] { panel.reset(); }), 1u);
    EXPECT_FALSE(mPass.editQWidget());
    panel = makePanel();
    mPass.setQWidget(panel.get(), false);
    scene.reset();
    EXPECT_FALSE(mPass.edit2DScene() || mPass.editQGraphicsScene());
    EXPECT_EQ(mPass.editQWidget(), panel.get()) << "it outlives the scene";
    mOverlay.settle();
    QWidget child(panel.get());
    EXPECT_FALSE(mPass.setQWidget(&child, false));
    mPass.set2DScene(Ky2DScene::create(), true);
    mOverlay.settle();
    EXPECT_GT(mOverlay.getColor(80, 2).alpha, 0.0f) << "in the new scene";
    EXPECT_FALSE(mPass.setQWidget(&child, false)) << "it has a parent";
    const QPointer<QWidget> owned = new QLabel("owned");
    mPass.setQWidget(owned, true);
    endDeferred();
    EXPECT_FALSE(panel->graphicsProxyWidget() || panel->isVisible()) << "as a window of its own";
    EXPECT_FALSE(mPass.setQWidget(nullptr, false));
    endDeferred();
    EXPECT_FALSE(owned);
    const QPointer<QGraphicsScene> former = mPass.editQGraphicsScene();
    addRect(*mPass.edit2DScene(), -200, -200, 400, Qt::red);
    EXPECT_EQ(mOverlay.draw().pixelColor(80, 60), QColor(Qt::red));
    mPass.set2DScene(nullptr, true);
    endDeferred();
    EXPECT_FALSE(former);
    EXPECT_EQ(mOverlay.draw().pixelColor(80, 60), QColor(Qt::white));
}

INSTANTIATE_TEST_SUITE_P(Methods, KyQtPassLifeTest, testing::Values(KyQtPass::eFrameBuffer, KyQtPass::eImage),
                         [](const auto& test) { return test.param == KyQtPass::eImage ? "Image" : "FrameBuffer"; });

} // namespace

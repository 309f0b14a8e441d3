// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "Ky2DLine.h"
#include "Ky2DProxy.h"
#include "Ky2DRect.h"
#include "Ky2DScene.h"
#include "Ky2DStyle.h"
#include "Ky2DTestNodes.h"
#include "Ky2DView.h"

#include <QApplication>
#include <QGraphicsProxyWidget>
#include <QPointer>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
#include <QWheelEvent>

#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <limits>
#include <memory>
#include <string>
#include <vector>

namespace {

constexpr double cNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double cInfinity = std::numeric_limits<double>::infinity();

struct PaintCounter : QObject {
    bool eventFilter(QObject*, QEvent* event) override {
        count += event->type() == QEvent::Paint;
        return false;
    }
    int count = 0;
};

void settleEvents() {
    QTest::qWait(40);
}

/// A shown view of 400 x 300 with a blue rectangle (0, 0, 100, 100).
class Ky2DViewTest : public testing::Test {
protected:
    Ky2DViewTest() {
        mRect->setWidth(100);
        mRect->setHeight(100);
        mRect->editStyle()->setFillColor(KyColor(0, 0, 1));
        mScene->insertChild(mRect, Ky2DNode::cAppend);
        mView->setScene(mScene.get());
        mView->resize(400, 300);
        mView->setShown(true);
        EXPECT_TRUE(QTest::qWaitForWindowExposed(mView.get()));
        settleEvents();
        mView->nodePickedSignal().connect([this](Ky2DNode* node) { mPicks.push_back(node); });
    }

    QPoint toPixel(double x, double y) const {
        const KyVec2d pixel = mView->fromScene(KyVec2d(x, y));
        return {qRound(pixel.x), qRound(pixel.y)};
    }
    void dragBy(Qt::MouseButton button, const QPoint& from, const QPoint& offset) {
        QWidget* port = mView->viewport();
        QTest::mousePress(port, button, {}, from);
        for (const QPoint& to : {from + offset / 2, from + offset}) {
            QMouseEvent move(QEvent::MouseMove, to, port->mapToGlobal(to), Qt::NoButton, button, {});
            QApplication::sendEvent(port, &move);
        }
        QTest::mouseRelease(port, button, {}, from + offset);
    }
    void wheel(const QPoint& at, int delta) {
        QWheelEvent event(at, mView->viewport()->mapToGlobal(at), {}, {0, delta}, {}, {}, Qt::NoScrollPhase, false);
        QApplication::sendEvent(mView->viewport(), &event);
    }
    void expectCenter(double x, double y) const {
        EXPECT_LT((mView->getCenter() - KyVec2d(x, y)).length(), 1e-6) << mView->getCenter();
    }

    std::unique_ptr<Ky2DScene> mScene{Ky2DScene::create()};
    Ky2DRect* mRect = Ky2DRect::create();
    std::unique_ptr<Ky2DView> mView{Ky2DView::create()};
    std::vector<Ky2DNode*> mPicks;
};

} // namespace

TEST_F(Ky2DViewTest, ANewViewIsFittedAndStaysSoUntilItIsMoved) {
    expectCenter(50, 50);
    EXPECT_NEAR(300 * 0.94 / 100, mView->getZoom(), 1e-9);
    mView->resize(200, 600);
    settleEvents();
    EXPECT_NEAR(200 * 0.94 / 100, mView->getZoom(), 1e-9);
    mView->zoom(2);
    mView->resize(400, 300);
    settleEvents();
    EXPECT_NEAR(2 * 200 * 0.94 / 100, mView->getZoom(), 1e-9);
    EXPECT_EQ(QPoint(200, 150), toPixel(50, 50));
}

TEST_F(Ky2DViewTest, WhateverChangesIsToldOnce) {
    std::vector<std::string> told;
    KyHasSlots listener;
    mView->modifiedSignal().connect(
        listener, [&told](KyObject*, KyObjectModificationType, const std::string& name, int) { told.push_back(name); });
    using Names = std::vector<std::string>;
    const std::pair<std::function<void()>, Names> rows[] = {
        {[this] { mView->setZoom(2); }, {"Zoom"}},
        {[this] { mView->resize(350, 200); }, {"Width", "Height"}},
        {[this] { mView->setWidth(300); }, {"Width"}},
        {[this] { mView->setHeight(250); }, {"Height"}},
        {[this] { mView->fitNode(mRect); }, {"Zoom", "Center"}},
        {[this] { mView->fit(); }, {"Zoom", "Center"}},
        {[this] { mView->close(); }, {"Shown"}},
        {[this] { mView->setShown(true); }, {"Shown"}},
        {[this] { mView->hide(); }, {"Shown"}},
    };
    for (const auto& [change, names] : rows) {
        told.clear();
        change();
        settleEvents();
        EXPECT_EQ(names, told);
    }
}

TEST_F(Ky2DViewTest, FittingWorksAtAnySizeAndWithAnyContent) {
    for (const QSize size : {QSize(0, 0), QSize(1, 1), QSize(0, 50), QSize(3000, 2)}) {
        mView->resize(size);
        mView->fit();
        EXPECT_TRUE(std::isfinite(mView->getZoom()) && mView->getZoom() > 0) << size.width();
    }
    mView->resize(400, 300);
    settleEvents();
    EXPECT_NEAR(2.82, mView->getZoom(), 1e-9);
    const std::tuple<double, double, double> rows[] = {
        {1e100, 1e100, Ky2DView::cMinZoom}, {1e-10, 1e-10, Ky2DView::cMaxZoom}, {94, 1e-9, 4.0}, {1e-9, 94, 3.0}};
    for (const auto& [width, height, zoom] : rows) {
        mRect->setWidth(width);
        mRect->setHeight(height);
        mView->fit();
        EXPECT_NEAR(zoom, mView->getZoom(), zoom * 1e-6) << width;
    }
    // What appears later in an empty view is fitted too.
    mRect->setVisible(false);
    mView->fit();
    settleEvents();
    mRect->setVisible(true);
    mRect->setTranslation(1000, 0);
    settleEvents();
    expectCenter(1000, 47);
}

TEST_F(Ky2DViewTest, ZoomIsLimitedAndNothingBecomesNaN) {
    for (const auto& [factor, limit] : {std::pair(1e30, Ky2DView::cMaxZoom), {1e-30, Ky2DView::cMinZoom}}) {
        mView->zoomAt(factor, 7, 9);
        EXPECT_EQ(limit, mView->getZoom());
    }
    mView->setZoom(2);
    mView->setCenter(KyVec2d(3, 4));
    for (const double bad : {cNaN, cInfinity, -cInfinity, 0.0, -1.0}) {
        mView->setZoom(bad);
        mView->zoom(bad);
    }
    for (const double bad : {cNaN, cInfinity}) {
        mView->zoomAt(2, bad, 0);
        mView->pan(0, bad);
        mView->setCenter(KyVec2d(bad, 0));
        mView->setRotation(bad);
        EXPECT_EQ(nullptr, mView->pick(bad, 0));
    }
    EXPECT_EQ(2.0, mView->getZoom());
    expectCenter(3, 4);
    mView->setCenter(KyVec2d(1e308, -1e308));
    mView->pan(1e308, 1e308);
    EXPECT_TRUE(std::isfinite(mView->getCenter().x));
}

TEST_F(Ky2DViewTest, DraggingPansAndAClickPicks) {
    mView->setZoom(2);
    dragBy(Qt::LeftButton, QPoint(200, 150), QPoint(40, -20));
    expectCenter(30, 60);
    dragBy(Qt::MiddleButton, QPoint(200, 150), QPoint(-40, 20));
    expectCenter(50, 50);
    dragBy(Qt::RightButton, QPoint(200, 150), QPoint(-40, 20));
    expectCenter(50, 50);
    EXPECT_TRUE(mPicks.empty());
    for (const auto button : {Qt::LeftButton, Qt::RightButton, Qt::MiddleButton})
        QTest::mouseClick(mView->viewport(), button, {}, toPixel(20, 20));
    dragBy(Qt::LeftButton, toPixel(20, 20), QPoint(2, 2));
    EXPECT_EQ(mRect, mView->getPickedNode());
    QTest::mouseClick(mView->viewport(), Qt::LeftButton, {}, toPixel(-40, 20));
    EXPECT_EQ((std::vector<Ky2DNode*>{mRect, mRect, nullptr}), mPicks);
    expectCenter(50, 50);
}

TEST_F(Ky2DViewTest, ADoubleClickAndKeysFitZoomAndPan) {
    mView->setCenter(KyVec2d(900, 900));
    QTest::mouseDClick(mView->viewport(), Qt::LeftButton, {}, QPoint(5, 5));
    expectCenter(50, 50);
    const std::tuple<Qt::Key, double, double, double> rows[] = {
        {Qt::Key_Plus, 2.5, 0, 0}, {Qt::Key_Minus, 1.6, 0, 0}, {Qt::Key_Left, 2, -20, 0}, {Qt::Key_A, 2, 0, 0}};
    for (const auto& [key, zoom, dx, dy] : rows) {
        mView->setZoom(2);
        mView->setCenter(KyVec2d(50, 50));
        QTest::keyClick(mView.get(), key);
        EXPECT_NEAR(zoom, mView->getZoom(), 1e-9) << key;
        expectCenter(50 + dx, 50 + dy);
    }
    QTest::keyClick(mView.get(), Qt::Key_F);
    EXPECT_NEAR(2.82, mView->getZoom(), 1e-9);
}

TEST_F(Ky2DViewTest, TheWheelZoomsAtThePointer) {
    const QPoint at(310, 80);
    const KyVec2d before = mView->toScene(at.x(), at.y());
    const double zoom = mView->getZoom();
    wheel(at, 120);
    wheel(at, 240);
    EXPECT_NEAR(zoom * 1.728, mView->getZoom(), 1e-6);
    EXPECT_LT((before - mView->toScene(at.x(), at.y())).length(), 1e-6);
}

TEST_F(Ky2DViewTest, PickingFollowsRotationAndScaleAndFindsThinLinesNearby) {
    auto* line = Ky2DLine::create();
    line->setP1(KyVec2d(200, 0));
    line->setP2(KyVec2d(200, 100));
    line->editStyle()->setStrokeMode(eSolidLine);
    line->editStyle()->setStrokeWidth(0);
    mScene->insertChild(line, Ky2DNode::cAppend);
    mView->fitNode(line);
    mView->fitNode(nullptr);
    expectCenter(200, 50);
    for (const double rotation : {0.0, 30.0, 90.0, -135.0, 721.0}) {
        for (const double zoom : {0.5, 1.0, 3.7}) {
            mView->setRotation(rotation);
            mView->setZoom(zoom);
            const auto pickAt = [this](double x, double y) {
                return mView->pick(mView->fromScene(KyVec2d(x, y)).x, mView->fromScene(KyVec2d(x, y)).y);
            };
            EXPECT_EQ(mRect, pickAt(90, 10)) << rotation << " " << zoom;
            EXPECT_EQ(nullptr, pickAt(150, 50)) << rotation << " " << zoom;
            EXPECT_EQ(line, pickAt(200 + 2 / zoom, 50)) << rotation << " " << zoom;
            EXPECT_EQ(nullptr, pickAt(200 + 8 / zoom, 50)) << rotation << " " << zoom;
        }
    }
}

TEST_F(Ky2DViewTest, AChangedNodeIsRepaintedAndAnIdleViewPaintsNothing) {
    PaintCounter paints;
    mView->viewport()->installEventFilter(&paints);
    QTest::qWait(150);
    EXPECT_EQ(0, paints.count);
    for (int i = 0; i < 10; ++i) {
        mRect->setX(i % 3);
        mRect->editStyle()->setFillColor(KyColor(1, 0, 0));
    }
    settleEvents();
    EXPECT_EQ(1, paints.count);
    EXPECT_EQ(QColor(Qt::red), mView->grab().toImage().pixelColor(toPixel(50, 50)));
    paints.count = 0;
    QTest::qWait(150);
    EXPECT_EQ(0, paints.count);
}

TEST_F(Ky2DViewTest, ASceneThatEndsLeavesTheViewEmpty) {
    QTest::mouseClick(mView->viewport(), Qt::LeftButton, {}, toPixel(50, 50));
    mScene.reset();
    EXPECT_EQ(nullptr, mView->getScene());
    EXPECT_TRUE(!mView->getPickedNode() && !mView->pick(200, 150));
    wheel(QPoint(5, 5), 120);
    dragBy(Qt::LeftButton, QPoint(5, 5), QPoint(50, 50));
    mView->setBackgroundColor(KyColor(1, 1, 0));
    settleEvents();
    EXPECT_EQ(QColor(Qt::yellow), mView->viewport()->grab().toImage().pixelColor(200, 150));
}

TEST_F(Ky2DViewTest, AViewMayBeDestroyedByItsOwnSignal) {
    Ky2DView* view = mView.release();
    const QPointer<Ky2DView> alive(view);
    view->nodePickedSignal().connect([view](Ky2DNode*) { view->destroy(); });
    QTest::mouseClick(view->viewport(), Qt::LeftButton, {}, QPoint(200, 150));
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_TRUE(alive.isNull());
}

TEST_F(Ky2DViewTest, AnEmbeddedWidgetGetsTheMouseFirst) {
    auto* button = new QPushButton("push");
    button->setFixedSize(60, 30);
    int nbClicks = 0;
    QObject::connect(button, &QPushButton::clicked, button, [&nbClicks] { ++nbClicks; });
    QGraphicsProxyWidget item;
    item.setWidget(button);
    mScene->insertChild(new Ky2DProxy(&item), Ky2DNode::cAppend);
    mView->fit();
    settleEvents();
    QTest::mouseClick(mView->viewport(), Qt::LeftButton, {}, toPixel(30, 15));
    EXPECT_EQ(1, nbClicks);
    EXPECT_TRUE(mPicks.empty());
    mScene.reset();
}

TEST_F(Ky2DViewTest, PicturesShowWhatTheViewShowsAtAnySize) {
    mView->hide();
    mView->resize(200, 200);
    const QImage image = mView->toImage(200, 400);
    ASSERT_EQ(QSize(200, 400), image.size());
    EXPECT_EQ(QColor(Qt::blue), image.pixelColor(10, 110));
    EXPECT_EQ(QColor(Qt::white), image.pixelColor(100, 50));
    for (const QSize size : {QSize(0, 5), QSize(5, -1), QSize(Ky2DView::cLargestSize + 1, 1)})
        EXPECT_TRUE(mView->toImage(size.width(), size.height()).isNull());
    const QTemporaryDir folder;
    EXPECT_TRUE(mView->saveImage(folder.filePath("view.png").toStdString()));
    EXPECT_EQ(mView->size() * mView->devicePixelRatioF(), QImage(folder.filePath("view.png")).size());
    EXPECT_FALSE(mView->saveImage(folder.filePath("none/view.png").toStdString()));
}

TEST_F(Ky2DViewTest, AViewMayEndWhileItAppliesChangesOrTells) {
    using Use = void (*)(Ky2DView&, Ky2DNode&);
    const Use uses[] = {[](Ky2DView& view, Ky2DNode&) { view.fit(); },
                        [](Ky2DView& view, Ky2DNode& node) { view.fitNode(&node); },
                        [](Ky2DView& view, Ky2DNode&) { view.toImage(10, 10); },
                        [](Ky2DView& view, Ky2DNode&) { view.setRotation(10); },
                        [](Ky2DView& view, Ky2DNode&) { view.pick(5, 5); },
                        [](Ky2DView& view, Ky2DNode& node) { view.setScene(node.editScene()); }};
    for (const Use use : uses)
        for (const bool byListener : {false, true}) {
            auto* const view = new Ky2DView;
            const QPointer<Ky2DView> guard(view);
            auto* const shape = new CountingNode;
            mScene->insertChild(shape, Ky2DNode::cAppend);
            view->setScene(mScene.get());
            const Listener listener(*view, [&guard, byListener] {
                if (byListener && guard)
                    guard->destroy();
            });
            shape->onGeometry = [&guard, byListener] {
                if (!byListener && guard)
                    guard->destroy();
            };
            shape->setQtOffset(KyVec2d(1, 1));
            use(*view, *shape);
            shape->destroy();
            delete guard.data();
        }
}

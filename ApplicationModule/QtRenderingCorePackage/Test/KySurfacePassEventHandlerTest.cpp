// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyPassSurface.h"
#include "KyQGraphicsDevice.h"
#include "KyQmlPass.h"
#include "KyQtPass.h"
#include "KySurfacePassEventHandler.h"
#include "KyWindowTesting.h"

#include "KyRendererContext.h"
#include "KyScenePass.h"

#include <QApplication>
#include <QGraphicsView>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPainter>
#include <QQuickItem>
#include <QTemporaryDir>

#include <cmath>
#include <fstream>
#include <numbers>

namespace {

constexpr int cWidth = 100, cHeight = 80;

/// Its left part is opaque, its right part is not there. Notes what the mouse does.
struct Pad : QWidget {
    Pad() {
        setAttribute(Qt::WA_TranslucentBackground);
        setMouseTracking(true);
    }
    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        painter.fillRect(0, 0, 70, cHeight, color);
        painter.fillRect(0, cHeight / 2, 70, cHeight / 2, Qt::blue);
    }
    void mousePressEvent(QMouseEvent* event) override { presses.push_back(event->pos()); }
    void mouseMoveEvent(QMouseEvent* event) override { moves.push_back(event->pos()); }
    void mouseReleaseEvent(QMouseEvent*) override { ++nbReleases; }
    void leaveEvent(QEvent*) override { ++nbLeaves; }

    std::vector<QPoint> presses, moves;
    int nbReleases = 0, nbLeaves = 0;
    QColor color = Qt::red;
};

/// Stands for what turns the camera.
struct Turner : KyPassEventHandler {
    bool handleEvent(const KyInputEvent&, KyGraphicsViewMultiPass*, KyBaseGraphicsPass*) override {
        ++nbEvents;
        return true;
    }
    int nbEvents = 0;
};

/// A plane that shows a pass, before a camera.
class KySurfacePassEventHandlerTest : public testing::Test {
protected:
    KySurfacePassEventHandlerTest() {
        EXPECT_TRUE(mDevice) << mError;
        mCanvas->setSize(cCanvasWidth, cCanvasHeight);
        mTarget->setSize(cCanvasWidth, cCanvasHeight);
        mCanvas->insertView(mView.get());
        const KyHolder<KyScenePass> scenePass(KyScenePass::create());
        scenePass->setSamples(1);
        scenePass->setScene(mScene.get());
        scenePass->setCamera(mCamera.get());
        scenePass->setEventHandler(mTurner.get());
        mView->setMainPass(scenePass.get());
        mCamera->lookAt(KyVec3d(0.3, 0.2, 3), KyVec3d());
        mPlane = addPlane(0.0);
    }

    KyMeshNode* addPlane(double z) {
        auto* const plane = new KyMeshNode;
        plane->makePlane(cPlaneWidth, cPlaneHeight);
        plane->rotate(KyVec3d(1, 0, 0), std::numbers::pi / 2.0);
        plane->setPosition(KyVec3d(0, 0, z));
        mScene->addChild(plane);
        return plane;
    }
    Pad* showPad(KyMeshNode* plane) {
        auto* const pad = new Pad;
        showWidget(plane, pad);
        return pad;
    }
    KyPassSurface* showWidget(KyMeshNode* plane, QWidget* widget) {
        auto* const pass = KyQtPass::create();
        EXPECT_TRUE(pass->setQWidget(widget, true));
        KyPassSurface* const surface = KyPassSurface::show(pass, plane, mView.get(), cWidth, cHeight);
        settle();
        return surface;
    }

    void draw() {
        KyRendererContext context(mDevice.get());
        context.setTarget(mTarget.get());
        EXPECT_TRUE(mCanvas->render(context));
    }
    void settle() {
        for (int i = 0; i < 50 && (i < 4 || mCanvas->needsRedraw()); ++i) {
            QApplication::processEvents();
            draw();
        }
        EXPECT_FALSE(mCanvas->needsRedraw());
    }

    /// Where a place of the picture, in its pixels, is seen.
    QPoint project(double x, double y) const {
        const KyVec3d onPlane((x / cWidth - 0.5) * cPlaneWidth, 0.0, (y / cHeight - 0.5) * cPlaneHeight);
        const KyVec3d eye = mCamera->getViewMatrix().transformPoint(mPlane->getWorldFrame().transformPoint(onPlane));
        const KyMat4d projection = mCamera->getProjection(static_cast<double>(cCanvasWidth) / cCanvasHeight);
        const auto row = [&](int i) {
            return projection.get(i, 0) * eye.x + projection.get(i, 1) * eye.y + projection.get(i, 2) * eye.z +
                   projection.get(i, 3);
        };
        return {static_cast<int>(std::floor((row(0) / row(3) + 1.0) / 2.0 * cCanvasWidth)),
                static_cast<int>(std::floor((1.0 - row(1) / row(3)) / 2.0 * cCanvasHeight))};
    }
    bool send(KyInputEvent::Type type, const QPoint& pixel) {
        KyInputEvent event;
        event.setType(type);
        event.setPosition(pixel.x(), pixel.y());
        mIsDown = type == KyInputEvent::eMousePressed || (mIsDown && type == KyInputEvent::eMouseMoved);
        event.setState(mIsDown ? KyInputEvent::cLeftButton : 0);
        event.setButton(type == KyInputEvent::eMouseMoved ? 0 : KyInputEvent::cLeftButton);
        return mCanvas->handleEvent(event);
    }
    void click(const QPoint& pixel) {
        send(KyInputEvent::eMousePressed, pixel);
        send(KyInputEvent::eMouseReleased, pixel);
    }

    static constexpr int cCanvasWidth = 640, cCanvasHeight = 480;
    static constexpr double cPlaneWidth = 2.0, cPlaneHeight = 1.6;

    std::string mError;
    std::unique_ptr<KyQGraphicsDevice> mDevice =
        KyQGraphicsDevice::createOffscreen(mError, KyWindow::getDefaultFormat());
    KyHolder<KyCanvas> mCanvas{new KyCanvas};
    KyHolder<KyFrameBuffer> mTarget{KyFrameBuffer::create()};
    KyHolder<KyGraphicsViewMultiPass> mView{KyGraphicsViewMultiPass::create()};
    KyHolder<KyScene> mScene{new KyScene};
    KyHolder<KyCamera> mCamera{new KyCamera};
    KyHolder<Turner> mTurner{new Turner};
    KyMeshNode* mPlane = nullptr;
    bool mIsDown = false;
};

TEST_F(KySurfacePassEventHandlerTest, AClickReachesTheWidgetAtThePixelThatIsSeenFromEverySide) {
    Pad* const pad = showPad(mPlane);
    mPlane->rotate(KyVec3d(0, 1, 0), 0.2);
    for (const KyVec3d& eye : {KyVec3d(0, 0, 2.5), KyVec3d(2.4, 0.3, 1.9), KyVec3d(-1.6, 2, 2), KyVec3d(0.5, -2, 1.9),
                               KyVec3d(0.7, 0.4, -2.2)})
        for (const bool isOrthographic : {false, true}) {
            mCamera->lookAt(eye, KyVec3d());
            mCamera->setOrthographic(isOrthographic);
            for (const QPoint& place : {QPoint(1, 1), QPoint(35, 40), QPoint(68, 78), QPoint(3, 76), QPoint(60, 2)}) {
                pad->presses.clear();
                click(project(place.x() + 0.5, place.y() + 0.5));
                ASSERT_EQ(pad->presses.size(), 1u) << place.x() << ' ' << place.y() << " from " << eye;
                EXPECT_LE(std::abs(pad->presses[0].x() - place.x()), 1) << eye << place.x();
                EXPECT_LE(std::abs(pad->presses[0].y() - place.y()), 1) << eye << place.y();
            }
        }
    EXPECT_EQ(mTurner->nbEvents, 0);
}

TEST_F(KySurfacePassEventHandlerTest, WhatIsHiddenOrTransparentIsNotReached) {
    Pad* const front = showPad(mPlane);
    click(project(80, 40));
    EXPECT_EQ(mTurner->nbEvents, 2) << "the transparent part lets through";
    Pad* const back = showPad(addPlane(-0.02));
    click(project(80, 40));
    EXPECT_TRUE(front->presses.empty() && back->presses.empty()) << "transparent twice";
    mScene->getChild(1)->setPosition(KyVec3d(0.6, 0, -0.02));
    click(project(80, 40));
    ASSERT_EQ(back->presses.size(), 1u) << "the one behind";
    EXPECT_NEAR(back->presses[0].x(), 50, 2);
    auto* const box = new KyMeshNode;
    box->makeBox(0.2, 0.2, 0.2);
    box->setPosition(KyVec3d(0, 0, 0.5));
    mScene->addChild(box);
    const int before = mTurner->nbEvents;
    click({cCanvasWidth / 2 - 8, cCanvasHeight / 2 - 6});
    EXPECT_TRUE(front->presses.empty()) << "behind the box";
    EXPECT_EQ(mTurner->nbEvents, before + 2);
}

TEST_F(KySurfacePassEventHandlerTest, ADragGoesOnBesideTheNodeUntilTheRelease) {
    Pad* const pad = showPad(mPlane);
    EXPECT_TRUE(send(KyInputEvent::eMousePressed, project(20, 20)));
    pad->moves.clear();
    // Over what is transparent and beside the plane.
    for (const QPointF& place : {QPointF(90, 40), QPointF(112, -8), QPointF(-12, 40)}) {
        EXPECT_TRUE(send(KyInputEvent::eMouseMoved, project(place.x(), place.y())));
        ASSERT_FALSE(pad->moves.empty());
        EXPECT_NEAR(pad->moves.back().x(), place.x(), 1.0);
        EXPECT_NEAR(pad->moves.back().y(), place.y(), 1.0);
    }
    // Where the plane has no place any more, the pointer stays at the last one.
    mPlane->setPosition(KyVec3d(0, 0, 10));
    const QPointF last = pad->moves.back();
    EXPECT_TRUE(send(KyInputEvent::eMouseMoved, QPoint(320, 240)));
    EXPECT_EQ(pad->moves.back(), last);
    EXPECT_TRUE(send(KyInputEvent::eMouseReleased, QPoint(320, 240)));
    mPlane->setPosition(KyVec3d(0, 0, 0));
    EXPECT_EQ(pad->nbReleases, 1);
    EXPECT_EQ(mTurner->nbEvents, 0);
    pad->moves.clear();
    EXPECT_TRUE(send(KyInputEvent::eMouseMoved, project(90, 40)));
    EXPECT_TRUE(pad->moves.empty());
    EXPECT_EQ(mTurner->nbEvents, 1);
}

TEST_F(KySurfacePassEventHandlerTest, ThePointerEntersAndLeaves) {
    Pad* const pad = showPad(mPlane);
    const auto enter = [&] { send(KyInputEvent::eMouseMoved, project(20, 20)); };
    enter();
    EXPECT_FALSE(pad->moves.empty());
    EXPECT_EQ(pad->nbLeaves, 0);
    send(KyInputEvent::eMouseMoved, {1, 1});
    EXPECT_EQ(pad->nbLeaves, 1);
    enter();
    mCanvas->pointerLeftSignal().send();
    EXPECT_EQ(pad->nbLeaves, 2);
}

TEST_F(KySurfacePassEventHandlerTest, KeysGoToTheLineEditThatWasClickedUntilAPressElsewhere) {
    auto* const edit = new QLineEdit;
    edit->setMinimumHeight(cHeight);
    showWidget(mPlane, edit);
    const auto type = [this] {
        QKeyEvent native(QEvent::KeyPress, Qt::Key_K, Qt::NoModifier, QStringLiteral("k"));
        KyInputEvent event;
        event.setType(KyInputEvent::eKeyPressed);
        event.setNativeEvent(&native);
        // Keys come with a position that is not looked at.
        event.setPosition(1, 1);
        mCanvas->handleEvent(event);
    };
    type();
    click(project(30, 40));
    type();
    EXPECT_EQ(edit->text(), QStringLiteral("k"));
    click({1, 1});
    type();
    EXPECT_EQ(edit->text(), QStringLiteral("k"));
}

TEST_F(KySurfacePassEventHandlerTest, AClickReachesQml) {
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("area.qml"));
    std::ofstream(path.toStdString()) << "import QtQuick 2.0\nRectangle { property point at; color: 'red'\n"
                                         "MouseArea { anchors.fill: parent; onPressed: parent.at = "
                                         "Qt.point(mouse.x, mouse.y) } }\n";
    auto* const pass = KyQmlPass::create();
    pass->setQml(path);
    KyPassSurface::show(pass, mPlane, mView.get(), cWidth, cHeight);
    ASSERT_TRUE(kyRunUntil([&] { return draw(), pass->isLoaded(); })) << pass->getErrorText();
    settle();
    click(project(72.5, 11.5));
    const QPointF at = pass->getQuickItem()->property("at").toPointF();
    EXPECT_NEAR(at.x(), 72.0, 1.0);
    EXPECT_NEAR(at.y(), 11.0, 1.0);
}

TEST_F(KySurfacePassEventHandlerTest, TheNodeShowsThePictureUprightAndIsDrawnAnewOnlyWhenItChanges) {
    Pad* const pad = showPad(mPlane);
    const auto getColor = [this](double x, double y) {
        const QPoint pixel = project(x, y);
        return kyToImage(KyHolder<KyImage>(mTarget->readPixels()).get()).pixelColor(pixel);
    };
    EXPECT_EQ(getColor(10, 10), QColor(Qt::red));
    EXPECT_EQ(getColor(10, 70), QColor(Qt::blue));
    EXPECT_NE(getColor(90, 10), QColor(Qt::red));
    pad->color = Qt::green;
    pad->update();
    EXPECT_TRUE(kyRunUntil([this] { return mCanvas->needsRedraw(); }));
    settle();
    EXPECT_EQ(getColor(10, 10), QColor(Qt::green));
}

TEST_F(KySurfacePassEventHandlerTest, TheHandlerIsPutBeforeTheFormerOneOnceAndTheNodeIsCleanAfterwards) {
    showPad(mPlane);
    const auto* const handler = KySurfacePassEventHandler::cast(mView->getMainPass()->getEventHandler());
    ASSERT_TRUE(handler);
    EXPECT_EQ(handler->getNextHandler(), mTurner.get());
    KyPassSurface* const second = showWidget(addPlane(-1), new Pad);
    EXPECT_EQ(mView->getMainPass()->getEventHandler(), handler);
    const KyHolder<KyMeshNode> node(second->getNode());
    EXPECT_TRUE(node->getTexture());
    mView->removePass(second);
    EXPECT_FALSE(node->getTexture());
    EXPECT_FALSE(KyPassSurface::show(nullptr, mPlane, mView.get(), 1, 1));
}

TEST_F(KySurfacePassEventHandlerTest, ChainsOfHandlersMakeNoRingAndAreGoneThroughHoweverLong) {
    using Handler = KySurfacePassEventHandler;
    KyHolder<Handler> first(Handler::create());
    Handler* last = first.get();
    for (int i = 0; i < 200'000; ++i) {
        Handler* const next = Handler::create();
        last->setNextHandler(next);
        last = next;
    }
    last->setNextHandler(first.get());
    EXPECT_EQ(last->getNextHandler(), nullptr);
    last->setNextHandler(mTurner.get());
    KyInputEvent event;
    event.setType(KyInputEvent::eMousePressed);
    first->handleEvent(event, mView.get(), mView->getMainPass());
    EXPECT_EQ(mTurner->nbEvents, 1);
    const int nbReferences = mTurner->getNbReferences();
    first.reset();
    EXPECT_EQ(mTurner->getNbReferences(), nbReferences - 1);
}

} // namespace

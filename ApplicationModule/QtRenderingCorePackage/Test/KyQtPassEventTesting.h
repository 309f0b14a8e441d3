// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyQOpenGLWindow.h"
#include "KyQmlPass.h"
#include "KyQtPass.h"
#include "KyQtPassEventHandler.h"
#include "KyWindowTesting.h"

#include <QComboBox>
#include <QGraphicsProxyWidget>
#include <QGraphicsScene>
#include <QHelpEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QSlider>
#include <QTemporaryDir>
#include <QTest>
#include <QTouchEvent>
#include <QWheelEvent>

#include <map>
#include <utility>
#include <vector>

inline constexpr QPoint cNowhere(250, 280);
using Types = std::vector<int>;

/// Stands for a camera: uses what reaches it, and notes that unless it is a move without buttons.
struct CameraLog : KyPassEventHandler {
    using KyPassEventHandler::handleEvent;
    bool handleEvent(const KyInputEvent& event, KyGraphicsViewMultiPass*, KyBaseGraphicsPass*) override {
        if (event.getType() != KyInputEvent::eMouseMoved || event.getState() != 0)
            types.push_back(event.getType());
        return true;
    }
    Types take() { return std::exchange(types, {}); }

    Types types;
};

/// Notes the types of an object's events.
struct EventTypes : QObject {
    explicit EventTypes(QObject* object) { object->installEventFilter(this); }
    bool eventFilter(QObject*, QEvent* event) override {
        ++counts[event->type()];
        return false;
    }
    std::map<int, int> counts;
};

/// On a transparent ground.
struct Panel : QWidget {
    Panel() {
        setAttribute(Qt::WA_NoSystemBackground);
        int top = 10;
        for (QWidget* widget : std::initializer_list<QWidget*>{button, edit, other, combo, slider, label}) {
            widget->setParent(this);
            widget->setGeometry(10, std::exchange(top, top + 35), 120, 28);
            widget->setAutoFillBackground(true);
        }
        combo->addItems({"one", "two", "three"});
        button->setToolTip("Presses");
    }

    bool event(QEvent* event) override {
        if (event->type() < QEvent::TouchBegin || event->type() > QEvent::TouchEnd)
            return QWidget::event(event);
        touches.push_back(static_cast<QTouchEvent*>(event)->touchPoints().first().pos());
        return true;
    }

    std::vector<QPointF> touches;
    QPushButton* button = new QPushButton("Press");
    QLineEdit* edit = new QLineEdit;
    QLineEdit* other = new QLineEdit;
    QComboBox* combo = new QComboBox;
    QSlider* slider = new QSlider(Qt::Horizontal);
    QLabel* label = new QLabel("Label");
};

class KyQtPassEventHandlerTest : public testing::Test {
protected:
    KyQtPassEventHandlerTest() {
        mView = mBall.canvas->getView(0);
        mView->getMainPass()->setEventHandler(mCamera.get());
        mPass = addQtPass();
        mPass->setQWidget(mPanel, true);
        mWindow = KyQOpenGLWindow::create(mBall.canvas.get());
        mWindow->resize(300, 300);
        mWindow->show();
        mWindow->requestActivate();
        mWindow->setSize(300, 300);
        mWindow->drawnSignal().connect([this](KyWindow*) { mIsDrawn = true; });
        kyRunUntil([this] { return mIsDrawn; });
        // Where the pointer is already it does not come.
        move(cNowhere);
        settle();
    }
    ~KyQtPassEventHandlerTest() override { delete mWindow.data(); }

    KyQtPass* addQtPass() {
        return KyQtPass::cast(KyQtPass::createQtPassOverlayView(mView, true, true)->getMainPass());
    }
    KyQmlPass* addQml(const char* text) {
        QFile file(mFolder.filePath("panel.qml"));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly) && file.write(text) > 0);
        file.close();
        auto* const pass = KyQmlPass::cast(KyQmlPass::createQmlPassOverlayView(mView, true, true)->getMainPass());
        pass->setQml(file.fileName());
        EXPECT_TRUE(kyRunUntil([pass] { return pass->isLoaded(); }));
        settle();
        return pass;
    }
    KyQtPassEventHandler& getHandler() { return *KyQtPassEventHandler::cast(mPass->getEventHandler()); }
    void settle() {
        kyRunFrames(4);
        kyRunUntil([this] { return !mWindow || !mWindow->needsRedraw(); });
    }

    /// All positions are pixels of the picture.
    QPoint toWindow(const QPoint& pixel) const { return pixel / mWindow->devicePixelRatio(); }
    static QPoint at(const QWidget* widget, double part = 0.5) {
        return widget->mapTo(widget->window(), QPoint(int(widget->width() * part), widget->height() / 2));
    }
    void press(const QPoint& pixel) { QTest::mousePress(mWindow, Qt::LeftButton, {}, toWindow(pixel)); }
    void move(const QPoint& pixel) { QTest::mouseMove(mWindow, toWindow(pixel)); }
    void release(const QPoint& pixel) { QTest::mouseRelease(mWindow, Qt::LeftButton, {}, toWindow(pixel)); }
    void click(const QPoint& pixel, Qt::MouseButton button = Qt::LeftButton) {
        QTest::mouseClick(mWindow, button, {}, toWindow(pixel));
        settle();
    }
    void type(const char* text) {
        for (; *text; ++text)
            QTest::keyClick(mWindow.data(), *text);
    }
    bool wheel(const QPoint& pixel, int delta) {
        const QPoint place = toWindow(pixel);
        QWheelEvent event(place, mWindow->mapToGlobal(place), {}, {0, delta}, {}, {}, Qt::NoScrollPhase, false);
        return QCoreApplication::sendEvent(mWindow, &event);
    }
    void askToolTip(const QPoint& pixel) {
        QHelpEvent event(QEvent::ToolTip, toWindow(pixel), mWindow->mapToGlobal(toWindow(pixel)));
        QCoreApplication::sendEvent(mWindow, &event);
        settle();
    }
    void touch(const QPoint& from, const QPoint& to) {
        QTest::touchEvent(mWindow, mDevice).press(7, toWindow(from), mWindow.data());
        QTest::touchEvent(mWindow, mDevice).move(7, toWindow((from + to) / 2), mWindow.data());
        QTest::touchEvent(mWindow, mDevice).move(7, toWindow(to), mWindow.data());
        QTest::touchEvent(mWindow, mDevice).release(7, toWindow(to), mWindow.data());
    }
    /// What a combo box, a menu or a tool tip opened in the scene.
    QGraphicsProxyWidget* findOpened() const {
        for (QGraphicsItem* item : mPass->editQGraphicsScene()->items())
            if (auto* proxy = qgraphicsitem_cast<QGraphicsProxyWidget*>(item);
                proxy && proxy->isVisible() && proxy->widget() && proxy->widget() != mPass->editQWidget())
                return proxy;
        return nullptr;
    }

    QTemporaryDir mFolder;
    KyBallCanvas mBall;
    KyHolder<CameraLog> mCamera{new CameraLog};
    KyGraphicsViewMultiPass* mView = nullptr;
    KyQtPass* mPass = nullptr;
    Panel* mPanel = new Panel;
    QPointer<KyQOpenGLWindow> mWindow;
    bool mIsDrawn = false;
    QTouchDevice* mDevice = QTest::createTouchDevice();
};

// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyWindowTesting.h"

#include "KyQGLGraphicsView.h"
#include "KyQGLWindow.h"
#include "KyQGraphicsSceneViewItem.h"
#include "KyQOpenGLWindow.h"
#include "KyQWindow.h"

#include "KyMeshNode.h"
#include "KyScene.h"
#include "KyScenePass.h"

#include "KyMainTaskManager.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QGraphicsScene>
#include <QPointer>
#include <QProcess>
#include <QScreen>
#include <QTest>

namespace {

constexpr QSize cSize(200, 150);

template <class Window>
class ShownWindow : public KyShownWindow {
public:
    explicit ShownWindow(KyCanvas* canvas)
        : mQt(Window::create(canvas)) {
        setWindow(mQt);
        mQt->resize(cSize);
        mQt->show();
        // Qt's platform without a screen takes the first size for device pixels.
        mQt->resize(cSize);
    }
    ~ShownWindow() override { delete mQt.data(); }

    QImage getFrame() override {
        if constexpr (requires { mQt->grab(); })
            return mQt->grab().toImage();
        else if (QGuiApplication::platformName() == "xcb")
            return mQt->screen()->grabWindow(mQt->winId()).toImage();
        else
            return kyToImage(KyHolder<KyImage>(mQt->grabPicture()).get());
    }

private:
    QObject& getTarget() override {
        if constexpr (requires { mQt->viewport(); })
            return *mQt->viewport();
        else
            return *mQt;
    }

    QPointer<Window> mQt;
};

class ShownItem : public KyShownWindow {
public:
    explicit ShownItem(KyCanvas* canvas)
        : mItem(KyQGraphicsSceneViewItem::create(canvas)) {
        setWindow(mItem);
        mItem->setItemSize(cSize);
        mScene->addItem(mItem);
        // Away from the origin, so that positions in the scene and in the item differ.
        mItem->setPos(cOffset);
        mView->setScene(mScene.get());
        mView->setSceneRect(0.0, 0.0, 2 * cSize.width(), 2 * cSize.height());
        mView->setFrameShape(QFrame::NoFrame);
        mView->setAlignment(Qt::AlignLeft | Qt::AlignTop);
        mView->resize(2 * cSize);
        mView->show();
    }
    QImage getFrame() override { return mView->grab(QRect(cOffset, mItem->getItemSize().toSize())).toImage(); }

private:
    QObject& getTarget() override { return *mView->viewport(); }
    QPoint getOffset() const override { return cOffset; }

    static constexpr QPoint cOffset{40, 30};

    std::unique_ptr<QGraphicsScene> mScene = std::make_unique<QGraphicsScene>();
    std::unique_ptr<QGraphicsView> mView = std::make_unique<QGraphicsView>();
    QPointer<KyQGraphicsSceneViewItem> mItem;
};

template <class Shown>
std::unique_ptr<KyShownWindow> show(KyCanvas* canvas) {
    return std::make_unique<Shown>(canvas);
}

} // namespace

const std::vector<KyWindowKind> gWindowKinds{
    {"KyQWindow", &show<ShownWindow<KyQWindow>>},     {"KyQOpenGLWindow", &show<ShownWindow<KyQOpenGLWindow>>},
    {"KyQGLWindow", &show<ShownWindow<KyQGLWindow>>}, {"KyQGLGraphicsView", &show<ShownWindow<KyQGLGraphicsView>>},
    {"KyQGraphicsSceneViewItem", &show<ShownItem>},
};

KyBallCanvas::KyBallCanvas() {
    const KyHolder<KyScene> scene(new KyScene);
    auto* const ball = new KyMeshNode;
    ball->makeSphere(1.0);
    ball->setColor(KyColor(1.f, 0.f, 0.f, 1.f));
    scene->addChild(ball);
    camera->setPosition(KyVec3d(0.0, 0.0, 6.0));
    const KyHolder<KyScenePass> pass(KyScenePass::create());
    pass->setScene(scene.get());
    pass->setCamera(camera.get());
    pass->setBackgroundVisible(false);
    const KyHolder<KyGraphicsViewMultiPass> view(KyGraphicsViewMultiPass::create());
    view->setClearColor(KyColor(0.f, 0.f, 1.f, 1.f));
    view->setMainPass(pass.get());
    canvas->insertView(view.get());
}

bool KyEventLog::handleEvent(const KyInputEvent& event) {
    events.push_back(event);
    const bool result = uses;
    if (const std::function<void()> kept = action)
        kept();
    return result;
}

KyShownWindow::~KyShownWindow() = default;

void KyShownWindow::setWindow(KyWindow* window) {
    mWindow = KyObjectReference(window);
    window->drawnSignal().connect([this](KyWindow*) { ++nbDrawn; });
}

std::unique_ptr<QMouseEvent> KyShownWindow::make(QEvent::Type type, const QPoint& position) {
    const QPoint place = position + getOffset();
    const auto* const widget = qobject_cast<QWidget*>(&getTarget());
    const QPoint global =
        widget ? widget->mapToGlobal(place) : qobject_cast<QWindow*>(&getTarget())->mapToGlobal(place);
    const Qt::MouseButton button = type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton;
    const Qt::MouseButton held = type == QEvent::MouseButtonPress ? Qt::LeftButton : Qt::NoButton;
    return std::make_unique<QMouseEvent>(type, place, global, button, held, Qt::NoModifier);
}

bool kyRunUntil(const std::function<bool()>& condition) {
    constexpr qint64 cLongest = 60000;
    QElapsedTimer timer;
    timer.start();
    while (!condition() && timer.elapsed() < cLongest)
        kyRunFrames(1);
    return condition();
}

void kyRunFrames(int count) {
    constexpr int cPause = 5;
    for (int i = 0; i < count; ++i) {
        KyMainTaskManager::get().update();
        QTest::qWait(cPause);
    }
}

int kyRunProcess(const char* filter, const char* variable, const char* value) {
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    if (value)
        environment.insert(variable, value);
    else
        environment.remove(variable);
    QProcess process;
    process.setProcessEnvironment(environment);
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(QCoreApplication::applicationFilePath(), {QString("--gtest_filter=") + filter});
    constexpr int cLongest = 300000;
    const bool hasRun = process.waitForFinished(cLongest) && process.exitStatus() == QProcess::NormalExit;
    if (!hasRun || process.exitCode() != 0)
        ADD_FAILURE() << process.readAll().toStdString();
    return hasRun ? process.exitCode() : -1;
}

bool kyShowsBall(const QImage& image) {
    const QColor middle = image.pixelColor(image.width() / 2, image.height() / 2);
    const auto isBlue = [&image](int x, int y) {
        const QColor color = image.pixelColor(x, y);
        return color.blue() > 200 && color.red() < 30 && color.green() < 30;
    };
    return middle.red() > 90 && middle.green() < 60 && middle.blue() < 60 && isBlue(image.width() - 2, 2) &&
           isBlue(2, image.height() - 2);
}

QImage kyToImage(const KyImage* image) {
    if (!image)
        return {};
    return QImage(image->getData(), image->getWidth(), image->getHeight(), QImage::Format_RGBX8888).copy();
}

// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyWindow.h"

#include "KyWindowEvents_p.h"

#include "KyFrameBuffer.h"
#include "KyGraphicsDeviceManager.h"
#include "KyImage.h"
#include "KyRendererContext.h"

#include "KyException.h"
#include "KyType.h"
#include "KyURL.h"

#include <QApplication>
#include <QEvent>
#include <QOpenGLContext>

#include <algorithm>
#include <cmath>
#include <vector>

namespace {

constexpr int cMajorVersion = 3;
constexpr int cMinorVersion = 3;
constexpr int cDepthBits = 24;
constexpr int cSamples = 4;

// Never destroyed: windows may end after static destructors have begun.
std::vector<KyWindow*>& getWindows() {
    static auto* const windows = new std::vector<KyWindow*>;
    return *windows;
}

bool isSharing(const KyQGraphicsDevice& device, QOpenGLContext* context) {
    return !device.getContext() || QOpenGLContext::areSharing(device.getContext(), context);
}

} // namespace

KyWindow::Busy::Busy(KyWindow& window)
    : mWindow(&window) {
    ++window.mNbBusy;
}

KyWindow::Busy::~Busy() {
    if (KyObject* window = mWindow.get())
        --static_cast<KyWindow*>(window)->mNbBusy;
}

KyWindow::KyWindow(KyCanvas* canvas)
    : mCanvas(canvas ? canvas : new KyCanvas)
    , mDevice(std::make_unique<KyQGraphicsDevice>())
    , mEvents(std::make_unique<KyWindowEvents>(*this)) {
    mEvents->setCanvas(mCanvas.get());
    getWindows().push_back(this);
}

KyWindow::~KyWindow() {
    std::erase(getWindows(), this);
}

unsigned KyWindow::getNbWindows() {
    return static_cast<unsigned>(getWindows().size());
}

KyWindow* KyWindow::getWindow(unsigned index) {
    return index < getWindows().size() ? getWindows()[index] : nullptr;
}

QSurfaceFormat KyWindow::getDefaultFormat() {
    QSurfaceFormat format;
    format.setVersion(cMajorVersion, cMinorVersion);
    format.setProfile(QSurfaceFormat::CoreProfile);
    format.setDepthBufferSize(cDepthBits);
    format.setSamples(cSamples);
    return format;
}

bool KyWindow::isSupported(std::string& error) {
    if (!qobject_cast<QGuiApplication*>(QCoreApplication::instance())) {
        error = "there is no QGuiApplication";
        return false;
    }
    QOpenGLContext context;
    context.setFormat(getDefaultFormat());
    if (context.create() && context.format().version() >= qMakePair(cMajorVersion, cMinorVersion))
        return true;
    error = "this display offers no OpenGL 3.3";
    return false;
}

bool KyWindow::hasApplication(const char* className, bool needsWidgets) {
    QCoreApplication* const application = QCoreApplication::instance();
    if (needsWidgets ? qobject_cast<QApplication*>(application) : qobject_cast<QGuiApplication*>(application))
        return true;
    const char* const needed = needsWidgets ? "QApplication" : "QGuiApplication";
    KyException::create(std::string(className) + "::create(): there is no " + needed + ".");
    return false;
}

void KyWindow::destroy() {
    if (isEnding())
        return;
    if (mNbBusy == 0) {
        KyObject::destroy();
        return;
    }
    setShown(false);
    end();
    editQObject().deleteLater();
}

void KyWindow::end() {
    if (mHasEnded)
        return;
    notifyEnd();
    mHasEnded = true;
    std::erase(getWindows(), this);
    mEvents->setCanvas(nullptr);
    // What is only the canvas's on the device goes with its context current.
    {
        const KyQGraphicsDevice::Scope current(*mDevice);
        mCanvas.reset();
        if (current.isCurrent())
            KyGraphicsDeviceManager::get().endContext();
    }
    // The context may live longer than the surface.
    mDevice->setContext(nullptr, nullptr);
}

void KyWindow::setCanvas(KyCanvas* canvas) {
    if (mHasEnded || (canvas && mCanvas == canvas))
        return;
    KyHolder<KyCanvas> next(canvas ? canvas : new KyCanvas);
    mEvents->setCanvas(next.get());
    mDrawnRevision = 0;
    {
        const KyQGraphicsDevice::Scope current(*mDevice);
        mCanvas = std::move(next);
    }
    notifyModified("Canvas");
}

KyQEventCanvasProvider& KyWindow::editEventProvider() {
    mEvents->setPixelRatio(getPixelRatio());
    return *mEvents;
}

void KyWindow::setMouseFocusPolicy(int policy) {
    if (policy == mEvents->getMouseFocusPolicy() || policy < 0 || policy >= eNbMouseFocusPolicies)
        return;
    mEvents->setMouseFocusPolicy(static_cast<KyMouseFocusPolicy>(policy));
    notifyModified("MouseFocusPolicy");
}

int KyWindow::getMouseFocusPolicy() const {
    return mEvents->getMouseFocusPolicy();
}

void KyWindow::setSize(int width, int height) {
    if (width < 1 || height < 1)
        return;
    const auto toPoints = [ratio = getPixelRatio()](int pixels) {
        return std::max(static_cast<int>(std::lround(std::min(pixels, cLargestSize) / ratio)), 1);
    };
    resizeTo({toPoints(width), toPoints(height)});
}

void KyWindow::setAutoRedraw(bool isAuto) {
    if (mIsAutoRedraw == isAuto)
        return;
    mIsAutoRedraw = isAuto;
    notifyModified("AutoRedraw");
}

bool KyWindow::isEmpty() const {
    return mHasEnded || getDeviceSize().isEmpty();
}

bool KyWindow::needsRedraw() const {
    if (isEmpty())
        return false;
    return mIsStale || mDrawnSize != getDeviceSize() || mCanvas->getRevision() != mDrawnRevision;
}

void KyWindow::fitCanvas() {
    const QSize size = getDeviceSize();
    if (size.isEmpty() || size == QSize(mCanvas->getWidth(), mCanvas->getHeight()))
        return;
    const KyHolder<KyCanvas> canvas = mCanvas;
    const std::uint64_t before = canvas->getRevision();
    canvas->setSize(size.width(), size.height());
    const std::uint64_t after = canvas->getRevision();
    // Else two windows of one canvas would make each other stale for ever.
    for (KyWindow* window : getWindows())
        if (window->mCanvas == canvas.get() && window->mDrawnRevision == before)
            window->mDrawnRevision = after;
}

bool KyWindow::drawCanvas(KyFrameBuffer* target) {
    if (isEmpty())
        return false;
    const Busy busy(*this);
    const KyHolder<KyCanvas> canvas = mCanvas;
    fitCanvas();
    // Before drawing: a pass may find a reason to be drawn again while it draws. Noted even when drawing fails: trying
    // again in every frame would not help.
    mDrawnRevision = canvas->getRevision();
    mDrawnSize = getDeviceSize();
    mIsStale = false;
    KyRendererContext context(mDevice.get());
    context.setTarget(target);
    if (!canvas->render(context)) {
        reportOnce("cannot draw, because its OpenGL context is lost or older than 3.2");
        return false;
    }
    mHasNewFrame = true;
    return true;
}

KyImage* KyWindow::grabPicture() {
    if (isEmpty() || !prepareContext())
        return nullptr;
    const Busy busy(*this);
    const KyQGraphicsDevice::Scope current(*mDevice);
    if (!current.isCurrent())
        return nullptr;
    const KyHolder<KyCanvas> canvas = mCanvas;
    fitCanvas();
    const KyHolder<KyFrameBuffer> target(KyFrameBuffer::create());
    target->setSize(canvas->getWidth(), canvas->getHeight());
    target->setSamples(cSamples);
    KyRendererContext context(mDevice.get());
    context.setTarget(target.get());
    return canvas->render(context) ? target->readPixels() : nullptr;
}

bool KyWindow::savePicture(const KyURL& url) {
    const KyHolder<KyImage> image(grabPicture());
    return image && image->savePNG(url);
}

bool KyWindow::isForCanvas(QObject*, QEvent*) {
    return true;
}

bool KyWindow::prepareContext() {
    return mDevice->getContext() != nullptr;
}

void KyWindow::watch(QObject& object) {
    object.installEventFilter(mEvents.get());
}

bool KyWindow::finishEvent(QEvent* event, bool wasHandled) {
    const bool wasUsed = mUsedEvent == event;
    mUsedEvent = nullptr;
    if (wasUsed)
        event->accept();
    if (event->type() == QEvent::ScreenChangeInternal) {
        setStale();
    } else if (event->type() == QEvent::Show || event->type() == QEvent::Resize) {
        // Whoever frames something in a view before the first frame needs its size.
        const bool isSeen = event->type() == QEvent::Show || isShown();
        if (isSeen && !mHasEnded)
            fitCanvas();
    } else if (event->type() == QEvent::Close && event->isAccepted() && !mHasEnded) {
        const Busy busy(*this);
        mClosedSignal.send(this);
    }
    return wasUsed || wasHandled;
}

bool KyWindow::checkSupport() {
    std::string error;
    if (!mIsSupported && !mHasReported)
        mIsSupported = isSupported(error);
    if (!mIsSupported)
        reportOnce("shows nothing: " + error);
    return mIsSupported;
}

void KyWindow::reportOnce(const std::string& text) {
    if (!mHasReported)
        KyException::create(getObjectType()->getName() + ": the window " + text + ".");
    mHasReported = true;
}

void KyWindow::setContext(QOpenGLContext* context, QSurface* surface) {
    if (context == mDevice->getContext() && surface == mDevice->getSurface())
        return;
    mDevice->setContext(context, surface);
    setStale();
    if (!context)
        return;
    if (!std::ranges::all_of(getWindows(),
                             [context](const KyWindow* window) { return isSharing(*window->mDevice, context); }))
        reportOnce("shares no textures with others, because Qt::AA_ShareOpenGLContexts was not set in time");
}

void KyWindow::setDevice(std::unique_ptr<KyQGraphicsDevice> device) {
    mDevice = std::move(device);
}

void KyWindow::tellDrawn() {
    if (!std::exchange(mHasNewFrame, false) || mHasEnded)
        return;
    const Busy busy(*this);
    mDrawnSignal.send(this);
}

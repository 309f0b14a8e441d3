// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyQGLWindow.h"

#include "KyQEventCanvasProvider.h"

#include "KyTypeBuilder.h"

#include <QEvent>
#include <QOpenGLContext>

const KyType* KyQGLWindow::msType = nullptr;

void KyQGLWindow::initializeType() {
    if (msType)
        return;
    KyWindow::initializeType();
    msType = KyTypeBuilder<KyQGLWindow>("KyQGLWindow", KyWindow::getType()).factory().build();
}

void KyQGLWindow::finalizeType() {
    KyType::remove(msType);
}

const KyType* KyQGLWindow::getType() {
    if (!msType)
        initializeType();
    return msType;
}

const KyType* KyQGLWindow::getObjectType() const {
    return getType();
}

KyQGLWindow* KyQGLWindow::cast(KyObject* object) {
    return kyCast<KyQGLWindow>(object);
}

KyQGLWindow* KyQGLWindow::create(KyCanvas* canvas) {
    return hasApplication("KyQGLWindow", true) ? new KyQGLWindow(canvas) : nullptr;
}

double KyQGLWindow::getPixelRatio() const {
    return devicePixelRatioF();
}

std::string KyQGLWindow::getCaption() const {
    return windowTitle().toStdString();
}

void KyQGLWindow::setCaption(const std::string& caption) {
    setWindowTitle(QString::fromStdString(caption));
    notifyModified("Title");
}

bool KyQGLWindow::isShown() const {
    return isVisible() && !window()->isMinimized();
}

void KyQGLWindow::setShown(bool isShown) {
    setVisible(isShown);
    notifyModified("Visible");
}

void KyQGLWindow::resizeTo(const QSize& size) {
    resize(size);
}

KyQGLWindow::KyQGLWindow(KyCanvas* canvas, QWidget* parent)
    : QOpenGLWidget(parent)
    , KyWindow(canvas) {
    setFormat(getDefaultFormat());
    setFocusPolicy(Qt::StrongFocus);
    setMouseTracking(true);
    setAttribute(Qt::WA_AcceptTouchEvents);
    watch(*this);
    QObject::connect(this, &QOpenGLWidget::frameSwapped, this, [this] { tellDrawn(); });
}

KyQGLWindow::~KyQGLWindow() {
    end();
}

QSize KyQGLWindow::getDeviceSize() const {
    return size() * devicePixelRatioF();
}

void KyQGLWindow::requestRedraw() {
    update();
}

void KyQGLWindow::initializeGL() {
    setContext(context(), context()->surface());
}

void KyQGLWindow::paintGL() {
    drawCanvas();
}

void KyQGLWindow::showEvent(QShowEvent* event) {
    checkSupport();
    QOpenGLWidget::showEvent(event);
}

bool KyQGLWindow::event(QEvent* event) {
    if (event->type() == QEvent::DeferredDelete)
        return QOpenGLWidget::event(event);
    const Busy busy(*this);
    return finishEvent(event, QOpenGLWidget::event(event));
}

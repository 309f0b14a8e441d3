// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyQOpenGLWindow.h"

#include "KyTypeBuilder.h"

#include <QEvent>
#include <QOpenGLContext>
#include <QScreen>

const KyType* KyQOpenGLWindow::msType = nullptr;

void KyQOpenGLWindow::initializeType() {
    if (msType)
        return;
    KyWindow::initializeType();
    msType = KyTypeBuilder<KyQOpenGLWindow>("KyQOpenGLWindow", KyWindow::getType()).factory().build();
}

void KyQOpenGLWindow::finalizeType() {
    KyType::remove(msType);
}

const KyType* KyQOpenGLWindow::getType() {
    if (!msType)
        initializeType();
    return msType;
}

const KyType* KyQOpenGLWindow::getObjectType() const {
    return getType();
}

KyQOpenGLWindow* KyQOpenGLWindow::cast(KyObject* object) {
    return kyCast<KyQOpenGLWindow>(object);
}

KyQOpenGLWindow* KyQOpenGLWindow::create(KyCanvas* canvas) {
    return hasApplication("KyQOpenGLWindow", false) ? new KyQOpenGLWindow(canvas) : nullptr;
}

double KyQOpenGLWindow::getPixelRatio() const {
    return devicePixelRatio();
}

std::string KyQOpenGLWindow::getCaption() const {
    return title().toStdString();
}

void KyQOpenGLWindow::setCaption(const std::string& caption) {
    setTitle(QString::fromStdString(caption));
    notifyModified("Title");
}

bool KyQOpenGLWindow::isShown() const {
    return isExposed();
}

void KyQOpenGLWindow::setShown(bool isShown) {
    setVisible(isShown);
    notifyModified("Visible");
}

QSize KyQOpenGLWindow::getDeviceSize() const {
    return size() * devicePixelRatio();
}

void KyQOpenGLWindow::resizeTo(const QSize& size) {
    resize(size);
}

KyQOpenGLWindow::KyQOpenGLWindow(KyCanvas* canvas, QWindow* parent)
    : QOpenGLWindow(QOpenGLContext::globalShareContext(), NoPartialUpdate, parent)
    , KyWindow(canvas) {
    setFormat(getDefaultFormat());
    watch(*this);
    QObject::connect(this, &QOpenGLWindow::frameSwapped, this, [this] { tellDrawn(); });
    QObject::connect(this, &QWindow::screenChanged, this, [this] {
        setStale();
        requestRedraw();
    });
}

KyQOpenGLWindow::~KyQOpenGLWindow() {
    end();
}

void KyQOpenGLWindow::requestRedraw() {
    update();
}

void KyQOpenGLWindow::initializeGL() {
    setContext(context(), this);
}

void KyQOpenGLWindow::paintGL() {
    drawCanvas();
}

// Qt makes the context and uses it untested in these three.

void KyQOpenGLWindow::exposeEvent(QExposeEvent* event) {
    if (checkSupport())
        QOpenGLWindow::exposeEvent(event);
}

void KyQOpenGLWindow::resizeEvent(QResizeEvent* event) {
    if (checkSupport())
        QOpenGLWindow::resizeEvent(event);
}

bool KyQOpenGLWindow::event(QEvent* event) {
    if (event->type() == QEvent::DeferredDelete)
        return QOpenGLWindow::event(event);
    if (event->type() == QEvent::UpdateRequest && !checkSupport())
        return true;
    const Busy busy(*this);
    return finishEvent(event, QOpenGLWindow::event(event));
}

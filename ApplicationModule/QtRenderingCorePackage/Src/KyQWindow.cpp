// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyQWindow.h"

#include "KyTypeBuilder.h"

#include <QEvent>
#include <QOpenGLContext>
#include <QScreen>

const KyType* KyQWindow::msType = nullptr;

void KyQWindow::initializeType() {
    if (msType)
        return;
    KyWindow::initializeType();
    msType = KyTypeBuilder<KyQWindow>("KyQWindow", KyWindow::getType()).factory().build();
}

void KyQWindow::finalizeType() {
    KyType::remove(msType);
}

const KyType* KyQWindow::getType() {
    if (!msType)
        initializeType();
    return msType;
}

const KyType* KyQWindow::getObjectType() const {
    return getType();
}

KyQWindow* KyQWindow::cast(KyObject* object) {
    return kyCast<KyQWindow>(object);
}

KyQWindow* KyQWindow::create(KyCanvas* canvas) {
    return hasApplication("KyQWindow", false) ? new KyQWindow(canvas) : nullptr;
}

double KyQWindow::getPixelRatio() const {
    return devicePixelRatio();
}

std::string KyQWindow::getCaption() const {
    return title().toStdString();
}

void KyQWindow::setCaption(const std::string& caption) {
    setTitle(QString::fromStdString(caption));
    notifyModified("Title");
}

bool KyQWindow::isShown() const {
    return isExposed();
}

void KyQWindow::setShown(bool isShown) {
    setVisible(isShown);
    notifyModified("Visible");
}

QSize KyQWindow::getDeviceSize() const {
    return size() * devicePixelRatio();
}

void KyQWindow::resizeTo(const QSize& size) {
    resize(size);
}

KyQWindow::KyQWindow(KyCanvas* canvas, QWindow* parent)
    : QWindow(parent)
    , KyWindow(canvas) {
    setSurfaceType(QSurface::OpenGLSurface);
    setFormat(getDefaultFormat());
    watch(*this);
    QObject::connect(this, &QWindow::screenChanged, this, [this] {
        setStale();
        requestRedraw();
    });
}

KyQWindow::~KyQWindow() {
    end();
    mContext.reset();
}

void KyQWindow::requestRedraw() {
    requestUpdate();
}

bool KyQWindow::prepareContext() {
    if (mContext)
        return mContext->isValid();
    if (!checkSupport())
        return false;
    if (!handle())
        QWindow::create();
    auto context = std::make_unique<QOpenGLContext>();
    context->setFormat(requestedFormat());
    context->setShareContext(QOpenGLContext::globalShareContext());
    context->setScreen(screen());
    if (!context->create())
        return false;
    mContext = std::move(context);
    setContext(mContext.get(), this);
    return true;
}

void KyQWindow::draw() {
    if (!isExposed() || !prepareContext() || !editGraphicsDevice().makeCurrent())
        return;
    if (!drawCanvas())
        return;
    mContext->swapBuffers(this);
    tellDrawn();
}

void KyQWindow::exposeEvent(QExposeEvent*) {
    draw();
}

void KyQWindow::resizeEvent(QResizeEvent*) {
    requestRedraw();
}

bool KyQWindow::event(QEvent* event) {
    if (event->type() == QEvent::DeferredDelete)
        return QWindow::event(event);
    const Busy busy(*this);
    if (event->type() == QEvent::UpdateRequest)
        draw();
    return finishEvent(event, QWindow::event(event));
}

// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyHostWindow.h"

#include "KyHostStage.h"

#include <QKeyEvent>
#include <QOpenGLContext>
#include <QScreen>
#include <QSurfaceFormat>

#include <algorithm>
#include <cmath>

namespace {

constexpr int cMajorVersion = 3;
constexpr int cMinorVersion = 3;
constexpr int cDepthBits = 24;
constexpr int cSamples = 4;
/// Shorter than the display's frame, so that the display and not this sets the pace where it can.
constexpr double cShareOfFrame = 0.9;
constexpr double cNominalRate = 60.0;

/// For this window only: contexts that Qt paints with must not be core ones.
QSurfaceFormat getFormat() {
    QSurfaceFormat format;
    format.setVersion(cMajorVersion, cMinorVersion);
    format.setProfile(QSurfaceFormat::CoreProfile);
    format.setDepthBufferSize(cDepthBits);
    format.setSamples(cSamples);
    return format;
}

bool hasGL(const QSurfaceFormat& format) {
    QOpenGLContext context;
    context.setFormat(format);
    return context.create();
}

} // namespace

std::unique_ptr<KyHostWindow> KyHostWindow::create(KyHostStage& stage, int width, int height, std::string& error) {
    if (!hasGL(getFormat())) {
        error = "this display offers no OpenGL 3.3; --offscreen draws without it";
        return nullptr;
    }
    std::unique_ptr<KyHostWindow> window(new KyHostWindow(stage));
    window->setTitle("kyhost");
    window->setFormat(getFormat());
    window->resize(width, height);
    window->show();
    return window;
}

KyHostWindow::KyHostWindow(KyHostStage& stage)
    : mStage(stage) {
    QObject::connect(this, &QOpenGLWindow::frameSwapped, this, [this] {
        if (mListeners.drawn)
            mListeners.drawn();
    });
}

KyHostWindow::~KyHostWindow() {
    mListeners = {};
    KyHostWindow::makeCurrent();
}

int KyHostWindow::getFrameInterval() const {
    const double rate = screen() ? screen()->refreshRate() : cNominalRate;
    return static_cast<int>(cShareOfFrame * 1e6 / std::max(rate, 1.0));
}

bool KyHostWindow::makeCurrent() {
    QOpenGLWindow::makeCurrent();
    return QOpenGLContext::currentContext() != nullptr;
}

bool KyHostWindow::savePicture(const std::string& path, std::string& error) {
    makeCurrent();
    return mStage.savePicture(mDevice, path, error);
}

void KyHostWindow::resizeGL(int, int) {
    mIsStale = true;
}

void KyHostWindow::paintGL() {
    const double ratio = devicePixelRatio();
    mStage.setSize(static_cast<int>(std::lround(width() * ratio)), static_cast<int>(std::lround(height() * ratio)));
    mStage.draw(mDevice, nullptr);
    mIsStale = false;
}

void KyHostWindow::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape)
        close();
    else
        QOpenGLWindow::keyPressEvent(event);
}

bool KyHostWindow::event(QEvent* event) {
    const bool wasHandled = QOpenGLWindow::event(event);
    if (event->type() == QEvent::Close && event->isAccepted() && mListeners.closed)
        mListeners.closed();
    return wasHandled;
}

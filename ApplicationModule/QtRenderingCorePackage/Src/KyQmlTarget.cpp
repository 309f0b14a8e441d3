// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyQmlTarget_p.h"

#include "KyQmlGlTarget_p.h"
#include "KyQmlImageTarget_p.h"

#include <QGuiApplication>
#include <QOpenGLContext>
#include <QQuickRenderControl>
#include <QQuickWindow>
#include <QSGRendererInterface>

#include <utility>

namespace {

/// The program's choice can be made once.
bool gIsChosen = false;

/// Qt Quick takes its choice, of the program and of the environment, with its first window, and keeps it. Only a window
/// knows.
bool isSoftware() {
    static const bool sIsSoftware = [] {
        QQuickRenderControl control;
        const QQuickWindow window(&control);
        return window.rendererInterface()->graphicsApi() == QSGRendererInterface::Software;
    }();
    return sIsSoftware;
}

std::unique_ptr<KyQmlTarget> createGl(std::string& error) {
    // What a context outside of Qt draws with cannot be shared.
    if (!QOpenGLContext::currentContext() && KyGraphicsDevice::hasCurrentContext()) {
        error = "the view's OpenGL is not Qt's";
        return nullptr;
    }
    return KyQmlGlTarget::create(error);
}

} // namespace

KyQmlTarget::Scope::Scope(KyQmlTarget& target) {
    if (KyQGraphicsDevice* device = target.getDevice())
        mCurrent.emplace(*device);
}

std::unique_ptr<KyQmlTarget> KyQmlTarget::create(std::string& error) {
    if (!qobject_cast<QGuiApplication*>(QCoreApplication::instance())) {
        error = "there is no QGuiApplication";
        return nullptr;
    }
    std::unique_ptr<KyQmlTarget> target = createGl(error);
    if (!std::exchange(gIsChosen, true) && !target)
        QQuickWindow::setSceneGraphBackend(QSGRendererInterface::Software);
    if (isSoftware())
        return std::make_unique<KyQmlImageTarget>();
    return target;
}

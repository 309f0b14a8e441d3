// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyQmlRenderControl.h"
#include "KyQmlTarget_p.h"

#include "KyObjectQmlBinding.h"

#include <QPointer>
#include <QQmlComponent>
#include <QQmlContext>
#include <QQmlEngine>
#include <QQuickWindow>

#include <memory>
#include <vector>

/// What a pass has let go of. Its QML may be what just asked for that, from a handler, while it is created or while it
/// is painted, so all of it ends only when the event loop has control again, or with the application.
///
/// ```
/// KyQmlRemains* remains = KyQmlRemains::create();
/// remains->component = std::move(component);
/// ```
class KyQmlRemains : public QObject {
public:
    /// Ends by itself.
    static KyQmlRemains* create() { return new KyQmlRemains; }
    /// Ends all that are left, at once.
    static void endAll();
    ~KyQmlRemains() override;

    std::unique_ptr<QQmlEngine> engine;
    std::vector<std::unique_ptr<KyObjectQmlBinding>> bindings;
    std::unique_ptr<QQmlContext> context;
    std::unique_ptr<KyQmlTarget> target;
    std::unique_ptr<QQuickWindow> window;
    std::unique_ptr<KyQmlRenderControl> control;
    std::unique_ptr<QQmlComponent> component;
    /// Others may end it before.
    QPointer<QObject> root;

private:
    KyQmlRemains();
};

// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyPassPixel_p.h"
#include "KyPassUpdate_p.h"
#include "KyQmlFileWatch_p.h"
#include "KyQmlPass.h"
#include "KyQmlRemains_p.h"
#include "KyQmlRenderControl.h"
#include "KyQmlTarget_p.h"

#include "KyObjectQmlBinding.h"

#include "KyObjectReference.h"

#include <QPointer>
#include <QQmlComponent>
#include <QQmlContext>
#include <QQuickItem>
#include <QQuickWindow>

#include <map>
#include <memory>
#include <optional>
#include <string>

struct KyQmlPass::Parts {
    struct ContextObject {
        KyObjectReference object;
        std::unique_ptr<KyObjectQmlBinding> binding;
    };

    explicit Parts(std::function<void(const QString&)> onFileChanged)
        : watch(std::move(onFileChanged)) {
        update.clear();
    }

    KyPassUpdate update;
    KyPassPixel pixel;

    KyQmlFileWatch watch;
    QStringList importPaths;
    QStringList pluginPaths;
    std::map<std::string, ContextObject> objects;
    std::unique_ptr<QQmlContext> context;
    std::unique_ptr<QQmlComponent> component;
    QPointer<QQuickItem> item;

    std::unique_ptr<KyQmlTarget> target;
    std::unique_ptr<KyQmlRenderControl> control;
    std::unique_ptr<QQuickWindow> window;
    QUrl initializedQml;
    QSize refusedSize;
    bool isUnusable = false;

    /// From preRender to postRender of a frame that renders.
    bool isRendering = false;
    /// Frames within that one, begun by what the QML or Qt calls: they render nothing.
    unsigned nbInnerFrames = 0;
    /// Holds from the loading to postRender.
    std::optional<KyQmlTarget::Scope> frame;
};

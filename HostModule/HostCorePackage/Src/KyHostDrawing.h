// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "Ky2DScene.h"
#include "Ky2DView.h"

#include "KyObjectReference.h"

#include <QImage>
#include <QSize>

#include <functional>
#include <memory>
#include <string>
#include <vector>

class KyHostWindow;

/// Drawings of the command line as 2D nodes, side by side in one 2D scene, which a window of its own shows. Both end
/// with it, unless a script ended them before.
///
/// Scripts that come after find the scene in the global `drawing`, the window in `drawingView`.
class KyHostDrawing {
public:
    /// The size is that of the window, in device-independent pixels. Without a display there is a scene only.
    explicit KyHostDrawing(QSize size);
    ~KyHostDrawing();
    KyHostDrawing(const KyHostDrawing&) = delete;
    KyHostDrawing& operator=(const KyHostDrawing&) = delete;

    /// Puts an SVG file to the right of those before and shows all. False, and the reason, when it is no SVG document;
    /// what of it cannot be shown is written to standard error, in one line.
    bool addDocument(const std::string& path, std::string& error);
    /// Null when a script ended it.
    Ky2DScene* getScene() const;
    /// Null without display, and when a script ended it.
    Ky2DView* getView() const;

    /// Windows that show 2D scenes, those of scripts too; the last made comes last.
    static std::vector<Ky2DView*> getViews();
    /// The last one made of those on the screen, null when there is none.
    static Ky2DView* findShownView();
    /// What the view shows, in device pixels.
    static QImage grab(Ky2DView& view);
    /// What keys in windows of 2D scenes reach.
    struct Listeners {
        /// What Escape ends before the window; false when there was nothing.
        std::function<bool()> cancel;
        /// The window of the 3D view, whose settings, help and debugger it opens; null when there is none.
        std::function<KyHostWindow*()> findWindow;
    };
    /// While it lives, Escape, F1, F9, F12 and P do in windows of 2D scenes what they do in the window of the 3D view.
    static std::unique_ptr<QObject> makeKeys(Listeners listeners);

private:
    KyObjectReference mScene;
    KyObjectReference mView;
};

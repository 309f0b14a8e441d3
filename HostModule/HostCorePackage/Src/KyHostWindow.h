// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyHostSurface.h"

#include "KyGraphicsDevice.h"

#include <QOpenGLWindow>

#include <memory>

class KyHostStage;

/// The program's window: draws the stage in a context of its own, follows the window's size and pixel ratio, and closes
/// with the Escape key.
class KyHostWindow : public QOpenGLWindow, public KyHostSurface {
public:
    /// A window on the screen; null, and the reason, when there is no GL. Size in device-independent pixels.
    static std::unique_ptr<KyHostWindow> create(KyHostStage& stage, int width, int height, std::string& error);
    ~KyHostWindow() override;

    void draw() override { update(); }
    bool needsDrawing() const override { return mIsStale; }
    int getFrameInterval() const override;
    bool makeCurrent() override;
    bool savePicture(const std::string& path, std::string& error) override;

protected:
    void resizeGL(int width, int height) override;
    void paintGL() override;
    void keyPressEvent(QKeyEvent* event) override;
    bool event(QEvent* event) override;

private:
    explicit KyHostWindow(KyHostStage& stage);

    KyHostStage& mStage;
    KyGraphicsDevice mDevice;
    bool mIsStale = true;
};

// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyCamera.h"
#include "KyCanvas.h"
#include "KyGraphicsViewMultiPass.h"
#include "KyHolder.h"
#include "KyScene.h"
#include "KyScenePass.h"

#include <string>

class KyFrameBuffer;
class KyGraphicsDevice;
class KyNode;

/// What the program shows: a canvas with one view of one scene through one camera. While a scene is being made anew the
/// one before stays in the view until it is shown or dropped. Needs GL only to draw.
class KyHostStage {
public:
    KyHostStage(int width, int height);

    /// The scene and camera that scripts work on.
    KyScene& getScene() const { return *mScene; }
    KyCamera& getCamera() const { return *mCamera; }
    KyGraphicsViewMultiPass& getView() const { return *mView; }

    /// Begins an empty scene with a camera of its own; the view keeps what it shows.
    void beginScene();
    /// Puts the scene that was begun into the view, unless the scripts have put something else there.
    void showScene();
    /// Gives up the scene that was begun: the view and the scripts have the one before again.
    void dropScene();

    /// Puts a model into the scene and frames it from the front, right and above.
    void addModel(KyNode& model);
    /// A grid below everything, a few times as wide.
    void addGround();

    /// Device pixels.
    void setSize(int width, int height) { mCanvas->setSize(width, height); }
    bool needsDrawing() const { return mCanvas->needsRedraw(); }
    /// Draws with the current GL context into the frame buffer, into the window with null. False when there is nothing
    /// to draw with.
    bool draw(KyGraphicsDevice& device, KyFrameBuffer* target);
    /// Draws into a PNG file. False, and the reason, when that cannot be done.
    bool savePicture(KyGraphicsDevice& device, const std::string& path, std::string& error);

private:
    void frameScene();

    KyHolder<KyCanvas> mCanvas;
    KyHolder<KyGraphicsViewMultiPass> mView;
    KyHolder<KyScenePass> mPass;
    KyHolder<KyScene> mScene;
    KyHolder<KyCamera> mCamera;
    KyHolder<KyScene> mSceneBefore;
    KyHolder<KyCamera> mCameraBefore;
};

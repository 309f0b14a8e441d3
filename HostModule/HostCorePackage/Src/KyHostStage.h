// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyCamera.h"
#include "KyCanvas.h"
#include "KyGraphicsViewMultiPass.h"
#include "KyHolder.h"
#include "KyManipulatorEventHandler.h"
#include "KyScene.h"
#include "KyScenePass.h"
#include "KyShapeManipulator.h"
#include "KyTrackballManipulator.h"

#include <memory>
#include <string>

class KyFrameBuffer;
class KyGraphicsDevice;
class KyNode;

/// What the program shows: a canvas with one view of one scene through one camera, and what a hand does to it: a
/// manipulator that drags objects, and where that does not want an event, a trackball. While a scene is being made
/// anew, with all that belongs to it, what was there before is shown until the new is shown or dropped; neither keeps
/// anything that was done to the other. Needs GL only to draw.
class KyHostStage {
public:
    KyHostStage(int width, int height);

    /// What scripts work on.
    KyScene& getScene() const { return *mMade.scene; }
    KyCamera& getCamera() const { return *mMade.camera; }
    KyGraphicsViewMultiPass& getView() const { return *mMade.view; }
    KyTrackballManipulator& getTrackball() const { return *mMade.trackball; }
    KyShapeManipulator& getShaper() const { return *mMade.shaper; }

    /// What is shown; another one after showScene().
    KyCanvas& getCanvas() const { return *mShown.canvas; }

    /// Begins an empty scene in a view of its own; what is shown stays.
    void beginScene();
    /// Shows the scene that was begun and gives up the one before.
    void showScene() { mShown = mMade; }
    /// Gives up the scene that was begun: the scripts have the one before again, which is still shown.
    void dropScene() { mMade = mShown; }

    /// Whether nobody has put anything into the scene that scripts work on.
    bool isEmpty() const { return mMade.scene->getNbChildren() == 0; }
    /// Puts a model into the scene and frames it from the front, right and above.
    void addModel(KyNode& model);
    /// A grid below everything, a few times as wide.
    void addGround();

    /// Device pixels.
    void setSize(int width, int height);
    bool needsDrawing() const { return mShown.canvas->needsRedraw(); }
    /// Draws with the current GL context into the frame buffer, into the window with null. False when there is nothing
    /// to draw with.
    bool draw(KyGraphicsDevice& device, KyFrameBuffer* target);
    /// Draws into a PNG file. False, and the reason, when that cannot be done.
    bool savePicture(KyGraphicsDevice& device, const std::string& path, std::string& error);

private:
    /// A scene and all that it takes to show and to turn it.
    struct Setup {
        KyHolder<KyCanvas> canvas;
        KyHolder<KyGraphicsViewMultiPass> view;
        KyHolder<KyScene> scene;
        KyHolder<KyCamera> camera;
        std::shared_ptr<KyTrackballManipulator> trackball;
        std::shared_ptr<KyShapeManipulator> shaper;
    };

    void frameScene();
    void addManipulators(KyScenePass& pass);

    Setup mMade;
    Setup mShown;
    int mWidth;
    int mHeight;
};

// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyShapeManipulator.h"

#include "KyCamera.h"
#include "KyCanvas.h"
#include "KyMeshNode.h"
#include "KyScene.h"
#include "KyScenePass.h"

#include <algorithm>
#include <cmath>
#include <memory>

/// A box from -1 to 1 about the world's origin, seen by a camera that looks at it along an axis.
class KyShapeStage {
public:
    using Shape = KyShapeManipulator;

    static constexpr std::uint32_t cGrab = KyInputEvent::cControl | KyInputEvent::cLeftButton;
    /// A view of odd size has a pixel in its very middle.
    static constexpr int cSize = 401, cMiddle = 200;
    /// World units a pixel, at the near side of the box.
    static constexpr double cPixel = 0.025;
    static constexpr double cEyeDistance = 10.0;

    enum Side { eFront, eRight, eTop, eNbSides };

    static bool isFinite(const KyMat4d& matrix) {
        return std::all_of(matrix.data(), matrix.data() + 16, [](double number) { return std::isfinite(number); });
    }

    KyShapeStage() {
        mScene->addChild(mParent.get());
        mParent->addChild(mBox.get());
        mBox->makeBox(2, 2, 2);
        mPass->setScene(mScene.get());
        mPass->setCamera(mCamera.get());
        mView->setMainPass(mPass.get());
        mCanvas->insertView(mView.get());
        mCanvas->setSize(cSize, cSize);
        mShapes->setViewMultiPass(mView.get());
        look(eFront, false);
    }

    void look(Side side, bool isOrthographic) {
        const KyVec3d direction(side == eRight, side == eTop, side == eFront);
        const KyVec3d up(0, side != eTop, side == eTop ? -1 : 0);
        mCamera->lookAt(direction * cEyeDistance, KyVec3d(), up);
        mCamera->setOrthographic(isOrthographic);
        mCamera->setVerticalExtent(cSize * cPixel);
        mCamera->setVerticalAperture(2.0 * std::atan(cSize * cPixel / 2.0 / (cEyeDistance - 1.0)));
    }

    /// Positions in pixels to the right and up of the middle.
    bool send(KyInputEvent::Type type, int x, int y, std::uint32_t state = cGrab, std::uint32_t button = 0) {
        KyInputEvent event;
        event.setType(type);
        event.setPosition(cMiddle + x, cMiddle - y);
        event.setState(state);
        event.setButton(button);
        return mShapes->setInputEvent(event);
    }
    bool press(int x, int y) { return send(KyInputEvent::eMousePressed, x, y, cGrab, KyInputEvent::cLeftButton); }
    bool move(int x, int y) { return send(KyInputEvent::eMouseMoved, x, y); }
    bool release() { return send(KyInputEvent::eMouseReleased, 0, 0, 0, KyInputEvent::cLeftButton); }

    struct End {
        void operator()(KyObject* object) const { object->destroy(); }
    };

    KyHolder<KyScene> mScene{new KyScene};
    KyHolder<KyNode> mParent{new KyNode};
    KyHolder<KyMeshNode> mBox{new KyMeshNode};
    KyHolder<KyCamera> mCamera{new KyCamera};
    KyHolder<KyScenePass> mPass{KyScenePass::create()};
    KyHolder<KyGraphicsViewMultiPass> mView{KyGraphicsViewMultiPass::create()};
    KyHolder<KyCanvas> mCanvas{new KyCanvas};
    std::unique_ptr<KyShapeManipulator, End> mShapes{KyShapeManipulator::create()};
};

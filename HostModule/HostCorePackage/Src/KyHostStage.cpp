// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyHostStage.h"

#include "KyHostPicture.h"

#include "KyFrameBuffer.h"
#include "KyImage.h"
#include "KyMeshNode.h"
#include "KyRendererContext.h"

#include <algorithm>
#include <cmath>

namespace {

/// Where the camera stands at first, and from which side models are shown.
const KyVec3d cFirstEye(4.0, 3.0, 6.0);
constexpr double cGroundToModel = 4.0;
constexpr int cGroundCells = 20;
constexpr const char* cGroundColor = "#3c4757";
constexpr double cFirstGround = 10.0;
constexpr double cModelMargin = 1.35;

/// 1, 2 or 5 times a power of ten, at least the size: cells of round numbers.
double roundUp(double size) {
    const double power = std::pow(10.0, std::floor(std::log10(size)));
    for (const double factor : {1.0, 2.0, 5.0})
        if (size <= factor * power)
            return factor * power;
    return 10.0 * power;
}

/// Belongs to the stage: scripts cannot end it.
template <class Manipulator>
class Lasting : public Manipulator {
public:
    void destroy() override {}
};

} // namespace

KyHostStage::KyHostStage(int width, int height)
    : mWidth(width)
    , mHeight(height) {
    beginScene();
    showScene();
}

void KyHostStage::beginScene() {
    mMade.scene.reset(new KyScene);
    mMade.scene->setName("scene");
    mMade.camera.reset(new KyCamera);
    mMade.camera->setName("camera");
    mMade.camera->lookAt(cFirstEye, KyVec3d());
    const KyHolder<KyScenePass> pass(KyScenePass::create());
    pass->setScene(mMade.scene.get());
    pass->setCamera(mMade.camera.get());
    mMade.view.reset(KyGraphicsViewMultiPass::create());
    mMade.view->setName("view");
    mMade.view->setMainPass(pass.get());
    addManipulators(*pass);
    mMade.canvas.reset(new KyCanvas);
    mMade.canvas->insertView(mMade.view.get());
    mMade.canvas->setSize(mWidth, mHeight);
}

void KyHostStage::addManipulators(KyScenePass& pass) {
    mMade.trackball = std::make_shared<Lasting<KyTrackballManipulator>>();
    mMade.trackball->setViewMultiPass(mMade.view.get());
    mMade.trackball->setObject(mMade.camera.get());
    mMade.shaper = std::make_shared<Lasting<KyShapeManipulator>>();
    mMade.shaper->setViewMultiPass(mMade.view.get());
    const KyHolder<KyManipulatorEventHandler> handler(new KyManipulatorEventHandler);
    handler->setManipulator(mMade.shaper.get());
    handler->setMultipleManipulators(mMade.trackball.get());
    pass.setEventHandler(handler.get());
}

void KyHostStage::setSize(int width, int height) {
    mWidth = width;
    mHeight = height;
    mShown.canvas->setSize(width, height);
    mMade.canvas->setSize(width, height);
}

void KyHostStage::addModel(KyNode& model) {
    mMade.scene->addChild(&model);
    mMade.camera->lookAt(cFirstEye, KyVec3d());
    frameScene();
}

void KyHostStage::frameScene() {
    const double aspect = static_cast<double>(mWidth) / std::max(mHeight, 1);
    const KyVolumed volume = mMade.scene->getBoundingVolume();
    if (mMade.camera->frame(volume, aspect, cModelMargin))
        mMade.trackball->setCenter(volume.getCenter());
}

void KyHostStage::addGround() {
    const KyVolumed volume = mMade.scene->getBoundingVolume();
    const bool hasModel = volume.isFinite();
    const double size = hasModel ? cGroundToModel * std::max(volume.getWidth(), volume.getLength()) : cFirstGround;
    const KyVec3d middle = hasModel ? volume.getCenter() : KyVec3d();
    auto* const ground = new KyMeshNode;
    ground->setName("ground");
    ground->makeGrid(size > 0.0 ? roundUp(size) : cFirstGround, cGroundCells);
    ground->setColor(KyColor(cGroundColor));
    ground->setPosition(KyVec3d(middle.x, hasModel ? volume.getMin().y : 0.0, middle.z));
    mMade.scene->addChild(ground);
}

bool KyHostStage::draw(KyGraphicsDevice& device, KyFrameBuffer* target) {
    KyRendererContext context(&device);
    context.setTarget(target);
    return mShown.canvas->render(context);
}

bool KyHostStage::savePicture(KyGraphicsDevice& device, const std::string& path, std::string& error) {
    const KyHolder<KyFrameBuffer> target(KyFrameBuffer::create());
    target->setSize(mWidth, mHeight);
    if (!draw(device, target.get())) {
        error = "cannot draw the picture for '" + path + "'";
        return false;
    }
    const KyHolder<KyImage> image(target->readPixels());
    return image && KyHostPicture::save(*image, path, error);
}

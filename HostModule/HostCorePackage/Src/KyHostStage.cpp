// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyHostStage.h"

#include "KyFrameBuffer.h"
#include "KyImage.h"
#include "KyMeshNode.h"
#include "KyRendererContext.h"
#include "KyURL.h"

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

} // namespace

KyHostStage::KyHostStage(int width, int height)
    : mCanvas(new KyCanvas)
    , mView(KyGraphicsViewMultiPass::create())
    , mPass(new KyScenePass) {
    mView->setName("view");
    mView->setMainPass(mPass.get());
    mCanvas->insertView(mView.get());
    mCanvas->setSize(width, height);
    beginScene();
    showScene();
}

void KyHostStage::beginScene() {
    mSceneBefore = mScene;
    mCameraBefore = mCamera;
    mScene.reset(new KyScene);
    mScene->setName("scene");
    mCamera.reset(new KyCamera);
    mCamera->setName("camera");
    mCamera->lookAt(cFirstEye, KyVec3d());
}

void KyHostStage::showScene() {
    if (mPass->getScene() == mSceneBefore.get())
        mPass->setScene(mScene.get());
    if (mPass->getCamera() == mCameraBefore.get())
        mPass->setCamera(mCamera.get());
    mSceneBefore.reset();
    mCameraBefore.reset();
}

void KyHostStage::dropScene() {
    mScene = std::exchange(mSceneBefore, {});
    mCamera = std::exchange(mCameraBefore, {});
    mPass->setScene(mScene.get());
    mPass->setCamera(mCamera.get());
}

void KyHostStage::addModel(KyNode& model) {
    mScene->addChild(&model);
    mCamera->lookAt(cFirstEye, KyVec3d());
    frameScene();
}

void KyHostStage::frameScene() {
    const double aspect = static_cast<double>(mCanvas->getWidth()) / std::max(mCanvas->getHeight(), 1);
    mCamera->frame(mScene->getBoundingVolume(), aspect, cModelMargin);
}

void KyHostStage::addGround() {
    const KyVolumed volume = mScene->getBoundingVolume();
    const bool hasModel = volume.isFinite();
    const double size = hasModel ? cGroundToModel * std::max(volume.getWidth(), volume.getLength()) : cFirstGround;
    const KyVec3d middle = hasModel ? volume.getCenter() : KyVec3d();
    auto* const ground = new KyMeshNode;
    ground->setName("ground");
    ground->makeGrid(size > 0.0 ? roundUp(size) : cFirstGround, cGroundCells);
    ground->setColor(KyColor(cGroundColor));
    ground->setPosition(KyVec3d(middle.x, hasModel ? volume.getMin().y : 0.0, middle.z));
    mScene->addChild(ground);
}

bool KyHostStage::draw(KyGraphicsDevice& device, KyFrameBuffer* target) {
    KyRendererContext context(&device);
    context.setTarget(target);
    return mCanvas->render(context);
}

bool KyHostStage::savePicture(KyGraphicsDevice& device, const std::string& path, std::string& error) {
    const KyHolder<KyFrameBuffer> target(KyFrameBuffer::create());
    target->setSize(mCanvas->getWidth(), mCanvas->getHeight());
    if (!draw(device, target.get())) {
        error = "cannot draw the picture for '" + path + "'";
        return false;
    }
    const KyHolder<KyImage> image(target->readPixels());
    if (image && image->savePNG(KyURL(path, KyURL::eLocalPath)))
        return true;
    error = "cannot write '" + path + "'";
    return false;
}

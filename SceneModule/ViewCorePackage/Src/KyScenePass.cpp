// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyScenePass.h"

#include "KyGraphicsViewMultiPass.h"
#include "KyNodeHit.h"
#include "KyRendererContext.h"
#include "KyRevision_p.h"
#include "KySceneRenderer_p.h"

#include "KyRay.h"
#include "KyTypeBuilder.h"

#include <epoxy/gl.h>

#include <algorithm>
#include <cstdint>

const KyType* KyScenePass::msType = nullptr;

namespace {

// In doubles: the difference of two ints may be none.
bool isInside(const KyRect<int>& area, int x, int y) {
    const double column = static_cast<double>(x) - area.origin.x, row = static_cast<double>(y) - area.origin.y;
    return column >= 0.0 && row >= 0.0 && column < area.getWidth() && row < area.getHeight();
}

/// More pixels are drawn without smoothing: the buffer would take gigabytes, and hardly anything of such an area is
/// seen.
constexpr std::int64_t cMaxSmoothedPixels = std::int64_t{1} << 25;

bool isSmoothable(const KyRect<int>& area) {
    return std::int64_t{area.getWidth()} * area.getHeight() <= cMaxSmoothedPixels;
}

/// Whether the graphics card can have a buffer of that size.
bool fitsBuffer(const KyRect<int>& area) {
    GLint most = 0;
    glGetIntegerv(GL_MAX_TEXTURE_SIZE, &most);
    return area.getWidth() <= most && area.getHeight() <= most;
}

} // namespace

void KyScenePass::initializeType() {
    if (msType)
        return;
    msType = KyTypeBuilder<KyScenePass>("KyScenePass", KyGraphicsPass::getType())
                 .factory()
                 .attribute("Scene", &KyScenePass::getScene, &KyScenePass::setScene)
                 .attribute("Camera", &KyScenePass::getCamera, &KyScenePass::setCamera)
                 .attribute("Samples", &KyScenePass::getSamples, &KyScenePass::setSamples)
                 .attribute("BackgroundVisible", &KyScenePass::isBackgroundVisible, &KyScenePass::setBackgroundVisible)
                 .build();
}

void KyScenePass::finalizeType() {
    KyType::remove(msType);
}

const KyType* KyScenePass::getType() {
    if (!msType)
        initializeType();
    return msType;
}

const KyType* KyScenePass::getObjectType() const {
    return getType();
}

KyScenePass* KyScenePass::cast(KyObject* object) {
    return kyCast<KyScenePass>(object);
}

KyObject* KyScenePass::factory() {
    return new KyScenePass;
}

KyScenePass::KyScenePass()
    : mRenderer(std::make_unique<KySceneRenderer>()) {}

KyScenePass::~KyScenePass() = default;

KyScenePass* KyScenePass::clone() const {
    return static_cast<KyScenePass*>(KyObject::clone());
}

std::uint64_t KyScenePass::getRevision() const {
    std::uint64_t revision = KyGraphicsPass::getRevision();
    if (mScene)
        revision = kyMixRevision(revision, mScene->getRevision());
    // A camera may stand on nodes that belong to no scene.
    for (const KyNode* node = mCamera.get(); node; node = node->getParent())
        revision = kyMixRevision(revision, node->getRevision());
    return revision;
}

void KyScenePass::setScene(KyScene* scene) {
    if (mScene == scene)
        return;
    mScene.reset(scene);
    markModified("Scene");
}

void KyScenePass::setCamera(KyCamera* camera) {
    if (mCamera == camera)
        return;
    mCamera.reset(camera);
    markModified("Camera");
}

void KyScenePass::setSamples(int samples) {
    samples = std::clamp(samples, 1, 64);
    if (samples == mSamples)
        return;
    mSamples = samples;
    markModified("Samples");
}

void KyScenePass::setBackgroundVisible(bool isVisible) {
    if (isVisible == mIsBackgroundVisible)
        return;
    mIsBackgroundVisible = isVisible;
    markModified("BackgroundVisible");
}

bool KyScenePass::getRay(const KyGraphicsViewMultiPass& view, int x, int y, KyRayd& ray) const {
    const KyRect<int> area = getAreaPixels(&view);
    const double width = area.getWidth(), height = area.getHeight();
    const double column = static_cast<double>(x) - area.origin.x, row = static_cast<double>(y) - area.origin.y;
    if (!mCamera || !(width > 0.0 && height > 0.0))
        return false;
    ray = mCamera->getRay((column + 0.5) / width * 2.0 - 1.0, 1.0 - (row + 0.5) / height * 2.0, width / height);
    return true;
}

bool KyScenePass::findHit(const KyGraphicsViewMultiPass& view, int x, int y, KyNodeHit& hit) const {
    KyRayd ray;
    return mScene && isInside(getAreaPixels(&view), x, y) && getRay(view, x, y, ray) && mScene->intersect(ray, hit);
}

bool KyScenePass::pickPoint(const KyGraphicsViewMultiPass& view, int x, int y, KyVec3d& world) const {
    KyNodeHit hit;
    if (!findHit(view, x, y, hit))
        return false;
    world = hit.point;
    return true;
}

bool KyScenePass::pick(const KyGraphicsViewMultiPass& view, int x, int y, std::vector<KyIntersected*>& results,
                       const KyIntersectedCreator& creator) const {
    KyNodeHit hit;
    hit.distance = creator.distanceLimit;
    if (!findHit(view, x, y, hit))
        return false;
    KyIntersected* result = creator.make();
    if (!result)
        return false;
    result->setPoint(hit.point);
    result->setDistance(hit.distance);
    result->setValid(true);
    results.push_back(result);
    return true;
}

void KyScenePass::doRender(KyRendererContext& context, KyGraphicsViewMultiPass& view) {
    const KyRect<int> area = getAreaPixels(&view);
    if (!mScene || !mCamera || area.getWidth() < 1 || area.getHeight() < 1)
        return;
    if (getFrameBuffer() && !fitsBuffer(area))
        return;
    if (KyFrameBuffer* own = getFrameBuffer(); own && !own->isForeign())
        own->setSize(area.getWidth(), area.getHeight());
    const KyRect<int> target = getFrameBuffer() ? KyRect<int>(0, 0, area.getWidth(), area.getHeight()) : area;
    if (!context.bind(getFrameBuffer(), target))
        return;
    if (mSamples > 1 && context.getTargetSamples() == 1 && isSmoothable(area) && fitsBuffer(area))
        renderSmoothed(context, target);
    else
        mRenderer->render(*mScene, *mCamera, mIsBackgroundVisible, target.getWidth(), target.getHeight());
    if (getFrameBuffer())
        getFrameBuffer()->resolve();
}

void KyScenePass::renderSmoothed(KyRendererContext& context, const KyRect<int>& area) {
    const int width = area.getWidth(), height = area.getHeight();
    if (!mSampleBuffer)
        mSampleBuffer.reset(KyFrameBuffer::create());
    mSampleBuffer->setSize(width, height);
    mSampleBuffer->setSamples(mSamples);
    if (!context.bind(mSampleBuffer.get(), KyRect<int>(0, 0, width, height))) {
        context.bind(getFrameBuffer(), area);
        mRenderer->render(*mScene, *mCamera, mIsBackgroundVisible, width, height);
        return;
    }
    glClearColor(0.0f, 0.0f, 0.0f, 0.0f);
    glColorMask(GL_TRUE, GL_TRUE, GL_TRUE, GL_TRUE);
    glDepthMask(GL_TRUE);
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    mRenderer->render(*mScene, *mCamera, mIsBackgroundVisible, width, height);
    if (mSampleBuffer->resolve() && context.bind(getFrameBuffer(), area))
        mRenderer->copy(*mSampleBuffer->getColorTexture());
}

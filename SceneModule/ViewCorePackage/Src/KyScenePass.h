// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyGraphicsPass.h"

#include "KyCamera.h"
#include "KyIntersected.h"
#include "KyScene.h"

#include <memory>
#include <vector>

class KySceneRenderer;
struct KyNodeHit;
template <class T>
class KyRay;

/// Draws a scene as a camera sees it: background, then what is solid, lines of the ground, what shines through. Without
/// a light in the scene a key light over the camera's shoulder is added. Edges are smoothed with several samples a
/// pixel, in a buffer of the pass when the target has but one; the target's depth is then left as it was.
///
/// ```
/// auto* pass = KyScenePass::create();
/// pass->setScene(scene);
/// pass->setCamera(camera);
/// view->setMainPass(pass);
/// ```
class KYSCENE_EXPORT KyScenePass : public KyGraphicsPass {
public:
    static const KyType* getType();
    static KyScenePass* cast(KyObject* object);
    static KyObject* factory();
    static void initializeType();
    static void finalizeType();
    const KyType* getObjectType() const override;

    static KyScenePass* create() { return new KyScenePass; }
    KyScenePass();
    ~KyScenePass() override;
    KyScenePass* clone() const override;

    /// @{
    /// See setScene.
    KyScene* getScene() const { return mScene.get(); }
    KyCamera* getCamera() const { return mCamera.get(); }
    /// @}
    /// Wanted samples a pixel, 4 at the start; 1 or less: edges are not smoothed.
    int getSamples() const { return mSamples; }
    /// Off, what is in the target stays as background.
    bool isBackgroundVisible() const { return mIsBackgroundVisible; }
    std::uint64_t getRevision() const override;
    bool pickPoint(const KyGraphicsViewMultiPass& view, int x, int y, KyVec3<double>& world) const override;
    /// The ray through a pixel's middle, from the eye into the scene, in world units; for pixels beside the pass's area
    /// too. False without camera or area.
    bool getRay(const KyGraphicsViewMultiPass& view, int x, int y, KyRay<double>& ray) const;
    /// The nearest visible surface under a pixel, nearer than `hit.distance`; false when there is none.
    bool findHit(const KyGraphicsViewMultiPass& view, int x, int y, KyNodeHit& hit) const;
    /// Appends a valid record of the nearest surface under the pixel, which the caller owns; false when there is none
    /// within the creator's limit (world units from the eye).
    bool pick(const KyGraphicsViewMultiPass& view, int x, int y, std::vector<KyIntersected*>& results,
              const KyIntersectedCreator& creator = {}) const;

    /// Each holds a reference; nothing is drawn without both.
    void setScene(KyScene* scene);
    /// See setScene.
    void setCamera(KyCamera* camera);
    void setSamples(int samples);
    void setBackgroundVisible(bool isVisible);

    void doRender(KyRendererContext& context, KyGraphicsViewMultiPass& view) override;

private:
    void renderSmoothed(KyRendererContext& context, const KyRect<int>& area);

    KyHolder<KyScene> mScene;
    KyHolder<KyCamera> mCamera;
    KyHolder<KyFrameBuffer> mSampleBuffer;
    std::unique_ptr<KySceneRenderer> mRenderer;
    int mSamples = 4;
    bool mIsBackgroundVisible = true;

    static const KyType* msType;
};

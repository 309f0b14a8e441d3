// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyGraphicsPass.h"

#include "KyColor.h"
#include "KyShader.h"

/// Draws the picture of the view's main pass, the colour texture of its frame buffer, over its whole area, filtered
/// linearly. The shader is the program pair "KyPrevious_vp.glsl", "KyPrevious_fp.glsl" without depth, until it is
/// changed.
///
/// ```
/// auto* screen = KyScreenPass::create();
/// screen->setVerticalFlip(true);
/// screen->editShader()->setBlendFunction({});
/// view->addPass(screen);
/// ```
class KYSCENE_EXPORT KyScreenPass : public KyGraphicsPass {
public:
    static const KyType* getType();
    static KyScreenPass* cast(KyObject* object);
    static KyObject* factory();
    static void initializeType();
    static void finalizeType();
    const KyType* getObjectType() const override;

    static KyScreenPass* create() { return new KyScreenPass; }
    KyScreenPass();
    KyScreenPass* clone() const override;

    /// Row 0 of the texture is shown at the top instead of at the bottom.
    bool isVerticalFlip() const { return mIsVerticalFlip; }
    /// See setBackgroundColor.
    const KyColor& getBackgroundColor() const { return mBackgroundColor; }
    /// In stereo each eye shows its half of the texture; without stereo it has no effect.
    bool isSplitStereoTexCoord() const { return mIsSplitStereoTexCoord; }
    std::uint64_t getRevision() const override;

    void setVerticalFlip(bool isOn);
    /// What the area is filled with first; alpha 0 leaves what is there.
    void setBackgroundColor(const KyColor& color);
    void setSplitStereoTexCoord(bool isOn);
    /// The shader that draws, owned by the pass. Its uniforms: kyPrevious, kyTexCoordTransform.
    KyShader* editShader() { return mShader.get(); }

    bool adaptView(const KyGraphicsViewMultiPass& view) override;
    void doRender(KyRendererContext& context, KyGraphicsViewMultiPass& view) override;

private:
    KyHolder<KyShader> mShader;
    KyHolder<KyTexture> mPrevious;
    KyColor mBackgroundColor{0.0f, 0.0f, 0.0f, 0.0f};
    bool mIsVerticalFlip = false;
    bool mIsSplitStereoTexCoord = true;

    static const KyType* msType;
};

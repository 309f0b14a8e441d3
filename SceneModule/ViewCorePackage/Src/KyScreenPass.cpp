// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyScreenPass.h"

#include "KyGraphicsViewMultiPass.h"
#include "KyProgramSourceManager.h"
#include "KyRendererContext.h"
#include "KyRevision_p.h"
#include "KyScreenTriangle_p.h"

#include "KyTypeBuilder.h"

#include <epoxy/gl.h>

const KyType* KyScreenPass::msType = nullptr;

void KyScreenPass::initializeType() {
    if (msType)
        return;
    msType = KyTypeBuilder<KyScreenPass>("KyScreenPass", KyGraphicsPass::getType())
                 .factory()
                 .attribute("VerticalFlip", &KyScreenPass::isVerticalFlip, &KyScreenPass::setVerticalFlip)
                 .attribute("BackgroundColor", &KyScreenPass::getBackgroundColor, &KyScreenPass::setBackgroundColor)
                 .attribute("SplitStereoTexCoord", &KyScreenPass::isSplitStereoTexCoord,
                            &KyScreenPass::setSplitStereoTexCoord)
                 .component<&KyScreenPass::editShader>("Shader")
                 .build();
}

void KyScreenPass::finalizeType() {
    KyType::remove(msType);
}

const KyType* KyScreenPass::getType() {
    if (!msType)
        initializeType();
    return msType;
}

const KyType* KyScreenPass::getObjectType() const {
    return getType();
}

KyScreenPass* KyScreenPass::cast(KyObject* object) {
    return kyCast<KyScreenPass>(object);
}

KyObject* KyScreenPass::factory() {
    return new KyScreenPass;
}

KyScreenPass::KyScreenPass()
    : mShader(KyShader::create()) {
    mShader->setVertexProgram(KyProgramSourceManager::get().getSource("KyPrevious_vp.glsl"));
    mShader->setFragmentProgram(KyProgramSourceManager::get().getSource("KyPrevious_fp.glsl"));
    mShader->setState(KyShaderState::eDepthTest, false);
    mShader->setState(KyShaderState::eDepthWrite, false);
}

KyScreenPass* KyScreenPass::clone() const {
    auto* copy = static_cast<KyScreenPass*>(KyObject::clone());
    if (copy)
        copy->mShader.reset(mShader->clone());
    return copy;
}

std::uint64_t KyScreenPass::getRevision() const {
    const std::uint64_t revision = KyGraphicsPass::getRevision();
    return mPrevious ? kyMixRevision(revision, mPrevious->getVersion()) : revision;
}

void KyScreenPass::setVerticalFlip(bool isOn) {
    if (isOn == mIsVerticalFlip)
        return;
    mIsVerticalFlip = isOn;
    markModified("VerticalFlip");
}

void KyScreenPass::setBackgroundColor(const KyColor& color) {
    if (color == mBackgroundColor)
        return;
    mBackgroundColor = color;
    markModified("BackgroundColor");
}

void KyScreenPass::setSplitStereoTexCoord(bool isOn) {
    if (isOn == mIsSplitStereoTexCoord)
        return;
    mIsSplitStereoTexCoord = isOn;
    markModified("SplitStereoTexCoord");
}

bool KyScreenPass::adaptView(const KyGraphicsViewMultiPass& view) {
    const KyBaseGraphicsPass* main = view.getMainPass();
    KyFrameBuffer* buffer = main ? main->getFrameBuffer() : nullptr;
    mPrevious.reset(buffer ? buffer->getColorTexture() : nullptr);
    return KyGraphicsPass::adaptView(view);
}

void KyScreenPass::doRender(KyRendererContext& context, KyGraphicsViewMultiPass& view) {
    const KyRect<int> area = getAreaPixels(&view);
    if (area.getWidth() < 1 || area.getHeight() < 1 || !context.bind(getFrameBuffer(), area))
        return;
    glColorMask(GL_TRUE, GL_TRUE, GL_TRUE, GL_TRUE);
    if (const KyColor& c = mBackgroundColor; c.alpha > 0.0f) {
        glClearColor(c.red, c.green, c.blue, c.alpha);
        glClear(GL_COLOR_BUFFER_BIT);
    }
    if (!mPrevious || !mPrevious->bind(0) || !mShader->bind())
        return;
    mShader->setUniform("kyPrevious", 0);
    mShader->setUniform("kyTexCoordTransform", mIsVerticalFlip ? KyColor(1, -1, 0, 1) : KyColor(1, 1, 0, 0));
    kyDrawScreenTriangle();
}

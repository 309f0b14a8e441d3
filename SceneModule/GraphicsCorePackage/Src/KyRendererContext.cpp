// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyRendererContext.h"

#include "KyFrameBuffer.h"
#include "KyGpuName_p.h"
#include "KyGraphicsDevice.h"
#include "KyGraphicsDeviceManager.h"
#include "KyGraphicsStateScope.h"
#include "KyImage.h"

#include "KyRect.h"

#include <epoxy/gl.h>

#include <algorithm>
#include <memory>

bool KyRendererContext::begin() {
    if (mDevice && !KyGraphicsDeviceManager::get().makeCurrent(mDevice))
        return false;
    if (!kyGetCurrentGpuHandle())
        return false;
    KyGpuName::deletePending();
    GLint handle = 0;
    glGetIntegerv(GL_DRAW_FRAMEBUFFER_BINDING, &handle);
    mWindowHandle = static_cast<unsigned>(handle);
    return !mDevice || mDevice->isUsable();
}

bool KyRendererContext::bind(KyFrameBuffer* buffer, const KyRect<int>& area) {
    KyFrameBuffer* target = buffer ? buffer : mTarget;
    if (target && !target->bind())
        return false;
    if (!target)
        glBindFramebuffer(GL_FRAMEBUFFER, mWindowHandle);
    GLint samples = 0;
    glGetIntegerv(GL_SAMPLES, &samples);
    mTargetSamples = std::max(samples, 1);
    const int height = target ? target->getHeight() : mHeight;
    const int bottom = height - area.origin.y - area.getHeight();
    glViewport(area.origin.x, bottom, std::max(area.getWidth(), 0), std::max(area.getHeight(), 0));
    glEnable(GL_SCISSOR_TEST);
    glScissor(area.origin.x, bottom, std::max(area.getWidth(), 0), std::max(area.getHeight(), 0));
    return true;
}

KyImage* KyRendererContext::readPixels(const KyRect<int>& area) {
    if (!kyGetCurrentGpuHandle())
        return nullptr;
    auto image = std::make_unique<KyImage>(area.getWidth(), area.getHeight(), 32);
    if (!image->isValid())
        return nullptr;
    const KyGraphicsStateScope state;
    if (!bind(nullptr, area))
        return nullptr;
    if (mTarget) {
        mTarget->resolve();
        glBindFramebuffer(GL_READ_FRAMEBUFFER, mTarget->getReadHandle());
    }
    const int height = mTarget ? mTarget->getHeight() : mHeight;
    glReadPixels(area.origin.x, height - area.origin.y - area.getHeight(), area.getWidth(), area.getHeight(), GL_RGBA,
                 GL_UNSIGNED_BYTE, image->editData());
    image->flipVertically();
    return image.release();
}

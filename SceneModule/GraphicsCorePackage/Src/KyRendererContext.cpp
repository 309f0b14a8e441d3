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
#include <array>
#include <cstdint>
#include <memory>

namespace {

/// Where viewports may begin at all: drivers cut what is beyond.
constexpr std::int64_t cMaxOrigin = 32767;

/// Areas may be of any size, also where their edges are no ints. Nothing that can be drawn into is larger than the
/// largest viewport, so cutting the scissor to that hides nothing.
void setArea(const KyRect<int>& area, int height) {
    std::array<GLint, 2> most{};
    glGetIntegerv(GL_MAX_VIEWPORT_DIMS, most.data());
    const std::int64_t left = area.origin.x;
    const std::int64_t bottom = std::int64_t{height} - area.origin.y - area.getHeight();
    const auto limit = [](std::int64_t value, std::int64_t least, std::int64_t largest) {
        return static_cast<GLint>(std::clamp(value, least, std::max(least, largest)));
    };
    const auto place = [&](std::int64_t at) { return limit(at, -cMaxOrigin - 1, cMaxOrigin); };
    glViewport(place(left), place(bottom), limit(area.getWidth(), 0, most[0]), limit(area.getHeight(), 0, most[1]));
    const GLint x = limit(left, 0, most[0]), y = limit(bottom, 0, most[1]);
    const GLint right = limit(left + std::max(area.getWidth(), 0), 0, most[0]);
    const GLint top = limit(bottom + std::max(area.getHeight(), 0), 0, most[1]);
    glEnable(GL_SCISSOR_TEST);
    glScissor(x, y, right - x, top - y);
}

} // namespace

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
    setArea(area, target ? target->getHeight() : mHeight);
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

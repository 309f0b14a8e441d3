// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyGraphicsDevice.h"

#include "KyGpuName_p.h"
#include "KyGraphicsDeviceManager.h"

#include <epoxy/gl.h>

#include <algorithm>
#include <array>
#include <string_view>

namespace {

constexpr int cMinimumVersion = 32;
constexpr std::array<std::string_view, 6> cSoftwareRenderers{"llvmpipe", "softpipe",    "swrast",
                                                             "Software", "SwiftShader", "GDI Generic"};

std::string getText(GLenum name) {
    const auto* text = reinterpret_cast<const char*>(glGetString(name));
    return text ? text : "";
}

} // namespace

KyGraphicsDevice::~KyGraphicsDevice() {
    KyGraphicsDeviceManager::get().forget(this);
}

bool KyGraphicsDevice::hasCurrentContext() {
    return kyGetCurrentGpuHandle() != nullptr;
}

bool KyGraphicsDevice::isUsable() {
    return hasCurrentContext() && getVersion() >= cMinimumVersion;
}

const std::string& KyGraphicsDevice::getRendererName() {
    readInformation();
    return mRendererName;
}

const std::string& KyGraphicsDevice::getVendorName() {
    readInformation();
    return mVendorName;
}

const std::string& KyGraphicsDevice::getVersionText() {
    readInformation();
    return mVersionText;
}

int KyGraphicsDevice::getVersion() {
    readInformation();
    return mVersion;
}

bool KyGraphicsDevice::isSoftware() {
    readInformation();
    return std::ranges::any_of(cSoftwareRenderers,
                               [this](std::string_view name) { return mRendererName.find(name) != std::string::npos; });
}

int KyGraphicsDevice::getMaxSamples() {
    readInformation();
    return mMaxSamples;
}

bool KyGraphicsDevice::makeCurrent() {
    return hasCurrentContext();
}

void KyGraphicsDevice::readInformation() {
    if (mIsRead || !hasCurrentContext())
        return;
    mIsRead = true;
    mRendererName = getText(GL_RENDERER);
    mVendorName = getText(GL_VENDOR);
    mVersionText = getText(GL_VERSION);
    mVersion = epoxy_gl_version();
    if (mVersion >= cMinimumVersion)
        glGetIntegerv(GL_MAX_SAMPLES, &mMaxSamples);
}

// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyOffscreenContext.h"

#include "KyGpuName_p.h"

#include <EGL/egl.h>
#include <EGL/eglext.h>
#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <string_view>
#include <vector>

struct KyOffscreenContext::Native {
    EGLDisplay display = EGL_NO_DISPLAY;
    EGLContext context = EGL_NO_CONTEXT;
    EGLSurface surface = EGL_NO_SURFACE;
    unsigned group = 0;
};

namespace {

bool hasExtension(const char* extensions, std::string_view name) {
    return extensions && std::string_view(extensions).find(name) != std::string_view::npos;
}

bool initialize(EGLDisplay display) {
    return display != EGL_NO_DISPLAY && eglInitialize(display, nullptr, nullptr) == EGL_TRUE;
}

template <class Function>
Function getFunction(const char* name) {
    return reinterpret_cast<Function>(eglGetProcAddress(name));
}

EGLDisplay openDeviceDisplay(PFNEGLGETPLATFORMDISPLAYEXTPROC getDisplay) {
    const auto queryDevices = getFunction<PFNEGLQUERYDEVICESEXTPROC>("eglQueryDevicesEXT");
    std::array<EGLDeviceEXT, 8> devices{};
    EGLint count = 0;
    if (!queryDevices || !queryDevices(static_cast<EGLint>(devices.size()), devices.data(), &count))
        return EGL_NO_DISPLAY;
    for (EGLint i = 0; i < count; ++i) {
        const EGLDisplay display = getDisplay(EGL_PLATFORM_DEVICE_EXT, devices[static_cast<std::size_t>(i)], nullptr);
        if (initialize(display))
            return display;
    }
    return EGL_NO_DISPLAY;
}

// Displays are never terminated: another user of EGL in this process would get the same one.
EGLDisplay openDisplay() {
    const char* extensions = eglQueryString(EGL_NO_DISPLAY, EGL_EXTENSIONS);
    const auto getDisplay = getFunction<PFNEGLGETPLATFORMDISPLAYEXTPROC>("eglGetPlatformDisplayEXT");
    if (getDisplay && hasExtension(extensions, "EGL_MESA_platform_surfaceless")) {
        const EGLDisplay display = getDisplay(EGL_PLATFORM_SURFACELESS_MESA, EGL_DEFAULT_DISPLAY, nullptr);
        if (initialize(display))
            return display;
    }
    if (getDisplay && hasExtension(extensions, "EGL_EXT_platform_device")) {
        const EGLDisplay display = openDeviceDisplay(getDisplay);
        if (display != EGL_NO_DISPLAY)
            return display;
    }
    const EGLDisplay display = eglGetDisplay(EGL_DEFAULT_DISPLAY);
    return initialize(display) ? display : EGL_NO_DISPLAY;
}

EGLConfig chooseConfig(EGLDisplay display, bool needsSurface) {
    const EGLint attributes[] = {EGL_RENDERABLE_TYPE, EGL_OPENGL_BIT, EGL_SURFACE_TYPE,
                                 needsSurface ? EGL_PBUFFER_BIT : 0, EGL_NONE};
    EGLConfig config = nullptr;
    EGLint count = 0;
    return eglChooseConfig(display, attributes, &config, 1, &count) && count > 0 ? config : nullptr;
}

EGLContext makeContext(EGLDisplay display, EGLConfig config, KyOffscreenContext::Profile profile, EGLContext share) {
    const EGLint profileBit = profile == KyOffscreenContext::eCore ? EGL_CONTEXT_OPENGL_CORE_PROFILE_BIT
                                                                   : EGL_CONTEXT_OPENGL_COMPATIBILITY_PROFILE_BIT;
    for (const auto& [major, minor] : {std::pair{3, 3}, {3, 2}}) {
        const EGLint attributes[] = {EGL_CONTEXT_MAJOR_VERSION,
                                     major,
                                     EGL_CONTEXT_MINOR_VERSION,
                                     minor,
                                     EGL_CONTEXT_OPENGL_PROFILE_MASK,
                                     profileBit,
                                     EGL_NONE};
        if (const EGLContext context = eglCreateContext(display, config, share, attributes))
            return context;
    }
    return EGL_NO_CONTEXT;
}

EGLSurface makeSurface(EGLDisplay display, EGLConfig config) {
    const EGLint attributes[] = {EGL_WIDTH, 1, EGL_HEIGHT, 1, EGL_NONE};
    return eglCreatePbufferSurface(display, config, attributes);
}

} // namespace

std::unique_ptr<KyOffscreenContext> KyOffscreenContext::create(std::string& error, Profile profile,
                                                               const KyOffscreenContext* share) {
    const auto fail = [&error](std::string_view what) {
        error = fmt::format("KyOffscreenContext::create(): {} (EGL error {:#x}).", what, eglGetError());
        return nullptr;
    };
    auto native = std::make_unique<Native>();
    native->display = share ? share->mNative->display : openDisplay();
    if (native->display == EGL_NO_DISPLAY)
        return fail("no EGL display can be opened");
    if (!eglBindAPI(EGL_OPENGL_API))
        return fail("EGL offers no desktop OpenGL");
    const bool isSurfaceless =
        hasExtension(eglQueryString(native->display, EGL_EXTENSIONS), "EGL_KHR_surfaceless_context");
    EGLConfig config = chooseConfig(native->display, !isSurfaceless);
    if (!config)
        return fail("no EGL configuration fits");
    native->context = makeContext(native->display, config, profile, share ? share->mNative->context : EGL_NO_CONTEXT);
    if (native->context == EGL_NO_CONTEXT)
        return fail("no OpenGL 3.2 context can be made");
    if (!isSurfaceless)
        native->surface = makeSurface(native->display, config);
    native->group = share ? share->mNative->group : kyMakeGpuGroup();
    kyRegisterGpuContext({native->context, native->group});
    std::unique_ptr<KyOffscreenContext> context(new KyOffscreenContext(std::move(native)));
    if (!context->makeCurrent())
        return fail("the context cannot be made current");
    return context;
}

KyOffscreenContext::KyOffscreenContext(std::unique_ptr<Native> native)
    : mNative(std::move(native)) {}

KyOffscreenContext::~KyOffscreenContext() {
    if (eglGetCurrentContext() == mNative->context) {
        KyGpuName::deletePending();
        doneCurrent();
    }
    kyUnregisterGpuContext(mNative->context);
    eglDestroyContext(mNative->display, mNative->context);
    if (mNative->surface != EGL_NO_SURFACE)
        eglDestroySurface(mNative->display, mNative->surface);
}

bool KyOffscreenContext::makeCurrent() {
    // The bound API is state of the thread, and others change it.
    return eglBindAPI(EGL_OPENGL_API) &&
           eglMakeCurrent(mNative->display, mNative->surface, mNative->surface, mNative->context) == EGL_TRUE;
}

void KyOffscreenContext::doneCurrent() {
    eglMakeCurrent(mNative->display, EGL_NO_SURFACE, EGL_NO_SURFACE, EGL_NO_CONTEXT);
}

// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyOffscreenContext.h"

#include "KyGpuName_p.h"

// Before the headers that need its types.
#include <windows.h>

#include <epoxy/wgl.h>
#include <fmt/format.h>

#include <string_view>
#include <utility>

struct KyOffscreenContext::Native {
    HWND window = nullptr;
    HDC device = nullptr;
    HGLRC context = nullptr;
    unsigned group = 0;

    Native() = default;
    Native(const Native&) = delete;
    Native& operator=(const Native&) = delete;
    ~Native() {
        if (context)
            wglDeleteContext(context);
        if (device)
            ReleaseDC(window, device);
        if (window)
            DestroyWindow(window);
    }
};

namespace {

using CreateFunction = PFNWGLCREATECONTEXTATTRIBSARBPROC;

/// Contexts come from windows here; this one is never shown.
HWND makeWindow() {
    constexpr const wchar_t* cClass = L"KyOffscreenContext";
    WNDCLASSW windowClass{};
    windowClass.style = CS_OWNDC;
    windowClass.lpfnWndProc = DefWindowProcW;
    windowClass.hInstance = GetModuleHandleW(nullptr);
    windowClass.lpszClassName = cClass;
    RegisterClassW(&windowClass);
    return CreateWindowW(cClass, L"", WS_OVERLAPPED, 0, 0, 1, 1, nullptr, nullptr, windowClass.hInstance, nullptr);
}

bool setPixelFormat(HDC device) {
    PIXELFORMATDESCRIPTOR description{};
    description.nSize = sizeof(description);
    description.nVersion = 1;
    description.dwFlags = PFD_DRAW_TO_WINDOW | PFD_SUPPORT_OPENGL;
    description.iPixelType = PFD_TYPE_RGBA;
    description.cColorBits = 32;
    const int format = ChoosePixelFormat(device, &description);
    return format != 0 && SetPixelFormat(device, format, &description);
}

/// What makes contexts of a chosen version is itself told by a context only, of any version.
CreateFunction findCreateFunction(HDC device) {
    const HGLRC first = wglCreateContext(device);
    if (!first)
        return nullptr;
    PROC function = nullptr;
    if (wglMakeCurrent(device, first)) {
        function = wglGetProcAddress("wglCreateContextAttribsARB");
        wglMakeCurrent(nullptr, nullptr);
    }
    wglDeleteContext(first);
    return reinterpret_cast<CreateFunction>(reinterpret_cast<void*>(function));
}

HGLRC makeContext(HDC device, KyOffscreenContext::Profile profile, HGLRC share) {
    const CreateFunction create = findCreateFunction(device);
    const int profileBit = profile == KyOffscreenContext::eCore ? WGL_CONTEXT_CORE_PROFILE_BIT_ARB
                                                                : WGL_CONTEXT_COMPATIBILITY_PROFILE_BIT_ARB;
    for (const auto& [major, minor] : {std::pair{3, 3}, {3, 2}}) {
        const int attributes[] = {WGL_CONTEXT_MAJOR_VERSION_ARB,
                                  major,
                                  WGL_CONTEXT_MINOR_VERSION_ARB,
                                  minor,
                                  WGL_CONTEXT_PROFILE_MASK_ARB,
                                  profileBit,
                                  0};
        if (const HGLRC context = create ? create(device, share, attributes) : nullptr)
            return context;
    }
    return nullptr;
}

} // namespace

std::unique_ptr<KyOffscreenContext> KyOffscreenContext::create(std::string& error, Profile profile,
                                                               const KyOffscreenContext* share) {
    const auto fail = [&error](std::string_view what) {
        error = fmt::format("KyOffscreenContext::create(): {} (error {:#x}).", what, GetLastError());
        return nullptr;
    };
    auto native = std::make_unique<Native>();
    native->window = makeWindow();
    native->device = native->window ? GetDC(native->window) : nullptr;
    if (!native->device)
        return fail("no window can be made");
    if (!setPixelFormat(native->device))
        return fail("no pixel format fits");
    native->context = makeContext(native->device, profile, share ? share->mNative->context : nullptr);
    if (!native->context)
        return fail("no OpenGL 3.2 context can be made");
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
    if (kyGetCurrentGpuHandle() == mNative->context) {
        KyGpuName::deletePending();
        doneCurrent();
    }
    kyUnregisterGpuContext(mNative->context);
}

bool KyOffscreenContext::makeCurrent() {
    return wglMakeCurrent(mNative->device, mNative->context) != FALSE;
}

void KyOffscreenContext::doneCurrent() {
    wglMakeCurrent(nullptr, nullptr);
}

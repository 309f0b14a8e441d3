// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyGpuName_p.h"

#include <EGL/egl.h>

#include <dlfcn.h>

#include <initializer_list>

namespace {

using CurrentFunction = void* (*)();

/// GLX belongs to whoever made the window: it is asked only when it is in the process already.
CurrentFunction findGlxFunction() {
    for (const char* library : {"libGLX.so.0", "libGL.so.1"})
        if (void* handle = dlopen(library, RTLD_LAZY | RTLD_NOLOAD)) {
            const auto function = reinterpret_cast<CurrentFunction>(dlsym(handle, "glXGetCurrentContext"));
            dlclose(handle);
            if (function)
                return function;
        }
    return nullptr;
}

} // namespace

void* kyGetCurrentGpuHandle() {
    if (void* context = eglGetCurrentContext())
        return context;
    static CurrentFunction glxGetCurrentContext = nullptr;
    if (!glxGetCurrentContext)
        glxGetCurrentContext = findGlxFunction();
    return glxGetCurrentContext ? glxGetCurrentContext() : nullptr;
}

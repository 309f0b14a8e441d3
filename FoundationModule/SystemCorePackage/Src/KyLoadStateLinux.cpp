// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyLoadState.h"

#include <dlfcn.h>
#include <unwind.h>

#include <string_view>

namespace {
_Unwind_Reason_Code rememberFrame(_Unwind_Context* context, void* outermost) {
    if (const auto address = _Unwind_GetIP(context); address != 0)
        *static_cast<std::uintptr_t*>(outermost) = address;
    return _URC_NO_REASON;
}
} // namespace

bool KyLoadState::wasLoadedWithProgram() {
    // The dynamic loader itself starts a process; later calls into it come from somebody's code.
    std::uintptr_t outermost = 0;
    _Unwind_Backtrace(&rememberFrame, &outermost);

    Dl_info info{};
    // NOLINTNEXTLINE(performance-no-int-to-ptr): the unwinder gives addresses as numbers.
    if (!::dladdr(reinterpret_cast<const void*>(outermost), &info) || !info.dli_fname)
        return false;
    return std::string_view(info.dli_fname).find("ld-linux") != std::string_view::npos;
}

std::intptr_t KyLoadState::getModuleHandle(const void* address) {
    Dl_info info{};
    return ::dladdr(address, &info) ? reinterpret_cast<std::intptr_t>(info.dli_fbase) : 0;
}

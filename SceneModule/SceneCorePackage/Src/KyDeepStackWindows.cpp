// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyDeepStack_p.h"

#include <exception>
#include <stdexcept>

#include <windows.h>

namespace {

struct Run {
    const std::function<void()>& function;
    std::exception_ptr failure;
};

DWORD WINAPI run(void* data) {
    Run& run = *static_cast<Run*>(data);
    try {
        run.function();
    } catch (...) {
        run.failure = std::current_exception();
    }
    return 0;
}

} // namespace

void kyRunOnDeepStack(const std::function<void()>& function) {
    Run call{function, nullptr};
    const HANDLE thread =
        CreateThread(nullptr, cDeepStackSize, &run, &call, STACK_SIZE_PARAM_IS_A_RESERVATION, nullptr);
    if (!thread)
        throw std::runtime_error("there is no room for its reader");
    WaitForSingleObject(thread, INFINITE);
    CloseHandle(thread);
    if (call.failure)
        std::rethrow_exception(call.failure);
}

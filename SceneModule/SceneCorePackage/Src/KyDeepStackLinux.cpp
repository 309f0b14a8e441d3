// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyDeepStack_p.h"

#include <exception>
#include <stdexcept>

#include <pthread.h>

namespace {

struct Run {
    const std::function<void()>& function;
    std::exception_ptr failure;
};

void* run(void* data) {
    Run& run = *static_cast<Run*>(data);
    try {
        run.function();
    } catch (...) {
        run.failure = std::current_exception();
    }
    return nullptr;
}

} // namespace

void kyRunOnDeepStack(const std::function<void()>& function) {
    Run call{function, nullptr};
    pthread_attr_t attributes;
    pthread_t thread;
    pthread_attr_init(&attributes);
    pthread_attr_setstacksize(&attributes, cDeepStackSize);
    const int error = pthread_create(&thread, &attributes, &run, &call);
    pthread_attr_destroy(&attributes);
    if (error != 0)
        throw std::runtime_error("there is no room for its reader");
    pthread_join(thread, nullptr);
    if (call.failure)
        std::rethrow_exception(call.failure);
}

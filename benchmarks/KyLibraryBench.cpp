// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyBenchmark.h"

#include "KyApplicationLibrary.h"

namespace {

KyBenchmarkSides prepareStartUp() {
    const auto round = [](long count) {
        for (long i = 0; i < count; ++i) {
            KyApplicationLibrary::finalize();
            KyApplicationLibrary::initialize();
        }
    };
    return {round, round, nullptr};
}

} // namespace

std::vector<KyBenchmark> getLibraryBenchmarks() {
    return {
        {"start-up: initialise and finalise", "a limit of 100 ms", 100, KyBenchmark::Gate::eLimit, 5, &prepareStartUp}};
}

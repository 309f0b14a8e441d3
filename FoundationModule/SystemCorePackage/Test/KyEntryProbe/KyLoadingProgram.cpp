// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyProbeLoader.h"

#include <cstdio>
#include <string_view>
#include <thread>

namespace {
// "o" opens, "t" opens on another thread, "c" closes; what is open at the end meets the exit.
void* perform(char step, const char* path, void* library) {
    if (step == 'c')
        return KyProbeLoader::close(library) ? nullptr : library;
    if (step == 'o')
        return KyProbeLoader::open(path);
    void* opened = nullptr;
    std::thread([&] { opened = KyProbeLoader::open(path); }).join();
    return opened;
}
} // namespace

int main(int argc, char** argv) {
    if (argc < 3)
        return 2;
    void* library = nullptr;
    for (const char step : std::string_view(argv[2]))
        library = perform(step, argv[1], library);
    std::fputs(library ? "end" : "closed", stderr);
    return 0;
}

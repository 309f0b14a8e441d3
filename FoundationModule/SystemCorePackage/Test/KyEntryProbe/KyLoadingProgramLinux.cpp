// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include <dlfcn.h>

#include <cstdio>
#include <string_view>
#include <thread>

// Steps: "o" opens, "t" opens on another thread, "c" closes; what is open at the end meets the exit.
int main(int argc, char** argv) {
    if (argc < 3)
        return 2;
    void* library = nullptr;
    const auto open = [&] { library = ::dlopen(argv[1], RTLD_NOW); };
    for (const char step : std::string_view(argv[2]))
        if (step == 'o')
            open();
        else if (step == 't')
            std::thread(open).join();
        else if (::dlclose(library) == 0)
            library = nullptr;
    std::fputs(library ? "end" : "closed", stderr);
    return 0;
}

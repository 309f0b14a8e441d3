// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include <windows.h>

#include <cstdio>
#include <string_view>
#include <thread>

// Steps: "o" opens, "t" opens on another thread, "c" closes, "k" kills the process; what is open at the end meets the
// exit.
int main(int argc, char** argv) {
    if (argc < 3)
        return 2;
    HMODULE library = nullptr;
    const auto open = [&] {
        try {
            library = ::LoadLibraryA(argv[1]);
        } catch (...) {
            std::fputs("caught", stderr);
        }
    };
    for (const char step : std::string_view(argv[2])) {
        if (step == 'o')
            open();
        else if (step == 't')
            std::thread(open).join();
        else if (step == 'k')
            ::TerminateProcess(::GetCurrentProcess(), 0);
        else if (::FreeLibrary(library))
            library = nullptr;
    }
    std::fputs(library ? "end" : "closed", stderr);
    return 0;
}

// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyLoadState.h"

#include <cstdint>

/// The entry of a module library: one function that is told when the library comes and goes, the
/// same on every platform, with the arguments of the Windows loader.
///
/// | event                                | reason           | reserved |
/// |--------------------------------------|------------------|----------|
/// | loaded by the running program        | `eProcessAttach` | null     |
/// | loaded together with the program     | `eProcessAttach` | not null |
/// | unloaded                             | `eProcessDetach` | null     |
/// | still loaded when the process exits  | `eProcessDetach` | not null |
///
/// Other reasons (Windows only) are to be ignored. The loader's lock is held: the function records
/// and returns true, it starts no thread, loads nothing and lets no exception out. At process exit
/// static objects are already destroyed.
///
/// On Windows a library writes `KyLibraryEntryWindows.cpp`, where the loader calls by itself:
///
///     BOOL WINAPI DllMain(HINSTANCE handle, DWORD reason, LPVOID reserved)
///     {
///       return MyLibrary::onLoad(reinterpret_cast<std::intptr_t>(handle), reason, reserved);
///     }
///
/// On Linux it writes `KyLibraryEntryLinux.cpp`. A destructor function cannot see why it is called;
/// but static objects are destroyed before it when the process exits and after it on `dlclose`.
/// Hence the mark, which must be a static object of the library itself:
///
///     namespace
///     {
///     constinit bool gExitBegun = false;
///     const KyExitMark gExitMark(gExitBegun);
///     constinit KyLibraryEntry gEntry(&MyLibrary::onLoad);
///
///     [[gnu::constructor]] void attach() { gEntry.attach(); }
///     [[gnu::destructor]] void detach() { gEntry.detach(gExitBegun); }
///     }
///
/// The library must be compiled with -fno-gnu-unique, or it is never unloaded at all. `dlclose`
/// inside an `atexit` handler that is older than the load counts as exit; `_exit` tells nobody.
class KyLibraryEntry {
public:
    /// Why the entry is called.
    enum Reason : unsigned { eProcessDetach = 0, eProcessAttach = 1, eThreadAttach = 2, eThreadDetach = 3, eNbReasons };

    /// `handle` is what `KyLoadState::getModuleHandle` gives for an address in the library.
    using Function = bool (*)(std::intptr_t handle, unsigned reason, void* reserved);

    /// Called at loading and unloading.
    constexpr explicit KyLibraryEntry(Function function)
        : mFunction(function) {}

    /// To be called by the library's constructor function.
    void attach() {
        mLoadedWithProgram = KyLoadState::wasLoadedWithProgram();
        call(eProcessAttach, mLoadedWithProgram);
    }

    /// To be called by the library's destructor function.
    void detach(bool exitBegun) { call(eProcessDetach, mLoadedWithProgram || exitBegun); }

private:
    void call(Reason reason, bool reserved) {
        const auto* address = reinterpret_cast<const void*>(mFunction);
        mFunction(KyLoadState::getModuleHandle(address), reason, reserved ? this : nullptr);
    }

    Function mFunction;
    bool mLoadedWithProgram = false;
};

/// Sets a flag when static objects are destroyed. The flag lives outside, since a compiler drops
/// what a destructor writes into its own object.
class KyExitMark {
public:
    /// The flag must outlive the mark.
    constexpr explicit KyExitMark(bool& flag)
        : mFlag(flag) {}
    KyExitMark(const KyExitMark&) = delete;
    KyExitMark& operator=(const KyExitMark&) = delete;
    ~KyExitMark() { mFlag = true; }

private:
    bool& mFlag;
};

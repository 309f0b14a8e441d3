// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstddef>
#include <string>

#include <lua.hpp>

/// Names by which functions are called, as lua_getinfo tells them, kept by place: finding one out means a walk through
/// the code of the caller. A function that one line calls by two names has one of them.
class KyLuaCallNames {
public:
    /// To be done before each run: functions that are gone may have left their addresses to others.
    void beginRun() { ++mRun; }
    /// Name of the call that the hook tells of, null when there is none; valid until the next call.
    const char* find(lua_State* state, lua_Debug* record, const void* callee);

private:
    struct Entry {
        std::size_t run = 0;
        const void* caller = nullptr;
        const void* callee = nullptr;
        int line = 0;
        bool hasName = false;
        std::string name;
    };

    std::size_t mRun = 1;
    std::array<Entry, 256> mEntries;
};

// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyLuaCallNames_p.h"

#include <cstdint>

namespace {

std::size_t hash(const void* caller, const void* callee, int line) {
    // Lua aligns its objects to 16 bytes.
    const auto mixed = reinterpret_cast<std::uintptr_t>(caller) * 31 + reinterpret_cast<std::uintptr_t>(callee);
    return (mixed >> 4) + static_cast<std::size_t>(line);
}

} // namespace

const char* KyLuaCallNames::find(lua_State* state, lua_Debug* record, const void* callee) {
    lua_Debug caller;
    if (lua_getstack(state, 1, &caller) == 0)
        return nullptr;
    lua_getinfo(state, "lf", &caller);
    const void* const function = lua_topointer(state, -1);
    lua_pop(state, 1);
    // Only a function of Lua calls by a name, unless it has given its place to the one it called.
    if (caller.currentline < 0)
        return nullptr;
    Entry& entry = mEntries[hash(function, callee, caller.currentline) % mEntries.size()];
    const bool isKnown = entry.run == mRun && entry.caller == function && entry.callee == callee;
    if (!isKnown || entry.line != caller.currentline) {
        lua_getinfo(state, "n", record);
        const bool hasName = record->name != nullptr;
        entry = {mRun, function, callee, caller.currentline, hasName, hasName ? record->name : ""};
    }
    return entry.hasName ? entry.name.c_str() : nullptr;
}

// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyLuaState_p.h"

#include <algorithm>
#include <cstddef>
#include <exception>
#include <initializer_list>
#include <string_view>

#include <lua.hpp>

/// Carries the text of a Lua error out of the scope of C++ objects: raising jumps over destructors, so this has none.
/// Longer texts are cut.
class KyLuaErrorText {
public:
    bool isEmpty() const { return mSize == 0; }

    /// Sets the text from its parts and returns -1, the number of results that means "raise".
    int set(std::initializer_list<std::string_view> parts) {
        mSize = 0;
        for (const std::string_view part : parts) {
            const std::size_t size = std::min(part.size(), cCapacity - mSize);
            std::copy_n(part.data(), size, mText + mSize);
            mSize += size;
        }
        return -1;
    }
    int set(std::string_view text) { return set({text}); }

    /// Raises, with the position of the running Lua function in front.
    int raise(lua_State* state) const {
        luaL_where(state, 1);
        lua_pushlstring(state, mText, mSize);
        lua_concat(state, 2);
        return lua_error(state);
    }

private:
    static constexpr std::size_t cCapacity = 480;

    std::size_t mSize = 0;
    char mText[cCapacity];
};

/// Runs the body of a Lua C function, which gives the number of results, or a negative number after it has set the
/// text. What it throws becomes the text. Costs nothing over the bare body while nothing fails.
template <class Body>
int kyLuaRun(lua_State* state, Body body) {
    KyLuaErrorText error;
    int nbResults = -1;
    try {
        const KyLuaRunning running(state);
        nbResults = body(error);
    } catch (const std::exception& exception) {
        error.set(exception.what());
    } catch (...) {
        error.set("unknown C++ exception");
    }
    return nbResults >= 0 ? nbResults : error.raise(state);
}

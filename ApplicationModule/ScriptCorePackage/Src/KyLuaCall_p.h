// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyLuaErrorText_p.h"
#include "KyLuaState_p.h"

#include <memory>
#include <string>
#include <type_traits>

#include <lua.hpp>

/// A Lua C function over `int Body(lua_State*, KyLuaErrorText&)`, which gives the number of results, or a negative
/// number after it has set the text. Errors are raised when all C++ objects of the body are gone, with the position of
/// the calling Lua function in front; what the body throws becomes the text.
///
/// ```
/// int add(lua_State* state, KyLuaErrorText& error);
/// lua_pushcfunction(state, &kyLuaFunction<&add>);
/// ```
template <auto Body>
int kyLuaFunction(lua_State* state) {
    return kyLuaRun(state, [state](KyLuaErrorText& error) { return Body(state, error); });
}

/// What became of a protected call.
struct KyLuaFailure {
    /// Lua's message, unchanged; see kyLuaErrorText for errors that are no text.
    std::string message;
    /// Where it happened, innermost first.
    std::string traceback;
};

namespace KyLuaDetail {

struct ProtectedBody {
    void (*run)(lua_State* state, void* callable);
    void* callable;
    KyLuaFailure* failure;
    bool failed;
};

bool runProtected(lua_State* state, ProtectedBody& body);

} // namespace KyLuaDetail

/// Runs `body(lua_State*)` as a C function of its own, above whatever is on the stack, which stays as it was. False
/// with the failure when Lua raised an error or the body threw: no Lua error ever passes it. Errors jump over the
/// body's C++ objects, so the body keeps them outside and refers to them. Needs no free slots.
template <class Body>
bool kyProtectedCall(lua_State* state, Body&& body, KyLuaFailure& failure) {
    using Callable = std::remove_reference_t<Body>;
    const auto run = [](lua_State* inner, void* callable) { (*static_cast<Callable*>(callable))(inner); };
    KyLuaDetail::ProtectedBody call{run, const_cast<void*>(static_cast<const void*>(std::addressof(body))), &failure,
                                    false};
    return KyLuaDetail::runProtected(state, call);
}

/// Whether the function is one that kyProtectedCall calls for itself.
bool kyIsOwnLuaCall(lua_CFunction function);

/// Text of the error value at `index`: strings and numbers unchanged, else what its __tostring gives, else
/// "(error object is not a string)". Runs scripts; may raise a memory error.
void kyLuaErrorText(lua_State* state, int index, std::string& text);

/// The text of a string or number at `index`, read without changing the value; false for all else. Never raises.
bool kyLuaPlainText(lua_State* state, int index, std::string& text);

/// The calls under way in `thread`, one a line, innermost first, from `level` on. Never raises.
void kyLuaTraceback(lua_State* thread, int level, std::string& text);

// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyLuaInstance_p.h"
#include "KyScriptEngine.h"
#include "KyScriptSandbox_p.h"

#include "KyType.h"

#include <algorithm>
#include <array>
#include <set>
#include <string>
#include <string_view>

#include <luabind/luabind.hpp>

namespace {

/// Functions, classes and libraries that scripts in a sandbox may have.
constexpr auto cGlobals = std::to_array<std::string_view>({
    "Box",
    "Boxd",
    "Boxf",
    "Color",
    "Date",
    "DateTime",
    "Easing",
    "IntVector",
    "IntersectionPoint",
    "IntersectionPointd",
    "IntersectionPointf",
    "Matrix",
    "Matrixd",
    "Matrixf",
    "Plane",
    "Planed",
    "Planef",
    "Planei",
    "Platform",
    "QString",
    "QString_fromStdString",
    "QString_fromUtf8",
    "QString_toQUrl",
    "QString_toStdString",
    "QString_toUtf8",
    "QUrl",
    "QUrl_toString",
    "Quat",
    "Quatd",
    "Quatf",
    "Ray",
    "Rayd",
    "Rayf",
    "Rect",
    "Rectd",
    "Rectf",
    "Recti",
    "Time",
    "Timer",
    "Type",
    "URL",
    "Vec2",
    "Vec2d",
    "Vec2f",
    "Vec2i",
    "Vec3",
    "Vec3d",
    "Vec3f",
    "Vec3i",
    "Volume",
    "Volumed",
    "Volumef",
    "Volumei",
    "WayPoint",
    "WayPointd",
    "WayPointf",
    "_G",
    "assert",
    "bindAllClasses",
    "bindClass",
    "bit_and",
    "bit_not",
    "bit_or",
    "bit_xor",
    "collectgarbage",
    "connect",
    "coroutine",
    "createKyObject",
    "deleteKyObject",
    "disconnect",
    "error",
    "gcinfo",
    "generateGUID",
    "getfenv",
    "getmetatable",
    "ipairs",
    "ldb",
    "load",
    "loadstring",
    "math",
    "next",
    "os",
    "pairs",
    "pcall",
    "print",
    "rawequal",
    "rawget",
    "rawset",
    "select",
    "setfenv",
    "setmetatable",
    "string",
    "table",
    "tonumber",
    "tostring",
    "tprint",
    "type",
    "unpack",
    "xpcall",
});
static_assert(std::ranges::is_sorted(cGlobals));

/// What the libraries of Lua may hold in C functions, in texts with a blank around each name.
struct Library {
    const char* name;
    std::string_view functions;
};
constexpr Library cLibraries[] = {
    {"coroutine", " create resume running status wrap yield "},
    {"math",
     " abs acos asin atan atan2 ceil cos cosh deg exp floor fmod frexp ldexp log log10 max min mod modf pow rad "
     "random randomseed sin sinh sqrt tan tanh "},
    {"os", " clock date difftime time "},
    {"string", " byte char find format gfind gmatch gsub len lower match rep reverse sub upper "},
    {"table", " concat foreach foreachi getn insert maxn remove setn sort "},
};

using Names = std::set<std::string, std::less<>>;

/// Visits the entries of the table on top, key and value on top of it; false takes the entry away. Those that are there
/// may be emptied on the way.
template <class Keep>
void filterEntries(lua_State* state, Keep keeps) {
    const int table = lua_gettop(state);
    for (lua_pushnil(state); lua_next(state, table) != 0; lua_pop(state, 1)) {
        if (keeps())
            continue;
        lua_pushvalue(state, -2);
        lua_pushnil(state);
        lua_rawset(state, table);
    }
}

/// The key below the value on top; empty when it is no text.
std::string_view getKey(lua_State* state) {
    return lua_type(state, -2) == LUA_TSTRING ? lua_tostring(state, -2) : std::string_view();
}

void filterLibraries(lua_State* state) {
    for (const Library& library : cLibraries) {
        lua_pushstring(state, library.name);
        lua_rawget(state, LUA_GLOBALSINDEX);
        const auto isKnown = [&] {
            return library.functions.find(' ' + std::string(getKey(state)) + ' ') != std::string_view::npos;
        };
        if (lua_istable(state, -1))
            filterEntries(state, [&] { return lua_iscfunction(state, -1) == 0 || isKnown(); });
        lua_pop(state, 1);
    }
}

/// An object, or a value of a class that scripts have; no other class, instance or foreign userdata, such as an open
/// file.
bool isPlainValue(lua_State* state) {
    if (luabind::detail::is_class_rep(state, -1))
        return false;
    if (kyLuaToInstance(state, -1))
        return true;
    const luabind::detail::object_rep* const value = luabind::detail::get_instance(state, -1);
    return value && value->crep() && value->crep()->name() &&
           std::ranges::binary_search(cGlobals, std::string_view(value->crep()->name()));
}

/// Sorts the globals. Values that are known are kept under other names, which scripts may have given them before the
/// host enabled its sandbox again.
class Filter {
public:
    Filter(lua_State* state, const KyScriptEngine& engine, const Names& allowed)
        : mState(state)
        , mEngine(engine)
        , mAllowed(allowed) {}

    void run() {
        const int depth = lua_gettop(mState);
        lua_newtable(mState);
        mKept = depth + 1;
        lua_pushvalue(mState, LUA_GLOBALSINDEX);
        filterEntries(mState, [this] {
            noteKnown();
            return true;
        });
        filterEntries(mState, [this] { return isKept(true); });
        lua_settop(mState, depth);
    }

private:
    bool isKnown() const {
        const std::string_view name = getKey(mState);
        return std::ranges::binary_search(cGlobals, name) || mAllowed.contains(name) || mEngine.findFunctions(name) ||
               (lua_istable(mState, -1) && KyType::getType(name));
    }

    void keep() const {
        lua_pushvalue(mState, -1);
        lua_pushboolean(mState, 1);
        lua_rawset(mState, mKept);
    }

    /// A library with what it holds.
    void noteKnown() const {
        if (!isKnown())
            return;
        keep();
        if (!lua_istable(mState, -1) || lua_rawequal(mState, -1, LUA_GLOBALSINDEX) != 0)
            return;
        filterEntries(mState, [this] {
            if (lua_isfunction(mState, -1))
                keep();
            return true;
        });
    }

    /// A table that is not known is looked into, but not the tables in it.
    bool isKept(bool looksInside) const {
        lua_pushvalue(mState, -1);
        lua_rawget(mState, mKept);
        const bool isNoted = lua_toboolean(mState, -1) != 0;
        lua_pop(mState, 1);
        if (isNoted)
            return true;
        switch (lua_type(mState, -1)) {
        case LUA_TFUNCTION:
            return lua_iscfunction(mState, -1) == 0;
        case LUA_TUSERDATA:
            return isPlainValue(mState);
        case LUA_TTABLE:
            return !looksInside || isHarmless();
        default:
            return lua_type(mState, -1) != LUA_TLIGHTUSERDATA;
        }
    }

    bool isHarmless() const {
        bool isGood = true;
        filterEntries(mState, [&] {
            isGood = isGood && isKept(false);
            return true;
        });
        return isGood;
    }

    lua_State* mState;
    const KyScriptEngine& mEngine;
    const Names& mAllowed;
    int mKept = 0;
};

} // namespace

void kyWithholdLuaGlobals(lua_State* state, const KyScriptEngine& engine, const Names& allowed) {
    luaL_checkstack(state, LUA_MINSTACK, "too many values");
    filterLibraries(state);
    Filter(state, engine, allowed).run();
}

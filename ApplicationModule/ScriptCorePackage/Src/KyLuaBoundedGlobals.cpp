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

/// Libraries of Lua that reach beyond the state: emptied, as tables of the host may lead to them.
constexpr const char* cWithheldLibraries[] = {LUA_DBLIBNAME, LUA_IOLIBNAME, LUA_LOADLIBNAME};

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

/// Goes by what was loaded, wherever it stands now, so that tables of the host that are named so stay.
void emptyLibraries(lua_State* state, const Names& allowed) {
    lua_getfield(state, LUA_REGISTRYINDEX, "_LOADED");
    for (const char* const name : cWithheldLibraries) {
        if (!lua_istable(state, -1) || allowed.contains(std::string_view(name)))
            continue;
        lua_pushstring(state, name);
        lua_rawget(state, -2);
        if (lua_istable(state, -1))
            filterEntries(state, [] { return false; });
        lua_pushstring(state, name);
        lua_rawget(state, LUA_GLOBALSINDEX);
        if (lua_rawequal(state, -1, -2) != 0)
            kySetLuaFunction(state, LUA_GLOBALSINDEX, name, nullptr);
        lua_pop(state, 2);
    }
    lua_pop(state, 1);
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
/// host enabled its sandbox again; all others with what they lead to, or not at all.
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
        keep();
        filterEntries(mState, [this] {
            noteKnown();
            return true;
        });
        filterTable();
        for (const Library& library : cLibraries) {
            lua_pushstring(mState, library.name);
            lua_rawget(mState, LUA_GLOBALSINDEX);
            if (lua_istable(mState, -1) && !mAllowed.contains(std::string_view(library.name)))
                filterTable();
            lua_pop(mState, 1);
        }
        filterBasicMetatables();
        lua_settop(mState, depth);
    }

private:
    static constexpr long long cMaxVisited = 20'000'000;

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

    /// A library with what it holds. Functions of Lua are known only where the host has said so: their environments are
    /// open to scripts.
    void noteKnown() const {
        const bool isAllowed = mAllowed.contains(getKey(mState));
        if (!isKnown() || (!isAllowed && isLuaFunction()))
            return;
        keep();
        if (!lua_istable(mState, -1) || lua_rawequal(mState, -1, LUA_GLOBALSINDEX) != 0)
            return;
        filterEntries(mState, [this, isAllowed] {
            if (lua_isfunction(mState, -1) && (isAllowed || !isLuaFunction()))
                keep();
            return true;
        });
    }

    bool isLuaFunction() const { return lua_isfunction(mState, -1) && lua_iscfunction(mState, -1) == 0; }

    /// The entries of the table on top, and its metatable.
    void filterTable() {
        filterEntries(mState, [this] { return isHarmless(-2) && isHarmless(-1); });
        filterMetatable();
    }

    void filterMetatable() {
        if (!lua_getmetatable(mState, -1))
            return;
        const bool isGood = isHarmless(-1);
        lua_pop(mState, 1);
        if (isGood)
            return;
        lua_pushnil(mState);
        lua_setmetatable(mState, -2);
    }

    /// Those that all values of a type share. Texts have one of their own, which is locked.
    void filterBasicMetatables() {
        lua_pushnil(mState);
        lua_pushboolean(mState, 0);
        lua_pushnumber(mState, 0);
        lua_pushlightuserdata(mState, this);
        lua_pushcfunction(mState, [](lua_State*) { return 0; });
        lua_pushthread(mState);
        for (int nbTypes = 6; nbTypes > 0; --nbTypes) {
            filterMetatable();
            lua_pop(mState, 1);
        }
    }

    bool isIn(int table) const {
        lua_pushvalue(mState, -1);
        lua_rawget(mState, table);
        const bool isFound = lua_toboolean(mState, -1) != 0;
        lua_pop(mState, 1);
        return isFound;
    }

    /// Whether nothing unknown is to be reached from the value at `index`, counted from the top. What is found on the
    /// way stands in a table, as keys and numbered: tables may be as deep as scripts like, and in circles.
    bool isHarmless(int index) {
        lua_pushvalue(mState, index);
        lua_newtable(mState);
        lua_insert(mState, -2);
        mFound = lua_gettop(mState) - 1;
        mNbFound = 0;
        bool isGood = admit(-1);
        for (int i = 1; isGood && i <= mNbFound; ++i) {
            lua_rawgeti(mState, mFound, i);
            isGood = admitParts();
            lua_pop(mState, 1);
        }
        for (int i = 1; isGood && i <= mNbFound; ++i) {
            lua_rawgeti(mState, mFound, i);
            keep();
            lua_pop(mState, 1);
        }
        lua_settop(mState, mFound - 1);
        return isGood;
    }

    /// False when the value is none for scripts; its parts are still to be looked at.
    bool admit(int index) {
        lua_pushvalue(mState, index);
        const bool isGood = lua_isnil(mState, -1) || isIn(mKept) || isIn(mFound) || isGoodByItself();
        lua_pop(mState, 1);
        return isGood;
    }

    bool isGoodByItself() {
        switch (lua_type(mState, -1)) {
        case LUA_TFUNCTION:
            return lua_iscfunction(mState, -1) == 0 && note();
        case LUA_TTABLE:
            return note();
        case LUA_TUSERDATA:
            return isPlainValue(mState);
        default:
            return lua_type(mState, -1) != LUA_TLIGHTUSERDATA;
        }
    }

    bool note() {
        // Scripts may have left many ways to the same: what cannot be looked at in seconds is taken away.
        if (mNbVisited > cMaxVisited)
            return false;
        lua_pushvalue(mState, -1);
        lua_pushboolean(mState, 1);
        lua_rawset(mState, mFound);
        lua_pushvalue(mState, -1);
        lua_rawseti(mState, mFound, ++mNbFound);
        return true;
    }

    /// Of the table or the function of Lua on top.
    bool admitParts() {
        const int depth = lua_gettop(mState);
        if (lua_isfunction(mState, -1))
            lua_getfenv(mState, -1);
        else if (!lua_getmetatable(mState, -1))
            lua_pushnil(mState);
        bool isGood = admit(-1);
        lua_settop(mState, depth);
        if (lua_istable(mState, -1))
            filterEntries(mState, [&] {
                ++mNbVisited;
                isGood = isGood && admit(-2) && admit(-1);
                return true;
            });
        return isGood;
    }

    lua_State* mState;
    const KyScriptEngine& mEngine;
    const Names& mAllowed;
    int mKept = 0;
    int mFound = 0;
    int mNbFound = 0;
    long long mNbVisited = 0;
};

} // namespace

void kyWithholdLuaGlobals(lua_State* state, const KyScriptEngine& engine, const Names& allowed) {
    luaL_checkstack(state, LUA_MINSTACK, "too many values");
    filterLibraries(state);
    emptyLibraries(state, allowed);
    Filter(state, engine, allowed).run();
}

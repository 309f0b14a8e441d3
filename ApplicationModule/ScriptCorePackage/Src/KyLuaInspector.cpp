// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyLuaInspector_p.h"

#include "KyLuaClass_p.h"
#include "KyLuaInstance_p.h"
#include "KyLuaValueText_p.h"

#include <algorithm>
#include <tuple>

namespace {

constexpr char cMetatableName[] = "(metatable)";

/// Its address is the key, in the registry, of the table of values: reference to value and back.
char gReferencesKey = 0;

void pushReferences(lua_State* state) {
    lua_pushlightuserdata(state, &gReferencesKey);
    lua_rawget(state, LUA_REGISTRYINDEX);
    if (lua_istable(state, -1))
        return;
    lua_pop(state, 1);
    lua_newtable(state);
    lua_pushlightuserdata(state, &gReferencesKey);
    lua_pushvalue(state, -2);
    lua_rawset(state, LUA_REGISTRYINDEX);
}

KyObject* getObject(lua_State* state, int index) {
    const KyLuaInstance* instance = kyLuaToInstance(state, index);
    return instance ? instance->get() : nullptr;
}

bool isProxy(lua_State* state, int index) {
    if (lua_type(state, index) != LUA_TUSERDATA || !lua_getmetatable(state, index))
        return false;
    const bool isOne = lua_topointer(state, -1) == KyLuaShared::get(state).proxyMetatable;
    lua_pop(state, 1);
    return isOne;
}

int getProxyLength(lua_State* state, int index) {
    lua_pushvalue(state, index);
    if (!luaL_getmetafield(state, -1, "__len")) {
        lua_pop(state, 1);
        return 0;
    }
    lua_insert(state, -2);
    const bool isGood = lua_pcall(state, 1, 1, 0) == 0;
    const auto length = isGood ? static_cast<int>(lua_tointeger(state, -1)) : 0;
    lua_pop(state, 1);
    return length;
}

int getEntry(lua_State* state) {
    lua_gettable(state, 1);
    return 1;
}

int setEntry(lua_State* state) {
    lua_settable(state, 1);
    return 0;
}

int end(const KyLuaInspector::Page& page, int size) {
    return page.count > 0 && page.count < size - page.first ? page.first + page.count : size;
}

/// Of locals with one name only the innermost counts.
bool isShadowed(const KyLuaFrame& frame, const char* name, int local) {
    while (const char* other = lua_getlocal(frame.thread, &frame.record, ++local)) {
        lua_pop(frame.thread, 1);
        if (std::string_view(other) == name)
            return true;
    }
    return false;
}

/// Visits the local variables with name and number.
template <class Visit>
void forEachLocal(KyLuaFrame& frame, Visit visit) {
    const auto getName = [&frame](int local) {
        return kyLuaFindAgain(frame) ? lua_getlocal(frame.thread, &frame.record, local) : nullptr;
    };
    for (int i = 1; const char* name = getName(i); ++i) {
        lua_pop(frame.thread, 1);
        if (*name != '(' && !isShadowed(frame, name, i))
            visit(name, i);
    }
}

} // namespace

void KyLuaInspector::clear(lua_State* state) {
    mReferences.clear();
    lua_pushlightuserdata(state, &gReferencesKey);
    lua_pushnil(state);
    lua_rawset(state, LUA_REGISTRYINDEX);
}

const KyLuaReference* KyLuaInspector::find(int reference) const {
    const auto index = static_cast<std::size_t>(reference) - 1;
    return index < mReferences.size() ? &mReferences[index] : nullptr;
}

int KyLuaInspector::refer(const KyLuaReference& reference) {
    const auto found = std::find(mReferences.begin(), mReferences.end(), reference);
    const bool isKnown = reference.kind != KyLuaReference::Kind::eValue && found != mReferences.end();
    if (isKnown)
        return static_cast<int>(found - mReferences.begin()) + 1;
    mReferences.push_back(reference);
    return static_cast<int>(mReferences.size());
}

int KyLuaInspector::referToValue(lua_State* state, int index, const KyLuaReference& origin) {
    lua_pushvalue(state, index);
    pushReferences(state);
    lua_pushvalue(state, -2);
    lua_rawget(state, -2);
    auto reference = static_cast<int>(lua_tointeger(state, -1));
    lua_pop(state, 1);
    if (reference == 0) {
        reference = refer({KyLuaReference::Kind::eValue, origin.thread, origin.level});
        lua_pushvalue(state, -2);
        lua_rawseti(state, -2, reference);
        lua_pushvalue(state, -2);
        lua_pushinteger(state, reference);
        lua_rawset(state, -3);
    }
    lua_pop(state, 2);
    return reference;
}

void KyLuaInspector::pushValue(lua_State* state, int reference) const {
    pushReferences(state);
    lua_rawgeti(state, -1, reference);
    lua_remove(state, -2);
}

void KyLuaInspector::describe(lua_State* state, int index, const KyLuaReference& origin, KyScriptVariable& variable) {
    luaL_checkstack(state, LUA_MINSTACK, "too many values");
    kyLuaValueText(state, index, variable.value);
    const KyObject* object = getObject(state, index);
    variable.type = object ? object->getObjectType()->getName() : luaL_typename(state, index);
    variable.nbVariables = count(state, index);
    variable.reference = variable.nbVariables > 0 ? referToValue(state, index, origin) : 0;
}

int KyLuaInspector::countLocals(KyLuaFrame& frame) {
    int nbLocals = 0;
    forEachLocal(frame, [&nbLocals](const char*, int) { ++nbLocals; });
    return nbLocals;
}

int KyLuaInspector::countUpvalues(lua_State* state, int index) {
    if (!lua_isfunction(state, index) || lua_iscfunction(state, index))
        return 0;
    int nbUpvalues = 0;
    for (; lua_getupvalue(state, index, nbUpvalues + 1); ++nbUpvalues)
        lua_pop(state, 1);
    return nbUpvalues;
}

int KyLuaInspector::count(lua_State* state, int index) {
    lua_pushvalue(state, index);
    const int value = lua_gettop(state);
    int nbEntries = 0;
    if (lua_istable(state, value)) {
        for (lua_pushnil(state); lua_next(state, value) != 0; lua_pop(state, 1))
            ++nbEntries;
        nbEntries += lua_getmetatable(state, value);
    } else if (const KyObject* object = getObject(state, value))
        nbEntries = static_cast<int>(object->getNbAttributes());
    else if (isProxy(state, value))
        nbEntries = getProxyLength(state, value);
    lua_settop(state, value - 1);
    return nbEntries;
}

void KyLuaInspector::list(lua_State* state, int reference, KyLuaFrame& frame, Page page, Variables& variables) {
    const KyLuaReference origin = *find(reference);
    luaL_checkstack(state, LUA_MINSTACK, "too many values");
    if (origin.kind == KyLuaReference::Kind::eLocals)
        return listLocals(state, origin, frame, page, variables);
    if (origin.kind == KyLuaReference::Kind::eUpvalues)
        return listUpvalues(state, origin, frame, page, variables);
    pushValue(state, reference);
    if (lua_istable(state, -1))
        listTable(state, origin, page, variables);
    else
        listObject(state, origin, page, variables);
}

void KyLuaInspector::listLocals(lua_State* state, const KyLuaReference& origin, KyLuaFrame& frame, Page page,
                                Variables& variables) {
    int position = 0;
    const int last = end(page, countLocals(frame));
    forEachLocal(frame, [&](const char* name, int local) {
        if (position >= page.first && position < last) {
            lua_getlocal(frame.thread, &frame.record, local);
            if (frame.thread != state)
                lua_xmove(frame.thread, state, 1);
            KyScriptVariable& variable = variables.emplace_back();
            variable.name = name;
            describe(state, -1, origin, variable);
            lua_pop(state, 1);
        }
        ++position;
    });
}

void KyLuaInspector::listUpvalues(lua_State* state, const KyLuaReference& origin, KyLuaFrame& frame, Page page,
                                  Variables& variables) {
    kyLuaPushFunction(state, frame);
    const int last = end(page, countUpvalues(state, -1));
    for (int i = page.first; i < last; ++i) {
        KyScriptVariable& variable = variables.emplace_back();
        variable.name = lua_getupvalue(state, -1, i + 1);
        describe(state, -1, origin, variable);
        lua_pop(state, 1);
    }
}

void KyLuaInspector::collectKeys(lua_State* state, int table) {
    mKeys.clear();
    int position = 0;
    for (lua_pushnil(state); lua_next(state, table) != 0; lua_pop(state, 1)) {
        const bool isNumber = lua_type(state, -2) == LUA_TNUMBER;
        mKeys.push_back({!isNumber, isNumber ? lua_tonumber(state, -2) : 0, {}, position++});
        kyLuaKeyText(state, -2, mKeys.back().name);
    }
}

/// Those of the page come to their places; of a large table the others are in no order.
void KyLuaInspector::sortKeys(std::size_t first, std::size_t last) {
    const auto isBefore = [](const Key& one, const Key& other) {
        return std::tie(one.isText, one.number, one.name) < std::tie(other.isText, other.number, other.name);
    };
    const auto place = [this](std::size_t index) { return mKeys.begin() + static_cast<std::ptrdiff_t>(index); };
    if (first >= last)
        return;
    std::nth_element(mKeys.begin(), place(first), mKeys.end(), isBefore);
    std::nth_element(place(first), place(last - 1), mKeys.end(), isBefore);
    std::sort(place(first), place(last), isBefore);
}

void KyLuaInspector::listTable(lua_State* state, const KyLuaReference& origin, Page page, Variables& variables) {
    const int table = lua_gettop(state);
    collectKeys(state, table);
    const auto nbKeys = static_cast<int>(mKeys.size());
    const auto last = static_cast<std::size_t>(std::min(end(page, nbKeys + 1), nbKeys));
    sortKeys(static_cast<std::size_t>(page.first), last);
    mPlaces.clear();
    for (auto i = static_cast<std::size_t>(page.first); i < last; ++i) {
        mPlaces[mKeys[i].position] = variables.size();
        variables.emplace_back().name = std::move(mKeys[i].name);
    }
    int position = 0;
    for (lua_pushnil(state); lua_next(state, table) != 0; lua_pop(state, 1))
        if (const auto found = mPlaces.find(position++); found != mPlaces.end())
            describe(state, -1, origin, variables[found->second]);
    if (end(page, nbKeys + 1) > nbKeys && page.first <= nbKeys && lua_getmetatable(state, table)) {
        KyScriptVariable& variable = variables.emplace_back();
        variable.name = cMetatableName;
        variable.isWritable = false;
        describe(state, -1, origin, variable);
    }
}

void KyLuaInspector::listObject(lua_State* state, const KyLuaReference& origin, Page page, Variables& variables) {
    const int value = lua_gettop(state);
    const int last = end(page, count(state, value));
    for (int i = page.first; i < last; ++i) {
        KyScriptVariable& variable = variables.emplace_back();
        lua_pushcfunction(state, &getEntry);
        lua_pushvalue(state, value);
        if (const KyObject* object = getObject(state, value)) {
            const KyAttributeInterface* attribute = object->getAttribute(static_cast<unsigned>(i));
            if (!attribute)
                return;
            variable.name = attribute->getName();
            variable.isWritable = !attribute->isReadOnly();
            lua_pushlstring(state, variable.name.data(), variable.name.size());
        } else {
            variable.name = '[' + std::to_string(i) + ']';
            lua_pushinteger(state, i);
        }
        lua_pcall(state, 2, 1, 0);
        describe(state, -1, origin, variable);
        lua_settop(state, value);
    }
}

/// Pushes the key of that name of the table, or of the object, at `table`.
bool KyLuaInspector::pushKey(lua_State* state, int table, const std::string& name) {
    if (!lua_istable(state, table)) {
        if (getObject(state, table))
            lua_pushlstring(state, name.data(), name.size());
        else
            lua_pushinteger(state, std::atoi(name.c_str() + 1));
        return true;
    }
    for (lua_pushnil(state); lua_next(state, table) != 0; lua_pop(state, 1)) {
        kyLuaKeyText(state, -2, mText);
        if (mText == name) {
            lua_pop(state, 1);
            return true;
        }
    }
    return false;
}

bool KyLuaInspector::push(lua_State* state, int reference, KyLuaFrame& frame, const std::string& name) {
    const KyLuaReference::Kind kind = find(reference)->kind;
    if (kind == KyLuaReference::Kind::eLocals)
        return kyLuaPushLocal(state, frame, name);
    if (kind == KyLuaReference::Kind::eUpvalues) {
        kyLuaPushFunction(state, frame);
        return lua_getupvalue(state, -1, kyLuaFindUpvalue(state, -1, name)) != nullptr;
    }
    pushValue(state, reference);
    const int table = lua_gettop(state);
    lua_pushcfunction(state, &getEntry);
    lua_pushvalue(state, table);
    return pushKey(state, table, name) && lua_pcall(state, 2, 1, 0) == 0;
}

bool KyLuaInspector::assign(lua_State* state, int reference, KyLuaFrame& frame, const std::string& name) {
    const int value = lua_gettop(state);
    const KyLuaReference::Kind kind = find(reference)->kind;
    if (kind == KyLuaReference::Kind::eLocals)
        return kyLuaSetLocal(state, frame, name);
    if (kind == KyLuaReference::Kind::eUpvalues) {
        kyLuaPushFunction(state, frame);
        const int upvalue = kyLuaFindUpvalue(state, -1, name);
        lua_pushvalue(state, value);
        return upvalue > 0 && lua_setupvalue(state, -2, upvalue) != nullptr;
    }
    pushValue(state, reference);
    const int table = lua_gettop(state);
    lua_pushcfunction(state, &setEntry);
    lua_pushvalue(state, table);
    if (!pushKey(state, table, name))
        return false;
    lua_pushvalue(state, value);
    if (lua_istable(state, table)) {
        lua_rawset(state, table);
        return true;
    }
    return lua_pcall(state, 3, 0, 0) == 0;
}

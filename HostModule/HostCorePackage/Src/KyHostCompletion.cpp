// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyHostCompletion.h"

#include "KyLuaBinder.h"
#include "KyLuaStackScope.h"
#include "KyScriptEngine.h"

#include "KyObject.h"
#include "KyType.h"

#include <lua.hpp>

#include <algorithm>
#include <set>
#include <string_view>

namespace {

using Names = std::set<std::string>;

std::string_view toText(lua_State* state, int index) {
    std::size_t length = 0;
    const char* const text = lua_tolstring(state, index, &length);
    return {text, length};
}

/// Calls visit(key) for each text key of the table on top, the value being on top; stops when it returns true, which
/// leaves that value in the table's place. Otherwise the table is popped. Looking names up raw allocates nothing and
/// calls nothing.
template <class Visit>
bool walkTable(lua_State* state, Visit visit) {
    const int table = lua_gettop(state);
    lua_pushnil(state);
    while (lua_next(state, table) != 0) {
        if (lua_type(state, -2) == LUA_TSTRING && visit(toText(state, -2))) {
            lua_replace(state, table);
            lua_settop(state, table);
            return true;
        }
        lua_pop(state, 1);
    }
    lua_settop(state, table - 1);
    return false;
}

bool replaceByField(lua_State* state, std::string_view name) {
    return walkTable(state, [name](std::string_view key) { return key == name; });
}

KyObject* findObject(lua_State* state) {
    if (lua_type(state, -1) != LUA_TUSERDATA)
        return nullptr;
    return KyLuaBinder(state).checkUserType(lua_gettop(state), *KyObject::getType());
}

/// The object that an attribute or component of that name holds.
KyObject* findMember(const KyObject& object, const std::string& name) {
    const KyAttributeInterface* const attribute = object.getAttribute(name);
    if (!attribute)
        return object.getComponentByName(name);
    KyField value;
    attribute->getValue(object, value);
    return value.toKyObject();
}

Names getFields(const KyObject& object) {
    Names names;
    for (unsigned i = 0; i < object.getNbAttributes(); ++i)
        names.insert(object.getAttribute(i)->getName());
    return names;
}

Names getMethods(const KyObject& object) {
    Names names;
    for (const KyType* type = object.getObjectType(); type; type = type->getParent())
        for (const auto& method : type->getAllMethods())
            names.insert(method->getName() + "(");
    return names;
}

Names getKeys(lua_State* state) {
    Names names;
    walkTable(state, [&](std::string_view key) {
        const std::string name(key);
        if (KyLuaBinder::isValidLuaVariable(name))
            names.insert(lua_isfunction(state, -1) ? name + "(" : name);
        return false;
    });
    return names;
}

/// Names that may follow an object or table, reached from the global table by the path's words.
Names getNames(lua_State* state, const std::vector<std::string>& path, bool wantsMethods) {
    const KyLuaStackScope scope(state);
    if (!lua_checkstack(state, 4))
        return {};
    lua_pushvalue(state, LUA_GLOBALSINDEX);
    KyObject* object = nullptr;
    for (const std::string& name : path) {
        if (object)
            object = findMember(*object, name);
        else if (!lua_istable(state, -1) || !replaceByField(state, name))
            return {};
        else
            object = findObject(state);
        if (!object && !lua_istable(state, -1))
            return {};
    }
    if (object)
        return wantsMethods ? getMethods(*object) : getFields(*object);
    return getKeys(state);
}

} // namespace

std::vector<std::string> KyHostCompletion::complete(const std::string& word) {
    std::vector<std::string> path;
    std::size_t begin = 0;
    bool wantsMethods = false;
    for (std::size_t end = word.find_first_of(".:"); end != std::string::npos; end = word.find_first_of(".:", begin)) {
        path.push_back(word.substr(begin, end - begin));
        wantsMethods = word[end] == ':';
        begin = end + 1;
    }
    lua_State* const state = KyScriptEngine::get().editLuaState();
    if (!state)
        return {};
    const std::string_view prefix = std::string_view(word).substr(begin);
    std::vector<std::string> words;
    for (const std::string& name : getNames(state, path, wantsMethods))
        if (name.starts_with(prefix))
            words.push_back(word.substr(0, begin) + name);
    return words;
}

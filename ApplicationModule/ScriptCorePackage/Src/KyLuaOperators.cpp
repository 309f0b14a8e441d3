// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyLuaOperators_p.h"

#include <luabind/luabind.hpp>

namespace {

using luabind::detail::get_instance;
using luabind::detail::object_rep;

constexpr const char* cOperators[] = {"__add", "__sub", "__mul", "__div", "__mod", "__pow"};
constexpr char cConcat[] = "__concat";

/// Pushes a member of an operand; false, with nothing pushed, when it is no object or has no such member.
bool pushMember(lua_State* state, int operand, const char* name) {
    if (!get_instance(state, operand))
        return false;
    lua_getfield(state, operand, name);
    if (!lua_isnil(state, -1))
        return true;
    lua_pop(state, 1);
    return false;
}

/// Calls the function on top with both operands.
int callWithOperands(lua_State* state) {
    lua_insert(state, 1);
    lua_call(state, 2, 1);
    return 1;
}

/// Raises luabind's own error, for the first operand that is an object.
int failOperator(lua_State* state, const char* name) {
    const object_rep* left = get_instance(state, 1);
    const object_rep* operand = left ? left : get_instance(state, 2);
    if (!operand)
        return luaL_error(state, "no %s operator defined.", name);
    lua_pushfstring(state, "%sclass %s: no %s operator defined.", operand->is_const() ? "const " : "",
                    operand->crep()->name(), name);
    return lua_error(state);
}

/// An operator: upvalue 1 is luabind's own, upvalue 2 the name.
int runOperator(lua_State* state) {
    lua_settop(state, 2);
    if (get_instance(state, 1)) {
        lua_pushvalue(state, lua_upvalueindex(1));
        return callWithOperands(state);
    }
    const char* name = lua_tostring(state, lua_upvalueindex(2));
    return pushMember(state, 2, name) ? callWithOperands(state) : failOperator(state, name);
}

/// Pushes what the operand adds to a text; false when it has no text.
bool pushText(lua_State* state, int operand) {
    if (lua_isstring(state, operand)) {
        lua_pushvalue(state, operand);
        return true;
    }
    if (!pushMember(state, operand, "__tostring"))
        return false;
    lua_pushvalue(state, operand);
    lua_call(state, 1, 1);
    return lua_isstring(state, -1) != 0;
}

int runConcat(lua_State* state) {
    lua_settop(state, 2);
    if (pushMember(state, 1, cConcat) || pushMember(state, 2, cConcat))
        return callWithOperands(state);
    if (!pushText(state, 1) || !pushText(state, 2))
        return failOperator(state, cConcat);
    lua_concat(state, 2);
    return 1;
}

} // namespace

void kyOpenLuaOperators(lua_State* state) {
    lua_rawgeti(state, LUA_REGISTRYINDEX, luabind::detail::class_registry::get_registry(state)->cpp_instance());
    for (const char* name : cOperators) {
        lua_getfield(state, -1, name);
        lua_pushstring(state, name);
        lua_pushcclosure(state, &runOperator, 2);
        lua_setfield(state, -2, name);
    }
    lua_pushcfunction(state, &runConcat);
    lua_setfield(state, -2, cConcat);
    lua_pop(state, 1);
}

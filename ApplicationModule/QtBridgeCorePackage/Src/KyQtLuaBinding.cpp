// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyQtLuaBinding.h"

#include "KyQtConnection_p.h"
#include "KyQtLifetime_p.h"
#include "KyQtLuaClass_p.h"
#include "KyQtTypes_p.h"

#include "KyLuaBinder.h"
#include "KyLuaConnections_p.h"
#include "KyLuaValueTypes_p.h"
#include "KyScriptEngine.h"
#include "KyScriptRunner_p.h"

#include <QWidget>

#include <exception>
#include <map>

std::string KyQtLuaBinding::msDataPath;
bool KyQtLuaBinding::msIsWarning = false;

namespace {

char gGroupKey = 0;

using MakeScope = luabind::scope (*)();

constexpr MakeScope cScopes[] = {
    &kyMakeQtObjectTypes, &kyMakeQtValueTypes, &kyMakeQtWidgetType,   &kyMakeQtLayoutTypes, &kyMakeQtContainerTypes,
    &kyMakeQtTextTypes,   &kyMakeQtItemTypes,  &kyMakeQtControlTypes, &kyMakeQtTreeTypes,   &kyMakeQtStorageTypes,
    &kyMakeQtWebTypes,    &kyMakeQtAxTypes,    &kyMakeQtCasts,        &kyMakeQtFunctions,
};

/// Copies the methods in the table on top to the table below it.
void copyMethods(lua_State* state) {
    for (lua_pushnil(state); lua_next(state, -2) != 0; lua_pop(state, 1)) {
        if (lua_type(state, -2) != LUA_TSTRING || !lua_isfunction(state, -1))
            continue;
        lua_pushvalue(state, -2);
        lua_pushvalue(state, -2);
        lua_rawset(state, -6);
    }
}

using Classes = std::map<luabind::type_id, luabind::detail::class_rep*>;

const Classes& getClasses(lua_State* state) {
    return luabind::detail::class_registry::get_registry(state)->get_classes();
}

/// Scripts may call methods by the names of their classes: `QWidget.show(widget)`.
void exposeMethods(lua_State* state, const Classes& olderClasses) {
    for (const auto& [type, luaClass] : getClasses(state)) {
        if (olderClasses.contains(type))
            continue;
        luaClass->get_default_table(state);
        luaClass->get_table(state);
        copyMethods(state);
        lua_pop(state, 2);
    }
}

void bindTypes(lua_State* state, lua_State* mainState) {
    if (!kyMarkLuaGroup(state, &gGroupKey))
        return;
    KyQtConnections::install(state, mainState);
    KyLuaConnections::install(state, mainState);
    const Classes olderClasses = getClasses(state);
    for (const MakeScope makeScope : cScopes)
        luabind::module(state)[makeScope()];
    exposeMethods(state, olderClasses);
    kyCompleteLuaClasses(state);
    kySetQtGlobals(state);
}

} // namespace

void KyQtLuaBinding::initializeClass() {
    if (KyScriptEngine::find())
        bind();
}

void KyQtLuaBinding::finalizeClass() {
    msDataPath.clear();
}

void KyQtLuaBinding::bind() {
    bind(KyScriptEngine::get());
}

void KyQtLuaBinding::bind(KyScriptEngine& engine) {
    KyScriptRunner runner(engine);
    lua_State* mainState = runner.editGuard().getMainState();
    const auto bindProtected = [mainState](lua_State* state) { bindTypes(state, mainState); };
    if (!runner.run(bindProtected) && runner.isOpen())
        runner.reportInternal();
}

void KyQtLuaBinding::cpp_to_lua(KyLuaBinder& binder, QObject* object) {
    try {
        if (object)
            KyQtLifetime::add(*object, KyQtLifetime::eHanded);
        kyPushQtObject(binder.editLuaState(), object);
    } catch (const std::exception&) {
        binder.pushNil();
    }
}

void KyQtLuaBinding::cpp_to_lua(KyLuaBinder& binder, QWidget* widget) {
    cpp_to_lua(binder, static_cast<QObject*>(widget));
}

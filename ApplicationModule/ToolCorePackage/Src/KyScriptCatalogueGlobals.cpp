// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyScriptCatalogue_p.h"

#include "KyLuaInstance_p.h"
#include "KyScriptEngine.h"
#include "KyScriptTypeNames_p.h"

#include "KyType.h"

#include <algorithm>
#include <memory>
#include <set>

namespace {

using Names = std::set<std::string, std::less<>>;

struct StateCloser {
    void operator()(lua_State* state) const { lua_close(state); }
};

Names collectKeys(lua_State* state, int table) {
    Names keys;
    for (lua_pushnil(state); lua_next(state, table) != 0; lua_pop(state, 1))
        if (lua_type(state, -2) == LUA_TSTRING)
            keys.emplace(lua_tostring(state, -2));
    return keys;
}

/// The globals of Lua itself.
Names collectStandardNames() {
    const std::unique_ptr<lua_State, StateCloser> state(luaL_newstate());
    if (!state)
        return {};
    luaL_openlibs(state.get());
    return collectKeys(state.get(), LUA_GLOBALSINDEX);
}

void pushEntry(lua_State* state, int table, const std::string& name) {
    lua_pushlstring(state, name.data(), name.size());
    lua_rawget(state, table);
}

KyScriptCall makeCall(const KyFunction& function) {
    KyScriptCall call;
    for (unsigned i = 0; i < function.getNbParameters(); ++i)
        call.parameters.push_back({{}, kyGetScriptType(function.getParameter(i))});
    call.result = kyGetScriptType(function.getResult());
    return call;
}

/// The function on top of the stack; without calls when it tells nothing of itself, as Lua's own kind of function.
KyScriptFunction describeFunction(lua_State* state, const KyScriptEngine& engine, const std::string& name) {
    KyScriptFunction described{name, {}, false, kyReadScriptCalls(state, lua_gettop(state), false)};
    const auto* functions = described.calls.empty() ? engine.findFunctions(name) : nullptr;
    if (functions)
        std::ranges::transform(*functions, std::back_inserter(described.calls),
                               [](const KyFunction* function) { return makeCall(*function); });
    return described;
}

bool isNarrower(const KyObject* held, const KyType* declared) {
    return held && declared && held->getObjectType() != declared && held->getObjectType()->isA(*declared);
}

/// What the object's attributes and components hold, where that is of another class than they are declared with.
std::vector<KyScriptMember> describeHeld(const KyObject& object) {
    std::vector<KyScriptMember> members;
    const auto add = [&](const std::string& name, KyScriptMember::Kind kind, const KyObject& held, bool isReadOnly) {
        members.push_back({name, kind, kyMakeScriptTypeName(held.getObjectType()->getName()), isReadOnly, {}});
    };
    for (unsigned i = 0; i < object.getNbAttributes(); ++i) {
        const KyAttributeInterface& attribute = *object.getAttribute(i);
        if (attribute.getKind() == KyAttributeInterface::eContainer || !attribute.getObjectType())
            continue;
        KyField value;
        attribute.getValue(object, value);
        if (const KyObject* const held = value.toKyObject(); isNarrower(held, attribute.getObjectType()))
            add(attribute.getName(), KyScriptMember::eAttribute, *held, attribute.isReadOnly());
    }
    for (const KyComponent& component : object.getObjectType()->getComponents())
        if (const KyObject* const held = component.get(object); isNarrower(held, component.objectType()))
            add(component.name, KyScriptMember::eComponent, *held, true);
    return members;
}

/// The globals of one state while they are sorted into the catalogue.
class GlobalsReader {
public:
    GlobalsReader(lua_State* state, const KyScriptEngine& engine, KyScriptCatalogue& catalogue)
        : mState(state)
        , mEngine(engine)
        , mCatalogue(catalogue) {}

    void read() {
        const Names standard = collectStandardNames();
        luaL_checkstack(mState, LUA_MINSTACK, "too many values");
        for (const std::string& name : collectKeys(mState, LUA_GLOBALSINDEX)) {
            if (standard.contains(name))
                continue;
            pushEntry(mState, LUA_GLOBALSINDEX, name);
            addGlobal(name);
            lua_pop(mState, 1);
        }
    }

private:
    KyScriptClass* findClass(std::string_view name) { return const_cast<KyScriptClass*>(mCatalogue.findClass(name)); }

    void addGlobal(const std::string& name) {
        switch (lua_type(mState, -1)) {
        case LUA_TFUNCTION:
            mCatalogue.functions.push_back(describeFunction(mState, mEngine, name));
            narrowCast(mCatalogue.functions.back());
            break;
        case LUA_TTABLE:
            addTable(name);
            break;
        case LUA_TUSERDATA:
            addUserdata(name);
            break;
        default:
            mCatalogue.globals.push_back({name, lua_typename(mState, lua_type(mState, -1)), {}});
        }
    }

    /// Casts are called after the class that they give.
    void narrowCast(KyScriptFunction& function) {
        constexpr std::string_view cPrefix = "to";
        const std::string_view name = function.name;
        if (!name.starts_with(cPrefix) || !findClass(name.substr(cPrefix.size())))
            return;
        for (KyScriptCall& call : function.calls)
            if (call.result == "QObject?")
                call.result = std::string(name.substr(cPrefix.size())) + '?';
    }

    void addTable(const std::string& name) {
        KyScriptClass* const known = KyType::getType(name) ? findClass(kyMakeScriptTypeName(name)) : nullptr;
        if (known) {
            known->isGlobal = true;
            return;
        }
        KyScriptClass table;
        table.name = kyMakeScriptTypeName(name);
        table.group = KyScriptClass::eTables;
        table.isGlobal = true;
        const int index = lua_gettop(mState);
        for (const std::string& key : collectKeys(mState, index)) {
            pushEntry(mState, index, key);
            addEntry(key, table);
            lua_pop(mState, 1);
        }
        // A class of another kind has the name; its table is only a part of it.
        if (KyScriptClass* const other = findClass(table.name)) {
            std::ranges::move(table.functions, std::back_inserter(other->functions));
            std::ranges::move(table.constants, std::back_inserter(other->constants));
            other->isGlobal = true;
        } else {
            mCatalogue.classes.push_back(std::move(table));
        }
    }

    void addEntry(const std::string& key, KyScriptClass& table) {
        if (lua_isfunction(mState, -1))
            table.functions.push_back(describeFunction(mState, mEngine, key));
        else if (lua_type(mState, -1) == LUA_TNUMBER)
            table.constants.push_back({key, static_cast<int>(lua_tonumber(mState, -1))});
        else
            table.members.push_back({key, KyScriptMember::eProperty, "any", false, {}});
    }

    void addUserdata(const std::string& name) {
        const int index = lua_gettop(mState);
        if (const std::string luaClass = kyFindScriptClass(mState, index); !luaClass.empty()) {
            addClass(name, luaClass);
            return;
        }
        const KyLuaInstance* const instance = kyLuaToInstance(mState, index);
        KyObject* const object = instance ? instance->get() : nullptr;
        std::string type =
            object ? kyMakeScriptTypeName(object->getObjectType()->getName()) : kyFindScriptClassOf(mState, index);
        KyScriptGlobal& global =
            mCatalogue.globals.emplace_back(KyScriptGlobal{name, type.empty() ? "any" : std::move(type), {}});
        if (object)
            global.members = describeHeld(*object);
    }

    void addClass(const std::string& name, const std::string& luaClass) {
        KyScriptClass* const found = findClass(luaClass);
        if (found && kyMakeScriptTypeName(name) == luaClass)
            found->isGlobal = true;
        else if (found)
            mCatalogue.aliases.push_back({name, luaClass});
    }

    lua_State* mState;
    const KyScriptEngine& mEngine;
    KyScriptCatalogue& mCatalogue;
};

} // namespace

void kyCatalogueGlobals(lua_State* state, const KyScriptEngine& engine, KyScriptCatalogue& catalogue) {
    GlobalsReader(state, engine, catalogue).read();
}

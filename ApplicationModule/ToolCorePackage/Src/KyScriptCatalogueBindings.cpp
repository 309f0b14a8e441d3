// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyScriptCatalogue_p.h"

#include "KyScriptTypeNames_p.h"

#include "KyLuaStackScope.h"

#include <luabind/luabind.hpp>
#include <luabind/make_function.hpp>

#include <algorithm>
#include <cctype>
#include <map>
#include <string>

namespace {

using luabind::detail::class_rep;
using luabind::detail::function_object;

/// Stands in signatures where the name does; in no type's name.
constexpr char cName[] = "\001";
constexpr std::string_view cConstructor = "__init";
constexpr std::string_view cOperators[] = {"__add", "__sub", "__mul", "__div", "__mod", "__pow", "__unm", "__concat"};

using Constants = std::map<const char*, int, luabind::detail::ltstr>;

/// luabind tells the value of a constant whose name is known, but not the names. An explicit instantiation may name
/// what is private.
template <class Tag, Constants class_rep::*cMember>
struct ConstantsAccess {
    friend const Constants& getConstants(const class_rep& luaClass, Tag) { return luaClass.*cMember; }
};
struct ConstantsTag {};
const Constants& getConstants(const class_rep& luaClass, ConstantsTag);
template struct ConstantsAccess<ConstantsTag, &class_rep::m_static_constants>;

/// With room for a few values.
KyLuaStackScope openScope(lua_State* state) {
    luaL_checkstack(state, LUA_MINSTACK, "too many values");
    return KyLuaStackScope(state);
}

bool isQtName(std::string_view name) {
    return name.size() > 1 && name[0] == 'Q' && std::isupper(static_cast<unsigned char>(name[1]));
}

/// Visits the entries of the table at `table` whose keys are texts in the order of their keys, the value on top.
template <class Visit>
void forEachEntry(lua_State* state, int table, Visit visit) {
    std::vector<std::string> keys;
    for (lua_pushnil(state); lua_next(state, table) != 0; lua_pop(state, 1))
        if (lua_type(state, -2) == LUA_TSTRING)
            keys.emplace_back(lua_tostring(state, -2));
    std::ranges::sort(keys);
    for (const std::string& key : keys) {
        const KyLuaStackScope scope = openScope(state);
        lua_pushlstring(state, key.data(), key.size());
        lua_rawget(state, table);
        visit(key);
    }
}

std::string getName(const class_rep& luaClass) {
    return kyMakeScriptTypeName(luaClass.name() ? luaClass.name() : "");
}

/// One class while it is described; its two tables are on the stack.
class ClassReader {
public:
    ClassReader(lua_State* state, const class_rep& luaClass, KyScriptClass& described)
        : mState(state)
        , mClass(luaClass)
        , mDescribed(described) {}

    void read() {
        const KyLuaStackScope scope = openScope(mState);
        mClass.get_table(mState);
        mMembers = lua_gettop(mState);
        mClass.get_default_table(mState);
        mStatics = lua_gettop(mState);
        forEachEntry(mState, mMembers, [this](const std::string& name) { addMember(name); });
        forEachEntry(mState, mStatics, [this](const std::string& name) { addStatic(name); });
        addConstants();
        addJoining();
    }

private:
    /// Whether the value on top came from a base.
    bool isInherited(const std::string& name) const {
        const KyLuaStackScope scope = openScope(mState);
        const int value = lua_gettop(mState);
        return std::ranges::any_of(mClass.bases(), [&](const class_rep* base) {
            base->get_table(mState);
            lua_pushlstring(mState, name.data(), name.size());
            lua_rawget(mState, -2);
            return lua_rawequal(mState, value, -1) != 0;
        });
    }

    void addMember(const std::string& name) {
        if (isInherited(name))
            return;
        if (lua_tocfunction(mState, -1) == &luabind::detail::property_tag)
            addProperty(name);
        else if (name == cConstructor)
            addConstructors();
        else if (name.starts_with("__"))
            addMetamethod(name);
        else
            mDescribed.functions.push_back({name, {}, true, kyReadScriptCalls(mState, lua_gettop(mState), true)});
    }

    void addProperty(const std::string& name) {
        const int property = lua_gettop(mState);
        KyScriptMember& member = mDescribed.members.emplace_back();
        member.name = name;
        member.kind = KyScriptMember::eProperty;
        member.isReadOnly = !lua_getupvalue(mState, property, 2) || !lua_isfunction(mState, -1);
        lua_settop(mState, property);
        if (lua_getupvalue(mState, property, 1)) {
            const auto calls = kyReadScriptCalls(mState, lua_gettop(mState), true);
            member.type = calls.empty() ? "any" : calls.front().result;
        }
    }

    void addConstructors() {
        mDescribed.constructors = kyReadScriptCalls(mState, lua_gettop(mState), true);
        for (KyScriptCall& call : mDescribed.constructors)
            call.result.clear();
    }

    void addMetamethod(const std::string& name) {
        const auto calls = kyReadScriptCalls(mState, lua_gettop(mState), false);
        const bool isOperator = std::ranges::find(cOperators, name) != std::end(cOperators);
        if (!isOperator || calls.empty())
            mDescribed.metamethods.push_back(name);
        for (const KyScriptCall& call : calls)
            if (isOperator)
                addOperator(name, call);
    }

    /// The other operand may stand on either side.
    void addOperator(const std::string& name, const KyScriptCall& call) {
        const auto& operands = call.parameters;
        const bool isUnary = name == "__unm" || operands.size() < 2;
        const bool isLeft = !operands.empty() && operands.front().type == mDescribed.name;
        KyScriptOperator entry{name, isUnary ? std::string() : operands[isLeft ? 1 : 0].type, call.result};
        const bool isKnown = std::ranges::any_of(mDescribed.operators, [&](const KyScriptOperator& other) {
            return other.name == entry.name && other.operand == entry.operand;
        });
        if (!isKnown)
            mDescribed.operators.push_back(std::move(entry));
    }

    /// Whatever has a text is joined by it, which the metatable of all values sees to.
    void addJoining() {
        constexpr const char* cJoin = "__concat";
        const bool hasText = std::ranges::find(mDescribed.metamethods, "__tostring") != mDescribed.metamethods.end();
        if (hasText &&
            std::ranges::find(mDescribed.operators, cJoin, &KyScriptOperator::name) == mDescribed.operators.end())
            mDescribed.operators.push_back({cJoin, "any", "string"});
    }

    /// Methods may stand among the static functions too, since scripts call them by the names of classes.
    void addStatic(const std::string& name) {
        const int value = lua_gettop(mState);
        lua_pushlstring(mState, name.data(), name.size());
        lua_rawget(mState, mMembers);
        if (!lua_isnil(mState, -1) || !lua_isfunction(mState, value))
            return;
        mDescribed.functions.push_back({name, {}, false, kyReadScriptCalls(mState, value, false)});
    }

    void addConstants() {
        for (const auto& [name, value] : getConstants(mClass, ConstantsTag()))
            if (!isInherited(name, value))
                mDescribed.constants.push_back({name, value});
        std::ranges::stable_sort(mDescribed.constants, {}, &KyScriptConstant::value);
    }

    bool isInherited(const char* name, int value) const {
        return std::ranges::any_of(mClass.bases(), [&](const class_rep* base) {
            const Constants& constants = getConstants(*base, ConstantsTag());
            const auto found = constants.find(name);
            return found != constants.end() && found->second == value;
        });
    }

    lua_State* mState;
    const class_rep& mClass;
    KyScriptClass& mDescribed;
    int mMembers = 0;
    int mStatics = 0;
};

KyScriptClass describe(lua_State* state, const class_rep& luaClass) {
    KyScriptClass described;
    described.name = getName(luaClass);
    described.group = isQtName(described.name) ? KyScriptClass::eQt : KyScriptClass::eValues;
    if (!luaClass.bases().empty())
        described.parent = getName(*luaClass.bases().front());
    ClassReader(state, luaClass, described).read();
    return described;
}

} // namespace

void kyCatalogueBindings(lua_State* state, KyScriptCatalogue& catalogue) {
    for (const auto& [type, luaClass] : luabind::detail::class_registry::get_registry(state)->get_classes())
        if (luaClass->name() && luaClass->get_class_type() == class_rep::cpp_class)
            catalogue.classes.push_back(describe(state, *luaClass));
}

std::vector<KyScriptCall> kyReadScriptCalls(lua_State* state, int index, bool isMethod) {
    std::vector<KyScriptCall> calls;
    if (!lua_iscfunction(state, index) || !luabind::detail::is_luabind_function(state, index))
        return calls;
    const KyLuaStackScope scope = openScope(state);
    lua_getupvalue(state, index, 1);
    const function_object* function = *static_cast<function_object**>(lua_touserdata(state, -1));
    for (; function; function = function->next) {
        function->format_signature(state, cName);
        calls.push_back(kyParseScriptCall(lua_tostring(state, -1), cName, isMethod));
        lua_pop(state, 1);
    }
    std::ranges::reverse(calls);
    return calls;
}

std::string kyFindScriptClassOf(lua_State* state, int index) {
    const luabind::detail::object_rep* const object = luabind::detail::get_instance(state, index);
    return object && object->crep() ? getName(*object->crep()) : std::string();
}

std::string kyFindScriptClass(lua_State* state, int index) {
    if (lua_type(state, index) != LUA_TUSERDATA || !luabind::detail::is_class_rep(state, index))
        return {};
    return getName(*static_cast<const class_rep*>(lua_touserdata(state, index)));
}

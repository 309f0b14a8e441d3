// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyScriptEngine.h"

#include "KyLuaClass_p.h"
#include "KyLuaConverters_p.h"
#include "KyLuaInstance_p.h"
#include "KyScriptFunctions_p.h"
#include "KyScriptPublications_p.h"
#include "KyScriptRunner_p.h"

#include "KyRegexp.h"
#include "KyType.h"

#include <algorithm>
#include <array>

namespace {

/// "in" stands twice and "nil" not at all; hosts rely on the list as it is.
constexpr std::array cLuaKeywords{"and",  "break", "do",    "else", "elseif", "end",  "false",  "for",    "function",
                                  "if",   "in",    "local", "in",   "not",    "or",   "repeat", "return", "then",
                                  "true", "until", "while", "os",   "debug",  "math", "package"};

bool isPublicationName(const std::string& name) {
    static const KyRegexp cExpression("[a-zA-Z_][a-zA-Z0-9_]*");
    if (name.size() > KyRegexp::cMaxTextLength || !cExpression.exactMatch(name))
        return false;
    return std::find(cLuaKeywords.begin(), cLuaKeywords.end(), name) == cLuaKeywords.end();
}

} // namespace

void KyScriptEngine::fillLuaKeywords() {
    msLuaKeywords.assign(cLuaKeywords.begin(), cLuaKeywords.end());
}

void KyScriptEngine::setLuaVariable(const std::string& name, const KyField& value) {
    KyScriptRunner runner(*this);
    const auto set = [&](lua_State* state) {
        lua_pushlstring(state, name.data(), name.size());
        kyLuaPushField(state, value);
        lua_rawset(state, LUA_GLOBALSINDEX);
    };
    if (!runner.run(set) && runner.isOpen())
        runner.report();
}

void KyScriptEngine::removeLuaVariable(const std::string& name) {
    setLuaVariable(name, KyField());
}

int KyScriptEngine::bindInstance(KyObject* object, const std::string& name) {
    if (!object || mIsClosing || !isPublicationName(name))
        return eInvalidArgument;
    return mPublications->publish(object, name);
}

int KyScriptEngine::unbindInstance(KyObject* object) {
    return mPublications->withdraw(object);
}

int KyScriptEngine::unbindInstance(const std::string& name) {
    return unbindInstance(mPublications->find(name));
}

bool KyScriptEngine::isInstanceBound(KyObject* object, std::string& name) const {
    const auto& names = mPublications->getAll();
    const auto found = names.find(object);
    if (found == names.end())
        return false;
    name = found->second;
    return true;
}

KyObject* KyScriptEngine::getInstance(const std::string& name) const {
    return mPublications->find(name);
}

int KyScriptEngine::bindFunction(const std::string& name, KyFunction* function) {
    if (!function || !isPublicationName(name))
        return eInvalidArgument;
    if (mFunctions->contains(function))
        return eAlreadyBound;
    KyScriptRunner runner(*this);
    const auto set = [&name](lua_State* state) {
        lua_pushlstring(state, name.data(), name.size());
        KyScriptFunctions::pushClosure(state, name);
        lua_rawset(state, LUA_GLOBALSINDEX);
    };
    if (!runner.run(set)) {
        if (runner.isOpen())
            runner.reportInternal();
        return eInternalError;
    }
    mFunctions->add(name, std::unique_ptr<KyFunction>(function));
    return eBound;
}

const std::vector<const KyFunction*>* KyScriptEngine::findFunctions(std::string_view name) const {
    return mFunctions->find(name);
}

bool KyScriptEngine::bindClass(const KyType& type) {
    KyScriptRunner runner(*this);
    bool isBound = false;
    if (!runner.run([&](lua_State* state) { isBound = kyBindLuaClass(state, type, *this); }) && runner.isOpen())
        runner.reportInternal();
    return isBound;
}

void KyScriptEngine::bindAllClasses() {
    for (unsigned i = 0; i < KyType::getNbTypes(); ++i)
        if (const KyType* type = KyType::getType(i))
            bindClass(*type);
}

bool KyScriptEngine::isClassBound(const KyType& type) const {
    return std::find(mBoundClasses.begin(), mBoundClasses.end(), &type) != mBoundClasses.end();
}

void KyScriptEngine::addBoundClass(const KyType& type) {
    if (!isClassBound(type))
        mBoundClasses.push_back(&type);
}

bool KyScriptEngine::getBoundTypeName(const std::type_info* typeInfo, std::string& name) const {
    const KyType* type = typeInfo ? KyType::getType(*typeInfo) : nullptr;
    if (!type || !isClassBound(*type))
        return false;
    name = type->getName();
    return true;
}

void KyScriptEngine::typeRemovedSlot(const KyType* type) {
    std::erase(mBoundClasses, type);
    KyScriptRunner runner(*this);
    const auto unbind = [type](lua_State* state) { kyUnbindLuaClass(state, *type); };
    if (!runner.run(unbind) && runner.isOpen())
        runner.reportInternal();
}

int KyScriptEngine::defaultInstanceCreator(lua_State* state) {
    return kyLuaCreateInstance(state);
}

int KyScriptEngine::defaultInstanceDestructor(lua_State* state) {
    return kyLuaDestroyInstance(state);
}

int KyScriptEngine::defaultInstanceGarbageCollection(lua_State* state) {
    return kyLuaCollectInstance(state);
}

int KyScriptEngine::fallbackCreatorConstructor(lua_State* state) {
    return kyLuaFallbackConstructor(state);
}

int KyScriptEngine::fallbackCreatorFail(lua_State* state) {
    return kyLuaFallbackFail(state);
}

bool KyScriptEngine::findAndCallConstructor(lua_State* state, const KyType* type, KyField& result) {
    return kyFindAndCallConstructor(state, type, result);
}

// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyScriptEngine.h"

#include "KyCoroutineTable_p.h"
#include "KyLuaCall_p.h"
#include "KyLuaVariables_p.h"
#include "KyScriptDebugger_p.h"
#include "KyScriptSandbox_p.h"

#include "KyDynamicObject.h"

#include <algorithm>
#include <vector>

namespace {

constexpr char cLocalsCategory[] = "category=Locals;";
constexpr char cGlobalsCategory[] = "category=Globals;";

/// "Locals" of "category=Locals;".
std::string_view getCategoryName(std::string_view category) {
    constexpr std::string_view key = "category=";
    if (!category.starts_with(key))
        return {};
    category.remove_prefix(key.size());
    return category.substr(0, category.find(';'));
}

void removeOthers(KyDynamicObject& entity, const std::string& category, const KyLuaVariables& variables) {
    std::vector<std::string> gone;
    for (unsigned i = 0; i < entity.getNbAttributes(); ++i) {
        const KyAttributeInterface* attribute = std::as_const(entity).getAttribute(i);
        if (attribute->getMetadata("category") == getCategoryName(category) &&
            !variables.contains(attribute->getName()))
            gone.push_back(attribute->getName());
    }
    for (const std::string& name : gone)
        entity.removeAttribute(name, getCategoryName(category));
}

} // namespace

void KyScriptEngine::setHook() {
    mHasHook = true;
    mScriptDebugger->mPrivate->isHookBorrowed = false;
    installHook();
}

void KyScriptEngine::removeHook() {
    mHasHook = false;
    mScriptDebugger->mPrivate->forgetStep();
    installHook();
}

/// One for all that want events.
void KyScriptEngine::installHook() {
    const int wanted = mHasHook ? LUA_MASKCALL | LUA_MASKLINE : 0;
    const int mask = mSandbox->isEnabled() ? wanted | LUA_MASKCOUNT : wanted;
    mCoroutines->setHook(mask != 0 ? &KyScriptEngine::hook : nullptr, mask, KyLuaMemory::cMaxInterval);
}

void KyScriptEngine::hook(lua_State* state, lua_Debug* record) {
    KyScriptDebugger::Private::handleEvent(state, record);
}

bool KyScriptEngine::isStopped() const {
    return mScriptDebugger->isStopped();
}

KyDynamicObject* KyScriptEngine::getDebugEntity() const {
    if (mDebugEntity)
        mScriptDebugger->mPrivate->refreshEntity();
    return mDebugEntity.get();
}

bool KyScriptEngine::needToBreak(const std::string& chunkName, int line) const {
    return hasBreakpoint(chunkName, line);
}

bool KyScriptEngine::hasBreakpoint(std::string_view chunkName, int line) const {
    const auto found = mBreakpoints.find(chunkName);
    return found != mBreakpoints.end() &&
           std::find(found->second.begin(), found->second.end(), line) != found->second.end();
}

void KyScriptEngine::clearBreakpoints(const std::string& chunkName) {
    mScriptDebugger->mPrivate->setLines(chunkName, {});
}

void KyScriptEngine::getLocalVariables(lua_State* state, lua_Debug* record) {
    fileLocals(state, state, *record);
}

void KyScriptEngine::fileLocals(lua_State* state, lua_State* thread, const lua_Debug& record) {
    KyLuaVariables variables;
    KyLuaFailure failure;
    if (kyProtectedCall(
            state, [&](lua_State*) { kyCollectLocals(thread, &record, variables); }, failure))
        fileVariables(variables, cLocalsCategory);
}

void KyScriptEngine::getGlobalVariables(lua_State* state, lua_Debug*) {
    KyLuaVariables variables;
    KyLuaFailure failure;
    if (kyProtectedCall(
            state, [&](lua_State* inner) { kyCollectGlobals(inner, variables); }, failure))
        fileVariables(variables, cGlobalsCategory);
}

void KyScriptEngine::fileVariables(const std::map<std::string, KyField, std::less<>>& variables,
                                   const std::string& category) {
    if (!mDebugEntity)
        return;
    removeOthers(*mDebugEntity, category, variables);
    for (const auto& [name, value] : variables)
        addOrEditLuaDebuggerParameter(name, value, category);
}

const KyAttributeInterface* KyScriptEngine::getOrCreateLuaDebuggerParameter(const std::string& name,
                                                                            const std::string& category) {
    if (!mDebugEntity)
        return nullptr;
    if (const KyAttributeInterface* attribute = mDebugEntity->findAttribute(name, getCategoryName(category)))
        return attribute;
    return mDebugEntity->addAttribute(name, KyField(""), category);
}

const KyAttributeInterface* KyScriptEngine::addOrEditLuaDebuggerParameter(const std::string& name, const KyField& value,
                                                                          const std::string& category) {
    if (!mDebugEntity || !value.isValid())
        return nullptr;
    const auto categoryName = getCategoryName(category);
    const KyAttributeInterface* attribute = mDebugEntity->findAttribute(name, categoryName);
    if (!attribute)
        return mDebugEntity->addAttribute(name, value, category);
    KyField present;
    if (attribute->getValue(*mDebugEntity, present) && present == value)
        return attribute;
    if (attribute->getValueKind() == value.getKind()) {
        attribute->setValue(*mDebugEntity, value);
        return mDebugEntity->findAttribute(name, categoryName);
    }
    // An attribute keeps its type, so a value of another type needs a new one.
    mDebugEntity->removeAttribute(name, categoryName);
    return mDebugEntity->addAttribute(name, value, category);
}

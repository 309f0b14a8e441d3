// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyScriptFunctions_p.h"

#include "KyLuaCall_p.h"
#include "KyLuaConverters_p.h"
#include "KyLuaScratch_p.h"
#include "KyScriptEngine.h"

#include <algorithm>
#include <exception>
#include <span>
#include <utility>

namespace {

using Overloads = std::span<const KyFunction* const>;

/// A single function says which kinds it wants; several are chosen by what the arguments are.
const KyFunction* selectFunction(lua_State* state, Overloads overloads, std::span<KyField> arguments) {
    const bool isSingle = overloads.size() == 1 && overloads.front()->getNbParameters() == arguments.size();
    for (unsigned i = 0; i < arguments.size(); ++i)
        if (isSingle)
            kyLuaReadField(state, static_cast<int>(i + 1), overloads.front()->getParameter(i).kind, arguments[i]);
        else
            arguments[i] = kyLuaCheckField(state, static_cast<int>(i + 1));
    return kySelectFunction(overloads, arguments);
}

int reportMismatch(Overloads overloads, std::string_view name, KyLuaErrorText& error) {
    std::string signatures;
    for (const KyFunction* function : overloads)
        signatures += (signatures.empty() ? "" : " or ") + function->getSignature();
    return error.set({"error in invoke for type ", name, ": the arguments do not fit ", signatures});
}

int callOverloads(lua_State* state, Overloads overloads, std::string_view name, KyLuaErrorText& error) {
    const auto nbArguments = static_cast<std::size_t>(lua_gettop(state));
    const KyLuaScratch scratch(nbArguments + 1);
    const auto arguments = scratch.getFields().first(nbArguments);
    KyField& result = scratch.getFields().back();
    const KyFunction* function = selectFunction(state, overloads, arguments);
    if (!function || !function->invoke(nullptr, arguments, result))
        return reportMismatch(overloads, name, error);
    return kyLuaPushResult(state, result);
}

int callFunction(lua_State* state, KyLuaErrorText& error) {
    std::size_t size = 0;
    const char* bytes = lua_tolstring(state, lua_upvalueindex(1), &size);
    const std::string_view name(bytes, size);
    const KyScriptEngine* engine = kyLuaEngine(state);
    const auto* overloads = engine ? engine->findFunctions(name) : nullptr;
    if (!overloads)
        return error.set("invalid method");
    try {
        return callOverloads(state, *overloads, name, error);
    } catch (const std::exception& exception) {
        return error.set({"error in invoke for type ", name, ": ", exception.what()});
    }
}

} // namespace

bool KyScriptFunctions::contains(const KyFunction* function) const {
    return std::any_of(mRecords.begin(), mRecords.end(), [function](const auto& entry) {
        const auto& overloads = entry.second.overloads;
        return std::find(overloads.begin(), overloads.end(), function) != overloads.end();
    });
}

void KyScriptFunctions::add(const std::string& name, std::unique_ptr<KyFunction> function) {
    Record& record = mRecords[name];
    record.overloads.push_back(function.get());
    record.functions.push_back(std::move(function));
}

const std::vector<const KyFunction*>* KyScriptFunctions::find(std::string_view name) const {
    const auto found = mRecords.find(name);
    return found == mRecords.end() ? nullptr : &found->second.overloads;
}

KyScriptFunctions::Records KyScriptFunctions::takeAll() {
    return std::exchange(mRecords, {});
}

void KyScriptFunctions::pushClosure(lua_State* state, const std::string& name) {
    lua_pushlstring(state, name.data(), name.size());
    lua_pushcclosure(state, &kyLuaFunction<&callFunction>, 1);
}

// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyLuaMethod_p.h"

#include "KyLuaConverters_p.h"
#include "KyLuaInstance_p.h"
#include "KyScriptSandbox_p.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <new>
#include <string>
#include <vector>

namespace {

/// Upvalue of a method closure: the class, and behind it the pointers to the overloads.
struct MethodRecord {
    KyLuaClass* luaClass;
    std::size_t nbOverloads;
    /// Of a function without overloads that needs no fields; else null.
    KyFunction::NumberCall numberCall;
    int nbNumbers;

    std::span<const KyFunction* const> getOverloads() const {
        return {reinterpret_cast<const KyFunction* const*>(this + 1), nbOverloads};
    }
};

constexpr std::size_t cNbInlineArguments = 4;

std::string describe(std::span<const KyFunction* const> overloads) {
    std::string text;
    for (const KyFunction* function : overloads) {
        if (!text.empty())
            text += " or ";
        text += function->getSignature();
    }
    return text;
}

int reportMismatch(std::span<const KyFunction* const> overloads, std::string_view typeName, KyLuaErrorText& error) {
    return error.set({"error in invoke for type ", typeName, ": the arguments do not fit ", describe(overloads)});
}

/// One function: the arguments are read as it wants them, so there is nothing to choose.
int invokeOnly(lua_State* state, std::span<const KyFunction* const> overloads, KyObject* object, int first,
               std::span<KyField> arguments, std::string_view typeName, KyLuaErrorText& error) {
    const KyFunction& function = *overloads.front();
    if (function.getNbParameters() != arguments.size())
        return reportMismatch(overloads, typeName, error);
    for (unsigned i = 0; i < arguments.size(); ++i)
        kyLuaReadField(state, first + static_cast<int>(i), function.getParameter(i).kind, arguments[i]);
    KyField result;
    if (!function.invoke(object, arguments, result)) {
        if (function.match(arguments) < 0)
            return reportMismatch(overloads, typeName, error);
        return error.set({"error in invoke for type ", typeName});
    }
    return kyLuaPushResult(state, result);
}

int invokeBest(lua_State* state, std::span<const KyFunction* const> overloads, KyObject* object, int first,
               std::span<KyField> arguments, std::string_view typeName, KyLuaErrorText& error) {
    for (std::size_t i = 0; i < arguments.size(); ++i)
        arguments[i] = kyLuaCheckField(state, first + static_cast<int>(i));
    const KyFunction* function = kySelectFunction(overloads, arguments);
    if (!function)
        return reportMismatch(overloads, typeName, error);
    KyField result;
    if (!function->invoke(object, arguments, result))
        return error.set({"error in invoke for type ", typeName});
    return kyLuaPushResult(state, result);
}

int invokeWith(lua_State* state, std::span<const KyFunction* const> overloads, KyObject* object, int first,
               std::span<KyField> arguments, std::string_view typeName, KyLuaErrorText& error) {
    return overloads.size() == 1 ? invokeOnly(state, overloads, object, first, arguments, typeName, error)
                                 : invokeBest(state, overloads, object, first, arguments, typeName, error);
}

/// Calls without fields when all arguments are numbers; `nbResults` is -1 when nothing was called.
void callWithNumbers(lua_State* state, const MethodRecord& record, KyObject* object, int& nbResults) {
    std::array<double, KyFunction::cMaxNumberParameters> numbers;
    for (int i = 0; i < record.nbNumbers; ++i) {
        if (lua_type(state, i + 2) != LUA_TNUMBER)
            return;
        numbers[static_cast<std::size_t>(i)] = lua_tonumber(state, i + 2);
    }
    const KyLuaRunning runningThread(state);
    double result = 0;
    nbResults = record.numberCall(*record.getOverloads().front(), object, numbers.data(), result);
    if (nbResults > 0)
        lua_pushnumber(state, result);
}

int failWithException(std::string_view typeName, std::string_view what, KyLuaErrorText& error) {
    return error.set({"error in invoke for type ", typeName, ": ", what});
}

const MethodRecord* upvalueRecord(lua_State* state) {
    const auto* record = static_cast<const MethodRecord*>(lua_touserdata(state, lua_upvalueindex(1)));
    return record && !record->luaClass->isDropped ? record : nullptr;
}

int callMethod(lua_State* state, KyLuaErrorText& error) {
    const MethodRecord* record = upvalueRecord(state);
    if (!record)
        return error.set("invalid method");
    const auto* instance = static_cast<const KyLuaInstance*>(lua_touserdata(state, 1));
    const int nbArguments = lua_gettop(state) - 1;
    if (!instance || !lua_getmetatable(state, 1))
        return error.set("invoke(): invalid object");
    const void* metatable = lua_topointer(state, -1);
    const KyLuaClass* luaClass = metatable == record->luaClass->metatable
                                     ? record->luaClass
                                     : record->luaClass->shared->findByMetatable(metatable);
    lua_settop(state, nbArguments + 1);
    KyObject* object = luaClass ? instance->get() : nullptr;
    if (!object)
        return error.set("invoke(): invalid object");
    if (luaClass != record->luaClass && !luaClass->type->isA(*record->luaClass->type))
        return error.set({"error in invoke: invalid type, ", luaClass->type->getName()});
    const KyLuaRunningMethod running(*object, *instance->liveness, *luaClass);
    if (record->numberCall && record->nbNumbers == nbArguments) {
        try {
            int nbResults = -1;
            callWithNumbers(state, *record, object, nbResults);
            if (nbResults >= 0)
                return nbResults;
        } catch (const std::exception& exception) {
            return failWithException(record->luaClass->type->getName(), exception.what(), error);
        } catch (...) {
            return failWithException(record->luaClass->type->getName(), "unknown C++ exception", error);
        }
    }
    return kyLuaInvoke(state, record->getOverloads(), object, 2, record->luaClass->type->getName(), error);
}

/// Before anything stands on the C++ stack: it may raise an error.
void checkCall(lua_State* state) {
    const MethodRecord* const record = upvalueRecord(state);
    if (record && record->luaClass->shared->isSandboxed) [[unlikely]]
        KyScriptSandbox::Private::checkCall(state, *record->luaClass, *record->getOverloads().front());
}

int callMethodClosure(lua_State* state) {
    checkCall(state);
    KyLuaErrorText error;
    const int nbResults = callMethod(state, error);
    return nbResults >= 0 ? nbResults : error.raise(state);
}

int callStaticClosure(lua_State* state) {
    checkCall(state);
    KyLuaErrorText error;
    const MethodRecord* record = upvalueRecord(state);
    const int nbResults =
        record ? kyLuaInvoke(state, record->getOverloads(), nullptr, 1, record->luaClass->type->getName(), error)
               : error.set("invalid method");
    return nbResults >= 0 ? nbResults : error.raise(state);
}

} // namespace

int kyLuaInvoke(lua_State* state, std::span<const KyFunction* const> overloads, KyObject* object, int first,
                std::string_view typeName, KyLuaErrorText& error) {
    const auto nbArguments = static_cast<std::size_t>(std::max(0, lua_gettop(state) - first + 1));
    const KyLuaRunning runningThread(state);
    try {
        if (nbArguments <= cNbInlineArguments) {
            std::array<KyField, cNbInlineArguments> arguments;
            return invokeWith(state, overloads, object, first, std::span(arguments.data(), nbArguments), typeName,
                              error);
        }
        std::vector<KyField> arguments(nbArguments);
        return invokeWith(state, overloads, object, first, arguments, typeName, error);
    } catch (const std::exception& exception) {
        return failWithException(typeName, exception.what(), error);
    } catch (...) {
        return failWithException(typeName, "unknown C++ exception", error);
    }
}

void kyLuaPushMethod(lua_State* state, KyLuaClass& luaClass, const KyType::Functions& functions,
                     std::string_view name) {
    const auto hasName = [name](const auto& function) { return function->getName() == name; };
    const auto count = static_cast<std::size_t>(std::count_if(functions.begin(), functions.end(), hasName));
    void* block = lua_newuserdata(state, sizeof(MethodRecord) + count * sizeof(const KyFunction*));
    auto* record = new (block) MethodRecord{&luaClass, count, nullptr, 0};
    auto* place = reinterpret_cast<const KyFunction**>(record + 1);
    bool isStatic = false;
    for (const auto& function : functions) {
        if (!hasName(function))
            continue;
        *place++ = function.get();
        isStatic = function->isStatic();
    }
    const KyFunction& first = *record->getOverloads().front();
    if (count == 1 && first.getNumberCall()) {
        record->numberCall = first.getNumberCall();
        record->nbNumbers = static_cast<int>(first.getNbParameters());
    }
    lua_pushcclosure(state, isStatic ? &callStaticClosure : &callMethodClosure, 1);
}

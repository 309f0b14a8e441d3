// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyLuaInstance_p.h"
#include "KyScriptDebugger_p.h"
#include "KyScriptSandbox_p.h"

#include "KyFunction.h"
#include "KyObject.h"
#include "KyType.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <string_view>
#include <utility>

namespace {

using Private = KyScriptSandbox::Private;

constexpr std::size_t cUnitsPerCall = 50;
constexpr std::size_t cUnitsPerObject = 500;
constexpr std::size_t cUnitsPerWriting = 10;
constexpr int cReadingsPerLook = 8;
constexpr std::size_t cMaxText = std::size_t{1} << 20;
constexpr int cMaxArguments = 64;
constexpr std::size_t cPurgeStep = 1024;
constexpr int cMaxSegments = 512;

/// Methods that make shapes, and the place of their number of segments on the stack.
struct Shape {
    std::string_view name;
    int place;
};
constexpr Shape cShapes[] = {{"makeCone", 4}, {"makeCylinder", 4}, {"makeSphere", 3}, {"makeTorus", 4}};

int failWithheld(lua_State* state, const KyType& type, const char* member) {
    return luaL_error(state, "sandbox: %s%s%s is withheld", type.getName().c_str(), *member != '\0' ? "." : "", member);
}

/// Of a shape that the call makes; the work grows with their square.
int getNbSegments(lua_State* state, const KyType& type, std::string_view method) {
    const auto* const shape = std::ranges::find(cShapes, method, &Shape::name);
    if (shape == std::end(cShapes) || type.getName() != "KyMeshNode")
        return 0;
    const lua_Number wanted = lua_tonumber(state, shape->place);
    if (wanted > cMaxSegments)
        luaL_error(state, "sandbox: more than %d segments", cMaxSegments);
    return wanted > 0 ? static_cast<int>(wanted) : 0;
}

void checkArguments(lua_State* state) {
    const int number = lua_gettop(state);
    if (number > cMaxArguments)
        luaL_error(state, "sandbox: more than %d arguments", cMaxArguments);
    for (int i = 1; i <= number; ++i)
        Private::checkText(state, i);
}

const KyObject* toObject(lua_State* state, int index) {
    const KyLuaInstance* const instance = kyLuaToInstance(state, index);
    return instance ? instance->get() : nullptr;
}

} // namespace

/// What is done with a text outside Lua takes longer than what Lua does.
void Private::checkText(lua_State* state, int index) {
    if (lua_type(state, index) == LUA_TSTRING && lua_objlen(state, index) > cMaxText && find(state))
        luaL_error(state, "sandbox: more than %d bytes of text for an object", static_cast<int>(cMaxText));
}

void Private::checkCall(lua_State* state, KyLuaClass& luaClass, const KyFunction& function) {
    const Private* const self = find(state);
    if (!self)
        return;
    const KyType& type = *luaClass.type;
    const bool isUsable =
        self->isReviewed(luaClass) || self->mayUse(type, function.isStatic() ? nullptr : toObject(state, 1));
    if (!isUsable || KyScriptSandbox::isMemberWithheld(type, function.getName()))
        failWithheld(state, type, function.getName().c_str());
    checkArguments(state);
    const auto nbSegments = static_cast<std::size_t>(getNbSegments(state, type, function.getName()));
    chargeCall(state, cUnitsPerCall + nbSegments * nbSegments);
}

void Private::checkWriting(lua_State* state, const KyLuaShared& shared, const KyObject& object, const char* name) {
    const Private* const self = find(state);
    if (!self)
        return;
    const KyType& type = *object.getObjectType();
    const bool isUsable = shared.granted == &object || self->mayWrite(object, name);
    if (!isUsable || KyScriptSandbox::isMemberWithheld(type, name))
        failWithheld(state, type, name);
    checkText(state, 3);
    chargeCall(state, cUnitsPerWriting);
}

void Private::chargeReading(lua_State* state, KyLuaShared& shared) {
    if (--shared.nbReadingsLeft > 0)
        return;
    shared.nbReadingsLeft = cReadingsPerLook;
    chargeCall(state, cReadingsPerLook);
}

void Private::checkElement(lua_State* state, KyLuaShared& shared) {
    if (!shared.isSandboxed)
        return;
    checkText(state, 3);
    chargeCall(state, cUnitsPerWriting);
}

bool Private::admitWork(lua_State* state, std::size_t units) {
    Private* const self = KyScriptDebugger::Private::isQuiet() ? nullptr : find(state);
    if (!self)
        return true;
    if (self->isExhausted)
        return false;
    if (units > self->instructionsLeft)
        self->markExhausted("instructions", static_cast<double>(self->limits.instructions));
    else
        self->instructionsLeft -= units;
    return !self->isExhausted;
}

void Private::checkCreation(lua_State* state, const KyType& type) {
    Private* const self = find(state);
    if (!self)
        return;
    if (KyScriptSandbox::isTypeWithheld(type) && !self->allowedTypes.contains(type.getName()))
        failWithheld(state, type, "");
    chargeCall(state, cUnitsPerObject);
    if (self->objects.size() >= std::min(self->nextPurge, self->limits.objects))
        self->purgeObjects();
    if (self->objects.size() >= self->limits.objects)
        luaL_error(state, "sandbox: more than %d objects", static_cast<int>(self->limits.objects));
}

void Private::noteCreation(lua_State* state, KyObject& object) {
    if (Private* const self = find(state))
        self->objects.insert_or_assign(&object, KyObjectReference(&object));
}

void Private::purgeObjects() {
    std::erase_if(objects, [](const auto& entry) { return !entry.second; });
    nextPurge = objects.size() + objects.size() / 4 + cPurgeStep;
}

void Private::checkDestruction(lua_State* state, const KyObject& object) {
    const Private* const self = find(state);
    if (!self)
        return;
    const auto found = self->objects.find(&object);
    if (found == self->objects.end() || found->second.get() != &object)
        luaL_error(state, "sandbox: the object is not one that scripts made");
}

bool Private::isEnding(lua_State* state) {
    const Private* const self = find(state);
    return self && self->isExhausted;
}

void Private::chargeOutput(lua_State* state, std::size_t bytes) {
    Private* const self = find(state);
    if (!self)
        return;
    charge(state, bytes / 8);
    if (bytes > self->outputLeft)
        self->exhaust(state, "bytes printed", static_cast<double>(self->limits.output));
    self->outputLeft -= bytes;
}

bool Private::admitOutput(std::size_t bytes) {
    if (isExhausted)
        return false;
    if (bytes > outputLeft) {
        markExhausted("bytes printed", static_cast<double>(limits.output));
        return false;
    }
    outputLeft -= bytes;
    return true;
}

bool Private::admitReport(std::size_t bytes) {
    return admitOutput(bytes) || !std::exchange(isEndReported, true);
}

bool Private::isRefused(lua_State* state, std::string_view text) {
    return text.starts_with(LUA_SIGNATURE[0]) && find(state);
}

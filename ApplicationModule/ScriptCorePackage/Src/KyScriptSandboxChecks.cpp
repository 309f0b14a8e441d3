// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
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
constexpr std::size_t cPurgeStep = 1024;
constexpr int cMaxSegments = 512;

/// They and what derives from them reach files, the network, the desktop or the graphics card as it is, or run what no
/// sandbox bounds.
constexpr std::array<std::string_view, 20> cTypes{
    "Ky2DImage",
    "Ky2DSvgImporter",
    "KyCanvas",
    "KyDoxygenXmlDocMgr",
    "KyDoxygenXmlDocReader",
    "KyFrameBuffer",
    "KyGraphicsView",
    "KyGraphicsViewMultiPass",
    "KyImage",
    "KyLuaBinder",
    "KyModelLoader",
    "KyNetworkConnectionObject",
    "KyNetworkPasswordManager",
    "KyPassSurface",
    "KyQmlPass",
    "KyQtPass",
    "KyScriptEngine",
    "KyShader",
    "KyTexture",
    "KyWindow",
};

struct Member {
    std::string_view name;
    std::string_view type;
};

/// Methods and attributes of objects that scripts are given.
constexpr Member cMembers[] = {
    {"FileLocalPath", "Ky2DImage"},
    {"FragmentProgram", "KyShader"},
    {"ImageURL", "Ky2DImage"},
    {"Qml", "KyQmlPass"},
    {"VertexProgram", "KyShader"},
    {"addImportPath", "KyQmlPass"},
    {"addProtectedUrl", "KyNetworkPasswordManager"},
    {"clone", "Ky2DNode"},
    {"clone", "KyNode"},
    {"createQmlPassOverlayView", "KyQmlPass"},
    {"createQtPassOverlayView", "KyQtPass"},
    {"download", "KyNetworkConnectionObject"},
    {"get", "KyDoxygenXmlDocMgr"},
    {"get", "KyNetworkPasswordManager"},
    {"importFile", "Ky2DSvgImporter"},
    {"importText", "Ky2DSvgImporter"},
    {"load", "KyDoxygenXmlDocMgr"},
    {"load", "KyImage"},
    {"load", "KyModelLoader"},
    {"loadForm", "KyQtPass"},
    {"loadModel", "KyMeshNode"},
    {"quit", "KyHost"},
    {"readDirectory", "KyDoxygenXmlDocReader"},
    {"readFile", "KyDoxygenXmlDocReader"},
    {"saveImage", "Ky2DView"},
    {"savePNG", "KyImage"},
    {"savePicture", "KyWindow"},
    {"setFileLocalPath", "Ky2DImage"},
    {"setImageURL", "Ky2DImage"},
    {"setQml", "KyQmlPass"},
    {"show", "KyPassSurface"},
};

/// Methods that make shapes, and the place of their number of segments on the stack.
struct Shape {
    std::string_view name;
    int place;
};
constexpr Shape cShapes[] = {{"makeCone", 4}, {"makeCylinder", 4}, {"makeSphere", 3}, {"makeTorus", 4}};

bool isA(const KyType& type, std::string_view name) {
    for (const KyType* known = &type; known; known = known->getParent())
        if (known->getName() == name)
            return true;
    return false;
}

int failWithheld(lua_State* state, const KyType& type, const char* member) {
    return luaL_error(state, "sandbox: %s%s%s is withheld", type.getName().c_str(), *member != '\0' ? "." : "", member);
}

/// Of a shape that the call makes; the work grows with their square.
int getNbSegments(lua_State* state, const KyType& type, std::string_view method) {
    const auto* const shape = std::ranges::find(cShapes, method, &Shape::name);
    if (shape == std::end(cShapes) || !isA(type, "KyMeshNode"))
        return 0;
    const lua_Number wanted = lua_tonumber(state, shape->place);
    if (wanted > cMaxSegments)
        luaL_error(state, "sandbox: more than %d segments", cMaxSegments);
    return wanted > 0 ? static_cast<int>(wanted) : 0;
}

} // namespace

bool KyScriptSandbox::isTypeWithheld(const KyType& type) {
    return std::ranges::any_of(cTypes, [&type](std::string_view name) { return isA(type, name); });
}

bool KyScriptSandbox::isMemberWithheld(const KyType& type, std::string_view name) {
    const auto [first, last] = std::ranges::equal_range(cMembers, name, {}, &Member::name);
    return std::any_of(first, last, [&type](const Member& member) { return isA(type, member.type); });
}

void Private::checkCall(lua_State* state, const KyType& type, const KyFunction& function) {
    if (!find(state))
        return;
    if (isMemberWithheld(type, function.getName()))
        failWithheld(state, type, function.getName().c_str());
    const auto nbSegments = static_cast<std::size_t>(getNbSegments(state, type, function.getName()));
    chargeCall(state, cUnitsPerCall + nbSegments * nbSegments);
}

void Private::checkWriting(lua_State* state, const KyObject& object, const char* name) {
    if (!find(state))
        return;
    if (isMemberWithheld(*object.getObjectType(), name))
        failWithheld(state, *object.getObjectType(), name);
    chargeCall(state, cUnitsPerWriting);
}

void Private::checkCreation(lua_State* state, const KyType& type) {
    Private* const self = find(state);
    if (!self)
        return;
    if (isTypeWithheld(type))
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

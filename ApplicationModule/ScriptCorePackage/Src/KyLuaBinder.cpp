// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyLuaBinder.h"

#include "KyLuaAny_p.h"
#include "KyLuaCall_p.h"
#include "KyLuaChunks_p.h"
#include "KyLuaConverters_p.h"
#include "KyLuaInstance_p.h"
#include "KyLuaUtilities_p.h"
#include "KyLuaValues_p.h"
#include "KyScriptEngine.h"

#include "KyCallSignatures.h"
#include "KyCast.h"
#include "KyException.h"
#include "KyTypeBuilder.h"
#include "KyVec3.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <utility>

std::unique_ptr<KyStaticLuaMaps> KyLuaBinder::msLuaMaps;
const KyType* KyLuaBinder::msType = nullptr;
bool KyLuaBinder::msIsClassInitialized = false;

namespace {

int bindAllClasses(lua_State* state, KyLuaErrorText&) {
    if (KyScriptEngine* engine = kyLuaEngine(state))
        engine->bindAllClasses();
    kySetLuaUtilities(state);
    return 0;
}

constexpr std::array<std::pair<const char*, lua_CFunction>, 3> cGlobals = {{
    {"createKyObject", &kyLuaCreateObject},
    {"deleteKyObject", &kyLuaDeleteObject},
    {"bindAllClasses", &kyLuaFunction<&bindAllClasses>},
}};

void setGlobals(lua_State* state) {
    KyCallSignatures::add(
        {}, {"createKyObject(typeName: `KyObject`): KyObject? -- A new object of that type; nil when there is none.",
             "deleteKyObject(object: KyObject) -- Ends the object.",
             "bindAllClasses() -- Makes every type of object a class."});
    for (const auto& [name, function] : cGlobals) {
        lua_pushstring(state, name);
        lua_pushcfunction(state, function);
        lua_rawset(state, LUA_GLOBALSINDEX);
    }
}

void registerListTypes() {
    KyFieldManager& manager = KyFieldManager::get();
    manager.registerFieldType<std::vector<KyField>>("FieldList");
    manager.registerFieldType<std::vector<KyVec3d>>("Vec3dList");
    manager.registerFieldType<std::vector<int>>("IntList");
    manager.registerFieldType<std::vector<unsigned>>("UIntList");
    manager.registerFieldType<std::vector<std::string>>("StringList");
    manager.registerFieldType<std::vector<bool>>("BoolList");
    manager.registerFieldType<std::vector<float>>("FloatList");
    manager.registerFieldType<std::vector<double>>("DoubleList");
    manager.registerFieldType<KyInvalidField>("KyInvalidField");
}

void pushAnyField(KyLuaBinder& binder, const KyField& field) {
    if (const auto* value = field.get<boost::any>())
        binder.cpp_to_lua(*value);
    else
        binder.pushNil();
}

bool isLetter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_';
}

bool isLetterOrDigit(char c) {
    return isLetter(c) || (c >= '0' && c <= '9');
}

KyField invalidField() {
    return KyField(KyInvalidField());
}

} // namespace

KyLuaBinder::KyLuaBinder(lua_State* state)
    : mState(state) {}

KyLuaBinder::~KyLuaBinder() = default;

void KyLuaBinder::initializeType() {
    if (msType)
        return;
    KyObject::initializeType();
    msType = KyTypeBuilder<KyLuaBinder>("KyLuaBinder", KyObject::getType()).build();
}

void KyLuaBinder::finalizeType() {
    msIsClassInitialized = false;
    KyType::remove(msType);
}

const KyType* KyLuaBinder::getType() {
    if (!msType)
        initializeType();
    return msType;
}

KyLuaBinder* KyLuaBinder::cast(KyObject* object) {
    return kyCast<KyLuaBinder>(object);
}

const KyType* KyLuaBinder::getObjectType() const {
    return getType();
}

void KyLuaBinder::initializeClass() {
    if (std::exchange(msIsClassInitialized, true))
        return;
    initializeType();
    staticInitialize();
}

void KyLuaBinder::finalizeClass() {
    if (!std::exchange(msIsClassInitialized, false))
        return;
    staticFinalize();
    finalizeType();
}

void KyLuaBinder::staticInitialize() {
    msLuaMaps = std::make_unique<KyStaticLuaMaps>();
    for (const std::type_info* type : kyLuaGetValueTypes()) {
        registerCppToLuaConverter(*type, &kyLuaPushValueField);
        registerLuaToCppConverter(*type, &kyLuaCheckValueField);
    }
    registerCppToLuaConverter(typeid(boost::any), &pushAnyField);
    registerListTypes();
    bind();
}

void KyLuaBinder::staticFinalize() {
    msLuaMaps.reset();
}

KyField KyLuaBinder::checkField(int index) const {
    return kyLuaCheckField(mState, index);
}

KyField KyLuaBinder::checkField(int index, const KyType& type) const {
    if (checkNil(index))
        return KyField();
    KyObject* object = checkUserType(index, type);
    return object ? KyField(object) : invalidField();
}

KyField KyLuaBinder::checkField(int index, const std::type_info& type) const {
    if (const auto converter = msLuaMaps ? msLuaMaps->findLuaToCpp(type) : nullptr) {
        KyLuaBinder binder(mState);
        KyField field = converter(binder, index);
        if (field.isValid() && field.getTypeInfo() == type)
            return field;
    }
    KyField converted;
    return kyLuaCheckField(mState, index).convert(type, converted) ? converted : invalidField();
}

KyObject* KyLuaBinder::checkUserType(int index, const KyType& type) const {
    return kyLuaToObject(mState, index, type);
}

bool KyLuaBinder::isUserType(int index, const KyType& type) const {
    return checkUserType(index, type) != nullptr;
}

bool KyLuaBinder::checkBoolean(int index) const {
    return lua_toboolean(mState, index) != 0;
}

bool KyLuaBinder::checkNil(int index) const {
    return lua_isnoneornil(mState, index);
}

const char* KyLuaBinder::checkString(int index) const {
    return lua_tostring(mState, index);
}

double KyLuaBinder::checkNumber(int index) const {
    return lua_tonumber(mState, index);
}

int KyLuaBinder::checkInteger(int index) const {
    const double number = std::floor(lua_tonumber(mState, index));
    const bool isInRange = number >= std::numeric_limits<int>::min() && number <= std::numeric_limits<int>::max();
    return isInRange ? static_cast<int>(number) : 0;
}

bool KyLuaBinder::isLuabindProperty(int index) const {
    return kyLuaIsLuabindProperty(mState, index);
}

void KyLuaBinder::pushLuabindClassRepresentation(int index) {
    kyLuaPushLuabindClass(mState, index);
}

KyLuaShared& KyLuaBinder::editShared() {
    if (!mShared)
        mShared = &KyLuaShared::get(mState);
    return *mShared;
}

void KyLuaBinder::pushField(const KyField& field) {
    kyLuaPushField(mState, editShared(), field);
}

void KyLuaBinder::pushUserType(KyObject& object) {
    kyLuaPushInstance(mState, editShared(), object);
}

void KyLuaBinder::pushBoolean(bool value) {
    lua_pushboolean(mState, value ? 1 : 0);
}

void KyLuaBinder::pushInteger(int value) {
    lua_pushinteger(mState, value);
}

void KyLuaBinder::pushNumber(double value) {
    lua_pushnumber(mState, value);
}

void KyLuaBinder::pushString(const char* text) {
    lua_pushstring(mState, text);
}

void KyLuaBinder::pushString(const std::string& text) {
    lua_pushlstring(mState, text.data(), text.size());
}

void KyLuaBinder::pushNil() {
    lua_pushnil(mState);
}

void KyLuaBinder::cpp_to_lua(const boost::any& value) {
    KyField field;
    if (kyAnyToField(value, field))
        pushField(field);
    else
        pushNil();
}

void KyLuaBinder::cpp_to_lua(KyObject* object) {
    if (object)
        pushUserType(*object);
    else
        pushNil();
}

void KyLuaBinder::initLibrary(const KyType& type, lua_CFunction creator, lua_CFunction destructor,
                              lua_CFunction collector) {
    kyInitLuaClass(mState, type, creator, destructor, collector);
    KyLuaShared::get(mState).findRecord(&type)->isComplete = true;
}

void KyLuaBinder::createEnum(const char* name, unsigned count, const KyEnum* values) {
    lua_pushstring(mState, name);
    lua_createtable(mState, 0, static_cast<int>(count));
    kyLuaAddEnumValues(mState, lua_gettop(mState), count, values);
    lua_rawset(mState, LUA_GLOBALSINDEX);
}

void KyLuaBinder::addEnum(const char* name, unsigned count, const KyEnum* values) {
    lua_pushstring(mState, name);
    lua_rawget(mState, LUA_GLOBALSINDEX);
    if (lua_istable(mState, -1))
        kyLuaAddEnumValues(mState, lua_gettop(mState), count, values);
    else
        createEnum(name, count, values);
    lua_pop(mState, 1);
}

void KyLuaBinder::cleanStack() {
    lua_settop(mState, 0);
}

bool KyLuaBinder::isValidLuaVariable(const std::string& name) {
    return !name.empty() && isLetter(name.front()) && std::all_of(name.begin(), name.end(), &isLetterOrDigit);
}

void KyLuaBinder::bind() {
    lua_State* state = KyScriptEngine::get().editLuaState();
    if (!state)
        return;
    KyLuaFailure failure;
    const auto install = [](lua_State* inner) {
        setGlobals(inner);
        kyInstallLuaChunks(inner);
    };
    if (!kyProtectedCall(state, install, failure))
        KyException::create("Internal lua error : " + failure.message);
}

void KyLuaBinder::registerCppToLuaConverter(const std::type_info& type, CppToLuaConverter converter) {
    if (msLuaMaps)
        msLuaMaps->registerCppToLua(type, converter);
}

void KyLuaBinder::registerLuaToCppConverter(const std::type_info& type, LuaToCppConverter converter) {
    if (msLuaMaps)
        msLuaMaps->registerLuaToCpp(type, converter);
}

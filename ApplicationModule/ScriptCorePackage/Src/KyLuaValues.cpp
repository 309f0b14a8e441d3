// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyLuaValues_p.h"

#include "KyLuaBinder.h"
#include "KyLuaValueHolder_p.h"
#include "KyLuaVectorTypes_p.h"

#include "KyBox.h"
#include "KyColor.h"
#include "KyDate.h"
#include "KyDateTime.h"
#include "KyIntersectionPoint.h"
#include "KyMat4.h"
#include "KyPlane.h"
#include "KyQuat.h"
#include "KyRay.h"
#include "KyRect.h"
#include "KyTime.h"
#include "KyURL.h"
#include "KyVec2.h"
#include "KyVec3.h"
#include "KyVolume.h"
#include "KyWayPoint.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <vector>

#include <luabind/luabind.hpp>

namespace {

/// What is done with one value type.
struct ValueType {
    const std::type_info* typeInfo;
    luabind::detail::class_id (*getId)();
    void (*push)(lua_State* state, luabind::detail::class_rep& luaClass, const void* value);
    void (*read)(const void* value, KyField& field);
};

template <class T>
constexpr ValueType makeValueType() {
    return {&typeid(T), [] { return luabind::detail::registered_class<T>::id; },
            [](lua_State* state, luabind::detail::class_rep& luaClass, const void* value) {
                kyLuaPushValueObject(state, luaClass, *static_cast<const T*>(value));
            },
            [](const void* value, KyField& field) { field = KyField(*static_cast<const T*>(value)); }};
}

using ValueTypes = KyTypeList<KyVec2i, KyVec2f, KyVec2d, KyVec3i, KyVec3f, KyVec3d, KyColor, KyQuatf, KyQuatd, KyMat4f,
                              KyMat4d, KyRecti, KyRectf, KyRectd, KyBoxf, KyBoxd, KyVolumei, KyVolumef, KyVolumed,
                              KyDate, KyTime, KyDateTime, KyURL>;

using ValueTable = std::array<ValueType, cNbBuiltInFieldTypes>;

template <class... Ts>
ValueTable makeTable(KyTypeList<Ts...>) {
    ValueTable table{};
    ((table[kyFieldKindIndex(cFieldKindOf<Ts>)] = makeValueType<Ts>()), ...);
    return table;
}

const ValueTable& valueTable() {
    static const ValueTable table = makeTable(ValueTypes());
    return table;
}

constexpr const char* cFurtherNames[] = {
    "Rayf", "Rayd", "WayPointf", "WayPointd", "IntersectionPointf", "IntersectionPointd", "Planei", "Planef", "Planed"};
static_assert(std::size(cFurtherNames) == KyLuaFurtherValues::cSize);

/// A value type whose kind is given at run time.
struct FurtherType {
    KyFieldKind kind;
    ValueType type;
};
using FurtherTable = std::array<FurtherType, KyLuaFurtherValues::cSize>;

template <class... Ts>
FurtherTable makeFurtherTable(KyTypeList<Ts...> types) {
    KyFieldManager& manager = KyFieldManager::get();
    return {FurtherType{manager.registerFieldType<Ts>(cFurtherNames[types.template indexOf<Ts>()]).getKind(),
                        makeValueType<Ts>()}...};
}

const FurtherTable& furtherTable() {
    static const FurtherTable table = makeFurtherTable(KyLuaFurtherValues());
    return table;
}

const ValueType* findValueType(KyFieldKind kind) {
    const std::size_t index = kyFieldKindIndex(kind);
    if (index < cNbBuiltInFieldTypes)
        return valueTable()[index].typeInfo ? &valueTable()[index] : nullptr;
    const auto hasKind = [kind](const FurtherType& further) { return further.kind == kind; };
    const auto found = std::find_if(furtherTable().begin(), furtherTable().end(), hasKind);
    return found == furtherTable().end() ? nullptr : &found->type;
}

/// The Lua class of the value type in this state; null while none is registered.
luabind::detail::class_rep* findClass(lua_State* state, KyLuaShared& shared, KyFieldKind kind, const ValueType& type) {
    const std::size_t index = kyFieldKindIndex(kind);
    void* looked = nullptr;
    void*& known = index < cNbBuiltInFieldTypes ? shared.valueClasses[index] : looked;
    if (!known) {
        lua_rawgetp(state, LUA_REGISTRYINDEX, &luabind::detail::class_map_tag);
        const auto* classes = static_cast<const luabind::detail::class_map*>(lua_touserdata(state, -1));
        lua_pop(state, 1);
        known = classes ? classes->get(type.getId()) : nullptr;
    }
    return static_cast<luabind::detail::class_rep*>(known);
}

/// Lists become tables in scripts, but scripts may give the one list class back for them.
bool readIntegers(const luabind::detail::object_rep& object, KyField& field) {
    const auto value = object.get_instance(luabind::detail::registered_class<KyLuaIntVector>::id).first;
    if (value)
        field = KyField(static_cast<const KyLuaIntVector*>(value)->numbers);
    return value != nullptr;
}

bool readAs(const luabind::detail::object_rep& object, const ValueType& type, KyField& field) {
    const auto [value, distance] = object.get_instance(type.getId());
    if (!value || distance < 0)
        return false;
    type.read(value, field);
    return true;
}

} // namespace

bool kyLuaPushValue(lua_State* state, KyLuaShared& shared, KyFieldKind kind, const void* value) {
    const ValueType* type = findValueType(kind);
    luabind::detail::class_rep* luaClass = type ? findClass(state, shared, kind, *type) : nullptr;
    if (!luaClass)
        return false;
    type->push(state, *luaClass, value);
    return true;
}

bool kyLuaCheckValue(lua_State* state, int index, KyLuaShared& shared, KyFieldKind kind, KyField& field) {
    const luabind::detail::object_rep* object = luabind::detail::get_instance(state, index);
    if (!object)
        return false;
    const ValueType* wanted = findValueType(kind);
    if (wanted && readAs(*object, *wanted, field))
        return true;
    // The object's own class is the nearest, so it goes before those that it merely converts to.
    const auto own = std::find(shared.valueClasses.begin(), shared.valueClasses.end(), object->crep());
    const auto ownIndex = static_cast<KyFieldKind>(own - shared.valueClasses.begin());
    const ValueType* ownType = own == shared.valueClasses.end() ? nullptr : findValueType(ownIndex);
    if (ownType && readAs(*object, *ownType, field))
        return true;
    const auto isReadAs = [&](const ValueType& type) { return type.typeInfo && readAs(*object, type, field); };
    const auto isFurther = [&](const FurtherType& further) { return readAs(*object, further.type, field); };
    return std::any_of(valueTable().begin(), valueTable().end(), isReadAs) ||
           std::any_of(furtherTable().begin(), furtherTable().end(), isFurther) || readIntegers(*object, field);
}

bool kyLuaIsLuabindObject(lua_State* state, int index) {
    return luabind::detail::get_instance(state, index) != nullptr;
}

bool kyLuaIsLuabindProperty(lua_State* state, int index) {
    return lua_tocfunction(state, index) == &luabind::detail::property_tag;
}

void kyLuaPushLuabindClass(lua_State* state, int index) {
    const luabind::detail::object_rep* object = luabind::detail::get_instance(state, index);
    if (object)
        object->crep()->get_table(state);
    else
        lua_pushnil(state);
}

void kyLuaPushValueField(KyLuaBinder& binder, const KyField& field) {
    lua_State* state = binder.editLuaState();
    if (!kyLuaPushValue(state, KyLuaShared::get(state), field.getKind(), field.data()))
        lua_pushnil(state);
}

KyField kyLuaCheckValueField(KyLuaBinder& binder, int index) {
    KyField field;
    lua_State* state = binder.editLuaState();
    if (kyLuaCheckValue(state, index, KyLuaShared::get(state), cFieldKindInvalid, field))
        return field;
    return KyField(KyInvalidField());
}

std::span<const std::type_info* const> kyLuaGetValueTypes() {
    static const std::vector<const std::type_info*> types = [] {
        std::vector<const std::type_info*> all;
        for (const ValueType& type : valueTable())
            if (type.typeInfo)
                all.push_back(type.typeInfo);
        for (const FurtherType& further : furtherTable())
            all.push_back(further.type.typeInfo);
        return all;
    }();
    return types;
}

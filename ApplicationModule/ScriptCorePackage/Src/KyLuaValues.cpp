// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyLuaValues_p.h"

#include "KyLuaBinder.h"

#include "KyBox.h"
#include "KyColor.h"
#include "KyDate.h"
#include "KyDateTime.h"
#include "KyMat4.h"
#include "KyQuat.h"
#include "KyRect.h"
#include "KyTime.h"
#include "KyURL.h"
#include "KyVec2.h"
#include "KyVec3.h"
#include "KyVolume.h"

#include <algorithm>
#include <array>
#include <new>
#include <utility>
#include <vector>

#include <luabind/luabind.hpp>
#include <luabind/detail/make_instance.hpp>

namespace {

/// Holds a value in the Lua object itself: luabind's own holder would allocate the value and then itself.
template <class T>
class ValueHolder final : public luabind::detail::instance_holder {
public:
    explicit ValueHolder(const T& value)
        : instance_holder(false)
        , mValue(value) {}

    std::pair<void*, int> get(const luabind::detail::cast_graph& casts,
                              luabind::detail::class_id target) const override {
        const auto own = luabind::detail::registered_class<T>::id;
        if (target == own)
            return {&mValue, 0};
        return casts.cast(&mValue, own, target, own, &mValue);
    }
    /// Nothing is owned elsewhere, so giving up ownership changes nothing.
    void release() override {}

private:
    mutable T mValue;
};

/// What is done with one value type.
struct ValueType {
    const std::type_info* typeInfo;
    luabind::detail::class_id (*getId)();
    void (*hold)(luabind::detail::object_rep& object, const void* value);
    void (*read)(const void* value, KyField& field);
};

template <class T>
void holdValue(luabind::detail::object_rep& object, const void* value) {
    void* storage = object.allocate(sizeof(ValueHolder<T>));
    object.set_instance(new (storage) ValueHolder<T>(*static_cast<const T*>(value)));
}

template <class T>
constexpr ValueType makeValueType() {
    return {&typeid(T), [] { return luabind::detail::registered_class<T>::id; }, &holdValue<T>,
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

const ValueType* findValueType(KyFieldKind kind) {
    const std::size_t index = kyFieldKindIndex(kind);
    return index < cNbBuiltInFieldTypes && valueTable()[index].typeInfo ? &valueTable()[index] : nullptr;
}

/// The Lua class of the value type in this state; null while none is registered.
luabind::detail::class_rep* findClass(lua_State* state, KyLuaShared& shared, KyFieldKind kind, const ValueType& type) {
    void*& known = shared.valueClasses[kyFieldKindIndex(kind)];
    if (!known) {
        lua_rawgetp(state, LUA_REGISTRYINDEX, &luabind::detail::class_map_tag);
        const auto* classes = static_cast<const luabind::detail::class_map*>(lua_touserdata(state, -1));
        lua_pop(state, 1);
        known = classes ? classes->get(type.getId()) : nullptr;
    }
    return static_cast<luabind::detail::class_rep*>(known);
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
    type->hold(*luabind::detail::push_new_instance(state, luaClass), value);
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
    return std::any_of(valueTable().begin(), valueTable().end(),
                       [&](const ValueType& type) { return type.typeInfo && readAs(*object, type, field); });
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
        return all;
    }();
    return types;
}

// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyScriptError_p.h"

#include "KyMathForward.h"

#include <cstddef>
#include <new>
#include <optional>
#include <stdexcept>
#include <type_traits>
#include <utility>

#include <luabind/luabind.hpp>

class KyDate;
class KyDateTime;
class KyTime;
class KyURL;

/// How values stand in Lua objects. luabind allocates each value, and then the record that owns it; here a result
/// stands behind luabind's own part of the userdata, in one block of Lua. Whoever binds functions that return one of
/// the value types includes this header first, as it replaces luabind's conversion of results.

/// Whether results of the type are held so; to be made true, in the header of the class's binding, for more types.
template <class T>
inline constexpr bool cIsLuaValue = false;

template <class T>
inline constexpr bool cIsLuaValue<KyVec2<T>> = true;
template <class T>
inline constexpr bool cIsLuaValue<KyVec3<T>> = true;
template <class T>
inline constexpr bool cIsLuaValue<KyQuat<T>> = true;
template <class T>
inline constexpr bool cIsLuaValue<KyMat4<T>> = true;
template <class T>
inline constexpr bool cIsLuaValue<KyRay<T>> = true;
template <class T>
inline constexpr bool cIsLuaValue<KyPlane<T>> = true;
template <class T>
inline constexpr bool cIsLuaValue<KyIntersectionPoint<T>> = true;
template <class T>
inline constexpr bool cIsLuaValue<KyWayPoint<T>> = true;
template <class T>
inline constexpr bool cIsLuaValue<KyRect<T>> = true;
template <class T>
inline constexpr bool cIsLuaValue<KyVolume<T>> = true;
template <class T>
inline constexpr bool cIsLuaValue<KyBox<T>> = true;
template <>
inline constexpr bool cIsLuaValue<KyColor> = true;
template <>
inline constexpr bool cIsLuaValue<KyDate> = true;
template <>
inline constexpr bool cIsLuaValue<KyTime> = true;
template <>
inline constexpr bool cIsLuaValue<KyDateTime> = true;
template <>
inline constexpr bool cIsLuaValue<KyURL> = true;

/// Holds a value that stands in a block which somebody else frees.
template <class T>
class KyLuaValueHolder final : public luabind::detail::instance_holder {
public:
    /// Copies or moves the value into `place`.
    template <class Value>
    KyLuaValueHolder(void* place, Value&& value)
        : instance_holder(false)
        , mValue(new (place) T(std::forward<Value>(value))) {}
    ~KyLuaValueHolder() override { mValue->~T(); }

    std::pair<void*, int> get(const luabind::detail::cast_graph& casts,
                              luabind::detail::class_id target) const override {
        const auto own = luabind::detail::registered_class<T>::id;
        if (target == own)
            return {mValue, 0};
        return casts.cast(mValue, own, target, own, mValue);
    }
    /// Nothing is owned elsewhere, so giving up ownership changes nothing.
    void release() override {}

private:
    T* mValue;
};

/// The class in this state, null while there is none.
inline luabind::detail::class_rep* kyFindLuaClass(lua_State* state, luabind::detail::class_id id) {
    lua_rawgetp(state, LUA_REGISTRYINDEX, &luabind::detail::class_map_tag);
    const auto* classes = static_cast<const luabind::detail::class_map*>(lua_touserdata(state, -1));
    lua_pop(state, 1);
    return classes ? classes->get(id) : nullptr;
}

/// Pushes the metatable of value objects: that without finalizer unless the object owns something, luabind's where
/// there are none.
void kyLuaPushValueMetatable(lua_State* state, const luabind::detail::class_rep& luaClass, bool ownsSomething);

/// Pushes a new object of the class. Needs four free slots; may raise a memory error.
template <class T>
void kyLuaPushValueObject(lua_State* state, luabind::detail::class_rep& luaClass, const T& value) {
    using luabind::detail::object_rep;
    static_assert(alignof(T) <= alignof(double) && sizeof(object_rep) % alignof(T) == 0);
    auto* object = new (lua_newuserdata(state, sizeof(object_rep) + sizeof(T))) object_rep(nullptr, &luaClass);
    luaClass.get_table(state);
    lua_setuservalue(state, -2);
    kyLuaPushValueMetatable(state, luaClass, !std::is_trivially_destructible_v<T>);
    lua_setmetatable(state, -2);
    // luabind takes the holder out of its own part again, where holders of this size stand.
    object->set_instance(new (object->allocate(sizeof(KyLuaValueHolder<T>))) KyLuaValueHolder<T>(object + 1, value));
}

/// Pushes a copy of the value as an object of its class.
template <class T>
void kyLuaPushValueObject(lua_State* state, const T& value) {
    luabind::detail::class_rep* luaClass = kyFindLuaClass(state, luabind::detail::registered_class<T>::id);
    if (!luaClass)
        throw std::runtime_error("Trying to use unregistered class");
    kyLuaPushValueObject(state, *luaClass, value);
}

/// The object at the index when it waits for a value of the class: its own class is that class, or derives from it in a
/// script, and it holds nothing. Throws for all else.
luabind::detail::object_rep* kyLuaCheckNewValue(lua_State* state, int index, luabind::detail::class_id id);

/// Gives an object that is being constructed its value; throws when it is no such object.
template <class T>
void kyLuaInitValue(const luabind::argument& self, T value) {
    using luabind::detail::class_rep;
    lua_State* state = self.interpreter();
    self.push(state);
    const luabind::detail::stack_pop pop(state, 1);
    auto* object = kyLuaCheckNewValue(state, lua_gettop(state), luabind::detail::registered_class<T>::id);
    using Holder = KyLuaValueHolder<T>;
    auto* storage = static_cast<std::byte*>(object->allocate(sizeof(Holder) + sizeof(T)));
    if (!storage)
        throw std::bad_alloc();
    object->set_instance(new (storage) Holder(storage + sizeof(Holder), std::move(value)));
    if (object->crep()->get_class_type() == class_rep::lua_class)
        return;
    kyLuaPushValueMetatable(state, *object->crep(), true);
    lua_setmetatable(state, -2);
}

namespace luabind {

/// Arguments are luabind's matter, results are held as above.
template <class T>
struct default_converter<T, std::enable_if_t<cIsLuaValue<T>>> : detail::value_converter {
    using type = default_converter;
    using detail::value_converter::apply;

    void apply(lua_State* state, const T& value) { kyLuaPushValueObject(state, value); }
};

/// A result that may be missing: nil then.
template <class T>
struct default_converter<std::optional<T>> : detail::value_converter {
    using type = default_converter;
    using detail::value_converter::apply;

    void apply(lua_State* state, const std::optional<T>& value) {
        value ? kyLuaPushValueObject(state, *value) : lua_pushnil(state);
    }
};

/// Candidates in errors show what scripts get.
template <class T>
struct detail::type_to_string<std::optional<T>> {
    static void get(lua_State* state) {
        type_to_string<T>::get(state);
        lua_pushliteral(state, " or nil");
        lua_concat(state, 2);
    }
};

} // namespace luabind

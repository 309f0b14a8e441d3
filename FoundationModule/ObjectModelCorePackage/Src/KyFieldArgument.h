// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyCast.h"
#include "KyField.h"

#include <functional>
#include <list>
#include <string>
#include <type_traits>
#include <vector>

/// How a C++ argument or result of type T crosses to and from a field: the storage that holds an argument during a
/// call, and the conversions both ways.
template <class T>
concept KyObjectClass = std::is_base_of_v<KyObject, std::remove_cvref_t<T>>;

template <class T>
struct KyFieldArgument {
    using Plain = std::remove_cvref_t<T>;
    using Target = std::remove_const_t<std::remove_pointer_t<Plain>>;

    static constexpr bool cIsObject = KyObjectClass<Target>;
    static constexpr bool cIsAny = std::is_same_v<Plain, KyField>;
    static constexpr bool cIsText = std::is_same_v<KyFieldValue<Plain>, std::string>;

    template <class Object>
    struct PointerTo {
        using type = Object*;
    };
    using Storage =
        typename std::conditional_t<cIsObject, PointerTo<Target>, std::conditional<cIsText, std::string, Plain>>::type;

    static KyFieldKind getKind() {
        if constexpr (cIsObject)
            return cFieldKindOf<KyObjectReference>;
        else if constexpr (cIsAny)
            return cFieldKindInvalid;
        else
            return KyFieldManager::getKind<KyFieldValue<Plain>>();
    }

    static bool read(const KyField& field, Storage& storage) {
        if constexpr (cIsAny) {
            storage = field;
            return true;
        } else if constexpr (cIsObject) {
            return readObject(field, storage);
        } else {
            return field.to(storage);
        }
    }

    /// The stored argument in the form that the function takes.
    static decltype(auto) pass(Storage& storage) {
        if constexpr (cIsObject && !std::is_pointer_v<Plain>)
            return static_cast<std::add_lvalue_reference_t<T>>(*storage);
        else if constexpr (std::is_pointer_v<Plain> && cIsText)
            return storage.c_str();
        else if constexpr (std::is_lvalue_reference_v<T>)
            return static_cast<Storage&>(storage);
        else
            return static_cast<Storage&&>(storage);
    }

private:
    static bool readObject(const KyField& field, Storage& storage) {
        const bool isNull = field.isEmpty();
        if (!isNull && field.getKind() != cFieldKindOf<KyObjectReference>)
            return false;
        KyObject* object = field.toKyObject();
        storage = kyCast<Target>(object);
        if (object && !storage)
            return false;
        return storage || std::is_pointer_v<Plain>;
    }
};

namespace KyFieldDetail {

template <class T>
inline constexpr bool cIsPointerList = false;
template <class T>
inline constexpr bool cIsPointerList<std::vector<T*>> = true;
template <class T>
inline constexpr bool cIsPointerList<std::list<T*>> = true;

} // namespace KyFieldDetail

/// A C++ result as a field. Objects become weak references, lists of objects a list of fields.
template <class R>
KyField kyToField(R&& value) {
    using Plain = std::remove_cvref_t<R>;
    if constexpr (KyObjectClass<Plain>) {
        return KyField(&value);
    } else if constexpr (KyFieldDetail::cIsPointerList<Plain>) {
        return KyField(std::vector<KyField>(value.begin(), value.end()));
    } else {
        return KyField(std::forward<R>(value));
    }
}

// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyFieldKind.h"
#include "KyFoundationExport.h"

#include <list>
#include <memory>
#include <new>
#include <string>
#include <string_view>
#include <typeinfo>
#include <vector>

class KyField;

/// What a field does with a value whose type it knows by number only. `storage` is the field's own memory; `value` is
/// the value itself, wherever it stands.
struct KyFieldOperations {
    /// The value's C++ type.
    const std::type_info* typeInfo = nullptr;
    /// Makes a copy of the value in fresh storage.
    void (*copy)(void* storage, const void* value) = nullptr;
    /// Moves a value into fresh storage and ends the old one.
    void (*move)(void* storage, void* fromStorage) noexcept = nullptr;
    /// Ends the value in the storage.
    void (*destroy)(void* storage) noexcept = nullptr;
    /// Makes the type's default in fresh storage.
    void (*makeDefault)(void* storage) = nullptr;
    /// The value that the storage holds.
    const void* (*address)(const void* storage) = nullptr;
    /// Whether two values of the type are the same.
    bool (*equal)(const void* value, const void* other) = nullptr;
    /// The text form, numbers with that many significant digits.
    std::string (*format)(const void* value, int precision) = nullptr;
    /// From the text form; false, and the value unchanged, for a text that is none.
    bool (*parse)(std::string_view text, void* value) = nullptr;
    /// Lists only.
    std::size_t (*size)(const void* value) = nullptr;
    /// Lists only: the element of that index, which must be below the size.
    KyField (*element)(const void* value, std::size_t index) = nullptr;
    /// Lists only: false when the element does not convert.
    bool (*append)(void* value, const KyField& element) = nullptr;
};

template <class T>
struct KyIsFieldList : std::false_type {};
template <class T>
struct KyIsFieldList<std::vector<T>> : std::true_type {};
template <class T>
struct KyIsFieldList<std::list<T>> : std::true_type {};

namespace KyFieldDetail {

template <class T>
const T& valueIn(const void* storage) {
    if constexpr (cFieldIsInline<T>)
        return *std::launder(static_cast<const T*>(storage));
    else
        return **std::launder(static_cast<T* const*>(storage));
}

template <class T>
void put(void* storage, T value) {
    if constexpr (cFieldIsInline<T>)
        new (storage) T(std::move(value));
    else
        new (storage) T*(new T(std::move(value)));
}

KYFOUNDATION_EXPORT std::string formatNumber(double value, int precision);
KYFOUNDATION_EXPORT std::string formatInteger(std::int64_t value);
KYFOUNDATION_EXPORT std::string formatUnsigned(std::uint64_t value);
KYFOUNDATION_EXPORT std::string formatObject(const KyObjectReference& reference);
KYFOUNDATION_EXPORT bool parseNumber(std::string_view text, double& value);
KYFOUNDATION_EXPORT bool parseInteger(std::string_view text, std::int64_t& value);
KYFOUNDATION_EXPORT bool parseUnsigned(std::string_view text, std::uint64_t& value);

template <class Wide, class T>
bool parseWithin(bool (*parse)(std::string_view, Wide&), std::string_view text, T& value) {
    Wide wide{};
    if (!parse(text, wide))
        return false;
    if (std::is_integral_v<T> && static_cast<Wide>(static_cast<T>(wide)) != wide)
        return false;
    value = static_cast<T>(wide);
    return true;
}

/// Decimal numbers in the C locale; booleans as "true", "false", "1" or "0".
template <class T>
bool parseValue(std::string_view text, T& value) {
    if constexpr (std::is_same_v<T, bool>) {
        const bool isTrue = text == "true" || text == "1";
        const bool isFalse = text == "false" || text == "0";
        value = isTrue || (value && !isFalse);
        return isTrue || isFalse;
    } else if constexpr (std::is_floating_point_v<T>) {
        return parseWithin<double>(&parseNumber, text, value);
    } else if constexpr (std::is_integral_v<T> && std::is_signed_v<T>) {
        return parseWithin<std::int64_t>(&parseInteger, text, value);
    } else if constexpr (std::is_integral_v<T>) {
        return parseWithin<std::uint64_t>(&parseUnsigned, text, value);
    } else if constexpr (std::is_same_v<T, std::string>) {
        value = text;
        return true;
    } else if constexpr (requires { fromString(text, value); }) {
        return fromString(text, value);
    } else {
        return false;
    }
}

template <class T>
std::string formatValue(const T& value, int precision) {
    if constexpr (std::is_same_v<T, bool>)
        return value ? "true" : "false";
    else if constexpr (std::is_floating_point_v<T>)
        return formatNumber(static_cast<double>(value), precision);
    else if constexpr (std::is_integral_v<T> && std::is_signed_v<T>)
        return formatInteger(value);
    else if constexpr (std::is_integral_v<T>)
        return formatUnsigned(value);
    else if constexpr (std::is_same_v<T, std::string>)
        return value;
    else if constexpr (std::is_same_v<T, KyObjectReference>)
        return formatObject(value);
    else if constexpr (requires { value.toString(precision); })
        return value.toString(precision);
    else if constexpr (requires { value.toString(); })
        return value.toString();
    else
        return {};
}

template <class T>
void addListOperations(KyFieldOperations& operations);

} // namespace KyFieldDetail

/// The operations of T. Text forms come from `toString` and a free `fromString` of T where it has them.
template <class T>
KyFieldOperations kyMakeFieldOperations() {
    using namespace KyFieldDetail;
    KyFieldOperations operations;
    operations.typeInfo = &typeid(T);
    operations.copy = [](void* storage, const void* value) { put<T>(storage, *static_cast<const T*>(value)); };
    operations.move = [](void* storage, void* from) noexcept {
        if constexpr (cFieldIsInline<T>) {
            T* value = &const_cast<T&>(valueIn<T>(from));
            new (storage) T(std::move(*value));
            std::destroy_at(value);
        } else {
            new (storage) T*(const_cast<T*>(&valueIn<T>(from)));
        }
    };
    operations.destroy = [](void* storage) noexcept {
        if constexpr (cFieldIsInline<T>)
            valueIn<T>(storage).~T();
        else
            delete &valueIn<T>(storage);
    };
    operations.makeDefault = [](void* storage) { put<T>(storage, T{}); };
    operations.address = [](const void* storage) -> const void* { return &valueIn<T>(storage); };
    operations.equal = [](const void* value, const void* other) {
        if constexpr (requires(const T& a) { a == a; })
            return static_cast<bool>(*static_cast<const T*>(value) == *static_cast<const T*>(other));
        else
            return value == other;
    };
    operations.format = [](const void* value, int precision) {
        return formatValue(*static_cast<const T*>(value), precision);
    };
    operations.parse = [](std::string_view text, void* value) { return parseValue(text, *static_cast<T*>(value)); };
    if constexpr (KyIsFieldList<T>::value)
        addListOperations<T>(operations);
    return operations;
}

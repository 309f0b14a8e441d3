// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyMathForward.h"
#include "KyObjectReference.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <type_traits>

class KyDate;
class KyTime;
class KyDateTime;
class KyURL;

/// The kind of a field's value: one word. The low half indexes the table of field types; the top bit says that copying
/// and ending the value goes through that table instead of copying bytes.
using KyFieldKind = std::uint32_t;

inline constexpr KyFieldKind cFieldKindInvalid = 0;
inline constexpr KyFieldKind cFieldKindManaged = 0x80000000u;
inline constexpr std::size_t cFieldInlineSize = 32;

constexpr std::size_t kyFieldKindIndex(KyFieldKind kind) {
    return kind & 0xFFFFu;
}

template <class... Ts>
struct KyTypeList {
    static constexpr std::size_t cSize = sizeof...(Ts);

    /// Position of T in the list, `cSize` when it is not in it.
    template <class T>
    static constexpr std::size_t indexOf() {
        std::size_t index = 0;
        const bool found = ((std::is_same_v<T, Ts> || (++index, false)) || ...);
        return found ? index : cSize;
    }
};

/// The kinds that every process knows, in the order of their numbers (the first is 1).
using KyBuiltInFieldTypes =
    KyTypeList<bool, std::int32_t, std::uint32_t, std::int64_t, std::uint64_t, float, double, std::string,
               KyObjectReference, KyVec2<int>, KyVec2<float>, KyVec2<double>, KyVec3<int>, KyVec3<float>,
               KyVec3<double>, KyColor, KyQuat<float>, KyQuat<double>, KyMat4<float>, KyMat4<double>, KyRect<int>,
               KyRect<float>, KyRect<double>, KyBox<float>, KyBox<double>, KyVolume<int>, KyVolume<float>,
               KyVolume<double>, KyDate, KyTime, KyDateTime, KyURL>;

inline constexpr std::size_t cNbBuiltInFieldTypes = KyBuiltInFieldTypes::cSize + 1;

/// Whether values of T stand inside the field; others are held by pointer.
template <class T>
inline constexpr bool cFieldIsInline = sizeof(T) <= cFieldInlineSize &&
                                       alignof(T) <= alignof(double) && std::is_nothrow_move_constructible_v<T>;

template <class T>
inline constexpr KyFieldKind cFieldManagedBit =
    cFieldIsInline<T>&& std::is_trivially_copyable_v<T> ? 0u : cFieldKindManaged;

template <class T>
concept KyBuiltInFieldValue = (KyBuiltInFieldTypes::indexOf<T>() < KyBuiltInFieldTypes::cSize);

/// The number of a built-in kind, usable in switch labels: `case cFieldKindOf<double>:`.
template <KyBuiltInFieldValue T>
inline constexpr KyFieldKind
    cFieldKindOf = static_cast<KyFieldKind>(KyBuiltInFieldTypes::indexOf<T>() + 1) | cFieldManagedBit<T>;

namespace KyFieldDetail {

template <class T>
constexpr auto canonicalInteger() {
    if constexpr (sizeof(T) < 4)
        return std::int32_t{};
    else if constexpr (sizeof(T) == 4)
        return std::conditional_t<std::is_signed_v<T>, std::int32_t, std::uint32_t>{};
    else
        return std::conditional_t<std::is_signed_v<T>, std::int64_t, std::uint64_t>{};
}

template <class T>
struct Canonical {
    using type = T;
};
template <class T>
requires(std::is_integral_v<T> && !std::is_same_v<T, bool>) struct Canonical<T> {
    using type = decltype(canonicalInteger<T>());
};
template <class T>
requires std::is_enum_v<T>
struct Canonical<T> {
    using type = std::int32_t;
};
template <>
struct Canonical<long double> {
    using type = double;
};
template <>
struct Canonical<std::string_view> {
    using type = std::string;
};
template <>
struct Canonical<const char*> {
    using type = std::string;
};
template <>
struct Canonical<char*> {
    using type = std::string;
};
template <class T>
requires std::is_class_v<T>
struct Canonical<T*> {
    using type = KyObjectReference;
};

} // namespace KyFieldDetail

/// The type under which a field holds a T: integers by size and sign, enumerations as int, texts as std::string,
/// pointers to objects as weak references, everything else as itself.
template <class T>
using KyFieldValue = typename KyFieldDetail::Canonical<std::decay_t<T>>::type;

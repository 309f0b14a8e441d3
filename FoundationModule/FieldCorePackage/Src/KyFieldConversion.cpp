// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyFieldConversion_p.h"

#include "KyColor.h"
#include "KyMat4.h"
#include "KyQuat.h"
#include "KyRect.h"
#include "KyURL.h"
#include "KyVec2.h"
#include "KyVec3.h"

#include <array>
#include <cmath>
#include <limits>
#include <utility>

namespace {

using Convert = bool (*)(const KyField&, KyField&);
using ConvertTable = std::array<std::array<Convert, cNbBuiltInFieldTypes>, cNbBuiltInFieldTypes>;

/// Toward zero; out of range and NaN are refused.
template <class From, class To>
bool convertNumber(From from, To& to) {
    if constexpr (std::is_same_v<To, bool>) {
        to = from != From{};
        return from == from;
    } else if constexpr (std::is_floating_point_v<From> && std::is_integral_v<To>) {
        const double whole = std::trunc(static_cast<double>(from));
        const double lowest = static_cast<double>(std::numeric_limits<To>::lowest());
        const double beyond = std::ldexp(1.0, std::numeric_limits<To>::digits);
        if (!(whole >= lowest && whole < beyond))
            return false;
        to = static_cast<To>(whole);
        return true;
    } else if constexpr (std::is_integral_v<From> && std::is_integral_v<To>) {
        if (!std::in_range<To>(from))
            return false;
        to = static_cast<To>(from);
        return true;
    } else {
        to = static_cast<To>(from);
        return true;
    }
}

template <class T>
struct Components;
template <class T>
struct Components<KyVec2<T>> {
    static constexpr std::array cMembers{&KyVec2<T>::x, &KyVec2<T>::y};
};
template <class T>
struct Components<KyVec3<T>> {
    static constexpr std::array cMembers{&KyVec3<T>::x, &KyVec3<T>::y, &KyVec3<T>::z};
};
template <class T>
struct Components<KyQuat<T>> {
    static constexpr std::array cMembers{&KyQuat<T>::x, &KyQuat<T>::y, &KyQuat<T>::z, &KyQuat<T>::w};
};

template <class From, class To>
bool numberToNumber(const KyField& field, KyField& result) {
    if constexpr (std::is_same_v<From, bool> && !std::is_same_v<To, bool>) {
        result = KyField(static_cast<To>(field.unchecked<From>() ? 1 : 0));
        return true;
    } else {
        To value{};
        if (!convertNumber(field.unchecked<From>(), value))
            return false;
        result = KyField(value);
        return true;
    }
}

template <class From, class To>
bool componentsToComponents(const KyField& field, KyField& result) {
    const From& from = field.unchecked<From>();
    To to;
    for (std::size_t i = 0; i < Components<To>::cMembers.size(); ++i)
        if (!convertNumber(from.*Components<From>::cMembers[i], to.*Components<To>::cMembers[i]))
            return false;
    result = KyField(to);
    return true;
}

template <class From, class To>
bool matrixToMatrix(const KyField& field, KyField& result) {
    result = KyField(To(field.unchecked<From>()));
    return true;
}

template <class From, class To>
bool rectToRect(const KyField& field, KyField& result) {
    const From& from = field.unchecked<From>();
    To to;
    if (!convertNumber(from.origin.x, to.origin.x) || !convertNumber(from.origin.y, to.origin.y) ||
        !convertNumber(from.width, to.width) || !convertNumber(from.height, to.height))
        return false;
    result = KyField(to);
    return true;
}

template <class A, class B>
constexpr Convert& cell(ConvertTable& table) {
    return table[kyFieldKindIndex(cFieldKindOf<A>)][kyFieldKindIndex(cFieldKindOf<B>)];
}

template <template <class, class> class Maker, class... Ts>
constexpr void fill(ConvertTable& table, KyTypeList<Ts...>) {
    const auto fillRow = [&table]<class From>(std::type_identity<From>) {
        ((cell<From, Ts>(table) = Maker<From, Ts>::cConvert), ...);
    };
    (fillRow(std::type_identity<Ts>()), ...);
}

template <class A, class B>
struct Numbers {
    static constexpr Convert cConvert = &numberToNumber<A, B>;
};
template <class A, class B>
struct Vectors {
    static constexpr Convert cConvert = &componentsToComponents<A, B>;
};
template <class A, class B>
struct Matrices {
    static constexpr Convert cConvert = &matrixToMatrix<A, B>;
};
template <class A, class B>
struct Rects {
    static constexpr Convert cConvert = &rectToRect<A, B>;
};

const ConvertTable cConversions = [] {
    ConvertTable table{};
    fill<Numbers>(table, KyTypeList<bool, std::int32_t, std::uint32_t, std::int64_t, std::uint64_t, float, double>());
    fill<Vectors>(table, KyTypeList<KyVec2<int>, KyVec2<float>, KyVec2<double>>());
    fill<Vectors>(table, KyTypeList<KyVec3<int>, KyVec3<float>, KyVec3<double>>());
    fill<Vectors>(table, KyTypeList<KyQuat<float>, KyQuat<double>>());
    fill<Matrices>(table, KyTypeList<KyMat4<float>, KyMat4<double>>());
    fill<Rects>(table, KyTypeList<KyRect<int>, KyRect<float>, KyRect<double>>());
    cell<std::string, KyURL>(table) = [](const KyField& field, KyField& result) {
        result = KyField(KyURL(field.unchecked<std::string>(), KyURL::eLocalPath));
        return true;
    };
    cell<KyURL, std::string>(table) = [](const KyField& field, KyField& result) {
        result = KyField(field.unchecked<KyURL>().toString());
        return true;
    };
    return table;
}();

} // namespace

bool KyFieldConversion::isNumeric(KyFieldKind kind) {
    return kind >= cFieldKindOf<bool> && kind <= cFieldKindOf<double>;
}

bool KyFieldConversion::convert(const KyField& field, KyFieldKind kind, KyField& result) {
    if (field.getKind() == kind) {
        result = field;
        return true;
    }
    const KyFieldType& from = field.getFieldType();
    const KyFieldType& type = KyFieldManager::getFieldType(kind);
    if (type.isEnumerated())
        return convertToEnumerated(field, type, result);
    if (from.isEnumerated())
        return kind == cFieldKindOf<std::string> ? (result = KyField(field.toString()), true)
                                                 : convert(KyField(field.unchecked<std::int32_t>()), kind, result);
    if (from.isList() && type.isList())
        return convertList(field, type, result);
    const std::size_t fromIndex = kyFieldKindIndex(field.getKind());
    const std::size_t toIndex = kyFieldKindIndex(kind);
    if (fromIndex >= cNbBuiltInFieldTypes || toIndex >= cNbBuiltInFieldTypes)
        return false;
    const Convert conversion = cConversions[fromIndex][toIndex];
    return conversion && conversion(field, result);
}

bool KyFieldConversion::parse(std::string_view text, KyFieldKind kind, KyField& result) {
    const KyFieldType& type = KyFieldManager::getFieldType(kind);
    if (type.isEnumerated() && type.findValue(text) >= 0) {
        result = KyField::makeEnumerated(kind, type.findValue(text));
        return true;
    }
    // A written URL is percent-encoded; a text that a script gives for one is a path as people write it.
    if (kind == cFieldKindOf<KyURL>) {
        result = KyField(KyURL(std::string(text), KyURL::eURL));
        return true;
    }
    if (!type.isList()) {
        KyField value = KyField::makeDefault(type.getKind());
        if (!type.getOperations().parse || !type.getOperations().parse(text, const_cast<void*>(value.data())))
            return false;
        result = std::move(value);
        return true;
    }
    return false;
}

bool KyFieldConversion::convertToEnumerated(const KyField& field, const KyFieldType& type, KyField& result) {
    std::int32_t number = field.isText() ? type.findValue(field.unchecked<std::string>()) : -1;
    if (!field.isText() && !field.to(number))
        return false;
    if (field.isText() && number < 0)
        return false;
    result = KyField::makeEnumerated(type.getKind(), number);
    return true;
}

bool KyFieldConversion::convertList(const KyField& field, const KyFieldType& type, KyField& result) {
    const KyFieldOperations& from = field.getFieldType().getOperations();
    KyField list = KyField::makeDefault(type.getKind());
    const std::size_t count = from.size(field.data());
    for (std::size_t i = 0; i < count; ++i)
        if (!type.getOperations().append(const_cast<void*>(list.data()), from.element(field.data(), i)))
            return false;
    result = std::move(list);
    return true;
}

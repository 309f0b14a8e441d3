// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyPrimitiveTypesConverter.h"

#include "KyPrimitiveTypesTable_p.h"
#include "KyQtText.h"
#include "KyQtValues.h"

#include <cmath>

namespace {

using KyPrimitiveTypes::ToField;
using KyPrimitiveTypes::ToVariant;

template <class T, class Number>
QVariant numberToVariant(const KyField& field, int) {
    return QVariant(static_cast<Number>(field.unchecked<T>()));
}

template <class T, auto Convert>
QVariant valueToVariant(const KyField& field, int) {
    return QVariant(Convert(field.unchecked<T>()));
}

QVariant textToVariant(const KyField& field, int charSet) {
    return QVariant(KyApplication::toQString(field.unchecked<std::string>(), charSet));
}

QVariant dateTimeToVariant(const KyField& field, int) {
    return QVariant(KyApplication::toQDateTime(field.unchecked<KyDateTime>(), Qt::LocalTime));
}

KyField integerToField(const QVariant& variant, int) {
    return KyField(variant.toInt());
}

KyField booleanToField(const QVariant& variant, int) {
    return KyField(variant.toBool());
}

KyField doubleToField(const QVariant& variant, int) {
    const double number = variant.toReal();
    return KyField(std::isfinite(number) ? number : 0.0);
}

KyField textToField(const QVariant& variant, int charSet) {
    return KyField(KyApplication::toKyString(variant.toString(), charSet));
}

template <class T, class Value, Value (*Convert)(const T&)>
KyField valueToField(const QVariant& variant, int) {
    return KyField(Convert(variant.value<T>()));
}

} // namespace

constexpr std::array<ToVariant, cNbBuiltInFieldTypes> KyPrimitiveTypes::cToVariant = [] {
    std::array<ToVariant, cNbBuiltInFieldTypes> table{};
    const auto set = [&table](KyFieldKind kind, auto convert, bool mayBeNull = false) {
        table[kyFieldKindIndex(kind)] = {convert, mayBeNull};
    };
    set(cFieldKindOf<bool>, &numberToVariant<bool, bool>);
    set(cFieldKindOf<std::int32_t>, &numberToVariant<std::int32_t, qlonglong>);
    set(cFieldKindOf<std::int64_t>, &numberToVariant<std::int64_t, qlonglong>);
    set(cFieldKindOf<std::uint32_t>, &numberToVariant<std::uint32_t, qulonglong>);
    set(cFieldKindOf<std::uint64_t>, &numberToVariant<std::uint64_t, qulonglong>);
    set(cFieldKindOf<float>, &numberToVariant<float, double>);
    set(cFieldKindOf<double>, &numberToVariant<double, double>);
    set(cFieldKindOf<std::string>, &textToVariant);
    set(cFieldKindOf<KyColor>, &valueToVariant<KyColor, &KyApplication::toQColor>);
    set(cFieldKindOf<KyURL>, &valueToVariant<KyURL, &KyApplication::toQUrl>);
    set(cFieldKindOf<KyRectd>, &valueToVariant<KyRectd, &KyApplication::toQRectF>);
    set(cFieldKindOf<KyVec2d>, &valueToVariant<KyVec2d, &KyApplication::toQPointF>);
    set(cFieldKindOf<KyTime>, &valueToVariant<KyTime, &KyApplication::toQTime>, true);
    set(cFieldKindOf<KyDate>, &valueToVariant<KyDate, &KyApplication::toQDate>, true);
    set(cFieldKindOf<KyDateTime>, &dateTimeToVariant, true);
    return table;
}();

constexpr std::array<ToField, QMetaType::QColor + 1> KyPrimitiveTypes::cToField = [] {
    std::array<ToField, QMetaType::QColor + 1> table{};
    for (const int type : {QMetaType::Int, QMetaType::UInt, QMetaType::Long, QMetaType::ULong, QMetaType::LongLong,
                           QMetaType::ULongLong})
        table[static_cast<std::size_t>(type)] = &integerToField;
    table[QMetaType::Bool] = &booleanToField;
    table[QMetaType::Double] = &doubleToField;
    table[QMetaType::QString] = &textToField;
    table[QMetaType::QColor] = &valueToField<QColor, KyColor, &KyApplication::toKyColor>;
    table[QMetaType::QUrl] = &valueToField<QUrl, KyURL, &KyApplication::toKyURL>;
    table[QMetaType::QRectF] = &valueToField<QRectF, KyRectd, &KyApplication::toKyRectd>;
    table[QMetaType::QPointF] = &valueToField<QPointF, KyVec2d, &KyApplication::toKyVec2d>;
    table[QMetaType::QTime] = &valueToField<QTime, KyTime, &KyApplication::toKyTime>;
    table[QMetaType::QDate] = &valueToField<QDate, KyDate, &KyApplication::toKyDate>;
    table[QMetaType::QDateTime] = &valueToField<QDateTime, KyDateTime, &KyApplication::toKyDateTime>;
    return table;
}();

QVariant KyPrimitiveTypesConverter::toQVariant(const KyField& field, int charSet) {
    const ToVariant entry = KyPrimitiveTypes::findToVariant(field.getKind());
    return entry.convert ? entry.convert(field, charSet) : QVariant();
}

KyField KyPrimitiveTypesConverter::toKyField(const QVariant& variant, int charSet) {
    const ToField convert = KyPrimitiveTypes::findToField(variant.userType());
    return convert ? convert(variant, charSet) : KyField();
}

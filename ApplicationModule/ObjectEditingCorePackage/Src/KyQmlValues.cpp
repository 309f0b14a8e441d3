// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyQmlValues_p.h"

#include "KyObjectQmlBinding.h"

#include "KyFieldToQVariantConvertersRepository.h"
#include "KyQtValues.h"
#include "KyQtVariant.h"

#include "KyColor.h"
#include "KyDate.h"
#include "KyDateTime.h"
#include "KyObject.h"
#include "KyRect.h"
#include "KyTime.h"
#include "KyVec2.h"

#include <QDateTime>
#include <QJSValue>
#include <QObject>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <utility>
#include <vector>

namespace {

constexpr std::array<std::pair<KyFieldKind, int>, 8> cMetaTypes{{
    {cFieldKindOf<std::string>, QMetaType::QString},
    {cFieldKindOf<KyColor>, QMetaType::QColor},
    {cFieldKindOf<KyVec2<double>>, QMetaType::QPointF},
    {cFieldKindOf<KyRect<double>>, QMetaType::QRectF},
    {cFieldKindOf<KyDate>, QMetaType::QDateTime},
    {cFieldKindOf<KyTime>, QMetaType::QTime},
    {cFieldKindOf<KyDateTime>, QMetaType::QDateTime},
    {cFieldKindOf<KyObjectReference>, QMetaType::QObjectStar},
}};

QVariant plainValue(const QVariant& variant) {
    return variant.userType() == qMetaTypeId<QJSValue>() ? variant.value<QJSValue>().toVariant() : variant;
}

bool isNothing(const QVariant& variant) {
    return !variant.isValid() || variant.userType() == QMetaType::Nullptr;
}

bool isQObject(const QVariant& variant) {
    return QMetaType::typeFlags(variant.userType()).testFlag(QMetaType::PointerToQObject);
}

QVariant toMoment(const KyField& field) {
    return KyApplication::toQDate(field.unchecked<KyDate>()).startOfDay();
}

QVariant toList(const KyField& field) {
    const KyFieldOperations& operations = field.getFieldType().getOperations();
    QVariantList list;
    const std::size_t count = operations.size(field.data());
    for (std::size_t i = 0; i < count; ++i)
        list.append(KyQmlValues::toQml(operations.element(field.data(), i)));
    return list;
}

bool toAnyField(const QVariant& variant, KyFieldKind wanted, KyField& field);

bool fromList(const QVariantList& list, KyField& field) {
    std::vector<KyField> elements(static_cast<std::size_t>(list.size()));
    const bool isWhole = std::equal(list.begin(), list.end(), elements.begin(), [](const QVariant& from, KyField& to) {
        return toAnyField(from, cFieldKindInvalid, to);
    });
    if (isWhole)
        field = KyField(std::move(elements));
    return isWhole;
}

bool fromQObject(const QVariant& variant, KyField& field) {
    auto* object = variant.value<QObject*>();
    const auto* binding = qobject_cast<KyObjectQmlBinding*>(object);
    KyField converted = binding ? KyField(binding->getObject()) : KyApplication::toKyField(variant);
    if (object && !converted.toKyObject())
        return false;
    field = object ? std::move(converted) : KyField();
    return true;
}

bool fromValue(const QVariant& variant, KyField& field) {
    const bool isEmptyText = variant.userType() == QMetaType::QString && variant.toString().isEmpty();
    KyField converted = isEmptyText ? KyField(std::string()) : KyApplication::toKyField(variant);
    if (converted.isEmpty())
        return false;
    field = std::move(converted);
    return true;
}

bool fromMoment(const QDateTime& moment, KyField& field) {
    if (moment.isValid())
        field = KyField(KyApplication::toKyDate(moment.toLocalTime().date()));
    return moment.isValid();
}

bool toAnyField(const QVariant& variant, KyFieldKind wanted, KyField& field) {
    const QVariant value = plainValue(variant);
    if (wanted == cFieldKindOf<KyDate> && value.userType() == QMetaType::QDateTime)
        return fromMoment(value.toDateTime(), field);
    if (isQObject(value))
        return fromQObject(value, field);
    if (value.userType() == QMetaType::QVariantList)
        return fromList(value.toList(), field);
    if (!isNothing(value))
        return fromValue(value, field);
    field.clear();
    return true;
}

void parse(KyFieldKind wanted, KyField& text) {
    KyField converted;
    KyField parsed = KyField::makeDefault(wanted);
    if (!text.convert(wanted, converted) && parsed.fromString(text.unchecked<std::string>()))
        text = std::move(parsed);
}

bool isBeyondFloat(const KyField& field) {
    KyField number;
    return field.convert(cFieldKindOf<double>, number) &&
           std::abs(number.unchecked<double>()) > std::numeric_limits<float>::max();
}

} // namespace

QVariant KyQmlValues::toQml(KyObject* object) {
    auto* repository = KyFieldToQVariantConvertersRepository::get();
    KyFieldToQVariantConverter* converter =
        repository && object ? repository->getConverter(object->getObjectType(), true) : nullptr;
    return converter ? converter->toQVariant(KyField(object)) : QVariant::fromValue<QObject*>(nullptr);
}

QVariant KyQmlValues::toQml(const KyField& field) {
    if (field.getKind() == cFieldKindOf<KyObjectReference>)
        return toQml(field.toKyObject());
    if (field.getKind() == cFieldKindOf<KyDate>)
        return toMoment(field);
    return field.getFieldType().isList() ? toList(field) : KyApplication::toQVariant(field);
}

bool KyQmlValues::toField(const QVariant& variant, KyFieldKind wanted, KyField& field) {
    KyField converted;
    if (!toAnyField(variant, wanted, converted))
        return false;
    if (wanted != cFieldKindInvalid && converted.isText())
        parse(wanted, converted);
    if (wanted == cFieldKindOf<float> && isBeyondFloat(converted))
        return false;
    field = std::move(converted);
    return true;
}

int KyQmlValues::getMetaType(KyFieldKind kind) {
    const auto found =
        std::find_if(cMetaTypes.begin(), cMetaTypes.end(), [kind](const auto& entry) { return entry.first == kind; });
    return found == cMetaTypes.end() ? static_cast<int>(QMetaType::QVariant) : found->second;
}

void KyQmlValues::store(QVariant value, int metaType, void* target) {
    if (metaType == QMetaType::QVariant) {
        *static_cast<QVariant*>(target) = std::move(value);
        return;
    }
    if (value.userType() != metaType && !value.convert(metaType))
        value = QVariant(metaType, nullptr);
    QMetaType::destruct(metaType, target);
    QMetaType::construct(metaType, target, value.constData());
}

std::string KyQmlValues::describe(const QVariant& variant) {
    const QVariant value = plainValue(variant);
    if (isNothing(value))
        return "nothing";
    const QString text = value.toString();
    return text.isEmpty() ? "a value of type " + std::string(value.typeName()) : "\"" + text.toStdString() + "\"";
}

// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyQtVariant.h"

#include "KyFieldToQVariantConvertersRepository.h"
#include "KyPrimitiveTypesTable_p.h"
#include "KyQtText.h"
#include "KyVariantListConverters_p.h"

namespace {

/// Qt calls a point at the origin and a rectangle without size null too, but they are values like others.
bool isNull(const QVariant& variant, int type) {
    return type != QMetaType::QPointF && type != QMetaType::QRectF && variant.isNull();
}

QVariantToKyFieldConverter* findBuiltInConverter(int type) {
    switch (type) {
    case QMetaType::QVariantList:
        return &KyVariantListConverters::getVariantListConverter();
    case QMetaType::QStringList:
        return &KyVariantListConverters::getStringListConverter();
    default:
        return nullptr;
    }
}

QVariantToKyFieldConverter* findConverter(int type) {
    const auto* repository = KyFieldToQVariantConvertersRepository::get();
    return repository ? repository->getConverter(static_cast<QMetaType::Type>(type)) : findBuiltInConverter(type);
}

KyFieldToQVariantConverter* findConverter(const KyField& field) {
    const auto* repository = KyFieldToQVariantConvertersRepository::get();
    return repository ? repository->getConverter(field.getKyType(), true) : nullptr;
}

/// Single bytes are numbers; Qt shows the character that they encode.
QString getText(const QVariant& variant) {
    switch (variant.userType()) {
    case QMetaType::Char:
    case QMetaType::SChar:
    case QMetaType::UChar:
        return QString::number(variant.toInt());
    default:
        return variant.toString();
    }
}

bool isTextType(int type) {
    return type == QMetaType::QString || type == QMetaType::QByteArray;
}

KyField parseText(const QVariant& variant) {
    KyField field;
    const QString text = getText(variant);
    if (!text.isEmpty() || isTextType(variant.userType()))
        field.fromString(KyApplication::toKyString(text));
    return field;
}

/// A variant of no built-in type and without a converter of its own. Apart, so that the common way stays short.
[[gnu::noinline]] KyField otherToField(const QVariant& variant, int type) {
    const bool isObject = QMetaType::typeFlags(type).testFlag(QMetaType::PointerToQObject);
    QVariantToKyFieldConverter* converter = isObject ? findConverter(QMetaType::QObjectStar) : nullptr;
    return converter ? converter->toKyField(variant) : parseText(variant);
}

QVariant otherToVariant(const KyField& field) {
    if (!field.isValid())
        return QVariant();
    if (KyFieldToQVariantConverter* converter = findConverter(field))
        return converter->toQVariant(field);
    if (field.canConvertToInt())
        return QVariant(static_cast<qlonglong>(field.toInt64()));
    return QVariant(KyApplication::toQString(field.toString()));
}

/// A date or time that Qt does not have is a text there.
QVariant momentToVariant(const KyField& field, const KyPrimitiveTypes::ToVariant& entry) {
    QVariant variant = entry.convert(field, 0);
    return variant.isNull() ? otherToVariant(field) : variant;
}

} // namespace

QVariant KyApplication::toQVariant(const KyField& field) {
    const KyPrimitiveTypes::ToVariant entry = KyPrimitiveTypes::findToVariant(field.getKind());
    if (entry.convert && !entry.mayBeNull)
        return entry.convert(field, 0);
    return entry.convert ? momentToVariant(field, entry) : otherToVariant(field);
}

KyField KyApplication::toKyField(const QVariant& variant) {
    const int type = variant.userType();
    if (isNull(variant, type))
        return KyField();
    if (QVariantToKyFieldConverter* converter = findConverter(type))
        return converter->toKyField(variant);
    if (const KyPrimitiveTypes::ToField convert = KyPrimitiveTypes::findToField(type))
        return convert(variant, 0);
    return otherToField(variant, type);
}

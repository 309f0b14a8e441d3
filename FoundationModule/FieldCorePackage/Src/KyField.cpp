// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyField.h"

#include "KyFieldConversion_p.h"

KyField KyField::makeDefault(KyFieldKind kind) {
    KyField value;
    const KyFieldType& type = KyFieldManager::getFieldType(kind);
    if (!type.getOperations().makeDefault)
        return value;
    type.getOperations().makeDefault(value.mStorage);
    value.mKind = type.getKind();
    return value;
}

KyField KyField::makeEnumerated(KyFieldKind kind, std::int32_t value) {
    KyField field(value);
    if (KyFieldManager::getFieldType(kind).isEnumerated())
        field.mKind = kind;
    return field;
}

const void* KyField::data() const {
    return isEmpty() ? nullptr : getFieldType().getOperations().address(mStorage);
}

bool KyField::convert(KyFieldKind kind, KyField& result) const {
    return KyFieldConversion::convert(*this, kind, result);
}

bool KyField::convert(const std::type_info& type, KyField& result) const {
    const KyFieldType* target = KyFieldManager::get().findFieldType(type);
    return target && convert(target->getKind(), result);
}

bool KyField::isNumber() const {
    return KyFieldConversion::isNumeric(mKind);
}

bool KyField::canConvertToInt() const {
    double number = 0;
    return isNumber() || getFieldType().isEnumerated() ||
           (isText() && KyFieldDetail::parseNumber(unchecked<std::string>(), number));
}

int KyField::toInt() const {
    const std::int64_t wide = toInt64();
    return static_cast<int>(wide) == wide ? static_cast<int>(wide) : 0;
}

std::int64_t KyField::toInt64() const {
    std::int64_t value = 0;
    if (isText() && KyFieldDetail::parseInteger(unchecked<std::string>(), value))
        return value;
    const KyField number = isText() ? KyField(toDouble()) : *this;
    return number.to(value) ? value : 0;
}

std::uint64_t KyField::toUInt64() const {
    std::uint64_t value = 0;
    if (isText() && KyFieldDetail::parseUnsigned(unchecked<std::string>(), value))
        return value;
    const KyField number = isText() ? KyField(toDouble()) : *this;
    return number.to(value) ? value : 0;
}

double KyField::toDouble() const {
    double value = 0;
    if (isText())
        return KyFieldDetail::parseNumber(unchecked<std::string>(), value) ? value : 0;
    return to(value) ? value : 0;
}

std::string KyField::toString(int precision) const {
    if (isEmpty())
        return {};
    const KyFieldType& type = getFieldType();
    if (type.isEnumerated()) {
        const std::int32_t value = unchecked<std::int32_t>();
        if (value >= 0 && static_cast<unsigned>(value) < type.getNbValueNames())
            return type.getValueName(static_cast<unsigned>(value));
    }
    if (!type.isList())
        return type.getOperations().format(data(), precision);
    std::string text;
    const std::size_t count = type.getOperations().size(data());
    for (std::size_t i = 0; i < count; ++i) {
        if (i != 0)
            text += ';';
        text += type.getOperations().element(data(), i).toString(precision);
    }
    return text;
}

bool KyField::fromString(const std::string& text, int) {
    if (isEmpty()) {
        *this = KyField(text);
        return true;
    }
    KyField parsed;
    if (!KyFieldConversion::parse(text, mKind, parsed))
        return false;
    *this = std::move(parsed);
    return true;
}

KyObject* KyField::toKyObject() const {
    return mKind == cFieldKindOf<KyObjectReference> ? unchecked<KyObjectReference>().get() : nullptr;
}

bool KyField::operator==(const KyField& other) const {
    if (mKind != other.mKind)
        return false;
    return isEmpty() || getFieldType().getOperations().equal(data(), other.data());
}

void KyField::copyManaged(const KyField& other) {
    const KyFieldOperations& operations = KyFieldManager::getFieldType(other.mKind).getOperations();
    operations.copy(mStorage, operations.address(other.mStorage));
}

void KyField::moveManaged(KyField& other) noexcept {
    KyFieldManager::getFieldType(other.mKind).getOperations().move(mStorage, other.mStorage);
}

void KyField::destroyManaged() noexcept {
    getFieldType().getOperations().destroy(mStorage);
}

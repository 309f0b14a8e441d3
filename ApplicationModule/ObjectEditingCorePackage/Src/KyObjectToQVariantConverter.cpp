// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyObjectToQVariantConverter.h"

#include "KyObjectQmlBinding.h"
#include "KyQmlFailure_p.h"

#include "KyField.h"
#include "KyObject.h"
#include "KyType.h"

#include <QVariant>

KyObjectToQVariantConverter::KyObjectToQVariantConverter() = default;

// Bindings end here as children, but for those that are at work further up the stack: these must not go under their
// own feet and wait for the event loop instead, without their object.
KyObjectToQVariantConverter::~KyObjectToQVariantConverter() {
    for (auto* binding : findChildren<KyObjectQmlBinding*>(QString(), Qt::FindDirectChildrenOnly)) {
        if (binding->mNbUses == 0)
            continue;
        disconnect(binding, nullptr, this, nullptr);
        binding->setParent(nullptr);
        if (binding->getObject())
            binding->forgetObject();
        binding->deleteLater();
    }
}

QVariant KyObjectToQVariantConverter::toQVariant(const KyField& field) {
    KyObject* object = field.toKyObject();
    const auto known = mBindings.find(object);
    KyObjectQmlBinding* binding = known == mBindings.end() ? tryToAddBinding(object) : known->second;
    return QVariant::fromValue<QObject*>(binding);
}

KyField KyObjectToQVariantConverter::toKyField(const QVariant& variant) {
    // By address, and without a look at what is there: the variant may be older than its Qt object.
    const bool isPointer = QMetaType::typeFlags(variant.userType()).testFlag(QMetaType::PointerToQObject);
    const auto known =
        mObjects.find(isPointer ? *static_cast<QObject* const*>(variant.constData()) : variant.value<QObject*>());
    return KyField(known == mObjects.end() ? nullptr : known->second);
}

bool KyObjectToQVariantConverter::canConvert(KyObject* object) {
    if (!object)
        return false;
    const KyAttributeInterface* attribute = object->getAttribute("QmlBinding");
    KyField value;
    if (attribute && attribute->getValue(*object, value) && value.toInt64() != 0)
        return true;
    return object->getObjectType()->getMetadata("qmlBinding", false);
}

KyObjectQmlBinding* KyObjectToQVariantConverter::createBinding(KyObject* object) {
    return KyObjectQmlBinding::create(*object);
}

KyObjectQmlBinding* KyObjectToQVariantConverter::tryToAddBinding(KyObject* object) {
    KyObjectQmlBinding* binding = nullptr;
    const std::string className = object ? object->getObjectType()->getName() : std::string("null");
    kyQmlGuard(*this, className, "toQVariant", [&] { binding = addBinding(object); });
    return binding;
}

// An object that has told its end would not tell it again.
KyObjectQmlBinding* KyObjectToQVariantConverter::addBinding(KyObject* object) {
    KyObjectQmlBinding* binding = canConvert(object) && !object->isEnding() ? createBinding(object) : nullptr;
    if (!binding)
        return nullptr;
    // As a child it ends with the converter at the latest, also when the event loop never comes to deleting it.
    binding->setParent(this);
    connect(binding, &QObject::destroyed, this, &KyObjectToQVariantConverter::onQmlBindingDestroyed);
    mBindings.emplace(object, binding);
    mObjects.emplace(binding, object);
    object->modifiedSignal().connect(
        *this, [this](KyObject* modified, KyObjectModificationType type, const std::string& name, int index) {
            objectModifiedSlot(modified, type, name, static_cast<unsigned>(index));
        });
    return binding;
}

void KyObjectToQVariantConverter::objectModifiedSlot(const KyObject* object, KyObjectModificationType type,
                                                     const std::string&, unsigned int) {
    const auto known = type == eObjectEnded ? mBindings.find(object) : mBindings.end();
    if (known == mBindings.end())
        return;
    KyObjectQmlBinding* binding = known->second;
    disconnect(binding, &QObject::destroyed, this, &KyObjectToQVariantConverter::onQmlBindingDestroyed);
    mBindings.erase(known);
    mObjects.erase(binding);
    binding->deleteLater();
}

void KyObjectToQVariantConverter::onQmlBindingDestroyed(QObject* binding) {
    const auto known = mObjects.find(binding);
    if (known == mObjects.end())
        return;
    KyObject* object = known->second;
    mObjects.erase(known);
    mBindings.erase(object);
    object->modifiedSignal().disconnect(static_cast<const KyHasSlots*>(this));
}

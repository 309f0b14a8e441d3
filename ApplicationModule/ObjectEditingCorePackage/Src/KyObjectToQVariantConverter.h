// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyApplicationExport.h"
#include "KyFieldToQVariantConverter.h"
#include "QVariantToKyFieldConverter.h"

#include "KyObjectModificationType.h"
#include "KySignal.h"

#include <QObject>

#include <map>
#include <string>

class KyObject;
class KyObjectQmlBinding;

/// Converts references to objects into Qt objects and back: each object that asks for it has one KyObjectQmlBinding, as
/// long as both live. An object asks by its attribute "QmlBinding" or by its class's metadata "qmlBinding".
///
/// The converter owns the bindings: they end with it (one that is just telling or being asked is deleted later), or
/// after their object. The library enters one for all classes;
/// another may be registered for a class of its own. One thread, Qt's.
///
/// ```
/// QVariant variant = KyApplication::toQVariant(KyField(node)); // holds the binding as QObject*
/// KyApplication::toKyField(variant).toKyObject();              // node
/// ```
class KYAPPLICATION_EXPORT KyObjectToQVariantConverter : public QObject,
                                                         public KyFieldToQVariantConverter,
                                                         public QVariantToKyFieldConverter,
                                                         public KyHasSlots {
    Q_OBJECT

public:
    KyObjectToQVariantConverter();
    ~KyObjectToQVariantConverter() override;

    /// A QObject*: the object's binding, null for no object and for one that may not be converted. Exceptions of
    /// canConvert and createBinding are reported through KyException and give null.
    QVariant toQVariant(const KyField& field) override;
    /// The object of one of this converter's bindings; a null object for anything else.
    KyField toKyField(const QVariant& variant) override;
    /// Objects that have a binding now.
    unsigned getNbBindings() const { return static_cast<unsigned>(mBindings.size()); }

protected:
    /// True when the attribute "QmlBinding" is a number other than 0, else what the class's metadata says; false for
    /// null.
    virtual bool canConvert(KyObject* object);
    /// A new binding, bound to the object; null makes none. An override calls this one or KyObjectQmlBinding::create,
    /// whose bindings show the object's attributes; one of a class of its own shows what that class adds.
    virtual KyObjectQmlBinding* createBinding(KyObject* object);

    /// Tells the object's QML properties of the change.
    void objectModifiedSlot(const KyObject* object, KyObjectModificationType type, const std::string& name,
                            unsigned int index);

protected Q_SLOTS:
    /// Forgets the binding.
    void onQmlBindingDestroyed(QObject* binding);

private:
    KyObjectQmlBinding* tryToAddBinding(KyObject* object);
    KyObjectQmlBinding* addBinding(KyObject* object);

    std::map<const KyObject*, KyObjectQmlBinding*> mBindings;
    std::map<const QObject*, KyObject*> mObjects;
};

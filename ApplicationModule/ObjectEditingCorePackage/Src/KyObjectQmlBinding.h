// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyApplicationExport.h"

#include "KyObjectModificationType.h"
#include "KySignal.h"

#include <QObject>

#include <string>

class KyObject;

/// Stands for one object of the object model in QML and JavaScript, so that they show it, follow its changes, edit it
/// and call it.
///
/// Every attribute is a property with a notifier, a container a KyObjectListModel, a component a read-only property, a
/// reflected method an invokable one; names that begin with an upper-case letter also have a form with a lower-case
/// one where that is free (`node.Name`, `node.name`, `onNameChanged`). Objects appear as what their registered
/// converter gives for them. A value that the attribute refuses leaves the object as it was and raises an error in the
/// script, or is reported through KyException when none is running.
///
/// The object is not owned and not kept: once it announces its end, properties read as undefined (typed ones as their
/// type's default), writing does nothing and calling is an error; so is writing or calling when the object ends while
/// the values are being taken out of JavaScript. A binding belongs to C++, never to JavaScript's
/// collector. One thread, Qt's.
///
/// The meta-object is made at run time and shared by all objects of a class: QML caches what it learns about a
/// meta-object, so that access by name costs no search. A property map would do without it, but has values only: no
/// types, no methods, one dictionary per object. Only objects with attributes of their own (KyDynamicObject) have a
/// meta-object each, which grows with them and which QML does not cache.
///
/// ```
/// std::unique_ptr<KyObjectQmlBinding> binding(KyObjectQmlBinding::create(*camera));
/// engine.rootContext()->setContextProperty("camera", binding.get()); // Text { text: camera.Name }
/// ```
class KYAPPLICATION_EXPORT KyObjectQmlBinding : public QObject, public KyHasSlots {
    Q_OBJECT

public:
    /// Owned by the parent, else by the caller.
    static KyObjectQmlBinding* create(KyObject& object, QObject* parent = nullptr);
    ~KyObjectQmlBinding() override;

    /// Null once the object has announced its end.
    KyObject* getObject() const { return mObject; }

protected:
    /// The object is not owned; the parent owns the binding.
    KyObjectQmlBinding(KyObject& object, QObject* parent);

    /// What the object tells, but for its end.
    virtual void onObjectModified(KyObjectModificationType kind, const std::string& name, int index);
    /// Once, when the object has announced its end: getObject() is null from here on.
    virtual void onObjectEnded();

private:
    friend class KyObjectToQVariantConverter;
    friend class KyQmlUse;

    void forgetObject();
    void onModified(KyObject* object, KyObjectModificationType kind, const std::string& name, int index);

    KyObject* mObject;
    unsigned mNbUses = 0;
};

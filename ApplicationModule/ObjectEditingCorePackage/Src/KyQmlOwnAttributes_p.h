// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyQmlLayout_p.h"

#include "KyObjectReference.h"

#include <private/qobject_p.h>

/// The meta-object of one object that has attributes of its own. It grows: QML asks it for every name that it does not
/// know, and it looks what the object has got meanwhile. Owned by the binding's QObject part, as Qt wants it.
class KyQmlOwnAttributes final : public QAbstractDynamicMetaObject {
public:
    explicit KyQmlOwnAttributes(KyObject& object);

    const KyQmlLayout& getLayout() const { return mLayout; }

    int createProperty(const char* name, const char* type) override;
    int metaCall(QObject* object, QMetaObject::Call call, int id, void** arguments) override;

private:
    void rebuild();

    KyObjectReference mObject;
    KyQmlLayout mLayout;
    /// Former ones too: names that Qt has handed out point into them.
    std::vector<KyQmlMetaObjectPtr> mBuilt;
};

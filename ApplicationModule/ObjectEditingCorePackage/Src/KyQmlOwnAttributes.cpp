// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyQmlOwnAttributes_p.h"

#include "KyObject.h"

KyQmlOwnAttributes::KyQmlOwnAttributes(KyObject& object)
    : mObject(&object)
    , mLayout(object) {
    rebuild();
}

void KyQmlOwnAttributes::rebuild() {
    mBuilt.push_back(mLayout.makeMetaObject(true));
    static_cast<QMetaObject&>(*this) = *mBuilt.back();
}

int KyQmlOwnAttributes::createProperty(const char* name, const char*) {
    const KyObject* object = mObject.get();
    if (!object || object->isEnding() || !mLayout.addNewAttributes(*object))
        return -1;
    rebuild();
    const int property = mLayout.findProperty(name);
    return property < 0 ? -1 : propertyOffset() + property;
}

int KyQmlOwnAttributes::metaCall(QObject* object, QMetaObject::Call call, int id, void** arguments) {
    return object->qt_metacall(call, id, arguments);
}

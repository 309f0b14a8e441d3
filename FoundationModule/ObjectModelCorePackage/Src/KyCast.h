// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyObject.h"
#include "KyType.h"

#include <type_traits>

template <class T>
T* kyCast(KyObject* object) {
    using Class = std::remove_const_t<T>;
    if (!object)
        return nullptr;
    const KyType* type = Class::getType();
    if (type && object->getObjectType()->isA(*type))
        return static_cast<Class*>(object);
    return dynamic_cast<Class*>(object);
}

template <class T>
const T* kyCast(const KyObject* object) {
    return kyCast<T>(const_cast<KyObject*>(object));
}

// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyQmlLayout_p.h"

/// The meta-object of a class of the object model, shared by the bindings of all its objects. QML keeps what it has
/// learnt about a meta-object under its address for the rest of the process, so these are never freed; a class that is
/// registered again with the same members gets the one that it had.
class KyQmlClass {
public:
    static const KyQmlClass& get(const KyType& type);

    const KyQmlLayout& getLayout() const { return mLayout; }
    const QMetaObject* getMetaObject() const { return mMetaObject.get(); }

private:
    explicit KyQmlClass(KyQmlLayout layout);

    KyQmlLayout mLayout;
    KyQmlMetaObjectPtr mMetaObject;

    struct Registry;
};

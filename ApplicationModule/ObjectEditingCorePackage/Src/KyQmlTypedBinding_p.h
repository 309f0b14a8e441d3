// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyObjectQmlBinding.h"
#include "KyQmlLayout_p.h"

#include <map>
#include <string>

class KyObjectListModel;
class KyQmlClass;
class KyQmlOwnAttributes;

/// The binding with its meta-object: answers Qt's meta-calls from the object. In a class of its own because Qt's
/// generated code gives KyObjectQmlBinding a fixed one, which is what casts go by.
class KyQmlTypedBinding final : public KyObjectQmlBinding {
public:
    KyQmlTypedBinding(KyObject& object, QObject* parent);

    const QMetaObject* metaObject() const override;
    int qt_metacall(QMetaObject::Call call, int id, void** arguments) override;

private:
    const KyQmlLayout& getLayout() const;
    bool accessProperty(QMetaObject::Call call, int property, void** arguments);
    QVariant read(const KyQmlMember& member);
    QVariant readValue(const KyQmlMember& member);
    QObject* getListModel(const std::string& attribute);
    void write(const KyQmlMember& member, const QVariant& value);
    std::string tryToWrite(const KyQmlMember& member, const QVariant& value);
    void invoke(int method, void** arguments);
    void call(int method, void** arguments);

    void onObjectModified(KyObjectModificationType kind, const std::string& name, int index) override;
    void onObjectEnded() override;
    void notify(int signal);
    void notifyAll();

    const KyQmlClass* mClass = nullptr;
    /// Of an object with attributes of its own, in place of the class's; ends with the QObject.
    KyQmlOwnAttributes* mOwnAttributes = nullptr;
    std::map<std::string, KyObjectListModel*> mListModels;
};

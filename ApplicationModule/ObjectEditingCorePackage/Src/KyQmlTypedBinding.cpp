// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyQmlTypedBinding_p.h"

#include "KyObjectListModel.h"
#include "KyQmlCall_p.h"
#include "KyQmlClass_p.h"
#include "KyQmlFailure_p.h"
#include "KyQmlOwnAttributes_p.h"
#include "KyQmlUse_p.h"
#include "KyQmlValues_p.h"

#include "KyObject.h"
#include "KyType.h"

#include <QJSValue>
#include <QPointer>
#include <QQmlEngine>

#include <vector>

KyQmlTypedBinding::KyQmlTypedBinding(KyObject& object, QObject* parent)
    : KyObjectQmlBinding(object, parent) {
    if (object.hasOwnAttributes()) {
        mOwnAttributes = new KyQmlOwnAttributes(object);
        QObjectPrivate::get(this)->metaObject = mOwnAttributes;
    } else {
        mClass = &KyQmlClass::get(*object.getObjectType());
    }
    QQmlEngine::setObjectOwnership(this, QQmlEngine::CppOwnership);
}

const QMetaObject* KyQmlTypedBinding::metaObject() const {
    return mOwnAttributes ? mOwnAttributes : mClass->getMetaObject();
}

const KyQmlLayout& KyQmlTypedBinding::getLayout() const {
    return mOwnAttributes ? mOwnAttributes->getLayout() : mClass->getLayout();
}

int KyQmlTypedBinding::qt_metacall(QMetaObject::Call call, int id, void** arguments) {
    id = KyObjectQmlBinding::qt_metacall(call, id, arguments);
    if (id < 0)
        return id;
    const KyQmlUse use(this);
    // Counted first: a method may end the binding.
    const int nbMethods = getLayout().getNbSignals() + getLayout().getNbMethods();
    const int nbProperties = getLayout().getNbProperties();
    switch (call) {
    case QMetaObject::InvokeMetaMethod:
        if (id < nbMethods)
            invoke(id, arguments);
        return id - nbMethods;
    case QMetaObject::RegisterMethodArgumentMetaType:
        if (id < nbMethods)
            *static_cast<int*>(arguments[0]) = -1;
        return id - nbMethods;
    default:
        return accessProperty(call, id, arguments) ? id - nbProperties : id;
    }
}

bool KyQmlTypedBinding::accessProperty(QMetaObject::Call call, int property, void** arguments) {
    if (call < QMetaObject::ReadProperty || call > QMetaObject::QueryPropertyUser) {
        if (call == QMetaObject::RegisterPropertyMetaType)
            *static_cast<int*>(arguments[0]) = -1;
        return call == QMetaObject::RegisterPropertyMetaType;
    }
    if (property >= getLayout().getNbProperties())
        return true;
    // A copy: reading may make the own attributes grow.
    const KyQmlMember member = getLayout().getMember(property);
    const bool isAny = member.metaType == QMetaType::QVariant;
    if (call == QMetaObject::ReadProperty)
        KyQmlValues::store(read(member), member.metaType, arguments[0]);
    else if (call == QMetaObject::WriteProperty)
        write(member, isAny ? *static_cast<const QVariant*>(arguments[0]) : QVariant(member.metaType, arguments[0]));
    return true;
}

QVariant KyQmlTypedBinding::read(const KyQmlMember& member) {
    if (!getObject())
        return {};
    QVariant value;
    kyQmlGuard(*this, getObject()->getObjectType()->getName(), member.name, [&] {
        if (member.role == KyQmlMember::Role::eComponent)
            value = KyQmlValues::toQml(getObject()->getComponentByName(member.name));
        else if (member.role == KyQmlMember::Role::eContainer)
            value = QVariant::fromValue(getListModel(member.name));
        else
            value = readValue(member);
    });
    return value;
}

QVariant KyQmlTypedBinding::readValue(const KyQmlMember& member) {
    const KyAttributeInterface* attribute = getObject()->getAttribute(member.name);
    // An own attribute may have come back as another kind than it had.
    if (attribute && attribute->getKind() == KyAttributeInterface::eContainer)
        return QVariant::fromValue(getListModel(member.name));
    KyField field;
    return attribute && attribute->getValue(*getObject(), field) ? KyQmlValues::toQml(field) : QVariant();
}

QObject* KyQmlTypedBinding::getListModel(const std::string& attribute) {
    KyObjectListModel*& model = mListModels[attribute];
    if (!model) {
        model = new KyObjectListModel(*getObject(), attribute, this);
        QQmlEngine::setObjectOwnership(model, QQmlEngine::CppOwnership);
    }
    return model;
}

void KyQmlTypedBinding::write(const KyQmlMember& member, const QVariant& value) {
    if (!getObject())
        return;
    const std::string className = getObject()->getObjectType()->getName();
    const QPointer<QObject> self(this);
    kyQmlGuard(*this, className, member.name, [&] {
        const std::string failure = tryToWrite(member, value);
        if (!failure.empty())
            kyQmlFail(self.data(), className + "." + member.name + failure);
    });
}

// Taking the value out of JavaScript runs getters of arrays and objects, after which nothing is as it was.
std::string KyQmlTypedBinding::tryToWrite(const KyQmlMember& member, const QVariant& value) {
    const QPointer<KyQmlTypedBinding> self(this);
    const KyAttributeInterface* attribute = getObject()->getAttribute(member.name);
    KyField field;
    const bool isField = KyQmlValues::toField(value, attribute ? attribute->getValueKind() : cFieldKindInvalid, field);
    KyObject* object = self ? getObject() : nullptr;
    if (!object)
        return ": the object is gone.";
    attribute = object->getAttribute(member.name);
    if (!attribute)
        return ": the attribute is gone.";
    const bool isSingle = attribute->getKind() != KyAttributeInterface::eContainer;
    if (isField && isSingle && attribute->setValue(*object, field))
        return {};
    return " does not take " + KyQmlValues::describe(value) + ".";
}

void KyQmlTypedBinding::invoke(int method, void** arguments) {
    const int nbSignals = getLayout().getNbSignals();
    if (method < nbSignals)
        QMetaObject::activate(this, metaObject(), method, arguments);
    else
        call(method - nbSignals, arguments);
}

// Taking an argument out of JavaScript may run scripts, which may end the binding.
void KyQmlTypedBinding::call(int method, void** arguments) {
    const QPointer<KyQmlTypedBinding> self(this);
    const int nbArguments = getLayout().getNbArguments(method);
    const std::string name = getLayout().getMethod(method);
    std::vector<QVariant> values;
    values.reserve(static_cast<std::size_t>(nbArguments));
    for (int i = 0; i < nbArguments; ++i)
        values.push_back(static_cast<const QJSValue*>(arguments[i + 1])->toVariant());
    if (!self)
        return kyQmlFail(nullptr, name + ": the object is gone.");
    const QVariant result = kyQmlCall(*this, name, values);
    if (arguments[0])
        *static_cast<QVariant*>(arguments[0]) = result;
}

void KyQmlTypedBinding::onObjectModified(KyObjectModificationType, const std::string& name, int) {
    if (name.empty())
        return notifyAll();
    if (const KyQmlMember* member = getLayout().findMember(name))
        notify(member->signal);
}

void KyQmlTypedBinding::onObjectEnded() {
    notifyAll();
}

void KyQmlTypedBinding::notify(int signal) {
    const KyQmlUse use(this);
    void* arguments[] = {nullptr};
    QMetaObject::activate(this, metaObject(), signal, arguments);
}

void KyQmlTypedBinding::notifyAll() {
    const QPointer<QObject> self(this);
    const int nbSignals = getLayout().getNbSignals();
    for (int signal = 0; signal < nbSignals && self; ++signal)
        notify(signal);
}

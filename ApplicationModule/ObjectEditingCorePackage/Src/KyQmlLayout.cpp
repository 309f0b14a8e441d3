// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyQmlLayout_p.h"

#include "KyObjectQmlBinding.h"
#include "KyQmlValues_p.h"

#include "KyObject.h"
#include "KyType.h"

#include <QJSValue>
#include <QMetaType>
#include <private/qmetaobjectbuilder_p.h>

#include <algorithm>
#include <array>

namespace {

/// What JavaScript and QML find on every Qt object before they look at its properties.
constexpr std::array<std::string_view, 4> cReserved{"objectName", "destroyed", "deleteLater", "destroy"};

constexpr char cLateSignal[] = "attributesChanged";

bool isUpper(char letter) {
    return letter >= 'A' && letter <= 'Z';
}

bool isWordCharacter(char letter) {
    return isUpper(letter) || (letter >= 'a' && letter <= 'z') || (letter >= '0' && letter <= '9') || letter == '_';
}

std::string lowerInitial(std::string_view name) {
    std::string lower(name);
    if (!lower.empty() && isUpper(lower[0]))
        lower[0] = static_cast<char>(lower[0] - 'A' + 'a');
    return lower;
}

using Arities = std::map<std::string, unsigned>;

void collectArities(const KyType::Functions& functions, Arities& arities) {
    for (const auto& function : functions) {
        unsigned& most = arities[function->getName()];
        most = std::max(most, function->getNbParameters());
    }
}

QByteArray makeSignature(const std::string& name, int nbArguments) {
    QByteArray signature = QByteArray::fromStdString(name) + '(';
    for (int i = 0; i < nbArguments; ++i)
        signature += i == 0 ? "QJSValue" : ",QJSValue";
    return signature + ')';
}

} // namespace

KyQmlLayout::KyQmlLayout(const KyType& type)
    : mClassName(type.getName()) {
    for (unsigned i = 0; i < type.getNbAttributes(); ++i)
        addMember(*type.getAttribute(i));
    addComponents(type);
    addMethods(type);
    addAliases(0);
    addSignals();
}

KyQmlLayout::KyQmlLayout(const KyObject& object)
    : mClassName(object.getObjectType()->getName()) {
    addAttributes(object);
    addComponents(*object.getObjectType());
    addMethods(*object.getObjectType());
    addAliases(0);
    addSignals();
    mSignals.emplace_back(cLateSignal);
}

bool KyQmlLayout::addNewAttributes(const KyObject& object) {
    const std::size_t nbKnown = mMembers.size();
    addAttributes(object);
    addAliases(nbKnown);
    for (std::size_t i = nbKnown; i < mMembers.size(); ++i)
        mMembers[i].signal = getNbSignals() - 1;
    return mMembers.size() > nbKnown;
}

void KyQmlLayout::addAttributes(const KyObject& object) {
    const unsigned nbOfClass = object.getObjectType()->getNbAttributes();
    for (unsigned i = 0; i < nbOfClass; ++i)
        addMember(*object.getAttribute(i));
    for (unsigned i = nbOfClass; i < object.getNbAttributes(); ++i)
        addMember({object.getAttribute(i)->getName(), KyQmlMember::Role::eValue, QMetaType::QVariant, false, 0});
}

void KyQmlLayout::addMember(const KyAttributeInterface& attribute) {
    const bool isContainer = attribute.getKind() == KyAttributeInterface::eContainer;
    KyQmlMember member;
    member.name = attribute.getName();
    member.role = isContainer ? KyQmlMember::Role::eContainer : KyQmlMember::Role::eValue;
    member.metaType =
        isContainer ? static_cast<int>(QMetaType::QObjectStar) : KyQmlValues::getMetaType(attribute.getValueKind());
    member.isReadOnly = isContainer || attribute.isReadOnly();
    addMember(std::move(member));
}

void KyQmlLayout::addComponents(const KyType& type) {
    for (const KyComponent& component : type.getComponents())
        addMember({component.name, KyQmlMember::Role::eComponent, QMetaType::QObjectStar, true, 0});
}

void KyQmlLayout::addMember(KyQmlMember member) {
    const int index = static_cast<int>(mMembers.size());
    if (member.name.empty() || !mMembersByName.emplace(member.name, index).second)
        return;
    mProperties.emplace_back(member.name, index);
    mPropertiesByName.insert_or_assign(member.name, getNbProperties() - 1);
    mMembers.push_back(std::move(member));
}

// Every number of arguments up to one more than the most is offered, so that a wrong one comes here and not to QML,
// which drops arguments in excess without a word.
void KyQmlLayout::addMethods(const KyType& type) {
    for (const KyType* owner = &type; owner; owner = owner->getParent()) {
        Arities arities;
        collectArities(owner->getAllMethods(), arities);
        collectArities(owner->getAllStaticMethods(), arities);
        for (const auto& [name, most] : arities) {
            if (!isFree(name) || !std::all_of(name.begin(), name.end(), isWordCharacter))
                continue;
            mMethodNames.insert(name);
            for (int nbArguments = 0; nbArguments <= static_cast<int>(most) + 1; ++nbArguments)
                mMethods.emplace_back(name, nbArguments);
        }
    }
}

bool KyQmlLayout::isFree(std::string_view name) const {
    return !mPropertiesByName.contains(name) && !mMethodNames.contains(name) &&
           std::find(cReserved.begin(), cReserved.end(), name) == cReserved.end();
}

void KyQmlLayout::addAliases(std::size_t firstMember) {
    for (std::size_t i = firstMember; i < mMembers.size(); ++i) {
        std::string alias = lowerInitial(mMembers[i].name);
        if (!isFree(alias))
            continue;
        mProperties.emplace_back(alias, static_cast<int>(i));
        mPropertiesByName.emplace(std::move(alias), getNbProperties() - 1);
    }
}

std::string KyQmlLayout::makeSignalName(std::string_view name) const {
    const std::string alias = lowerInitial(name);
    const auto shown = mPropertiesByName.find(alias);
    const bool isAlias = shown != mPropertiesByName.end() && getMember(shown->second).name == name;
    std::string signal = (isAlias ? alias : std::string(name)) + "Changed";
    std::replace_if(
        signal.begin(), signal.end(), [](char letter) { return !isWordCharacter(letter); }, '_');
    while (!isFree(signal) || std::find(mSignals.begin(), mSignals.end(), signal) != mSignals.end())
        signal += '_';
    return signal;
}

void KyQmlLayout::addSignals() {
    for (KyQmlMember& member : mMembers) {
        member.signal = getNbSignals();
        mSignals.push_back(makeSignalName(member.name));
    }
}

const KyQmlMember* KyQmlLayout::findMember(std::string_view name) const {
    const auto found = mMembersByName.find(name);
    return found == mMembersByName.end() ? nullptr : &mMembers[static_cast<std::size_t>(found->second)];
}

int KyQmlLayout::findProperty(std::string_view name) const {
    const auto found = mPropertiesByName.find(name);
    return found == mPropertiesByName.end() ? -1 : found->second;
}

KyQmlMetaObjectPtr KyQmlLayout::makeMetaObject(bool isDynamic) const {
    qRegisterMetaType<QJSValue>();
    QMetaObjectBuilder builder;
    builder.setClassName(QByteArray::fromStdString(mClassName));
    builder.setSuperClass(&KyObjectQmlBinding::staticMetaObject);
    if (isDynamic)
        builder.setFlags(QMetaObjectBuilder::DynamicMetaObject);
    for (const std::string& signal : mSignals)
        builder.addSignal(makeSignature(signal, 0));
    for (const auto& [name, nbArguments] : mMethods)
        builder.addMethod(makeSignature(name, nbArguments), "QVariant");
    for (int i = 0; i < getNbProperties(); ++i) {
        const KyQmlMember& member = getMember(i);
        const QByteArray name = QByteArray::fromStdString(mProperties[static_cast<std::size_t>(i)].first);
        QMetaPropertyBuilder property = builder.addProperty(name, QMetaType::typeName(member.metaType), member.signal);
        property.setWritable(!member.isReadOnly);
    }
    return KyQmlMetaObjectPtr(builder.toMetaObject());
}

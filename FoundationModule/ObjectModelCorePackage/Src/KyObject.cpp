// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyObject.h"

#include "KyCallSignatures.h"
#include "KyModificationScope.h"
#include "KyTypeBuilder.h"

const KyType* KyObject::msType = nullptr;

struct KyObject::Links {
    std::unique_ptr<KyModifiedSignal> modified;
    KyLiveness* liveness = nullptr;
};

KyObject::KyObject() = default;

KyObject::KyObject(const KyObject&) {}

KyObject& KyObject::operator=(const KyObject&) {
    return *this;
}

KyObject::~KyObject() {
    notifyEnd();
    KyModificationScope::onEnded(this);
    if (mLinks && mLinks->liveness) {
        mLinks->liveness->object = nullptr;
        KyObjectReference::release(mLinks->liveness);
    }
}

void KyObject::initializeType() {
    if (msType)
        return;
    msType = KyTypeBuilder<KyObject>("KyObject", nullptr).signal<&KyObject::modifiedSignal>("modifiedSignal").build();
    KyCallSignatures::add("KyObject", {"modifiedSignal(object, kind, name, index)"});
}

void KyObject::finalizeType() {
    KyType::remove(msType);
}

const KyType* KyObject::getType() {
    if (!msType)
        initializeType();
    return msType;
}

const KyType* KyObject::getObjectType() const {
    return getType();
}

KyObject* KyObject::create(std::string_view typeName) {
    const KyType* type = KyType::getType(typeName);
    return type ? type->createObject() : nullptr;
}

KyObject* KyObject::clone() const {
    const KyType* type = getObjectType();
    KyObject* copy = type->createObject();
    if (!copy)
        return nullptr;
    for (unsigned i = 0; i < type->getNbAttributes(); ++i) {
        const KyAttributeInterface* attribute = type->getAttribute(i);
        KyField value;
        if (attribute->getKind() == KyAttributeInterface::eSingle && !attribute->isReadOnly() &&
            attribute->getValue(*this, value))
            attribute->setValue(*copy, value);
    }
    return copy;
}

void KyObject::destroy() {
    if (mIsEnding)
        return;
    notifyEnd();
    delete this;
}

const std::string& KyObject::getName() const {
    static const std::string none;
    return none;
}

void KyObject::setName(const std::string&) {}

bool KyObject::hasNameAttribute() const {
    return false;
}

const KyAttributeInterface* KyObject::getAttribute(std::string_view name) const {
    if (const KyAttributeInterface* attribute = getObjectType()->getAttribute(name))
        return attribute;
    return mHasOwnAttributes ? getOwnAttribute(name) : nullptr;
}

unsigned KyObject::getNbAttributes() const {
    return getObjectType()->getNbAttributes() + getNbOwnAttributes();
}

const KyAttributeInterface* KyObject::getAttribute(unsigned index) const {
    const unsigned nbOfType = getObjectType()->getNbAttributes();
    return index < nbOfType ? getObjectType()->getAttribute(index) : getOwnAttribute(index - nbOfType);
}

KyObject* KyObject::getComponentByName(std::string_view name) const {
    const KyComponent* component = getObjectType()->getComponent(name);
    return component ? component->get(*this) : nullptr;
}

unsigned KyObject::getNbSignals(bool inherited) const {
    const KyType* type = getObjectType();
    const std::size_t count = type->getSignals().size();
    const std::size_t ofParent = type->getParent() ? type->getParent()->getSignals().size() : 0;
    return static_cast<unsigned>(inherited ? count : count - ofParent);
}

KySignalBase* KyObject::editSignal(unsigned index) {
    const auto& entries = getObjectType()->getSignals();
    return index < entries.size() ? &entries[index].edit(*this) : nullptr;
}

const std::string& KyObject::getSignalName(unsigned index) const {
    static const std::string none;
    const auto& entries = getObjectType()->getSignals();
    return index < entries.size() ? entries[index].name : none;
}

KySignalBase* KyObject::editSignal(std::string_view name) {
    const unsigned count = getNbSignals();
    for (unsigned i = 0; i < count; ++i)
        if (getSignalName(i) == name)
            return editSignal(i);
    return nullptr;
}

int KyObject::getSignalAccess(unsigned) const {
    constexpr int cReadAndWrite = 2;
    return cReadAndWrite;
}

KyObject::Links& KyObject::editLinks() const {
    if (!mLinks)
        mLinks = std::make_unique<Links>();
    return *mLinks;
}

KyModifiedSignal& KyObject::modifiedSignal() {
    Links& links = editLinks();
    if (!links.modified)
        links.modified = std::make_unique<KyModifiedSignal>("modifiedSignal");
    mIsWatched = true;
    return *links.modified;
}

void KyObject::notifyModified(KyObjectModificationType kind, const std::string& name, int index) {
    KyModificationScope::onNotified(this);
    if (mIsWatched)
        mLinks->modified->send(this, kind, name, index);
}

void KyObject::notifyEnd() {
    if (mIsEnding)
        return;
    mIsEnding = true;
    static const std::string none;
    notifyModified(eObjectEnding, none);
    notifyModified(eObjectEnded, none);
}

KyLiveness* KyObject::getLiveness() const {
    Links& links = editLinks();
    if (!links.liveness) {
        links.liveness = new KyLiveness;
        links.liveness->object = const_cast<KyObject*>(this);
        links.liveness->nbHolders = 1;
    }
    return links.liveness;
}

const KyAttributeInterface* KyObject::getOwnAttribute(std::string_view) const {
    return nullptr;
}

unsigned KyObject::getNbOwnAttributes() const {
    return 0;
}

const KyAttributeInterface* KyObject::getOwnAttribute(unsigned) const {
    return nullptr;
}

const KyType* KyField::getKyType() const {
    const KyObject* object = toKyObject();
    return object ? object->getObjectType() : nullptr;
}

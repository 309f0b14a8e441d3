// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyType.h"

#include "KyException.h"
#include "KySignal.h"

#include <algorithm>

/// Records are kept by name for the life of the process; `listed` holds those registered now, in order of registration.
struct KyType::Registry {
    std::map<std::string, std::unique_ptr<KyType>, std::less<>> records;
    std::vector<const KyType*> listed;
    KySignal<const KyType*> removed{"removedSignal"};

    static Registry& get() {
        static Registry* const instance = new Registry;
        return *instance;
    }
};

KyType* KyType::enter(std::string name, const KyType* parent, const std::type_info& typeInfo) {
    Registry& registry = Registry::get();
    std::unique_ptr<KyType>& record = registry.records[name];
    if (!record)
        record.reset(new KyType);
    if (record->mIsRegistered) {
        KyException::create("KyType: the type " + name + " is registered already.");
        const KyType* replaced = record.get();
        remove(replaced);
    }
    record->reset();
    record->mName = std::move(name);
    record->mParent = parent;
    record->mTypeInfo = &typeInfo;
    record->mIsRegistered = true;
    if (parent) {
        record->mDepth = parent->mDepth + 1;
        record->mAncestors = parent->mAncestors;
        record->mAttributes = parent->mAttributes;
        record->mAttributesByName = parent->mAttributesByName;
        record->mComponents = parent->mComponents;
        record->mSignals = parent->mSignals;
    }
    record->mAncestors.push_back(record.get());
    registry.listed.push_back(record.get());
    return record.get();
}

void KyType::reset() {
    mVersion = 0;
    mDepth = 0;
    mAncestors.clear();
    mAttributes.clear();
    mAttributesByName.clear();
    mComponents.clear();
    mSignals.clear();
    mMethods.clear();
    mStaticMethods.clear();
    mConstructors.clear();
    mEnumValues.clear();
    mMetadata.clear();
    mFactory = nullptr;
    mToReferenceCounted = nullptr;
}

void KyType::remove(const KyType*& type) {
    if (!type)
        return;
    Registry& registry = Registry::get();
    auto* record = const_cast<KyType*>(std::exchange(type, nullptr));
    if (!record->mIsRegistered)
        return;
    registry.removed.send(record);
    record->mIsRegistered = false;
    std::erase(registry.listed, record);
}

KySignal<const KyType*>& KyType::removedSignal() {
    return Registry::get().removed;
}

unsigned KyType::getNbTypes() {
    return static_cast<unsigned>(Registry::get().listed.size());
}

const KyType* KyType::getType(unsigned index) {
    const auto& listed = Registry::get().listed;
    return index < listed.size() ? listed[index] : nullptr;
}

const KyType* KyType::getType(std::string_view name) {
    const auto& records = Registry::get().records;
    const auto found = records.find(name);
    return found != records.end() && found->second->mIsRegistered ? found->second.get() : nullptr;
}

const KyType* KyType::getType(const std::type_info& type) {
    const auto& listed = Registry::get().listed;
    const auto found =
        std::find_if(listed.begin(), listed.end(), [&](const KyType* record) { return record->getTypeInfo() == type; });
    return found == listed.end() ? nullptr : *found;
}

void KyType::addAttribute(std::shared_ptr<const KyAttributeInterface> attribute) {
    const std::string_view name = attribute->getName();
    const auto known = mAttributesByName.find(name);
    if (known == mAttributesByName.end()) {
        mAttributesByName.emplace(name, attribute.get());
        mAttributes.push_back(std::move(attribute));
        return;
    }
    // An attribute described again by a derived class takes the place of the inherited one; the key moves to its name.
    const auto place = std::find_if(mAttributes.begin(), mAttributes.end(),
                                    [&](const auto& entry) { return entry.get() == known->second; });
    mAttributesByName.erase(known);
    mAttributesByName.emplace(name, attribute.get());
    *place = std::move(attribute);
}

const KyAttributeInterface* KyType::getAttribute(unsigned index) const {
    return index < mAttributes.size() ? mAttributes[index].get() : nullptr;
}

const KyComponent* KyType::getComponent(std::string_view name) const {
    const auto found = std::find_if(mComponents.rbegin(), mComponents.rend(),
                                    [&](const KyComponent& component) { return component.name == name; });
    return found == mComponents.rend() ? nullptr : &*found;
}

const std::string& KyType::getMetadata(std::string_view name) const {
    static const std::string none;
    const auto found = mMetadata.find(name);
    return found == mMetadata.end() ? none : found->second;
}

bool KyType::getMetadata(std::string_view name, bool defaultValue) const {
    const std::string& text = getMetadata(name);
    return text.empty() ? defaultValue : text == "true" || text == "1";
}

// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyDynamicObject.h"

#include "KyCast.h"
#include "KyModificationScope.h"
#include "KyTypeBuilder.h"

#include <algorithm>

const KyType* KyDynamicObject::msType = nullptr;

namespace {

template <class Store>
void forEachMetadata(std::string_view text, Store store) {
    while (!text.empty()) {
        const auto end = std::min(text.find(';'), text.size());
        const std::string_view pair = text.substr(0, end);
        const auto equals = pair.find('=');
        if (equals != std::string_view::npos)
            store(pair.substr(0, equals), pair.substr(equals + 1));
        text.remove_prefix(std::min(end + 1, text.size()));
    }
}

} // namespace

class KyDynamicObject::ValueAttribute final : public KyAttributeInterface {
public:
    ValueAttribute(const std::string& name, KyField value)
        : KyAttributeInterface(name, eSingle, value.getKind())
        , mValue(std::move(value)) {}

    bool isReadOnly() const override { return false; }
    const KyField& getField() const { return mValue; }

    bool getValue(const KyObject&, KyField& value, unsigned index) const override {
        if (index != 0)
            return false;
        value = mValue;
        return true;
    }

    bool setValue(KyObject& object, const KyField& value, unsigned index) const override {
        KyField converted;
        const bool isNull = value.isEmpty() && getValueKind() == cFieldKindOf<KyObjectReference>;
        if (isNull)
            converted = KyField(KyObjectReference());
        else if (index != 0 || !value.convert(getValueKind(), converted))
            return false;
        // The attribute may be removed by a listener, so nothing of it is used after telling.
        const std::string name = getName();
        mValue = std::move(converted);
        object.notifyModified(eAttributeChanged, name);
        return true;
    }

private:
    mutable KyField mValue;
};

KyDynamicObject::KyDynamicObject() {
    mHasOwnAttributes = true;
}

KyDynamicObject::~KyDynamicObject() {
    notifyEnd();
}

void KyDynamicObject::initializeType() {
    if (msType)
        return;
    KyObject::initializeType();
    msType = KyTypeBuilder<KyDynamicObject>("KyDynamicObject", KyObject::getType()).factory().build();
}

void KyDynamicObject::finalizeType() {
    KyType::remove(msType);
}

const KyType* KyDynamicObject::getType() {
    if (!msType)
        initializeType();
    return msType;
}

KyDynamicObject* KyDynamicObject::cast(KyObject* object) {
    return kyCast<KyDynamicObject>(object);
}

KyObject* KyDynamicObject::factory() {
    return new KyDynamicObject;
}

const KyType* KyDynamicObject::getObjectType() const {
    return getType();
}

KyObject* KyDynamicObject::clone() const {
    auto copy = std::make_unique<KyDynamicObject>();
    for (const auto& attribute : mAttributes)
        copy->addAttribute(attribute->getName(), attribute->getField(),
                           "category=" + attribute->getMetadata("category") + ";");
    return copy.release();
}

const KyAttributeInterface* KyDynamicObject::addAttribute(const std::string& name, const KyField& value,
                                                          const std::string& metadata) {
    auto attribute = std::make_unique<ValueAttribute>(name, value);
    forEachMetadata(metadata, [&](std::string_view key, std::string_view text) {
        attribute->setMetadata(std::string(key), std::string(text));
    });
    const std::string category = attribute->getMetadata("category");
    if (name.empty() || !value.isValid() || findAttribute(name, category))
        return nullptr;
    mAttributes.push_back(std::move(attribute));
    if (!isWatched())
        return mAttributes.back().get();
    notifyModified(eElementInserted, name);
    // A listener may have removed it again.
    return findAttribute(name, category);
}

bool KyDynamicObject::removeAttribute(std::string_view name, std::string_view category) {
    const auto found = std::find_if(mAttributes.begin(), mAttributes.end(), [&](const auto& attribute) {
        return attribute->getName() == name && attribute->getMetadata("category") == category;
    });
    if (found == mAttributes.end())
        return false;
    const std::string removed = (*found)->getName();
    mAttributes.erase(found);
    notifyModified(eElementRemoved, removed);
    return true;
}

const KyAttributeInterface* KyDynamicObject::findAttribute(std::string_view name, std::string_view category) const {
    const auto found = std::find_if(mAttributes.begin(), mAttributes.end(), [&](const auto& attribute) {
        return attribute->getName() == name && attribute->getMetadata("category") == category;
    });
    return found == mAttributes.end() ? nullptr : found->get();
}

void KyDynamicObject::clearCategory(std::string_view category) {
    const auto removed = std::erase_if(
        mAttributes, [&](const auto& attribute) { return attribute->getMetadata("category") == category; });
    if (removed > 0)
        notifyModified(eElementRemoved, std::string());
}

const KyAttributeInterface* KyDynamicObject::getOwnAttribute(std::string_view name) const {
    const auto found = std::find_if(mAttributes.begin(), mAttributes.end(),
                                    [&](const auto& attribute) { return attribute->getName() == name; });
    return found == mAttributes.end() ? nullptr : found->get();
}

unsigned KyDynamicObject::getNbOwnAttributes() const {
    return static_cast<unsigned>(mAttributes.size());
}

const KyAttributeInterface* KyDynamicObject::getOwnAttribute(unsigned index) const {
    return index < mAttributes.size() ? mAttributes[index].get() : nullptr;
}

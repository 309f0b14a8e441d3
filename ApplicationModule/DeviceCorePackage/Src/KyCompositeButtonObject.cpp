// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyCompositeButtonObject.h"

#include "KyCallSignatures.h"
#include "KyCompositeArguments_p.h"

#include <memory>

const KyType* KyCompositeButtonObject::msType = nullptr;

namespace {

using KyCompositeArguments::Check;

constexpr int cOperations[] = {eOperationAdd,           eOperationMultiply, eOperationSubtract,
                               eOperationSet,           eOperationAddValue, eOperationMultiplyValue,
                               eOperationSubtractValue, eOperationSetValue};

} // namespace

KyCompositeButtonObject::KyCompositeButtonObject() {
    setChannel(mComposite);
}

KyObject* KyCompositeButtonObject::clone() const {
    auto copy = std::make_unique<KyCompositeButtonObject>();
    copy->mComposite = mComposite;
    copy->mSources = mSources;
    return copy.release();
}

bool KyCompositeButtonObject::insertMappedButton(KyObject* button, int action, int value, int operation, int position) {
    if (!Check(*this).action(action).byte(value).operation(operation, cOperations))
        return false;
    const KyButtonObject* source = mSources.accept<KyButtonObject>(button, *this);
    if (source)
        mComposite.insertMappedButton(*source->editOwn(), static_cast<KyButtonAction>(action),
                                      static_cast<std::uint8_t>(value), static_cast<unsigned>(operation), position);
    return source != nullptr;
}

bool KyCompositeButtonObject::insertConstant(int operation, int value, int position) {
    const bool isRight(Check(*this).byte(value).operation(operation, cOperations));
    if (isRight)
        mComposite.insertConstant(static_cast<unsigned>(operation), static_cast<std::uint8_t>(value), position);
    return isRight;
}

bool KyCompositeButtonObject::insertCondition(KyObject* button, int condition, int expected) {
    return KyCompositeArguments::insertCondition(mComposite, mSources, *this, button, condition, expected);
}

void KyCompositeButtonObject::initializeType() {
    if (msType)
        return;
    KyButtonObject::initializeType();
    using C = KyCompositeButtonObject;
    KyTypeBuilder<C> builder("KyCompositeButtonObject", KyButtonObject::getType());
    builder.factory()
        .method("insertMappedButton", &C::insertMappedButton)
        .method("insertMappedButton", [](C& c, KyObject* button, int action, int value,
                                         int op) { return c.insertMappedButton(button, action, value, op); })
        .method("insertConstant", &C::insertConstant)
        .method("insertConstant", [](C& c, int op, int value) { return c.insertConstant(op, value); })
        .method("insertCondition", &C::insertCondition)
        .method("update", &C::update);
    KyCompositeArguments::addOperationNames(builder);
    KyCompositeArguments::addButtonNames(builder);
    msType = builder.build();
    KyCallSignatures::add("KyCompositeButtonObject", {"insertMappedButton(button, action, value, operation, position?)",
                                                      "insertConstant(operation, value, position?)",
                                                      "insertCondition(button, condition, expected)"});
}

void KyCompositeButtonObject::finalizeType() {
    KyType::remove(msType);
}

const KyType* KyCompositeButtonObject::getType() {
    if (!msType)
        initializeType();
    return msType;
}

const KyType* KyCompositeButtonObject::getObjectType() const {
    return getType();
}

KyCompositeButtonObject* KyCompositeButtonObject::cast(KyObject* object) {
    return kyCast<KyCompositeButtonObject>(object);
}

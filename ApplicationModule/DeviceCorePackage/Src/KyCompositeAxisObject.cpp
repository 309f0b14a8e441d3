// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyCompositeAxisObject.h"

#include "KyCallSignatures.h"
#include "KyCompositeArguments_p.h"

#include <memory>

const KyType* KyCompositeAxisObject::msType = nullptr;

namespace {

using KyCompositeArguments::Check;

constexpr int cOperations[] = {eOperationAdd, eOperationMultiply, eOperationSubtract,
                               eOperationSet, eOperationStep,     eOperationAccumulate};

int withoutNormalized(int operation) {
    return operation & ~static_cast<int>(eOperationNormalized);
}

} // namespace

KyCompositeAxisObject::KyCompositeAxisObject() {
    setChannel(mComposite);
}

KyObject* KyCompositeAxisObject::clone() const {
    auto copy = std::make_unique<KyCompositeAxisObject>();
    copy->mComposite = mComposite;
    copy->mSources = mSources;
    return copy.release();
}

bool KyCompositeAxisObject::insertMappedAxis(KyObject* axis, int operation, int position) {
    if (!Check(*this).operation(withoutNormalized(operation), cOperations))
        return false;
    const KyAxisObject* source = mSources.accept<KyAxisObject>(axis, *this);
    if (source)
        mComposite.insertMappedAxis(*source->editOwn(), static_cast<unsigned>(operation), position);
    return source != nullptr;
}

bool KyCompositeAxisObject::insertMappedButton(KyObject* button, int action, float value, int operation, int position) {
    if (!Check(*this).action(action).finite(value).operation(withoutNormalized(operation), cOperations))
        return false;
    const KyButtonObject* source = mSources.accept<KyButtonObject>(button, *this);
    if (source)
        mComposite.insertMappedButton(*source->editOwn(), static_cast<KyButtonAction>(action), value,
                                      static_cast<unsigned>(operation), position);
    return source != nullptr;
}

bool KyCompositeAxisObject::insertConstant(int operation, float value, int position) {
    const bool isRight(Check(*this).finite(value).operation(withoutNormalized(operation), cOperations));
    if (isRight)
        mComposite.insertConstant(static_cast<unsigned>(operation), value, position);
    return isRight;
}

bool KyCompositeAxisObject::insertCondition(KyObject* button, int condition, int expected) {
    return KyCompositeArguments::insertCondition(mComposite, mSources, *this, button, condition, expected);
}

void KyCompositeAxisObject::initializeType() {
    if (msType)
        return;
    KyAxisObject::initializeType();
    using C = KyCompositeAxisObject;
    KyTypeBuilder<C> builder("KyCompositeAxisObject", KyAxisObject::getType());
    builder.factory()
        .method("insertMappedAxis", &C::insertMappedAxis)
        .method("insertMappedAxis", [](C& c, KyObject* axis, int op) { return c.insertMappedAxis(axis, op); })
        .method("insertMappedButton", &C::insertMappedButton)
        .method("insertMappedButton", [](C& c, KyObject* button, int action, float value,
                                         int op) { return c.insertMappedButton(button, action, value, op); })
        .method("insertConstant", &C::insertConstant)
        .method("insertConstant", [](C& c, int op, float value) { return c.insertConstant(op, value); })
        .method("insertCondition", &C::insertCondition)
        .method("mapNormalizedValueToAxis", &C::mapNormalizedValueToAxis)
        .method("update", &C::update);
    KyCompositeArguments::addOperationNames(builder);
    KyCompositeArguments::addButtonNames(builder);
    msType = builder.build();
    KyCallSignatures::add("KyCompositeAxisObject",
                          {"insertMappedAxis(axis, operation, position?)",
                           "insertMappedButton(button, action, value, operation, position?)",
                           "insertConstant(operation, value, position?)",
                           "insertCondition(button, condition, expected)", "mapNormalizedValueToAxis(value)"});
}

void KyCompositeAxisObject::finalizeType() {
    KyType::remove(msType);
}

const KyType* KyCompositeAxisObject::getType() {
    if (!msType)
        initializeType();
    return msType;
}

const KyType* KyCompositeAxisObject::getObjectType() const {
    return getType();
}

KyCompositeAxisObject* KyCompositeAxisObject::cast(KyObject* object) {
    return kyCast<KyCompositeAxisObject>(object);
}

// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyCompositeOrientationObject.h"

#include "KyAxisObject.h"
#include "KyCallSignatures.h"
#include "KyCompositeArguments_p.h"

#include <memory>

const KyType* KyCompositeOrientationObject::msType = nullptr;

namespace {

using KyCompositeArguments::Check;

constexpr int cOperations[] = {eOperationReplace, eOperationSet, eOperationPreMultiply, eOperationPostMultiply};

Check& checkComponent(Check&& check, int component) {
    return check.require(KyCompositeArguments::isBelow(component, eNbOrientationComponents),
                         "there is no such component.");
}

} // namespace

KyCompositeOrientationObject::KyCompositeOrientationObject() {
    setChannel(mComposite);
}

KyObject* KyCompositeOrientationObject::clone() const {
    auto copy = std::make_unique<KyCompositeOrientationObject>();
    copy->mComposite = mComposite;
    copy->mSources = mSources;
    return copy.release();
}

bool KyCompositeOrientationObject::insertMappedAxis(KyObject* axis, int component, int operation, int position) {
    if (!checkComponent(Check(*this), component).operation(operation, cOperations))
        return false;
    const KyAxisObject* source = mSources.accept<KyAxisObject>(axis, *this);
    if (source)
        mComposite.insertMappedAxis(*source->editOwn(), static_cast<KyOrientationComponent>(component),
                                    static_cast<KyOperation>(operation), position);
    return source != nullptr;
}

bool KyCompositeOrientationObject::insertMappedButton(KyObject* button, int action, float angle, int component,
                                                      int operation, int position) {
    if (!checkComponent(Check(*this), component).action(action).finite(angle).operation(operation, cOperations))
        return false;
    const KyButtonObject* source = mSources.accept<KyButtonObject>(button, *this);
    if (source)
        mComposite.insertMappedButton(*source->editOwn(), static_cast<KyButtonAction>(action), angle,
                                      static_cast<KyOrientationComponent>(component),
                                      static_cast<KyOperation>(operation), position);
    return source != nullptr;
}

bool KyCompositeOrientationObject::insertMappedOrientation(KyObject* orientation, int operation, int position) {
    if (!Check(*this).operation(operation, cOperations))
        return false;
    const KyOrientationObject* source = mSources.accept<KyOrientationObject>(orientation, *this);
    if (source)
        mComposite.insertMappedOrientation(*source->editOwn(), static_cast<KyOperation>(operation), position);
    return source != nullptr;
}

bool KyCompositeOrientationObject::insertConstant(int operation, const KyQuat<float>& value, int position) {
    const bool isRight(
        Check(*this).finite(value.x).finite(value.y).finite(value.z).finite(value.w).operation(operation, cOperations));
    if (isRight)
        mComposite.insertConstant(static_cast<unsigned>(operation), value, position);
    return isRight;
}

bool KyCompositeOrientationObject::insertCondition(KyObject* button, int condition, int expected) {
    return KyCompositeArguments::insertCondition(mComposite, mSources, *this, button, condition, expected);
}

float KyCompositeOrientationObject::mapChannelValueToAngle(KyObject* axis) const {
    const auto* object = kyCast<KyAxisObject>(axis);
    const KyDeviceAxisChannel* channel = object ? object->editOwn() : nullptr;
    return channel ? mComposite.mapChannelValueToAngle(*channel) : 0.0F;
}

void KyCompositeOrientationObject::initializeType() {
    if (msType)
        return;
    KyOrientationObject::initializeType();
    using C = KyCompositeOrientationObject;
    KyTypeBuilder<C> builder("KyCompositeOrientationObject", KyOrientationObject::getType());
    builder.factory()
        .method("insertMappedAxis", &C::insertMappedAxis)
        .method("insertMappedAxis",
                [](C& c, KyObject* axis, int component, int op) { return c.insertMappedAxis(axis, component, op); })
        .method("insertMappedButton", &C::insertMappedButton)
        .method("insertMappedButton", [](C& c, KyObject* button, int action, float angle, int component,
                                         int op) { return c.insertMappedButton(button, action, angle, component, op); })
        .method("insertMappedOrientation", &C::insertMappedOrientation)
        .method("insertMappedOrientation",
                [](C& c, KyObject* orientation, int op) { return c.insertMappedOrientation(orientation, op); })
        .method("insertConstant", &C::insertConstant)
        .method("insertConstant", [](C& c, int op, const KyQuat<float>& value) { return c.insertConstant(op, value); })
        .method("insertCondition", &C::insertCondition)
        .method("mapChannelValueToAngle", &C::mapChannelValueToAngle)
        .method("update", &C::update)
        .enumeration({{"eComponentHeading", eComponentHeading},
                      {"eComponentPitch", eComponentPitch},
                      {"eComponentRoll", eComponentRoll},
                      {"eNbOrientationComponents", eNbOrientationComponents}});
    KyCompositeArguments::addOperationNames(builder);
    KyCompositeArguments::addButtonNames(builder);
    msType = builder.build();
    KyCallSignatures::add("KyCompositeOrientationObject",
                          {"insertMappedAxis(axis, component, operation, position?)",
                           "insertMappedButton(button, action, angle, component, operation, position?)",
                           "insertMappedOrientation(orientation, operation, position?)",
                           "insertConstant(operation, value, position?)",
                           "insertCondition(button, condition, expected)", "mapChannelValueToAngle(axis)"});
}

void KyCompositeOrientationObject::finalizeType() {
    KyType::remove(msType);
}

const KyType* KyCompositeOrientationObject::getType() {
    if (!msType)
        initializeType();
    return msType;
}

const KyType* KyCompositeOrientationObject::getObjectType() const {
    return getType();
}

KyCompositeOrientationObject* KyCompositeOrientationObject::cast(KyObject* object) {
    return kyCast<KyCompositeOrientationObject>(object);
}

// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyLuaTestObjects.h"

#include "KyTypeBuilder.h"

const KyType* LuaTestLamp::msType = nullptr;
const KyType* LuaTestSpot::msType = nullptr;
const KyType* LuaTestCounted::msType = nullptr;
const KyType* LuaTestTexture::msType = nullptr;
const KyType* LuaTestFailing::msType = nullptr;
int LuaTestLamp::msNbAlive = 0;
int LuaTestCounted::msNbAlive = 0;
int LuaTestTexture::msNbAlive = 0;

std::string LuaTestLamp::join(const std::vector<std::string>& texts) const {
    std::string joined;
    for (const std::string& text : texts)
        joined += text + ";";
    return joined;
}

double LuaTestLamp::callHook() {
    if (mHook)
        mHook();
    return mPower;
}

const KyType* LuaTestLamp::getType() {
    initializeType();
    return msType;
}

void LuaTestLamp::initializeType() {
    if (msType)
        return;
    msType = KyTypeBuilder<LuaTestLamp>("LuaTestLamp", KyObject::getType())
                 .factory()
                 .constructor([](double power) { return new LuaTestLamp(power); })
                 .constructor([](const std::string& label) { return new LuaTestLamp(label); })
                 .attribute("Power", &LuaTestLamp::getPower, &LuaTestLamp::setPower)
                 .attribute("Count", &LuaTestLamp::getCount, &LuaTestLamp::setCount)
                 .attribute("Label", &LuaTestLamp::getLabel, &LuaTestLamp::setLabel)
                 .attribute("On", &LuaTestLamp::isOn, &LuaTestLamp::setOn)
                 .attribute("Position", &LuaTestLamp::getPosition, &LuaTestLamp::setPosition)
                 .attribute("Partner", &LuaTestLamp::getPartner, &LuaTestLamp::setPartner)
                 .attribute("Fixed", &LuaTestLamp::getFixed)
                 .attribute("Refusing", &LuaTestLamp::getPower, &LuaTestLamp::refuse)
                 .attribute("Failing", &LuaTestLamp::fail)
                 .attribute("touched", &LuaTestLamp::getCount)
                 .container("Targets", &LuaTestLamp::getNbTargets, &LuaTestLamp::getTarget, &LuaTestLamp::setTarget,
                            &LuaTestLamp::insertTarget, &LuaTestLamp::removeTarget)
                 .component<&LuaTestLamp::getBulb>("bulb")
                 .component<&LuaTestLamp::getBulb>("Label")
                 .component<&LuaTestLamp::getBulb>("touch")
                 .method("add", &LuaTestLamp::add)
                 .method("describe", &LuaTestLamp::describeNumber)
                 .method("describe", &LuaTestLamp::describeText)
                 .method("describe", &LuaTestLamp::describeLamp)
                 .method("describe", &LuaTestLamp::describeBoth)
                 .method("join", &LuaTestLamp::join)
                 .method("getPowers", &LuaTestLamp::getPowers)
                 .method("getNothing", &LuaTestLamp::getNothing)
                 .method("touch", &LuaTestLamp::touch)
                 .method("breakDown", &LuaTestLamp::breakDown)
                 .method("callHook", &LuaTestLamp::callHook)
                 .staticMethod("sum", &LuaTestLamp::sum)
                 .enumeration({{"eOff", 0}, {"eDim", 3}, {"eBright", 7}})
                 .build();
}

void LuaTestLamp::finalizeType() {
    KyType::remove(msType);
}

const KyType* LuaTestSpot::getType() {
    initializeType();
    return msType;
}

void LuaTestSpot::initializeType() {
    if (msType)
        return;
    msType = KyTypeBuilder<LuaTestSpot>("LuaTestSpot", LuaTestLamp::getType())
                 .factory()
                 .attribute("Angle", &LuaTestSpot::getAngle, &LuaTestSpot::setAngle)
                 .method("widen", &LuaTestSpot::widen)
                 .build();
}

void LuaTestSpot::finalizeType() {
    KyType::remove(msType);
}

double LuaTestCounted::callHook() {
    if (mHook)
        mHook();
    return mValue;
}

const KyType* LuaTestCounted::getType() {
    initializeType();
    return msType;
}

void LuaTestCounted::initializeType() {
    if (msType)
        return;
    msType = KyTypeBuilder<LuaTestCounted>("LuaTestCounted", KyObject::getType())
                 .factory()
                 .attribute("Value", &LuaTestCounted::getValue, &LuaTestCounted::setValue)
                 .method("callHook", &LuaTestCounted::callHook)
                 .build();
}

void LuaTestCounted::finalizeType() {
    KyType::remove(msType);
}

const KyType* LuaTestTexture::getType() {
    initializeType();
    return msType;
}

void LuaTestTexture::initializeType() {
    if (!msType)
        msType = KyTypeBuilder<LuaTestTexture>("LuaTestTexture", KyGraphicsObject::getType()).factory().build();
}

void LuaTestTexture::finalizeType() {
    KyType::remove(msType);
}

bool LuaTestFailing::Container::getNbValues(const KyObject&, unsigned& count) const {
    count = mCount;
    return mCountWorks;
}

bool LuaTestFailing::Container::getValue(const KyObject&, KyField& value, unsigned index) const {
    value = KyField(index);
    return mReadWorks;
}

const KyType* LuaTestFailing::getType() {
    initializeType();
    return msType;
}

void LuaTestFailing::initializeType() {
    if (!msType)
        msType = KyTypeBuilder<LuaTestFailing>("LuaTestFailing", KyObject::getType()).build();
}

void LuaTestFailing::finalizeType() {
    KyType::remove(msType);
}

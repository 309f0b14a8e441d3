// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyLuaTestObjects.h"

#include "KyTypeBuilder.h"

std::string LuaTestLamp::join(const std::vector<std::string>& texts) const {
    std::string joined;
    for (const std::string& text : texts)
        joined += text + ";";
    return joined;
}

const KyType* LuaTestLamp::describe() {
    return KyTypeBuilder<LuaTestLamp>("LuaTestLamp", KyObject::getType())
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

const KyType* LuaTestSpot::describe() {
    return KyTypeBuilder<LuaTestSpot>("LuaTestSpot", LuaTestLamp::getType())
        .factory()
        .attribute("Angle", &LuaTestSpot::getAngle, &LuaTestSpot::setAngle)
        .method("widen", &LuaTestSpot::widen)
        .build();
}

const KyType* LuaTestCounted::describe() {
    return KyTypeBuilder<LuaTestCounted>("LuaTestCounted", KyObject::getType())
        .factory()
        .attribute("Value", &LuaTestCounted::getValue, &LuaTestCounted::setValue)
        .method("callHook", &LuaTestCounted::callHook)
        .build();
}

const KyType* LuaTestTexture::describe() {
    return KyTypeBuilder<LuaTestTexture>("LuaTestTexture", KyGraphicsObject::getType()).factory().build();
}

const KyType* LuaTestFailing::describe() {
    return KyTypeBuilder<LuaTestFailing>("LuaTestFailing", KyObject::getType()).build();
}

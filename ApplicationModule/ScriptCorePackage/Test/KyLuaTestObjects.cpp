// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyLuaTestObjects.h"

#include "KyTypeBuilder.h"

#include <numeric>

namespace {

template <class T, class Value>
auto setter(Value T::*member) {
    return [member](T& object, const Value& value) { object.*member = value; };
}

} // namespace

const KyType* LuaTestLamp::describe() {
    return KyTypeBuilder<LuaTestLamp>("LuaTestLamp", KyObject::getType())
        .factory()
        .constructor([](double power) { return new LuaTestLamp(power); })
        .constructor([](const std::string& label) { return new LuaTestLamp(label); })
        .attribute("Power", &LuaTestLamp::mPower, setter(&LuaTestLamp::mPower))
        .attribute("Count", &LuaTestLamp::mCount, setter(&LuaTestLamp::mCount))
        .attribute("Label", &LuaTestLamp::mLabel, setter(&LuaTestLamp::mLabel))
        .attribute("On", &LuaTestLamp::mIsOn, setter(&LuaTestLamp::mIsOn))
        .attribute("Position", &LuaTestLamp::mPosition, setter(&LuaTestLamp::mPosition))
        .attribute("Partner", &LuaTestLamp::mPartner, setter(&LuaTestLamp::mPartner))
        .attribute("Fixed", &LuaTestLamp::mPower)
        .attribute("Refusing", &LuaTestLamp::mPower, &LuaTestLamp::refuse)
        .attribute("Failing", &LuaTestLamp::fail)
        .container("Targets", &LuaTestLamp::getNbTargets, &LuaTestLamp::getTarget, &LuaTestLamp::setTarget,
                   &LuaTestLamp::insertTarget, &LuaTestLamp::removeTarget)
        .component<&LuaTestLamp::getBulb>("bulb")
        .component<&LuaTestLamp::getBulb>("Label")
        .component<&LuaTestLamp::getBulb>("touch")
        .method("add", &LuaTestLamp::add)
        .method("describe", [](const LuaTestLamp&, double) { return std::string("number"); })
        .method("describe", [](const LuaTestLamp&, const std::string&) { return std::string("text"); })
        .method("describe", [](const LuaTestLamp&, LuaTestLamp*) { return std::string("lamp"); })
        .method("describe", [](const LuaTestLamp&, double, const std::string&) { return std::string("both"); })
        .method("join",
                [](const LuaTestLamp&, const std::vector<std::string>& texts) {
                    return std::accumulate(texts.begin(), texts.end(), std::string());
                })
        .method("getPowers", &LuaTestLamp::getPowers)
        .method("getNothing", [](const LuaTestLamp&) -> KyObject* { return nullptr; })
        .method("touch", &LuaTestLamp::touch)
        .method("breakDown", &LuaTestLamp::breakDown)
        .method("callHook", &LuaTestLamp::callHook)
        .staticMethod("sum", [](double a, double b) { return a + b; })
        .enumeration({{"eOff", 0}, {"eDim", 3}, {"eBright", 7}})
        .build();
}

const KyType* LuaTestSpot::describe() {
    return KyTypeBuilder<LuaTestSpot>("LuaTestSpot", LuaTestLamp::getType())
        .factory()
        .attribute("Angle", &LuaTestSpot::mAngle, setter(&LuaTestSpot::mAngle))
        .method("widen", &LuaTestSpot::widen)
        .build();
}

const KyType* LuaTestCounted::describe() {
    return KyTypeBuilder<LuaTestCounted>("LuaTestCounted", KyObject::getType())
        .factory()
        .attribute("Value", &LuaTestCounted::mValue, setter(&LuaTestCounted::mValue))
        .method("callHook", &LuaTestCounted::callHook)
        .build();
}

const KyType* LuaTestTexture::describe() {
    return KyTypeBuilder<LuaTestTexture>("LuaTestTexture", KyGraphicsObject::getType()).factory().build();
}

const KyType* LuaTestFailing::describe() {
    return KyTypeBuilder<LuaTestFailing>("LuaTestFailing", KyObject::getType()).build();
}

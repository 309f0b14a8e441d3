// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyButtonAction.h"
#include "KyButtonCondition.h"
#include "KyButtonObject.h"
#include "KyCompositeChannel.h"
#include "KyCompositeSources.h"
#include "KyOperation.h"

#include "KyTypeBuilder.h"

#include <cmath>
#include <cstdint>
#include <limits>

/// The numbers that scripts give to composites: what they may be, and their names in the class tables.
namespace KyCompositeArguments {

inline bool isByte(int value) {
    return value >= 0 && value <= std::numeric_limits<std::uint8_t>::max();
}

template <class Enum>
bool isBelow(int value, Enum end) {
    return value >= 0 && static_cast<unsigned>(value) < static_cast<unsigned>(end);
}

/// What every insertion of a composite checks; the first that is wrong is reported.
class Check {
public:
    explicit Check(const KyChannelObject& user)
        : mUser(user) {}

    Check& require(bool isRight, const char* reason) {
        mIsRight = mIsRight && (isRight || KyCompositeSources::refuse(mUser, reason));
        return *this;
    }
    template <class Operations>
    Check& operation(int operation, const Operations& known) {
        bool isKnown = false;
        for (const int code : known)
            isKnown = isKnown || code == operation;
        return require(isKnown, "there is no such operation.");
    }
    Check& action(int action) { return require(isBelow(action, eNbButtonActions), "there is no such action."); }
    Check& condition(int kind) { return require(isBelow(kind, eNbButtonConditions), "there is no such condition."); }
    Check& byte(int value) { return require(isByte(value), "a button has values of 0 to 255."); }
    Check& finite(float value) { return require(std::isfinite(value), "the value is not finite."); }

    explicit operator bool() const { return mIsRight; }

private:
    const KyChannelObject& mUser;
    bool mIsRight = true;
};

template <class T>
void addButtonNames(KyTypeBuilder<T>& builder) {
    builder
        .enumeration({{"eConditionEqual", eConditionEqual},
                      {"eConditionDifferent", eConditionDifferent},
                      {"eNbButtonConditions", eNbButtonConditions}})
        .enumeration({{"eActionWhilePressed", eActionWhilePressed},
                      {"eActionWhileReleased", eActionWhileReleased},
                      {"eActionOnPress", eActionOnPress},
                      {"eActionOnRelease", eActionOnRelease},
                      {"eNbButtonActions", eNbButtonActions}});
}

template <class T>
void addOperationNames(KyTypeBuilder<T>& builder) {
    builder.enumeration({{"eOperationReplace", eOperationReplace},
                         {"eOperationAdd", eOperationAdd},
                         {"eOperationMultiply", eOperationMultiply},
                         {"eOperationSubtract", eOperationSubtract},
                         {"eOperationSet", eOperationSet},
                         {"eOperationStep", eOperationStep},
                         {"eOperationNormalized", eOperationNormalized},
                         {"eOperationAccumulate", eOperationAccumulate},
                         {"eOperationPreMultiply", eOperationPreMultiply},
                         {"eOperationPostMultiply", eOperationPostMultiply},
                         {"eOperationAddValue", eOperationAddValue},
                         {"eOperationMultiplyValue", eOperationMultiplyValue},
                         {"eOperationSubtractValue", eOperationSubtractValue},
                         {"eOperationSetValue", eOperationSetValue}});
}

/// The condition that all composites take alike.
inline bool insertCondition(KyCompositeChannel& channel, KyCompositeSources& sources, const KyChannelObject& user,
                            KyObject* button, int kind, int expected) {
    if (!Check(user).condition(kind).byte(expected))
        return false;
    const KyButtonObject* source = sources.accept<KyButtonObject>(button, user);
    if (source)
        channel.insertCondition(*source->editOwn(), static_cast<KyButtonCondition>(kind),
                                static_cast<std::uint8_t>(expected));
    return source != nullptr;
}

} // namespace KyCompositeArguments

// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyCompositeButtonChannel.h"

#include "KyException.h"

KyCompositeButtonChannel::KyCompositeButtonChannel() {
    enable();
    setAccessMode(eAccessWriteOnly);
}

void KyCompositeButtonChannel::insertMappedButton(const KyDeviceButtonChannel& button, KyButtonAction action,
                                                  std::uint8_t value, unsigned operation, int position) {
    mMappedButtons.push_back({KyChannelReference<const KyDeviceButtonChannel>(button), action, value});
    insertSource(eSourceButton, operation, static_cast<unsigned>(mMappedButtons.size() - 1), position);
}

void KyCompositeButtonChannel::insertConstant(unsigned operation, std::uint8_t value, int position) {
    mConstants.push_back(value);
    insertSource(eSourceConstant, operation, static_cast<unsigned>(mConstants.size() - 1), position);
}

bool KyCompositeButtonChannel::update() {
    if (isConditionChecked())
        for (const Source& source : getSources())
            useSource(source);
    const bool isChanged = getValue() != getPreviousValue();
    settle();
    return isChanged;
}

void KyCompositeButtonChannel::useSource(const Source& source) {
    switch (source.kind) {
    case eSourceAxis:
        KyException::create("KyCompositeAxisChannel::getValue(): Cannot use an axis mapped on an button.");
        break;
    case eSourceButton:
        if (source.index < mMappedButtons.size())
            useButton(mMappedButtons[source.index], source.operation);
        break;
    case eSourceOrientation:
        KyException::create("KyCompositeAxisChannel::getValue(): Cannot use an orientation mapped on an button.");
        break;
    case eSourceConstant:
        if (source.index < mConstants.size())
            computeOperation(source.operation, mConstants[source.index]);
        break;
    default:
        break;
    }
}

void KyCompositeButtonChannel::useButton(const MappedButton& mapped, std::uint32_t operation) {
    if (const KyDeviceButtonChannel* button = getFiring(mapped.button, mapped.action))
        computeOperation(operation, operation >= eOperationAddValue ? mapped.value : button->getValue());
}

void KyCompositeButtonChannel::computeOperation(std::uint32_t operation, unsigned operand) {
    switch (operation) {
    case eOperationAdd:
    case eOperationAddValue:
        return setValue(static_cast<std::uint8_t>(getValue() + operand));
    case eOperationMultiply:
    case eOperationMultiplyValue:
        return setValue(static_cast<std::uint8_t>(getValue() * operand));
    case eOperationSubtract:
    case eOperationSubtractValue:
        return setValue(static_cast<std::uint8_t>(getValue() - operand));
    case eOperationSet:
    case eOperationSetValue:
        return setValue(static_cast<std::uint8_t>(operand));
    default:
        return;
    }
}

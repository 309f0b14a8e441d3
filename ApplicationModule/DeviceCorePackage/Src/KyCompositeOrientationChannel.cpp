// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyCompositeOrientationChannel.h"

#include <numbers>

namespace {

KyQuat<float> makeTurn(float angle, KyOrientationComponent component) {
    switch (component) {
    case eComponentHeading:
        return KyQuat<float>::fromEuler(KyVec3<float>(angle, 0.0F, 0.0F));
    case eComponentPitch:
        return KyQuat<float>::fromEuler(KyVec3<float>(0.0F, angle, 0.0F));
    case eComponentRoll:
        return KyQuat<float>::fromEuler(KyVec3<float>(0.0F, 0.0F, angle));
    default:
        return {};
    }
}

/// Nothing where there is no such operation on orientations.
std::optional<KyQuat<float>> computeOperation(std::uint32_t operation, const KyQuat<float>& value,
                                              const KyQuat<float>& operand) {
    switch (operation) {
    case eOperationReplace:
    case eOperationSet:
        return operand;
    case eOperationPreMultiply:
        return operand * value;
    case eOperationPostMultiply:
        return value * operand;
    default:
        return std::nullopt;
    }
}

} // namespace

KyCompositeOrientationChannel::KyCompositeOrientationChannel() {
    enable();
}

void KyCompositeOrientationChannel::insertMappedAxis(const KyDeviceAxisChannel& axis, KyOrientationComponent component,
                                                     KyOperation operation, int position) {
    mMappedAxes.push_back({KyChannelReference<const KyDeviceAxisChannel>(axis), component});
    insertSource(eSourceAxis, operation, static_cast<unsigned>(mMappedAxes.size() - 1), position);
}

void KyCompositeOrientationChannel::insertMappedButton(const KyDeviceButtonChannel& button, KyButtonAction action,
                                                       float angle, KyOrientationComponent component,
                                                       KyOperation operation, int position) {
    mMappedButtons.push_back({KyChannelReference<const KyDeviceButtonChannel>(button), angle, component, action});
    insertSource(eSourceButton, operation, static_cast<unsigned>(mMappedButtons.size() - 1), position);
}

void KyCompositeOrientationChannel::insertMappedOrientation(const KyDeviceOrientationChannel& orientation,
                                                            KyOperation operation, int position) {
    mMappedOrientations.emplace_back(orientation);
    insertSource(eSourceOrientation, operation, static_cast<unsigned>(mMappedOrientations.size() - 1), position);
}

void KyCompositeOrientationChannel::insertConstant(unsigned operation, const KyQuat<float>& value, int position) {
    mConstants.push_back(value);
    insertSource(eSourceConstant, operation, static_cast<unsigned>(mConstants.size() - 1), position);
}

float KyCompositeOrientationChannel::mapChannelValueToAngle(const KyDeviceAxisChannel& axis) const {
    const double range = static_cast<double>(axis.getMaximum()) - static_cast<double>(axis.getMinimum());
    if (range == 0.0)
        return 0.0F;
    const double way = static_cast<double>(axis.getValue()) - static_cast<double>(axis.getMinimum());
    return static_cast<float>(way * (2.0 * std::numbers::pi) / range);
}

bool KyCompositeOrientationChannel::update() {
    if (isConditionChecked())
        computeSources();
    if (getValue() == mPreviousValue && getDeltaValue() == mPreviousDeltaValue)
        return false;
    mPreviousValue = getValue();
    mPreviousDeltaValue = getDeltaValue();
    return true;
}

void KyCompositeOrientationChannel::computeSources() {
    KyQuat<float> result = isAbsolute() ? getValue() : getDeltaValue();
    bool isComputed = false;
    for (const Source& source : getSources())
        if (const auto operand = getOperand(source))
            if (const auto computed = computeOperation(source.operation, result, *operand)) {
                result = *computed;
                isComputed = true;
            }
    // The last turn stays the operand of the next update, but it turns the value only once.
    if (isComputed)
        setDeviceValue(result);
}

std::optional<KyQuat<float>> KyCompositeOrientationChannel::getOperand(const Source& source) const {
    const unsigned index = source.index;
    switch (source.kind) {
    case eSourceAxis:
        return index < mMappedAxes.size() ? getOperand(mMappedAxes[index]) : std::nullopt;
    case eSourceButton:
        return index < mMappedButtons.size() ? getOperand(mMappedButtons[index]) : std::nullopt;
    case eSourceOrientation:
        if (index < mMappedOrientations.size())
            if (const auto* channel = mMappedOrientations[index].get(); channel && channel->isEnabled())
                return channel->isAbsolute() ? channel->getValue() : channel->getDeltaValue();
        return std::nullopt;
    case eSourceConstant:
        return index < mConstants.size() ? std::optional(mConstants[index]) : std::nullopt;
    default:
        return std::nullopt;
    }
}

std::optional<KyQuat<float>> KyCompositeOrientationChannel::getOperand(const MappedAxis& mapped) const {
    const KyDeviceAxisChannel* axis = mapped.axis.get();
    if (!axis || !axis->isEnabled())
        return std::nullopt;
    return makeTurn(axis->getValue(), mapped.component);
}

std::optional<KyQuat<float>> KyCompositeOrientationChannel::getOperand(const MappedButton& mapped) const {
    if (!getFiring(mapped.button, mapped.action))
        return std::nullopt;
    return makeTurn(mapped.angle, mapped.component);
}

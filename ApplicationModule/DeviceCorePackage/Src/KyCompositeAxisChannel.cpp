// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyCompositeAxisChannel.h"

#include "KyException.h"

#include <algorithm>
#include <cmath>
#include <iterator>

KyCompositeAxisChannel::KyCompositeAxisChannel() {
    enable();
}

void KyCompositeAxisChannel::insertMappedAxis(const KyDeviceAxisChannel& axis, unsigned operation, int position) {
    mMappedAxes.emplace_back(axis);
    insertSource(eSourceAxis, operation, static_cast<unsigned>(mMappedAxes.size() - 1), position);
}

void KyCompositeAxisChannel::insertMappedButton(const KyDeviceButtonChannel& button, KyButtonAction action, float value,
                                                unsigned operation, int position) {
    mMappedButtons.push_back({KyChannelReference<const KyDeviceButtonChannel>(button), action, value});
    insertSource(eSourceButton, operation, static_cast<unsigned>(mMappedButtons.size() - 1), position);
}

void KyCompositeAxisChannel::insertConstant(unsigned operation, float value, int position) {
    mConstants.push_back(value);
    insertSource(eSourceConstant, operation, static_cast<unsigned>(mConstants.size() - 1), position);
}

bool KyCompositeAxisChannel::update() {
    if (isConditionChecked()) {
        if (mNbPreparedIndices.value != getNbIndices())
            prepareSteps();
        for (const Step& step : mSteps) {
            if (!step.isPlainAxis)
                takeStep(step);
            else if (const KyDeviceAxisChannel* axis = step.axis.get(); axis && axis->isEnabled())
                step.apply(*this, axis->getValue());
        }
    }
    if (getAbsoluteValue() == mPreviousAbsoluteValue && getDeltaValue() == mPreviousDeltaValue)
        return false;
    mPreviousAbsoluteValue = getAbsoluteValue();
    mPreviousDeltaValue = getDeltaValue();
    return true;
}

KyCompositeAxisChannel::Apply KyCompositeAxisChannel::findOperation(std::uint32_t operation) {
    using Axis = KyCompositeAxisChannel;
    struct Entry {
        std::uint32_t operation;
        Apply apply;
    };
    static constexpr Entry cEntries[] = {
        {eOperationAdd, [](Axis& axis, float operand) { axis.setAbsoluteValue(axis.getAbsoluteValue() + operand); }},
        {eOperationMultiply,
         [](Axis& axis, float operand) { axis.setAbsoluteValue(axis.getAbsoluteValue() * operand); }},
        {eOperationSubtract,
         [](Axis& axis, float operand) { axis.setAbsoluteValue(axis.getAbsoluteValue() - operand); }},
        {eOperationSet, [](Axis& axis, float operand) { axis.setAbsoluteValue(operand); }},
        {eOperationStep, [](Axis& axis, float operand) { axis.setDeltaValue(operand); }},
        {eOperationAccumulate, [](Axis& axis, float operand) { axis.accumulate(operand); }},
    };
    const auto* found = std::ranges::find(cEntries, operation, &Entry::operation);
    return found != std::end(cEntries) ? found->apply : [](Axis&, float) {};
}

void KyCompositeAxisChannel::prepareSteps() {
    mSteps.clear();
    for (const Source& source : getSources())
        prepareStep(source);
    mNbPreparedIndices.value = getNbIndices();
}

void KyCompositeAxisChannel::prepareStep(const Source& source) {
    const unsigned index = source.index;
    const bool isNormalized = (source.operation & eOperationNormalized) != 0;
    Step step{source.kind, isNormalized, source.kind == eSourceAxis && !isNormalized,
              findOperation(source.operation & ~std::uint32_t{eOperationNormalized})};
    if (source.kind == eSourceAxis && index < mMappedAxes.size())
        step.axis = mMappedAxes[index];
    else if (source.kind == eSourceButton && index < mMappedButtons.size())
        step.button = mMappedButtons[index];
    else if (source.kind == eSourceConstant && index < mConstants.size())
        step.constant = mConstants[index];
    else if (source.kind != eSourceOrientation)
        return;
    mSteps.push_back(step);
}

void KyCompositeAxisChannel::takeStep(const Step& step) {
    float operand = step.constant;
    if (step.kind == eSourceOrientation)
        return KyException::create("KyCompositeAxisChannel::getValue(): Cannot use an orientation mapped on an axis.");
    if (step.kind == eSourceAxis) {
        const KyDeviceAxisChannel* axis = step.axis.get();
        if (!axis || !axis->isEnabled())
            return;
        operand = axis->getValue();
    } else if (step.kind == eSourceButton) {
        if (!getFiring(step.button.button, step.button.action))
            return;
        operand = getStepFactor() * step.button.value;
    }
    step.apply(*this, step.isNormalized ? mapNormalizedValueToAxis(operand) : operand);
}

void KyCompositeAxisChannel::accumulate(float step) {
    const float former = getDeltaValue();
    // A step that is ignored leaves it at that.
    overrideDeltaValue(0.0F);
    setDeltaValue(step);
    if (const float sum = getDeltaValue() + former; std::isfinite(sum))
        overrideDeltaValue(sum);
}

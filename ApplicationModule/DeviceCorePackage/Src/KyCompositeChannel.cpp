// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyCompositeChannel.h"

#include <algorithm>
#include <array>

namespace {

/// A bit for every state in which the action takes place; a state is 1 for pressed plus 2 for formerly pressed.
constexpr std::array<unsigned, eNbButtonActions> cFiringStates{0b1010, 0b0101, 0b0010, 0b0100};

bool isFiring(const KyDeviceButtonChannel& button, KyButtonAction action) {
    if (action >= eNbButtonActions)
        return false;
    const unsigned state = (button.getValue() != 0 ? 1U : 0U) + (button.getPreviousValue() != 0 ? 2U : 0U);
    return (cFiringStates[action] >> state & 1U) != 0;
}

} // namespace

KyCompositeChannel::~KyCompositeChannel() = default;

void KyCompositeChannel::insertCondition(const KyDeviceButtonChannel& button, KyButtonCondition condition,
                                         std::uint8_t expected) {
    mConditions.push_back({KyChannelReference<const KyDeviceButtonChannel>(button), condition, expected});
}

void KyCompositeChannel::insertChannel(unsigned index, int position) {
    const std::size_t size = mSources.size();
    const std::size_t place = position < 0 ? size : std::min(static_cast<std::size_t>(position), size);
    mSources.emplace_back();
    ++mNbIndices.value;
    for (std::size_t i = size; i > place; --i)
        mSources[i].index = mSources[i - 1].index;
    mSources[place].index = index;
}

void KyCompositeChannel::insertSource(SourceKind kind, std::uint32_t operation, unsigned index, int position) {
    insertChannel(index, position);
    Source& source = mSources[mNbWholeSources.value++];
    source.kind = kind;
    source.operation = operation;
}

const KyDeviceButtonChannel*
KyCompositeChannel::getFiring(const KyChannelReference<const KyDeviceButtonChannel>& button, KyButtonAction action) {
    const KyDeviceButtonChannel* channel = button.get();
    return channel && channel->isEnabled() && isFiring(*channel, action) ? channel : nullptr;
}

bool KyCompositeChannel::areConditionsFulfilled() const {
    return std::ranges::all_of(mConditions, [](const Condition& condition) {
        const KyDeviceButtonChannel* button = condition.button.get();
        if (!button || condition.kind >= eNbButtonConditions)
            return button != nullptr;
        return (button->getValue() == condition.expected) == (condition.kind == eConditionEqual);
    });
}

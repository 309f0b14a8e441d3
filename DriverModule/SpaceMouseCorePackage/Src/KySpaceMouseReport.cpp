// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KySpaceMouseReport_p.h"

#include <algorithm>

namespace {

enum ReportNumber : std::uint8_t { eTranslation = 1, eRotation = 2, eButtons = 3 };

constexpr int cFullCount = 350;
constexpr std::size_t cNbTripleBytes = 6;

/// The units count x to the right, y towards the user and z down.
std::array<int, 3> readTriple(std::span<const std::uint8_t> bytes) {
    const auto count = [bytes](std::size_t i) {
        return static_cast<std::int16_t>(static_cast<std::uint16_t>(bytes[i] | bytes[i + 1] << 8));
    };
    return {count(0), -count(4), count(2)};
}

bool applyTriples(unsigned first, std::span<const std::uint8_t> bytes, KySpaceMouseState& state) {
    if (bytes.size() < cNbTripleBytes)
        return false;
    state.setAxes(first, readTriple(bytes), cFullCount);
    state.turnsApart = state.turnsApart || first == KySpaceMouseState::eRX;
    if (!state.turnsApart && bytes.size() >= 2 * cNbTripleBytes)
        state.setAxes(KySpaceMouseState::eRX, readTriple(bytes.subspan(cNbTripleBytes)), cFullCount);
    return true;
}

bool applyButtons(std::span<const std::uint8_t> bytes, KySpaceMouseState& state) {
    if (bytes.empty())
        return false;
    std::uint32_t bits = 0;
    for (std::size_t i = 0; i < std::min(bytes.size(), sizeof bits); ++i)
        bits |= static_cast<std::uint32_t>(bytes[i]) << 8 * i;
    state.setButtons(bits);
    return true;
}

} // namespace

void KySpaceMouseState::setAxes(unsigned first, const std::array<int, 3>& counts, int fullCount) {
    std::ranges::transform(counts, axes.begin() + first, [fullCount](int count) {
        return std::clamp(static_cast<float>(count) / static_cast<float>(fullCount), -1.0F, 1.0F);
    });
}

void KySpaceMouseState::setButton(unsigned index, bool isDown) {
    if (index >= cNbButtons)
        return;
    const std::uint32_t bit = std::uint32_t{1} << index;
    setButtons(isDown ? buttons | bit : buttons & ~bit);
}

void KySpaceMouseState::setButtons(std::uint32_t bits) {
    pressed |= bits & ~buttons;
    buttons = bits;
}

bool KySpaceMouseReport::apply(std::span<const std::uint8_t> report, KySpaceMouseState& state) {
    if (report.empty())
        return false;
    const auto bytes = report.subspan(1);
    switch (report.front()) {
    case eTranslation:
        return applyTriples(KySpaceMouseState::eX, bytes, state);
    case eRotation:
        return applyTriples(KySpaceMouseState::eRX, bytes, state);
    case eButtons:
        return applyButtons(bytes, state);
    default:
        return false;
    }
}

// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KySpaceMouseReport_p.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdlib>
#include <vector>

namespace {
void require(bool condition) {
    if (!condition)
        std::abort();
}

void applyOne(const std::vector<std::uint8_t>& report, KySpaceMouseState& state) {
    const KySpaceMouseState before = state;
    const bool isUsed = KySpaceMouseReport::apply(report, state);
    require(std::ranges::all_of(state.axes, [](float value) { return std::abs(value) <= 1.0F; }));
    require((state.pressed & before.pressed) == before.pressed);
    require((state.buttons & ~before.buttons & ~state.pressed) == 0);
    if (!isUsed)
        require(state.axes == before.axes && state.buttons == before.buttons);
}
} // namespace

// Each report is a byte whose lowest 4 bits are its length and whose others its number, and its further bytes, in a
// buffer of just that size.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    KySpaceMouseState state;
    for (std::size_t at = 0; at < size;) {
        std::vector<std::uint8_t> report(data + at, data + std::min(size, at + 1 + data[at] % 16));
        at += report.size();
        report.front() = static_cast<std::uint8_t>(report.front() / 16 % 5);
        applyOne(report, state);
    }
    applyOne({}, state);
    applyOne(std::vector<std::uint8_t>(data, data + size), state);
    return 0;
}

// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyHidDetection.h"

#include <cstddef>
#include <utility>

namespace {

constexpr std::size_t cMaxCharacters = 128;

KyHidDetection::Source gSource = nullptr;

} // namespace

std::vector<KyHidRecord> KyHidDetection::detect() {
    return gSource ? gSource() : detectOnBus();
}

KyHidDetection::Source KyHidDetection::setSource(Source source) {
    return std::exchange(gSource, source);
}

std::string KyHidDetection::narrow(const wchar_t* text) {
    std::string narrowed;
    for (std::size_t i = 0; text && i < cMaxCharacters; ++i) {
        const auto low = static_cast<unsigned char>(static_cast<unsigned long>(text[i]) & 0xFFu);
        if (low == 0)
            break;
        narrowed += static_cast<char>(low);
    }
    return narrowed;
}

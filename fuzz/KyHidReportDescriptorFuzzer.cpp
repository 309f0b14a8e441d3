// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyHidReportDescriptor_p.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <span>
#include <vector>

namespace {

using Bytes = std::vector<std::uint8_t>;
using Usages = std::vector<KyHidUsage>;

void require(bool condition) {
    if (!condition)
        std::abort();
}

/// In a copy of its exact size, so that a byte read behind its end is found.
Usages read(const Bytes& bytes) {
    const Bytes copy(bytes.begin(), bytes.end());
    return KyHidReportDescriptor::getOutermostUsages(copy);
}

/// What was read of a beginning is the beginning of what is read of all, each collection from a byte of its own; a
/// nested collection more changes nothing outside.
void check(const Bytes& bytes) {
    const Usages all = read(bytes);
    require(all.size() <= bytes.size());
    for (std::size_t size = 0; size < bytes.size(); ++size) {
        const Usages some = read(Bytes(bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(size)));
        require(some.size() <= all.size() && std::equal(some.begin(), some.end(), all.begin()));
    }

    Bytes nested{0x05, 0x01, 0x09, 0x05, 0xA1, 0x01};
    nested.insert(nested.end(), bytes.begin(), bytes.end());
    const Usages outermost = read(nested);
    require(!outermost.empty() && outermost.front() == KyHidUsage{1, 5});
}

/// Items that a descriptor is made of where the input has any bytes.
Bytes makeItems(const std::uint8_t* data, std::size_t size) {
    constexpr std::array<std::uint8_t, 12> cPrefixes{0x05, 0x06, 0x09, 0x0B, 0xA1, 0xA0,
                                                     0xC0, 0xA4, 0xB4, 0x81, 0xFE, 0x26};
    Bytes bytes;
    for (std::size_t i = 0; i < size; ++i)
        bytes.push_back(i % 2 ? data[i] : cPrefixes[data[i] % cPrefixes.size()]);
    return bytes;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    constexpr std::size_t cMaxSize = 512;
    size = std::min(size, cMaxSize);
    check(Bytes(data, data + size));
    check(makeItems(data, size));
    return 0;
}

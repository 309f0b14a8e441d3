// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyHidReportDescriptor_p.h"

#include <cstddef>
#include <optional>
#include <utility>

namespace {

using Bytes = std::span<const std::uint8_t>;

/// Tag and type of an item: its first byte without the two bits of the data's size.
enum ItemKind : std::uint8_t {
    eInput = 0x80,
    eOutput = 0x90,
    eCollection = 0xA0,
    eFeature = 0xB0,
    eEndCollection = 0xC0,
    eUsagePage = 0x04,
    ePush = 0xA4,
    ePop = 0xB4,
    eUsage = 0x08,
};

constexpr std::uint8_t cSizeMask = 0x03;
constexpr std::uint8_t cLongItem = 0xFE;
constexpr std::size_t cLongHeaderSize = 3;
constexpr std::size_t cExtendedUsageSize = 4;

struct Item {
    std::uint8_t kind = 0;
    Bytes data;

    std::uint32_t getValue() const {
        std::uint32_t value = 0;
        for (std::size_t i = data.size(); i > 0; --i)
            value = value << 8 | data[i - 1];
        return value;
    }
};

/// Takes the first item off the bytes; none when it is cut short.
std::optional<Item> takeItem(Bytes& bytes) {
    constexpr std::size_t cSizes[] = {0, 1, 2, 4};
    const bool isLong = bytes[0] == cLongItem;
    if (isLong && bytes.size() < 2)
        return {};
    const std::size_t header = isLong ? cLongHeaderSize : 1;
    const std::size_t size = isLong ? bytes[1] : cSizes[bytes[0] & cSizeMask];
    if (bytes.size() < header + size)
        return {};
    // No long item is in use: its kind stays 0, which is none.
    const Item item{isLong ? std::uint8_t{0} : static_cast<std::uint8_t>(bytes[0] & ~cSizeMask),
                    bytes.subspan(header, size)};
    bytes = bytes.subspan(header + size);
    return item;
}

class Reader {
public:
    void take(const Item& item) {
        switch (item.kind) {
        case eUsagePage:
            mPage = static_cast<std::uint16_t>(item.getValue());
            break;
        case ePush:
            mPages.push_back(mPage);
            break;
        case ePop:
            pop();
            break;
        case eUsage:
            // The first one counts where there are several.
            if (!mUsage.isThere)
                mUsage = {true, item.data.size() == cExtendedUsageSize, item.getValue()};
            break;
        case eCollection:
            if (mDepth++ == 0)
                mOutermost.push_back(makeUsage());
            mUsage = {};
            break;
        case eEndCollection:
            mDepth -= mDepth > 0;
            mUsage = {};
            break;
        case eInput:
        case eOutput:
        case eFeature:
            mUsage = {};
            break;
        default:
            break;
        }
    }

    std::vector<KyHidUsage> takeOutermost() { return std::move(mOutermost); }

private:
    void pop() {
        if (mPages.empty())
            return;
        mPage = mPages.back();
        mPages.pop_back();
    }

    /// A usage of four bytes brings its page along.
    KyHidUsage makeUsage() const {
        const auto page = static_cast<std::uint16_t>(mUsage.value >> 16);
        return {mUsage.isExtended ? page : mPage, static_cast<std::uint16_t>(mUsage.value)};
    }

    struct Usage {
        bool isThere = false;
        bool isExtended = false;
        std::uint32_t value = 0;
    };

    std::uint16_t mPage = 0;
    std::vector<std::uint16_t> mPages;
    Usage mUsage;
    std::size_t mDepth = 0;
    std::vector<KyHidUsage> mOutermost;
};

} // namespace

std::vector<KyHidUsage> KyHidReportDescriptor::getOutermostUsages(Bytes descriptor) {
    Reader reader;
    while (!descriptor.empty()) {
        const std::optional<Item> item = takeItem(descriptor);
        if (!item)
            break;
        reader.take(*item);
    }
    return reader.takeOutermost();
}

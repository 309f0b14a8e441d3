// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KySpaceMouseHid_p.h"

#include "KySpaceMouseProducts_p.h"

#include "KyHidDetection.h"

#include <hidapi.h>

#include <algorithm>
#include <array>

namespace {

constexpr std::uint16_t cGenericDesktopPage = 1;
constexpr std::uint16_t cMultiAxisUsage = 8;

/// Models with two buttons; all larger ones number theirs with gaps.
constexpr std::array<std::uint16_t, 6> cTwoButtonProducts{0xC626, 0xC628, 0xC62E, 0xC62F, 0xC635, 0xC636};

unsigned countButtons(std::uint16_t product) {
    return std::ranges::find(cTwoButtonProducts, product) != cTwoButtonProducts.end() ? 2
                                                                                      : KySpaceMouseState::cNbButtons;
}

std::string makeName(const KyHidRecord& record) {
    if (record.product.empty())
        return "SpaceMouse";
    return record.manufacturer.empty() ? record.product : record.manufacturer + " " + record.product;
}

KySpaceMouseUnit makeUnit(const KyHidRecord& record) {
    return {makeName(record), record.path,      record.serial,
            record.vendorId,  record.productId, countButtons(record.productId)};
}

class RawSource : public KySpaceMouseSource {
public:
    explicit RawSource(hid_device* handle)
        : mHandle(handle) {}

    bool read(KySpaceMouseState& state) override {
        std::array<std::uint8_t, 64> report;
        for (int i = 0; i < cNbReportsAtOnce; ++i) {
            const int size = hid_read(mHandle.get(), report.data(), report.size());
            if (size <= 0)
                return size == 0;
            KySpaceMouseReport::apply(std::span(report).first(static_cast<std::size_t>(size)), state);
        }
        return true;
    }

private:
    struct Close {
        void operator()(hid_device* handle) const { hid_close(handle); }
    };

    /// A unit that never falls silent must not hold the frame.
    static constexpr int cNbReportsAtOnce = 64;

    std::unique_ptr<hid_device, Close> mHandle;
};

} // namespace

bool KySpaceMouseHid::isSpaceMouse(const KyHidRecord& record) {
    return record.usagePage == cGenericDesktopPage && record.usage == cMultiAxisUsage &&
           KySpaceMouseProducts::have(record.vendorId, record.productId);
}

std::vector<KySpaceMouseUnit> KySpaceMouseHid::find() {
    if (!mNodes.haveChanged() && !mMustLookAgain)
        return mUnits;
    mMustLookAgain = false;
    mUnits.clear();
    for (const KyHidRecord& record : KyHidDetection::detect()) {
        const auto isPath = [&record](const KySpaceMouseUnit& unit) { return unit.path == record.path; };
        if (isSpaceMouse(record) && std::ranges::none_of(mUnits, isPath))
            mUnits.push_back(makeUnit(record));
    }
    return mUnits;
}

std::unique_ptr<KySpaceMouseSource> KySpaceMouseHid::open(const KySpaceMouseUnit& unit) {
    hid_device* const handle = hid_open_path(unit.path.c_str());
    mMustLookAgain = mMustLookAgain || !handle;
    if (!handle)
        return nullptr;
    auto source = std::make_unique<RawSource>(handle);
    return hid_set_nonblocking(handle, 1) == 0 ? std::move(source) : nullptr;
}

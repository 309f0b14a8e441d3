// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyDeviceInfoMerge_p.h"

#include <tuple>
#include <utility>

namespace {

using Info = KyDeviceInfoMerge::Info;

bool isSameModel(const Info& known, const Info& found) {
    return std::tie(known.vendorId, known.productId, known.deviceType) ==
           std::tie(found.vendorId, found.productId, found.deviceType);
}

bool hasSamePath(const Info& known, const Info& found) {
    return isSameModel(known, found) && known.path == found.path && known.serial == found.serial;
}

/// A unit that was plugged again.
bool hasSameSerial(const Info& known, const Info& found) {
    return isSameModel(known, found) && !found.serial.empty() && known.serial == found.serial;
}

bool isOfTheBus(const Info& info) {
    return !info.path.empty() || !info.serial.empty();
}

} // namespace

KyDeviceInfoMerge::KyDeviceInfoMerge(Infos& known, Infos found)
    : mKnown(known)
    , mFound(std::move(found))
    , mIsThere(mKnown.size(), false)
    , mIsKnown(mFound.size(), false) {}

bool KyDeviceInfoMerge::run() {
    for (const Test isSameUnit : {&hasSamePath, &hasSameSerial})
        for (const bool isInUse : {true, false})
            pair(isSameUnit, isInUse);
    retire();
    for (std::size_t i = 0; i < mFound.size(); ++i) {
        if (mIsKnown[i])
            continue;
        mKnown.push_back(std::move(mFound[i]));
        mHasChanged = true;
    }
    return mHasChanged;
}

void KyDeviceInfoMerge::pair(Test isSameUnit, bool isInUse) {
    for (std::size_t f = 0; f < mFound.size(); ++f) {
        for (std::size_t k = 0; k < mKnown.size() && !mIsKnown[f]; ++k) {
            const bool isInUseNow = mKnown[k].device != nullptr;
            if (mIsThere[k] || isInUseNow != isInUse || !isSameUnit(mKnown[k], mFound[f]))
                continue;
            mIsThere[k] = true;
            mIsKnown[f] = true;
            refresh(mKnown[k], mFound[f]);
        }
    }
}

void KyDeviceInfoMerge::refresh(Info& known, const Info& found) {
    mHasChanged =
        mHasChanged || !known.isPresent || known.path != found.path || known.joystickIndex != found.joystickIndex;
    known.isPresent = true;
    known.path = found.path;
    known.joystickIndex = found.joystickIndex;
}

void KyDeviceInfoMerge::retire() {
    for (std::size_t i = 0; i < mKnown.size(); ++i) {
        Info& info = mKnown[i];
        if (mIsThere[i] || !isOfTheBus(info))
            continue;
        mHasChanged = mHasChanged || info.isPresent || !info.device;
        info.isPresent = false;
    }
    // In place: where none leaves, pointers to entries hold.
    std::erase_if(mKnown, [](const Info& info) { return isOfTheBus(info) && !info.isPresent && !info.device; });
}

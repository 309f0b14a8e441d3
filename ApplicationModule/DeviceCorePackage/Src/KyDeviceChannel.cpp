// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyDeviceChannel.h"

#include "KyChannelReference.h"

#include <utility>

KyDeviceChannel::~KyDeviceChannel() {
    dropCell();
}

KyDeviceChannel::KyDeviceChannel(const KyDeviceChannel& other)
    : mAccessMode(other.mAccessMode)
    , mName(other.mName)
    , mIsEnabled(other.mIsEnabled) {}

KyDeviceChannel::KyDeviceChannel(KyDeviceChannel&& other) noexcept
    : mAccessMode(other.mAccessMode)
    , mName(std::move(other.mName))
    , mIsEnabled(other.mIsEnabled) {
    carryCell(other);
}

KyDeviceChannel& KyDeviceChannel::operator=(const KyDeviceChannel& other) {
    mAccessMode = other.mAccessMode;
    mName = other.mName;
    mIsEnabled = other.mIsEnabled;
    return *this;
}

KyDeviceChannel& KyDeviceChannel::operator=(KyDeviceChannel&& other) noexcept {
    if (this == &other)
        return *this;
    mAccessMode = other.mAccessMode;
    mName = std::move(other.mName);
    mIsEnabled = other.mIsEnabled;
    dropCell();
    carryCell(other);
    return *this;
}

std::shared_ptr<const KyChannelCell> KyDeviceChannel::shareCell() const {
    if (!mCell)
        mCell = std::make_shared<KyChannelCell>(KyChannelCell{this});
    return mCell;
}

void KyDeviceChannel::carryCell(KyDeviceChannel& other) noexcept {
    mCell = std::move(other.mCell);
    if (mCell)
        mCell->channel = this;
}

void KyDeviceChannel::dropCell() noexcept {
    if (mCell)
        mCell->channel = nullptr;
}

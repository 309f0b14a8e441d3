// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyDeviceManager.h"

#include <vector>

/// Brings a list of known units up to date with the units found now, one entry a unit. Entries keep their order; those
/// in use are found first, so that a list with doubles keeps the one that matters.
class KyDeviceInfoMerge {
public:
    using Info = KyDeviceManager::KyDeviceInfoStruct;
    using Infos = KyDeviceManager::KyDeviceInfoVector;

    KyDeviceInfoMerge(Infos& known, Infos found);

    /// Once. True when the known ones changed.
    bool run();

private:
    using Test = bool (*)(const Info& known, const Info& found);

    void pair(Test isSameUnit, bool isInUse);
    void refresh(Info& known, const Info& found);
    void retire();

    Infos& mKnown;
    Infos mFound;
    /// Of the known ones: those whose unit is there. Of the found ones: those that are known.
    std::vector<bool> mIsThere;
    std::vector<bool> mIsKnown;
    bool mHasChanged = false;
};

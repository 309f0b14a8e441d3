// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KySpaceMouseSource_p.h"

/// The 3D mouse of the system's spacenav daemon, which serves all programs at once and knows models that have no HID
/// reports. Finds nothing where the daemon does not run or has no unit, and on systems without one.
class KySpaceMouseDaemon : public KySpaceMouseFinder {
public:
    std::vector<KySpaceMouseUnit> find() override;
    std::unique_ptr<KySpaceMouseSource> open(const KySpaceMouseUnit& unit) override;

private:
    /// The connection made by find() until it is opened: a program has one.
    std::unique_ptr<KySpaceMouseSource> mFound;
};

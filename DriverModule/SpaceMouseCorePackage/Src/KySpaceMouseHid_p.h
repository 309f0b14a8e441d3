// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KySpaceMouseNodes_p.h"
#include "KySpaceMouseSource_p.h"

struct KyHidRecord;

/// 3D mice read from their raw reports.
class KySpaceMouseHid : public KySpaceMouseFinder {
public:
    /// Whether it is a 3D mouse whose reports are known.
    static bool isSpaceMouse(const KyHidRecord& record);

    std::vector<KySpaceMouseUnit> find() override;
    std::unique_ptr<KySpaceMouseSource> open(const KySpaceMouseUnit& unit) override;

private:
    KySpaceMouseNodes mNodes;
    std::vector<KySpaceMouseUnit> mUnits;
    /// A node that could not be opened may be waiting for its permissions.
    bool mMustLookAgain = false;
};

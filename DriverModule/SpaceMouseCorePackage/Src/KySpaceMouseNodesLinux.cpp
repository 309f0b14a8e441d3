// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KySpaceMouseNodes_p.h"

#include <filesystem>
#include <system_error>

/// Every node that comes or goes writes the folder.
bool KySpaceMouseNodes::haveChanged() {
    std::error_code error;
    const std::intmax_t change = std::filesystem::last_write_time("/dev", error).time_since_epoch().count();
    if (!error && change == mLastChange)
        return false;
    mLastChange = change;
    return true;
}

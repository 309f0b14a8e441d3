// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KySpaceMouseDaemon_p.h"

std::vector<KySpaceMouseUnit> KySpaceMouseDaemon::find() {
    return {};
}

std::unique_ptr<KySpaceMouseSource> KySpaceMouseDaemon::open(const KySpaceMouseUnit&) {
    return nullptr;
}

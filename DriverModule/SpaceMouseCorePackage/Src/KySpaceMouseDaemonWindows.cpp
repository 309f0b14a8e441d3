// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KySpaceMouseDaemon_p.h"

class KySpaceMouseDaemon::Connector {};

KySpaceMouseDaemon::KySpaceMouseDaemon() = default;

KySpaceMouseDaemon::~KySpaceMouseDaemon() = default;

void KySpaceMouseDaemon::start() {}

void KySpaceMouseDaemon::forget() {}

std::vector<KySpaceMouseUnit> KySpaceMouseDaemon::find() {
    return {};
}

std::optional<KySpaceMouseUnit> KySpaceMouseDaemon::guess() {
    return std::nullopt;
}

std::unique_ptr<KySpaceMouseSource> KySpaceMouseDaemon::open(const KySpaceMouseUnit&) {
    return nullptr;
}

// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KySystemProxy.h"

// Environment variables and desktop settings are Qt's query.
std::optional<KySystemProxy::Configuration> KySystemProxy::read(const std::u16string&) {
    return std::nullopt;
}

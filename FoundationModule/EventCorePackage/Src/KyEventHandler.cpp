// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyEventHandler.h"

KyEventHandler::~KyEventHandler() = default;

bool KyEventHandler::handleEvent(const KyInputEvent&) {
    return false;
}

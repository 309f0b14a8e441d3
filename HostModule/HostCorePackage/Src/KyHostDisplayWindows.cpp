// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyHostDisplay.h"

// There is always a desktop.

void KyHostDisplay::prepare() {}

void KyHostDisplay::prepareWithout() {}

bool KyHostDisplay::exists() {
    return true;
}

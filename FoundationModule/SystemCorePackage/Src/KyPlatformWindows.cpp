// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyPlatform.h"

int KyPlatform::getOsType() {
    return eWindows;
}

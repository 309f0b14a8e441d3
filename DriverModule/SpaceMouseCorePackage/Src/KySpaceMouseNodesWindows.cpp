// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KySpaceMouseNodes_p.h"

bool KySpaceMouseNodes::haveChanged() {
    return true;
}

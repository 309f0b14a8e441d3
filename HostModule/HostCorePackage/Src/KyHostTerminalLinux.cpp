// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyHostTerminal.h"

#include <unistd.h>

bool KyHostTerminal::isErrorRead() {
    return isatty(STDERR_FILENO) == 1;
}

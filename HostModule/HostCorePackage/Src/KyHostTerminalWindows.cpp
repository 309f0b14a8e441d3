// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyHostTerminal.h"

#include <cstdio>

#include <io.h>

bool KyHostTerminal::isErrorRead() {
    return _isatty(_fileno(stderr)) != 0;
}

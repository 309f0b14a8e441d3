// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyToolProcess_p.h"

void KyToolProcess::killAll() {
    kill();
}

// Never called here, and not needed: tools ask on the standard input.

void KyToolProcess::setupChildProcess() {}

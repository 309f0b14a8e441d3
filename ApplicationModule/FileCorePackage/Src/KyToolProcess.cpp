// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyToolProcess_p.h"

KyToolProcess::KyToolProcess() {
    setStandardInputFile(nullDevice());
    setStandardOutputFile(nullDevice());
    setProcessChannelMode(ForwardedErrorChannel);
}

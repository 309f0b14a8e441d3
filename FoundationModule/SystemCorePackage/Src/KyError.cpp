// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyError.h"

#include "KyException.h"

void KyError::create(const std::string& text) {
    KyException::create(text);
}

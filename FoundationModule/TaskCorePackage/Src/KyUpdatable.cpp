// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyUpdatable.h"

KyUpdatable::~KyUpdatable() = default;

// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyLuaDebugger.h"

KyLuaDebugger::~KyLuaDebugger() = default;

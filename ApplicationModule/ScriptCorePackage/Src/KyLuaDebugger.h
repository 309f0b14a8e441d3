// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyApplicationExport.h"

/// What a host does while a script is stopped: it implements wait(), which is called over and over until the script
/// goes on, for example to process pending events of the user interface. Given to KyScriptEngine::setLuaDebugger, which
/// does not own it.
class KYAPPLICATION_EXPORT KyLuaDebugger {
public:
    virtual ~KyLuaDebugger();
    /// One round of waiting; it should return soon. May call KyScriptEngine::resume and step.
    virtual void wait() = 0;
};

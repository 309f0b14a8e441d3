// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyApplicationExport.h"

namespace KyApplication {

/// Takes from the scripts of the engine what reaches files, processes and modules: of `os` exit, setlocale, getenv,
/// remove, tmpname, rename and execute; of the globals io, package, dofile, loadfile, loadlib, module and require.
/// os.time, clock, date and difftime stay. Nothing happens without an engine. To be called again after
/// KyScriptEngine::resetLuaState.
///
/// It keeps scripts from doing harm by accident and is no wall against hostile ones: `debug`, `loadstring` with
/// bytecode, memory and time stay open.
KYAPPLICATION_EXPORT void removeUnsafeLuaFunctionsAndModules();

} // namespace KyApplication

// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyApplicationExport.h"
#include "KyScriptCatalogue.h"

#include <map>
#include <string>

/// Writes a catalogue as Lua files of annotations (LuaCATS), which editors read to complete and check scripts. The
/// files are Lua 5.1 and nothing in them does anything.
///
/// ```
/// std::string error;
/// if (!KyScriptStubs::write(KyScriptCatalogue::make(engine), "stubs", error))
///     std::cerr << error;
/// ```
class KYAPPLICATION_EXPORT KyScriptStubs {
public:
    KyScriptStubs() = delete;

    /// The texts by the names of their files: "enumerations.lua", "functions.lua", "globals.lua", "objects.lua",
    /// "qt.lua", "values.lua".
    static std::map<std::string, std::string> make(const KyScriptCatalogue& catalogue);
    /// Writes them into the folder, which is made when it is not there. False, and one line in `error`, when one could
    /// not be written: what was there before is kept then.
    static bool write(const KyScriptCatalogue& catalogue, const std::string& folder, std::string& error);
};

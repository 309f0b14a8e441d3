// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyApplicationExport.h"
#include "KyScriptCatalogue.h"

#include <string>

/// Writes a catalogue as one document for readers, in Markdown. The same catalogue gives the same text.
class KYAPPLICATION_EXPORT KyScriptReference {
public:
    KyScriptReference() = delete;

    /// The whole text.
    static std::string make(const KyScriptCatalogue& catalogue);
    /// Writes it in place of the file. False, and one line in `error`, when it could not be written: what was there
    /// before is kept then.
    static bool write(const KyScriptCatalogue& catalogue, const std::string& path, std::string& error);
};

// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyApplicationExport.h"

#include <QString>

#include <string_view>
#include <vector>

/// Which lines of a script hold code, so that a breakpoint between them goes to the next: nothing stops at the others.
/// Lines inside a comment of several lines count as code.
///
/// ```
/// const int line = KyScriptLines::read("door.lua").findCode(12);
/// if (line > 0)
///     debugger.setFileBreakpoints("door.lua", {{line, {}}});
/// ```
class KYAPPLICATION_EXPORT KyScriptLines {
public:
    /// Of a text.
    explicit KyScriptLines(std::string_view script);
    /// Of a file; of one that cannot be read, or has more than 16 MiB, every line holds code.
    static KyScriptLines read(const QString& path);

    /// False for a file that could not be read.
    bool isKnown() const { return mIsKnown; }
    /// The first line with code from a line on, 0 when there is none. Lines below 1 hold none.
    int findCode(int line) const;

private:
    KyScriptLines() = default;

    bool mIsKnown = false;
    std::vector<bool> mHoldCode;
};

// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <string_view>
#include <vector>

/// Which lines of a script hold code, so that a breakpoint between them goes to the next. Lines inside a comment of
/// several lines count as code.
class KyDebugAdapterLines {
public:
    explicit KyDebugAdapterLines(std::string_view script);
    /// Of a file; of one that cannot be read, every line holds code.
    static KyDebugAdapterLines read(const QString& path);

    bool isKnown() const { return mIsKnown; }
    /// The first line with code from a line on, 0 when there is none. Lines below 1 hold none.
    int findCode(int line) const;

private:
    KyDebugAdapterLines() = default;

    bool mIsKnown = false;
    std::vector<bool> mHoldCode;
};

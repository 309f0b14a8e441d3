// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>

/// Counts the instructions of one operation by running this program again under callgrind.
class KyInstructionCounter {
public:
    /// `program` is this program's own path; it understands --measure ROW SIDE COUNT.
    explicit KyInstructionCounter(std::string program);

    bool isAvailable() const { return mIsAvailable; }
    /// Instructions per operation, from runs of `count` and of a tenth of it; empty when a run fails.
    std::optional<double> count(std::size_t row, const char* side, long count) const;

private:
    std::optional<double> run(std::size_t row, const char* side, long count) const;

    std::string mProgram;
    bool mIsAvailable;
};

// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

/// One measured row. For limits `peer` is the limit and `ratio` ours over it.
struct KyBenchmarkResult {
    std::string operation;
    std::string peerName;
    /// "Ir", "ns" or "ms" per operation.
    std::string unit;
    double ours;
    double peer;
    double goal;

    double getRatio() const { return peer > 0 ? ours / peer : 0; }
    bool isMet() const { return getRatio() <= goal; }
};

std::string kyFormatTable(const std::vector<KyBenchmarkResult>& results);
std::string kyFormatJson(const std::vector<KyBenchmarkResult>& results);

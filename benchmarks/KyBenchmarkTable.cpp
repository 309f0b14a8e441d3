// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyBenchmarkTable.h"

#include <algorithm>
#include <fmt/format.h>

std::string kyFormatTable(const std::vector<KyBenchmarkResult>& results) {
    std::size_t width = 10;
    std::size_t peerWidth = 6;
    for (const KyBenchmarkResult& result : results) {
        width = std::max(width, result.operation.size());
        peerWidth = std::max(peerWidth, result.peerName.size());
    }
    std::string text = fmt::format("{:<{}}  {:>10}  {:>10}  {:<4}  {:>6}  {:>6}  {:<4} {:<{}}\n", "operation", width,
                                   "ours", "peer", "unit", "ratio", "goal", "met", "peer is", peerWidth);
    for (const KyBenchmarkResult& result : results)
        text += fmt::format("{:<{}}  {:>10.1f}  {:>10.1f}  {:<4}  {:>6.2f}  {:>6.2f}  {:<4} {}\n", result.operation,
                            width, result.ours, result.peer, result.unit, result.getRatio(), result.goal,
                            result.isMet() ? "yes" : "NO", result.peerName);
    return text;
}

std::string kyFormatJson(const std::vector<KyBenchmarkResult>& results) {
    std::string text = "[";
    for (const KyBenchmarkResult& result : results)
        text +=
            fmt::format(R"({}{{"operation": "{}", "peer": "{}", "unit": "{}", "ours": {:.2f}, "peer_value": {:.2f}, )"
                        R"("ratio": {:.3f}, "goal": {}, "met": {}}})",
                        &result == results.data() ? "\n  " : ",\n  ", result.operation, result.peerName, result.unit,
                        result.ours, result.peer, result.getRatio(), result.goal, result.isMet());
    return text + "\n]\n";
}

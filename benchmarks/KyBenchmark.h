// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

/// The two sides of one row, made ready: each runs its operation `count` times.
struct KyBenchmarkSides {
    std::function<void(long count)> ours;
    std::function<void(long count)> peer;
    /// Keeps what the sides need.
    std::shared_ptr<void> state;
    /// Before every timed round, outside of its time: makes anew what the operation uses up.
    std::function<void()> renew = {};
};

/// One operation measured against a peer in the same run.
struct KyBenchmark {
    enum class Gate {
        /// Instructions by callgrind, from the difference of two run lengths: repeatable.
        eInstructions,
        /// Seconds: the least of interleaved rounds.
        eTime,
        /// Seconds of our side against the goal itself, in milliseconds; there is no peer.
        eLimit
    };

    std::string operation;
    std::string peer;
    double goal;
    Gate gate;
    /// Operations of a timed round, and of the longer of the two counted runs.
    long count;
    KyBenchmarkSides (*prepare)();
};

std::vector<KyBenchmark> getScriptBenchmarks();
std::vector<KyBenchmark> getConversionBenchmarks();
std::vector<KyBenchmark> getLibraryBenchmarks();
std::vector<KyBenchmark> getDeviceBenchmarks();
std::vector<KyBenchmark> getFileBenchmarks();
std::vector<KyBenchmark> getNetworkBenchmarks();
std::vector<KyBenchmark> getValueBenchmarks();
std::vector<KyBenchmark> getInteractionBenchmarks();
std::vector<KyBenchmark> get2DNodeBenchmarks();
std::vector<KyBenchmark> get2DPathBenchmarks();
std::vector<KyBenchmark> get2DPickingBenchmarks();
std::vector<KyBenchmark> getQtPassBenchmarks();
std::vector<KyBenchmark> getQmlPassBenchmarks();

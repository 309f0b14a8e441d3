// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyBenchmark.h"
#include "KyBenchmarkTable.h"
#include "KyInstructionCounter.h"

#include "KyModuleManager.h"

#include <QApplication>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <iterator>
#include <limits>
#include <optional>
#include <string>
#include <vector>

namespace {

constexpr int cNbRounds = 15;

constexpr std::vector<KyBenchmark> (*cSubjects[])() = {
    &getScriptBenchmarks,    &getLibraryBenchmarks,     &getConversionBenchmarks, &getFileBenchmarks,
    &getValueBenchmarks,     &getInteractionBenchmarks, &get2DNodeBenchmarks,     &get2DPathBenchmarks,
    &get2DPickingBenchmarks, &getQtPassBenchmarks,      &getQmlPassBenchmarks,    &getDeviceBenchmarks,
    &getNetworkBenchmarks,
};

std::vector<KyBenchmark> getAllBenchmarks() {
    std::vector<KyBenchmark> all;
    for (const auto subject : cSubjects)
        std::ranges::move(subject(), std::back_inserter(all));
    return all;
}

double measure(const std::function<void(long)>& side, long count) {
    const auto begin = std::chrono::steady_clock::now();
    side(count);
    const std::chrono::duration<double> elapsed = std::chrono::steady_clock::now() - begin;
    return elapsed.count() / static_cast<double>(count);
}

KyBenchmarkResult measureTime(const KyBenchmark& benchmark) {
    const KyBenchmarkSides sides = benchmark.prepare();
    double ours = std::numeric_limits<double>::max();
    double peer = std::numeric_limits<double>::max();
    for (int round = 0; round < cNbRounds; ++round) {
        if (sides.renew)
            sides.renew();
        ours = std::min(ours, measure(sides.ours, benchmark.count));
        peer = std::min(peer, measure(sides.peer, benchmark.count));
    }
    return {benchmark.operation, benchmark.peer, "ns", ours * 1e9, peer * 1e9, benchmark.goal};
}

KyBenchmarkResult measureLimit(const KyBenchmark& benchmark) {
    const KyBenchmarkSides sides = benchmark.prepare();
    double ours = std::numeric_limits<double>::max();
    for (int round = 0; round < cNbRounds; ++round)
        ours = std::min(ours, measure(sides.ours, benchmark.count));
    return {benchmark.operation, benchmark.peer, "ms", ours * 1e3, benchmark.goal, 1};
}

std::optional<KyBenchmarkResult> measureInstructions(const KyBenchmark& benchmark, std::size_t row,
                                                     const KyInstructionCounter& counter) {
    const auto ours = counter.count(row, "ours", benchmark.count);
    const auto peer = counter.count(row, "peer", benchmark.count);
    if (!ours || !peer)
        return std::nullopt;
    return KyBenchmarkResult{benchmark.operation, benchmark.peer, "Ir", *ours, *peer, benchmark.goal};
}

int runSide(const std::vector<KyBenchmark>& all, char** arguments) {
    const auto row = static_cast<std::size_t>(std::atol(arguments[0]));
    if (row >= all.size())
        return 2;
    const KyBenchmarkSides sides = all[row].prepare();
    (std::strcmp(arguments[1], "ours") == 0 ? sides.ours : sides.peer)(std::atol(arguments[2]));
    // What the end of the process costs grows with the count too, and is not the operation.
    std::_Exit(0);
}

int runTable(const std::vector<KyBenchmark>& all, const char* program, bool json, const std::string& only) {
    const KyInstructionCounter counter(program);
    if (!counter.isAvailable())
        std::fprintf(stderr, "kybench: no valgrind here, rows gated by instructions are timed instead\n");
    std::vector<KyBenchmarkResult> results;
    for (std::size_t row = 0; row < all.size(); ++row) {
        const KyBenchmark& benchmark = all[row];
        if (benchmark.operation.find(only) == std::string::npos)
            continue;
        std::fprintf(stderr, "kybench: %s\n", benchmark.operation.c_str());
        std::optional<KyBenchmarkResult> result;
        if (benchmark.gate == KyBenchmark::Gate::eInstructions && counter.isAvailable())
            result = measureInstructions(benchmark, row, counter);
        else if (benchmark.gate == KyBenchmark::Gate::eLimit)
            result = measureLimit(benchmark);
        else
            result = measureTime(benchmark);
        if (!result) {
            std::fprintf(stderr, "kybench: %s could not be measured\n", benchmark.operation.c_str());
            return 1;
        }
        results.push_back(*result);
    }
    std::fputs((json ? kyFormatJson(results) : kyFormatTable(results)).c_str(), stdout);
    return 0;
}

} // namespace

int main(int argc, char** argv) {
    // Machines that measure have no screen.
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QCoreApplication::setAttribute(Qt::AA_ShareOpenGLContexts);
    QApplication application(argc, argv);
    if (!KyModuleManager::get().initialize())
        return 1;
    const std::vector<KyBenchmark> all = getAllBenchmarks();
    bool json = false;
    std::string only;
    int result = -1;
    for (int i = 1; i < argc && result < 0; ++i) {
        if (std::strcmp(argv[i], "--measure") == 0 && i + 3 < argc)
            result = runSide(all, argv + i + 1);
        else if (std::strcmp(argv[i], "--json") == 0)
            json = true;
        else if (std::strcmp(argv[i], "--only") == 0 && i + 1 < argc)
            only = argv[++i];
        else
            result = (std::fprintf(stderr, "usage: kybench [--json] [--only TEXT]\n"), 2);
    }
    if (result < 0)
        result = runTable(all, argv[0], json, only);
    KyModuleManager::get().finalize();
    return result;
}

// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyInstructionCounter.h"

#include <array>
#include <cstdio>
#include <cstdlib>
#include <fmt/format.h>
#include <memory>

KyInstructionCounter::KyInstructionCounter(std::string program)
    : mProgram(std::move(program))
    , mIsAvailable(std::system("valgrind --version > /dev/null 2>&1") == 0) {}

std::optional<double> KyInstructionCounter::run(std::size_t row, const char* side, long count) const {
    const std::string command = fmt::format(
        "QT_HASH_SEED=0 valgrind --tool=callgrind --callgrind-out-file=/dev/null '{}' --measure {} {} {} 2>&1",
        mProgram, row, side, count);
    const std::unique_ptr<FILE, int (*)(FILE*)> pipe(popen(command.c_str(), "r"), &pclose);
    if (!pipe)
        return std::nullopt;
    std::array<char, 512> line{};
    std::optional<double> collected;
    while (std::fgets(line.data(), static_cast<int>(line.size()), pipe.get())) {
        const std::string text(line.data());
        const auto at = text.find("Collected : ");
        if (at != std::string::npos)
            collected = std::atof(text.c_str() + at + 12);
    }
    return collected;
}

std::optional<double> KyInstructionCounter::count(std::size_t row, const char* side, long count) const {
    const long less = count / 10;
    const auto whole = run(row, side, count);
    const auto part = run(row, side, less);
    if (!whole || !part)
        return std::nullopt;
    return (*whole - *part) / static_cast<double>(count - less);
}

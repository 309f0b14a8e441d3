// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

/// Runs a fuzz target without a fuzzer: over the files named, or over COUNT inputs from a fixed seed.
int main(int argc, char** argv) {
    if (argc > 1 && std::string(argv[1]) == "--random") {
        std::mt19937 random(12345);
        const long count = argc > 2 ? std::atol(argv[2]) : 1000;
        for (long i = 0; i < count; ++i) {
            std::vector<std::uint8_t> bytes(random() % 200);
            for (std::uint8_t& byte : bytes)
                byte = static_cast<std::uint8_t>(random());
            LLVMFuzzerTestOneInput(bytes.data(), bytes.size());
        }
        return 0;
    }
    for (int i = 1; i < argc; ++i) {
        std::ifstream file(argv[i], std::ios::binary);
        if (!file)
            return std::fprintf(stderr, "cannot read %s\n", argv[i]), 1;
        const std::vector<char> bytes{std::istreambuf_iterator<char>(file), {}};
        LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
    }
    return 0;
}

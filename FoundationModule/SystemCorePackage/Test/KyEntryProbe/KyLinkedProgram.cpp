// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include <cstddef>
#include <cstdio>

std::size_t getProbeLength();

int main() {
    std::fputs("main", stderr);
    return getProbeLength() == 5 ? 0 : 1;
}

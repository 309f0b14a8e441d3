// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyProcessMemory_p.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <string_view>

#include <fcntl.h>
#include <unistd.h>

namespace {

/// "total resident ...", in pages.
std::size_t readResidentPages(std::string_view text) {
    text.remove_prefix(std::min(text.find(' '), text.size() - 1) + 1);
    std::size_t pages = 0;
    std::from_chars(text.data(), text.data() + text.size(), pages);
    return pages;
}

} // namespace

std::size_t kyGetProcessMemory() {
    static const int cFile = open("/proc/self/statm", O_RDONLY | O_CLOEXEC);
    static const long cPageSize = sysconf(_SC_PAGESIZE);
    std::array<char, 128> text;
    const ssize_t size = cFile < 0 ? 0 : pread(cFile, text.data(), text.size(), 0);
    if (size <= 0 || cPageSize <= 0)
        return 0;
    return readResidentPages({text.data(), static_cast<std::size_t>(size)}) * static_cast<std::size_t>(cPageSize);
}

// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyDebugAdapterReader_p.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

namespace {

constexpr std::array<std::string_view, 16> cPieces{"Content-Length: 2\r\n\r\n{}",
                                                   "Content-Length: ",
                                                   "content-length:0\r\n\r\n",
                                                   "\r\n",
                                                   "\r\n\r\n",
                                                   "{}",
                                                   "7",
                                                   "-1",
                                                   "99999999999999999999",
                                                   "4194305\r\n\r\n",
                                                   "Content-Type: x\r\n",
                                                   ":",
                                                   "\n",
                                                   "\r",
                                                   " ",
                                                   "\xff"};

void require(bool condition) {
    if (!condition)
        std::abort();
}

struct Read {
    std::vector<std::string> messages;
    bool isRefused = false;

    bool operator==(const Read&) const = default;
};

/// In parts of a size.
Read read(std::string_view bytes, std::size_t partSize) {
    KyDebugAdapterReader reader;
    Read all;
    std::string body;
    for (; !bytes.empty(); bytes.remove_prefix(std::min(partSize, bytes.size()))) {
        reader.append(bytes.substr(0, partSize));
        while (reader.takeMessage(body))
            all.messages.push_back(body);
        require(reader.getSize() <= KyDebugAdapterReader::cMaxHeaderSize + KyDebugAdapterReader::cMaxBodySize);
    }
    // Why is another matter: garbage may be seen before the end of the line that it stands in.
    all.isRefused = !reader.getError().empty();
    require(!all.isRefused || reader.getSize() == 0);
    return all;
}

/// Parts of a message where the input has any bytes.
std::string makeText(const std::uint8_t* data, std::size_t size) {
    std::string text;
    for (std::size_t i = 0; i < size; ++i)
        text += cPieces[data[i] % cPieces.size()];
    return text;
}

/// However the bytes arrive, they are the same messages, and so they are behind a good one.
void check(const std::string& bytes) {
    const Read whole = read(bytes, bytes.size());
    for (const std::size_t partSize : {1, 2, 7})
        require(read(bytes, partSize) == whole);
    Read behind = read("Content-Length: 4\r\n\r\ntrue" + bytes, bytes.size() + 1);
    require(!behind.messages.empty() && behind.messages.front() == "true");
    behind.messages.erase(behind.messages.begin());
    require(behind == whole);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    constexpr std::size_t cMaxSize = 512;
    size = std::min(size, cMaxSize);
    check(std::string(data, data + size));
    check(makeText(data, size));
    return 0;
}

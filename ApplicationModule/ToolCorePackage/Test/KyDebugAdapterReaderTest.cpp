// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyDebugAdapterReader_p.h"

#include <gtest/gtest.h>

namespace {

/// The messages, each behind a bar, and the error.
std::string read(std::string_view bytes, std::size_t partSize) {
    KyDebugAdapterReader reader;
    std::string text;
    std::string body;
    for (; !bytes.empty(); bytes.remove_prefix(std::min(partSize, bytes.size()))) {
        reader.append(bytes.substr(0, partSize));
        while (reader.takeMessage(body))
            text += '|' + body;
    }
    return text + reader.getError();
}

TEST(KyDebugAdapterReaderTest, CutsBytesIntoMessagesHoweverTheyArrive) {
    const struct {
        std::string bytes;
        std::string read;
    } cRows[] = {
        {"Content-Length: 2\r\n\r\n{}", "|{}"},
        {"content-length:3\r\nContent-Type: x; charset=utf-8\r\n\r\nabcContent-Length: 0\r\n\r\n", "|abc|"},
        {"Content-Length: 5\r\n\r\nhalf", ""},
        {"Content-Len", ""},
        {"Content-Length: 2\r\n\r\n{}garbage\r\n\r\n", "|{}the header of a message has a line without a name"},
        {"GET / HTTP/1.1\r\n", "the header of a message has a line without a name"},
        {": 5\r\n\r\n", "the header of a message has a line without a name"},
        {"Content-Type: x\r\n\r\n", "the header of a message has no Content-Length"},
        {"\r\n\r\n", "the header of a message has no Content-Length"},
        {"Content-Length: 1\r\nContent-Length: 1\r\n\r\n", "the header of a message has two lengths"},
        {"Content-Length: -1\r\n\r\n", "the Content-Length of a message is no number"},
        {"Content-Length: \r\n\r\n", "the Content-Length of a message is no number"},
        {"Content-Length: 4194305\r\n", "a message is longer than 4194304 bytes"},
        {"Content-Length: 99999999999999999999999\r\n", "a message is longer than 4194304 bytes"},
        {"Content-Length: 2\n\n{}", "the header of a message holds what no header may hold"},
        {std::string("\0\0\0", 3), "the header of a message holds what no header may hold"},
        {"\xff\xfe{", "the header of a message holds what no header may hold"},
        {std::string(2000, 'x'), "the header of a message is longer than 1024 bytes"},
    };
    for (const auto& row : cRows)
        for (const std::size_t partSize : {1, 3, 100000})
            EXPECT_EQ(read(row.bytes, partSize), row.read) << row.bytes << " in parts of " << partSize;
}

TEST(KyDebugAdapterReaderTest, KeepsNoMoreThanAMessage) {
    KyDebugAdapterReader reader;
    std::string body;
    reader.append("Content-Length: 4194304\r\n\r\n" + std::string(4194304, 'x'));
    EXPECT_TRUE(reader.takeMessage(body) && body.size() == 4194304u);
    EXPECT_EQ(reader.getSize(), 0u);
    reader.append("\xff");
    EXPECT_FALSE(reader.takeMessage(body));
    reader.append(std::string(1000, 'x'));
    EXPECT_EQ(reader.getSize(), 0u) << "nothing is kept after an error";
}

} // namespace

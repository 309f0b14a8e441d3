// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyDebugAdapterReader_p.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <utility>

namespace {

constexpr std::string_view cLineEnd = "\r\n";
constexpr std::string_view cHeaderEnd = "\r\n\r\n";
constexpr std::string_view cLengthName = "content-length";

bool isPrintable(char byte) {
    return byte >= 0x20 && byte < 0x7f;
}

/// Whether the bytes can be those of a header as far as they go.
bool canBeHeader(std::string_view bytes) {
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        const bool isEndOfLine = bytes[i] == '\n' && i > 0 && bytes[i - 1] == '\r';
        const bool isFollowed = bytes[i] == '\r' && (i + 1 == bytes.size() || bytes[i + 1] == '\n');
        if (!isPrintable(bytes[i]) && !isEndOfLine && !isFollowed)
            return false;
    }
    return true;
}

std::string_view trim(std::string_view text) {
    const std::size_t begin = text.find_first_not_of(' ');
    if (begin == std::string_view::npos)
        return {};
    return text.substr(begin, text.find_last_not_of(' ') + 1 - begin);
}

std::string_view getWholeLines(std::string_view text) {
    const std::size_t end = text.rfind(cLineEnd);
    return text.substr(0, end == std::string_view::npos ? 0 : end);
}

bool isLengthName(std::string_view name) {
    return std::ranges::equal(name, cLengthName, {},
                              [](unsigned char letter) { return static_cast<char>(std::tolower(letter)); });
}

} // namespace

void KyDebugAdapterReader::append(std::string_view bytes) {
    if (mError.empty())
        mBytes.append(bytes);
}

bool KyDebugAdapterReader::takeMessage(std::string& body) {
    if (!mError.empty() || (mBodySize == cNoBody && !readHeader()) || getSize() < mBodySize)
        return false;
    body.assign(mBytes, mBegin, mBodySize);
    mBegin += std::exchange(mBodySize, cNoBody);
    // Not at every message: many small ones may have come at once.
    if (mBegin == mBytes.size() || mBegin > cMaxBodySize) {
        mBytes.erase(0, mBegin);
        mBegin = 0;
    }
    return true;
}

// Looks at what is there of a header, so that garbage is refused before its end comes.
bool KyDebugAdapterReader::readHeader() {
    const std::string_view start = getRest().substr(0, cMaxHeaderSize);
    const std::size_t size = start.find(cHeaderEnd);
    const bool isWhole = size != std::string_view::npos;
    if (!canBeHeader(start.substr(0, size)))
        return fail("the header of a message holds what no header may hold");
    if (!isWhole && start.size() == cMaxHeaderSize)
        return fail("the header of a message is longer than " + std::to_string(cMaxHeaderSize) + " bytes");
    mBodySize = cNoBody;
    if (!readFields(isWhole ? start.substr(0, size) : getWholeLines(start)))
        return false;
    if (isWhole && mBodySize == cNoBody)
        return fail("the header of a message has no Content-Length");
    if (isWhole)
        mBegin += size + cHeaderEnd.size();
    else
        mBodySize = cNoBody;
    return isWhole;
}

bool KyDebugAdapterReader::readFields(std::string_view lines) {
    while (!lines.empty()) {
        const std::size_t end = lines.find(cLineEnd);
        if (!readField(lines.substr(0, end)))
            return false;
        lines.remove_prefix(end == std::string_view::npos ? lines.size() : end + cLineEnd.size());
    }
    return true;
}

bool KyDebugAdapterReader::readField(std::string_view line) {
    const std::size_t colon = line.find(':');
    if (colon == std::string_view::npos || colon == 0)
        return fail("the header of a message has a line without a name");
    return !isLengthName(trim(line.substr(0, colon))) || readLength(trim(line.substr(colon + 1)));
}

bool KyDebugAdapterReader::readLength(std::string_view value) {
    if (mBodySize != cNoBody)
        return fail("the header of a message has two lengths");
    if (value.empty() || value.find_first_not_of("0123456789") != std::string_view::npos)
        return fail("the Content-Length of a message is no number");
    const auto [end, error] = std::from_chars(value.data(), value.data() + value.size(), mBodySize);
    if (error != std::errc() || mBodySize > cMaxBodySize)
        return fail("a message is longer than " + std::to_string(cMaxBodySize) + " bytes");
    return true;
}

bool KyDebugAdapterReader::fail(std::string error) {
    mError = std::move(error);
    mBytes = {};
    mBegin = 0;
    mBodySize = cNoBody;
    return false;
}

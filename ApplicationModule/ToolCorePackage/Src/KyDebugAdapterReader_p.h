// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyApplicationExport.h"

#include <cstddef>
#include <string>
#include <string_view>

/// Cuts the bytes of a client of the debug adapter into messages: a header of lines "Name: value", among them
/// "Content-Length", an empty line, and that many bytes.
///
/// ```
/// reader.append(bytes);
/// while (reader.takeMessage(body))
///     handle(body);
/// if (!reader.getError().empty())
///     hangUp(reader.getError());
/// ```
class KYAPPLICATION_EXPORT KyDebugAdapterReader {
public:
    static constexpr std::size_t cMaxHeaderSize = 1024;
    static constexpr std::size_t cMaxBodySize = std::size_t(4) << 20;

    /// Takes bytes as they came; drops them after an error.
    void append(std::string_view bytes);
    /// The next whole message; false, with `body` unchanged, when there is none yet or ever.
    bool takeMessage(std::string& body);
    /// Why there are no messages any more; empty while all is well.
    const std::string& getError() const { return mError; }
    /// Number of bytes kept for messages to come: at most one message when all were taken.
    std::size_t getSize() const { return mBytes.size() - mBegin; }

private:
    static constexpr std::size_t cNoBody = static_cast<std::size_t>(-1);

    bool readHeader();
    bool readFields(std::string_view lines);
    bool readField(std::string_view line);
    bool readLength(std::string_view value);
    bool fail(std::string error);
    std::string_view getRest() const { return std::string_view(mBytes).substr(mBegin); }

    std::string mBytes;
    std::size_t mBegin = 0;
    /// Of the message whose header was read.
    std::size_t mBodySize = cNoBody;
    std::string mError;
};

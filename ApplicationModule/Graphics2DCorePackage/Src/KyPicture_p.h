// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QImage>

#include <cstdint>
#include <string>

class KyURL;

/// Pictures of files that nobody vouches for: what is read and unpacked is bounded, and a picture leads to no other
/// file.
namespace KyPicture {

/// Of a file.
constexpr std::int64_t cMaxBytes = std::int64_t{1} << 28;
/// Of an SVG picture, and of all pictures in one.
constexpr std::int64_t cMaxPixels = std::int64_t{1} << 26;

struct Decoded {
    /// Null when it is no picture or has more pixels than it may.
    QImage image;
    /// False when something was left out.
    bool isWhole = true;
};

/// The name under which Qt opens what the URL names; empty when it is not on this machine.
std::string findFile(const KyURL& url);
/// Of a regular file or one of Qt's resources; empty when it is none, cannot be read or has more bytes.
QByteArray readFile(const std::string& path, std::int64_t maxBytes = cMaxBytes);
/// What Qt's readers know, an SVG too.
Decoded decode(const QByteArray& bytes, std::int64_t maxPixels);
/// An SVG in its default size, with straight alpha. Pictures in it are shown when they are embedded and no SVGs; links,
/// style sheets of other files and compressed documents are not followed.
Decoded renderSvg(const QByteArray& bytes, std::int64_t maxPixels = cMaxPixels);

} // namespace KyPicture

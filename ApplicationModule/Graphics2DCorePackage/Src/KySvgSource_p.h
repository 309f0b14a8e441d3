// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>

#include <string>

/// What Qt's reader takes too long for is settled before it runs.
namespace KySvgSource {

/// UTF-8 for UTF-16 and UTF-32, other encodings as they are; `isDecoded` tells which.
QByteArray decode(const std::string& bytes, bool& isDecoded);
/// Blanks what stands in the brackets of a document type: entities are then not declared, and using one is an error at
/// its place.
void eraseDeclarations(QByteArray& document);
/// Whether no element has more attributes than the reader compares in a moment.
bool isBounded(const QByteArray& document, int maxAttributes);
/// Whether the reader sees the same markup as the functions above.
bool isKnownEncoding(const QString& name);

} // namespace KySvgSource

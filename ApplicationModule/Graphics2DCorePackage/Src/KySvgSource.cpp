// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KySvgSource_p.h"

#include <QString>
#include <QTextCodec>

#include <algorithm>
#include <array>
#include <string_view>

namespace {

using Text = std::string_view;

constexpr Text cBlanks = " \t\r\n";

struct Section {
    Text open;
    Text close;
};
/// In these no markup counts.
constexpr std::array<Section, 3> cSections{{{"<!--", "-->"}, {"<![CDATA[", "]]>"}, {"<?", "?>"}}};

/// Past the section that begins at the position; the position itself when none does.
std::size_t skipSection(Text text, std::size_t position) {
    const Text rest = text.substr(position);
    const auto* section =
        std::ranges::find_if(cSections, [rest](const Section& s) { return rest.starts_with(s.open); });
    if (section == cSections.end())
        return position;
    const std::size_t end = text.find(section->close, position + section->open.size());
    return end == Text::npos ? text.size() : end + section->close.size();
}

std::size_t findDocumentType(Text text) {
    std::size_t position = text.starts_with("\xEF\xBB\xBF") ? 3 : 0;
    for (;;) {
        position = std::min(text.find_first_not_of(cBlanks, position), text.size());
        const std::size_t next = skipSection(text, position);
        if (next == position)
            return text.substr(position).starts_with("<!DOCTYPE") ? position : Text::npos;
        position = next;
    }
}

/// Past the closing quote of the text that begins at the position.
std::size_t skipQuoted(Text text, std::size_t position) {
    const std::size_t end = text.find(text[position], position + 1);
    return end == Text::npos ? text.size() : end + 1;
}

/// The "]" before the ">" that ends the document type.
std::size_t findDeclarationsEnd(Text text, std::size_t position) {
    while ((position = text.find(']', position)) != Text::npos) {
        const std::size_t next = text.find_first_not_of(cBlanks, position + 1);
        if (next == Text::npos || text[next] == '>')
            return position;
        ++position;
    }
    return text.size();
}

/// Past the tag, which begins at the position; counts its attributes.
std::size_t skipTag(Text text, std::size_t position, int& attributes) {
    while (position < text.size() && text[position] != '>') {
        const char c = text[position];
        attributes += c == '=' ? 1 : 0;
        position = c == '"' || c == '\'' ? skipQuoted(text, position) : position + 1;
    }
    return position;
}

Text toText(const QByteArray& document) {
    return {document.constData(), std::size_t(document.size())};
}

} // namespace

namespace KySvgSource {

QByteArray decode(const std::string& bytes, bool& isDecoded) {
    const QByteArray raw(bytes.data(), int(bytes.size()));
    // A zero among the first bytes: two or four bytes a character.
    isDecoded = raw.left(4).contains('\0') || raw.startsWith("\xFF\xFE") || raw.startsWith("\xFE\xFF");
    if (!isDecoded)
        return raw;
    const char* guess = raw.startsWith('\0') ? "UTF-16BE" : "UTF-16LE";
    QTextCodec* codec = QTextCodec::codecForUtfText(raw, QTextCodec::codecForName(guess));
    return codec->toUnicode(raw).toUtf8();
}

void eraseDeclarations(QByteArray& document) {
    const Text text = toText(document);
    std::size_t position = findDocumentType(text);
    while (position < text.size() && text[position] != '[' && text[position] != '>')
        position = text[position] == '"' || text[position] == '\'' ? skipQuoted(text, position) : position + 1;
    if (position >= text.size() || text[position] == '>')
        return;
    const std::size_t end = findDeclarationsEnd(text, position);
    // Line ends stay, so that errors have their places.
    char* data = document.data();
    std::replace_if(
        data + position + 1, data + end, [](char c) { return c != '\n'; }, ' ');
}

bool isBounded(const QByteArray& document, int maxAttributes) {
    const Text text = toText(document);
    std::size_t position = 0;
    while ((position = text.find('<', position)) != Text::npos) {
        const std::size_t next = skipSection(text, position);
        int attributes = 0;
        position = next != position ? next : skipTag(text, position + 1, attributes);
        if (attributes > maxAttributes)
            return false;
    }
    return true;
}

bool isKnownEncoding(const QString& name) {
    constexpr std::array cPrefixes{"UTF-8", "UTF-16", "ISO-8859-", "WINDOWS-125", "US-ASCII"};
    return name.isEmpty() || std::ranges::any_of(cPrefixes, [&name](const char* prefix) {
               return name.startsWith(QLatin1String(prefix), Qt::CaseInsensitive);
           });
}

} // namespace KySvgSource

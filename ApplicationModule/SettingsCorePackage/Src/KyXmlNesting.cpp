// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyXmlNesting_p.h"

#include <QXmlStreamReader>

namespace {

const QString cEntity = QStringLiteral("<!ENTITY");

/// Each level takes one of these characters, so that a text with few of them needs no closer look.
bool isHarmless(const QString& text, int maxDepth) {
    return text.count(QLatin1Char('<')) <= maxDepth && text.count(QLatin1Char('(')) <= maxDepth &&
           !text.contains(cEntity);
}

/// The brackets of content models nest too.
bool isHarmlessDeclaration(const QStringRef& text, int maxDepth) {
    return !text.contains(cEntity) && text.count(QLatin1Char('(')) <= maxDepth;
}

KyXmlNesting::Fault makeFault(const QXmlStreamReader& reader, const char* text) {
    return {QString::fromLatin1(text), static_cast<int>(reader.lineNumber()), static_cast<int>(reader.columnNumber())};
}

} // namespace

std::optional<KyXmlNesting::Fault> KyXmlNesting::findFault(const QString& text, int maxDepth) {
    if (isHarmless(text, maxDepth))
        return std::nullopt;
    QXmlStreamReader reader(text);
    reader.setNamespaceProcessing(false);
    for (int depth = 0; !reader.atEnd();) {
        const QXmlStreamReader::TokenType token = reader.readNext();
        if (token == QXmlStreamReader::DTD && !isHarmlessDeclaration(reader.text(), maxDepth))
            return makeFault(reader, "declares an entity, or a content model too deep");
        if (token == QXmlStreamReader::EndElement)
            --depth;
        if (token == QXmlStreamReader::StartElement && ++depth > maxDepth)
            return makeFault(reader, "elements lie too deep in each other");
    }
    if (!reader.hasError())
        return std::nullopt;
    return Fault{reader.errorString(), static_cast<int>(reader.lineNumber()), static_cast<int>(reader.columnNumber())};
}

// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KySvgReports_p.h"

#include <QSet>
#include <QString>

#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

class QXmlStreamReader;

struct KySvgAttribute {
    std::string name;
    std::string value;
};

/// An element, or a piece of text when it has no name.
struct KySvgElement {
    std::string name;
    std::vector<KySvgAttribute> attributes;
    QString text;
    int parent = -1;
    int firstChild = -1;
    int lastChild = -1;
    int next = -1;

    /// Empty when absent; UTF-8.
    std::string_view getAttribute(std::string_view attribute) const;
    bool hasAttribute(std::string_view attribute) const;
    /// The reference, with or without the usual prefix.
    std::string_view getLink() const;
    /// Bytes of all values.
    std::size_t getSize() const;
};

/// The elements of a document in order; number 0 is the `svg` itself. Elements and attributes of other name spaces are
/// left out, texts are kept where they are drawn and in style sheets.
class KySvgDocument {
public:
    /// False, and the reason, when the document is refused.
    bool read(const std::string& bytes, KySvgReports& reports, std::string& error);

    const KySvgElement& getElement(int index) const { return mElements[std::size_t(index)]; }
    int getNbElements() const { return int(mElements.size()); }
    /// In bytes.
    std::size_t getSize() const { return mSize; }
    /// The first element of that id, -1 when there is none.
    int findId(std::string_view id) const;
    /// What "#id" or "url(#id)" names, -1 when nothing here.
    int findReference(std::string_view reference) const;

private:
    struct Way;
    bool readAll(QXmlStreamReader& reader, KySvgReports& reports);
    void readToken(QXmlStreamReader& reader, Way& way, KySvgReports& reports);
    void begin(QXmlStreamReader& reader, Way& way, KySvgReports& reports);
    void readAttributes(const QXmlStreamReader& reader, KySvgElement& element);
    void addText(const QXmlStreamReader& reader, const Way& way);
    int append(KySvgElement element, int parent);

    std::vector<KySvgElement> mElements;
    std::unordered_map<std::string, int> mIds;
    QString mPrefix;
    /// Those of links, with their colons, wherever they were declared.
    QSet<QString> mLinkPrefixes;
    std::size_t mSize = 0;
};

// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KySvgDocument_p.h"

#include "Ky2DSvgImporter.h"
#include "KySvgSource_p.h"
#include "KySvgValues_p.h"

#include <QXmlStreamReader>

#include <fmt/format.h>

#include <array>
#include <memory>
#include <numeric>

namespace {

constexpr QLatin1String cNamespace("http://www.w3.org/2000/svg");
constexpr QLatin1String cLinkNamespace("http://www.w3.org/1999/xlink");
constexpr QLatin1String cDeclaration("xmlns:");

/// Elements whose text is of use.
constexpr std::array<std::string_view, 4> cTextElements{"text", "tspan", "a", "style"};

QString getPrefix(const QXmlStreamReader& reader) {
    const QStringRef name = reader.qualifiedName();
    const int colon = name.indexOf(QLatin1Char(':'));
    return colon < 0 ? QString() : name.left(colon).toString();
}

std::string getLocalName(const QXmlStreamReader& reader) {
    const QStringRef name = reader.qualifiedName();
    return name.mid(name.indexOf(QLatin1Char(':')) + 1).toString().toStdString();
}

bool isForeign(const QXmlStreamReader& reader, const QString& prefix) {
    const QXmlStreamAttributes attributes = reader.attributes();
    const QString declaration = prefix.isEmpty() ? QStringLiteral("xmlns") : cDeclaration + prefix;
    return getPrefix(reader) != prefix ||
           (attributes.hasAttribute(declaration) && attributes.value(declaration) != cNamespace);
}

void refuseRoot(QXmlStreamReader& reader) {
    reader.raiseError(QStringLiteral("The document is no SVG."));
}

std::string getErrorText(const QXmlStreamReader& reader) {
    return fmt::format("line {}, column {}: {}", reader.lineNumber(), reader.columnNumber(),
                       reader.errorString().toStdString());
}

} // namespace

std::string_view KySvgElement::getAttribute(std::string_view attribute) const {
    const auto found = std::ranges::find(attributes, attribute, &KySvgAttribute::name);
    return found == attributes.end() ? std::string_view() : std::string_view(found->value);
}

bool KySvgElement::hasAttribute(std::string_view attribute) const {
    return std::ranges::find(attributes, attribute, &KySvgAttribute::name) != attributes.end();
}

std::string_view KySvgElement::getLink() const {
    return KySvgValues::trim(getAttribute(hasAttribute("href") ? "href" : "xlink:href"));
}

std::size_t KySvgElement::getSize() const {
    return std::accumulate(attributes.begin(), attributes.end(), std::size_t(text.size()),
                           [](std::size_t sum, const KySvgAttribute& a) { return sum + a.value.size(); });
}

struct KySvgDocument::Way {
    int current = -1;
    unsigned depth = 0;
    /// Levels below an element that is left out.
    unsigned ignored = 0;
};

bool KySvgDocument::read(const std::string& bytes, KySvgReports& reports, std::string& error) {
    if (bytes.size() > Ky2DSvgImporter::cMaxBytes) {
        error = fmt::format("The document has more than {} bytes.", Ky2DSvgImporter::cMaxBytes);
        return false;
    }
    mSize = bytes.size();
    bool isDecoded = false;
    QByteArray document = KySvgSource::decode(bytes, isDecoded);
    KySvgSource::eraseDeclarations(document);
    if (!KySvgSource::isBounded(document, int(Ky2DSvgImporter::cMaxAttributes))) {
        error = fmt::format("An element has more than {} attributes.", Ky2DSvgImporter::cMaxAttributes);
        return false;
    }
    // Given as text, the reader does not believe a declared encoding.
    const auto reader = isDecoded ? std::make_unique<QXmlStreamReader>(QString::fromUtf8(document))
                                  : std::make_unique<QXmlStreamReader>(document);
    reader->setNamespaceProcessing(false);
    reader->setEntityExpansionLimit(0);
    if (readAll(*reader, reports))
        return true;
    error = getErrorText(*reader);
    return false;
}

bool KySvgDocument::readAll(QXmlStreamReader& reader, KySvgReports& reports) {
    Way way;
    while (!reader.atEnd()) {
        reader.readNext();
        readToken(reader, way, reports);
    }
    if (!reader.hasError() && mElements.empty())
        refuseRoot(reader);
    return !reader.hasError();
}

void KySvgDocument::readToken(QXmlStreamReader& reader, Way& way, KySvgReports& reports) {
    switch (reader.tokenType()) {
    case QXmlStreamReader::StartDocument:
        if (!KySvgSource::isKnownEncoding(reader.documentEncoding().toString()))
            reader.raiseError(QStringLiteral("The encoding is not known."));
        return;
    case QXmlStreamReader::DTD:
        if (!reader.entityDeclarations().isEmpty())
            reader.raiseError(QStringLiteral("Entities are not read."));
        return;
    case QXmlStreamReader::EntityReference:
        reader.raiseError(QStringLiteral("Entity '%1' is not known.").arg(reader.name().toString()));
        return;
    case QXmlStreamReader::StartElement:
        return begin(reader, way, reports);
    case QXmlStreamReader::EndElement:
        if (way.ignored > 0) {
            --way.ignored;
            return;
        }
        way.current = getElement(way.current).parent;
        --way.depth;
        return;
    case QXmlStreamReader::Characters:
        return addText(reader, way);
    default:
        return;
    }
}

void KySvgDocument::begin(QXmlStreamReader& reader, Way& way, KySvgReports& reports) {
    if (mElements.empty()) {
        mPrefix = getPrefix(reader);
        if (getLocalName(reader) != "svg")
            return refuseRoot(reader);
    }
    const bool isTooDeep = way.depth > Ky2DSvgImporter::cMaxDepth;
    if (isTooDeep && way.ignored == 0)
        reports.add("nesting");
    if (way.ignored > 0 || isTooDeep || isForeign(reader, mPrefix)) {
        if (mElements.empty())
            return refuseRoot(reader);
        ++way.ignored;
        return;
    }
    if (mElements.size() >= Ky2DSvgImporter::cMaxElements)
        return reader.raiseError(
            QStringLiteral("The document has more than %1 elements.").arg(qulonglong(Ky2DSvgImporter::cMaxElements)));
    KySvgElement element;
    element.name = getLocalName(reader);
    readAttributes(reader, element);
    way.current = append(std::move(element), way.current);
    ++way.depth;
}

void KySvgDocument::readAttributes(const QXmlStreamReader& reader, KySvgElement& element) {
    const QXmlStreamAttributes attributes = reader.attributes();
    for (const QXmlStreamAttribute& attribute : attributes)
        if (attribute.value() == cLinkNamespace && attribute.qualifiedName().startsWith(cDeclaration))
            mLinkPrefixes.insert(attribute.qualifiedName().mid(cDeclaration.size()).toString() + QLatin1Char(':'));
    element.attributes.reserve(std::size_t(attributes.size()));
    for (const QXmlStreamAttribute& attribute : attributes) {
        QString name = attribute.qualifiedName().toString();
        if (const int local = name.indexOf(QLatin1Char(':')) + 1; mLinkPrefixes.contains(name.left(local)))
            name.replace(0, local, QStringLiteral("xlink:"));
        element.attributes.push_back({name.toStdString(), attribute.value().toString().toStdString()});
    }
}

void KySvgDocument::addText(const QXmlStreamReader& reader, const Way& way) {
    if (way.ignored > 0 || way.current < 0)
        return;
    KySvgElement& parent = mElements[std::size_t(way.current)];
    if (std::ranges::find(cTextElements, parent.name) == cTextElements.end())
        return;
    const int last = parent.lastChild;
    if (last >= 0 && mElements[std::size_t(last)].name.empty()) {
        mElements[std::size_t(last)].text += reader.text();
        return;
    }
    // A comment between each two letters makes many pieces: they count, and end, like elements.
    KySvgElement piece;
    piece.text = reader.text().toString();
    if (mElements.size() < 2 * Ky2DSvgImporter::cMaxElements)
        append(std::move(piece), way.current);
}

int KySvgDocument::append(KySvgElement element, int parent) {
    const int index = getNbElements();
    element.parent = parent;
    if (const std::string_view id = element.getAttribute("id"); !id.empty())
        mIds.try_emplace(std::string(id), index);
    mElements.push_back(std::move(element));
    if (parent < 0)
        return index;
    KySvgElement& above = mElements[std::size_t(parent)];
    int& link = above.lastChild < 0 ? above.firstChild : mElements[std::size_t(above.lastChild)].next;
    link = index;
    above.lastChild = index;
    return index;
}

int KySvgDocument::findId(std::string_view id) const {
    const auto found = mIds.find(std::string(id));
    return found == mIds.end() ? -1 : found->second;
}

int KySvgDocument::findReference(std::string_view reference) const {
    reference = KySvgValues::trim(reference);
    if (reference.starts_with("url(")) {
        reference = reference.substr(4, reference.find(')') - 4);
        reference = KySvgValues::trim(reference);
        if (reference.size() > 1 && (reference[0] == '"' || reference[0] == '\''))
            reference = reference.substr(1, reference.size() - 2);
    }
    return reference.starts_with('#') ? findId(reference.substr(1)) : -1;
}

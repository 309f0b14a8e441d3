// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyDoxygenXmlParser_p.h"

#include <QRegularExpression>
#include <QStringList>

#include <algorithm>
#include <array>

namespace {

constexpr std::array cClassKinds{"class", "struct", "interface"};
constexpr std::array cBlocks{"para",           "title",    "listitem",  "parameteritem", "simplesect", "parameterlist",
                             "programlisting", "codeline", "linebreak", "verbatim",      "row"};
/// Stands for an empty element in the text.
constexpr const char* cBlank = "sp";

/// Characters of a bad name that a report shows.
constexpr int cShownLength = 64;

template <class Names>
bool isOneOf(const QStringRef& name, const Names& names) {
    return std::any_of(names.begin(), names.end(), [&](const char* one) { return name == QLatin1String(one); });
}

struct TextPart {
    const char* element;
    std::string KyDoxygenMember::*text;
    bool isParagraphs;
};

constexpr TextPart cMemberParts[] = {
    {"type", &KyDoxygenMember::type, false},
    {"name", &KyDoxygenMember::name, false},
    {"argsstring", &KyDoxygenMember::arguments, false},
    {"briefdescription", &KyDoxygenMember::brief, true},
    {"detaileddescription", &KyDoxygenMember::detailed, true},
};

/// Without blanks at the ends of lines and without empty lines.
std::string tidy(const QString& text) {
    QStringList lines;
    for (const QString& line : text.split('\n'))
        if (const QString simple = line.simplified(); !simple.isEmpty())
            lines.append(simple);
    return lines.join('\n').toStdString();
}

} // namespace

KyDoxygenXmlParser::KyDoxygenXmlParser(const QByteArray& document, int maxDepth)
    : mDocument(document)
    , mMaxDepth(maxDepth)
    , mXml(document) {}

/// A pass over the whole document, so that reading meets nothing but well-formed XML of bounded depth.
bool KyDoxygenXmlParser::check(const QString& root) {
    int depth = 0;
    while (!mXml.atEnd()) {
        switch (mXml.readNext()) {
        case QXmlStreamReader::DTD:
            mXml.raiseError("A document type declaration is not allowed.");
            break;
        case QXmlStreamReader::EntityReference:
            mXml.raiseError("Entities are not allowed.");
            break;
        case QXmlStreamReader::StartElement:
            if (depth == 0 && mXml.name() != root)
                mXml.raiseError("The root element is not \"" + root + "\".");
            if (++depth > mMaxDepth)
                mXml.raiseError("Too many elements inside each other.");
            break;
        case QXmlStreamReader::EndElement:
            --depth;
            break;
        default:
            break;
        }
    }
    return !mXml.hasError();
}

bool KyDoxygenXmlParser::enter(const QString& root) {
    if (!check(root))
        return false;
    mXml.clear();
    mXml.addData(mDocument);
    return mXml.readNextStartElement();
}

std::string KyDoxygenXmlParser::getError() const {
    return std::to_string(mXml.lineNumber()) + ": " + mXml.errorString().toStdString();
}

bool KyDoxygenXmlParser::readCompounds(std::vector<KyDoxygenClass>& classes) {
    if (!enter("doxygen"))
        return false;
    while (mXml.readNextStartElement()) {
        if (mXml.name() == QLatin1String("compounddef") && isOneOf(mXml.attributes().value("kind"), cClassKinds))
            readCompound(classes);
        else
            mXml.skipCurrentElement();
    }
    return !mXml.hasError();
}

void KyDoxygenXmlParser::readCompound(std::vector<KyDoxygenClass>& classes) {
    KyDoxygenClass record;
    while (mXml.readNextStartElement())
        readClassPart(record);
    if (record.name.empty() && !mXml.hasError())
        mXml.raiseError("A class has no name.");
    classes.push_back(std::move(record));
}

void KyDoxygenXmlParser::readClassPart(KyDoxygenClass& record) {
    if (mXml.name() == QLatin1String("compoundname"))
        record.name = readLine();
    else if (mXml.name() == QLatin1String("briefdescription"))
        record.brief = readText();
    else if (mXml.name() == QLatin1String("detaileddescription"))
        record.detailed = readText();
    else if (mXml.name() == QLatin1String("sectiondef"))
        readSection(record);
    else
        mXml.skipCurrentElement();
}

void KyDoxygenXmlParser::readSection(KyDoxygenClass& record) {
    while (mXml.readNextStartElement()) {
        if (mXml.name() == QLatin1String("memberdef") && mXml.attributes().value("prot") != QLatin1String("private"))
            record.members.push_back(readMember());
        else
            mXml.skipCurrentElement();
    }
}

KyDoxygenMember KyDoxygenXmlParser::readMember() {
    KyDoxygenMember member;
    member.kind = mXml.attributes().value("kind").toString().toStdString();
    while (mXml.readNextStartElement()) {
        const auto* const part =
            std::find_if(std::begin(cMemberParts), std::end(cMemberParts),
                         [&](const TextPart& one) { return mXml.name() == QLatin1String(one.element); });
        if (part == std::end(cMemberParts))
            mXml.skipCurrentElement();
        else
            member.*(part->text) = part->isParagraphs ? readText() : readLine();
    }
    // An enumeration or a structure may have no name; a member of no kind says nothing.
    if (member.kind.empty() && !mXml.hasError())
        mXml.raiseError("A member has no kind.");
    return member;
}

bool KyDoxygenXmlParser::readIndex(std::vector<QString>& files) {
    if (!enter("doxygenindex"))
        return false;
    while (mXml.readNextStartElement()) {
        if (mXml.name() == QLatin1String("compound") && isOneOf(mXml.attributes().value("kind"), cClassKinds))
            readIndexEntry(files);
        else
            mXml.skipCurrentElement();
    }
    return !mXml.hasError();
}

void KyDoxygenXmlParser::readIndexEntry(std::vector<QString>& files) {
    static const QRegularExpression plainName("\\A[A-Za-z0-9_-]+\\z");
    const QString file = mXml.attributes().value("refid").toString();
    if (!plainName.match(file).hasMatch())
        return mXml.raiseError("\"" + file.left(cShownLength) + "\" is no name of a class file.");
    files.push_back(file);
    mXml.skipCurrentElement();
}

/// All text inside the current element, blocks on lines of their own.
std::string KyDoxygenXmlParser::readText() {
    QString text;
    for (int depth = 1; depth > 0 && !mXml.atEnd();) {
        mXml.readNext();
        if (mXml.isCharacters())
            text += mXml.text();
        if (!mXml.isStartElement() && !mXml.isEndElement())
            continue;
        depth += mXml.isStartElement() ? 1 : -1;
        if (isOneOf(mXml.name(), cBlocks))
            text += '\n';
        else if (mXml.isStartElement() && mXml.name() == QLatin1String(cBlank))
            text += ' ';
    }
    return tidy(text);
}

std::string KyDoxygenXmlParser::readLine() {
    return mXml.readElementText(QXmlStreamReader::IncludeChildElements).simplified().toStdString();
}

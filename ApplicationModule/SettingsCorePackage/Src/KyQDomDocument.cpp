// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyQDomDocument.h"

#include "KyFileUtilities.h"
#include "KyQtText.h"
#include "KyXmlNesting_p.h"

#include "KyException.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QSaveFile>

namespace {

constexpr int cIndentation = 4;

/// What a parser says about a bad text.
struct ParseError {
    QString text;
    int line = 0;
    int column = 0;
};

bool isParsable(const QByteArray& bytes, ParseError& error) {
    const auto place = KyXmlNesting::findExcess(bytes, KyQDomDocument::cMaxDepth);
    if (place)
        error = {QStringLiteral("declares an entity, or elements lie too deep in each other"), place->line,
                 place->column};
    return !place;
}

/// Of bytes, which name their encoding, or of a text.
template <class Text>
bool parse(const Text& text, const QByteArray& bytes, QDomDocument& document, ParseError& error) {
    return isParsable(bytes, error) && document.setContent(text, &error.text, &error.line, &error.column);
}

bool parse(const QByteArray& bytes, QDomDocument& document) {
    ParseError error;
    return parse(bytes, bytes, document, error);
}

/// Documents are written as UTF-8, whatever they were read as.
void setEncoding(QDomDocument& document) {
    QDomProcessingInstruction declaration = document.firstChild().toProcessingInstruction();
    if (declaration.isNull() || declaration.target() != QLatin1String("xml"))
        return;
    static const QRegularExpression cEncoding(QStringLiteral("encoding\\s*=\\s*(\"[^\"]*\"|'[^']*')"));
    declaration.setData(declaration.data().replace(cEncoding, QStringLiteral("encoding=\"UTF-8\"")));
}

/// The file that a path leads to, through all links, or the path itself where none is yet.
QString findTarget(const QString& path) {
    const QString target = QFileInfo(path).canonicalFilePath();
    return target.isEmpty() ? path : target;
}

bool writeFile(const QString& path, const QByteArray& bytes) {
    QSaveFile file(path);
    file.setDirectWriteFallback(true);
    if (!file.open(QIODevice::WriteOnly))
        return false;
    // A full disk shows at the flush only, and commit() alone would put an empty file in the old one's place.
    const bool isWritten = file.write(bytes) == bytes.size() && file.flush();
    if (!isWritten)
        file.cancelWriting();
    return isWritten && file.commit();
}

} // namespace

KyQDomDocument::KyQDomDocument(const QString& filePath)
    : mFilePath(filePath)
    , mIsOpened(false)
    , mIsUnreadable(false) {}

KyQDomDocument::~KyQDomDocument() = default;

QString KyQDomDocument::getRootElementTagName() const {
    return QString();
}

void KyQDomDocument::setFilePath(const QString& filePath) {
    if (filePath != mFilePath)
        mIsUnreadable = false;
    mFilePath = filePath;
}

QString KyQDomDocument::getFileName() const {
    return QFileInfo(mFilePath).fileName();
}

QString KyQDomDocument::getFileDir(bool withSeparator) const {
    if (mFilePath.isEmpty())
        return QString();
    QString directory = QDir::toNativeSeparators(QFileInfo(mFilePath).absolutePath());
    if (withSeparator && !directory.endsWith(QDir::separator()))
        directory += QDir::separator();
    return directory;
}

bool KyQDomDocument::open() {
    // Reading a pipe would wait for its writer.
    QFile file(mFilePath);
    QDomDocument parsed;
    if (mFilePath.isEmpty() || !QFileInfo(mFilePath).isFile() || !file.open(QIODevice::ReadOnly))
        return take(parsed, false);
    const bool isParsed = parse(file.readAll(), parsed);
    mIsUnreadable = !isParsed;
    return take(parsed, isParsed);
}

bool KyQDomDocument::load(const QString& text) {
    ParseError error;
    QDomDocument parsed;
    if (take(parsed, parse(text, text.toUtf8(), parsed, error)))
        return true;
    KyException::create("XML parse error at (Ln " + std::to_string(error.line) + " Col " +
                        std::to_string(error.column) + "): \n" + KyApplication::toKyString(error.text));
    return false;
}

bool KyQDomDocument::save() {
    const QFileInfo file(mFilePath);
    if (mFilePath.isEmpty() || (file.exists() && !file.isFile()))
        return false;
    if (documentElement().isNull() && file.size() > 0)
        return false;
    setEncoding(*this);
    const QByteArray bytes = toByteArray(cIndentation);
    QDomDocument readAgain;
    if (!documentElement().isNull() && !parse(bytes, readAgain))
        return false;
    if (!keepUnreadable() || !writeFile(findTarget(mFilePath), bytes))
        return false;
    mIsUnreadable = false;
    return true;
}

void KyQDomDocument::close() {
    clear();
    mFilePath = QString();
    mIsOpened = false;
    mIsUnreadable = false;
}

/// Takes the parsed document over, or is empty.
bool KyQDomDocument::take(const QDomDocument& parsed, bool isParsed) {
    clear();
    if (isParsed)
        QDomDocument::operator=(parsed);
    mIsOpened = isParsed;
    return isParsed;
}

/// A file that could not be parsed is somebody's work all the same.
bool KyQDomDocument::keepUnreadable() {
    return !mIsUnreadable || !QFileInfo::exists(mFilePath) ||
           KyApplication::copyRecursively(mFilePath, mFilePath + QStringLiteral(".bak"), true);
}

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
#include <QTextCodec>

namespace {

constexpr int cIndentation = 4;
constexpr int cDeclarationSize = 256;
constexpr int cMaxLinks = 40;

/// What a parser says about a bad text.
struct ParseError {
    QString text;
    int line = 0;
    int column = 0;
};

const QRegularExpression& getEncodingPattern() {
    static const QRegularExpression cPattern(QStringLiteral("encoding\\s*=\\s*[\"']([^\"']*)[\"']"));
    return cPattern;
}

/// By the declaration of the text, which lies in its first bytes as ASCII.
QTextCodec* findDeclaredCodec(const QByteArray& bytes) {
    const QByteArray start = bytes.left(cDeclarationSize);
    const QString declaration = QString::fromLatin1(start.left(start.indexOf("?>")));
    if (!declaration.trimmed().startsWith(QLatin1String("<?xml")))
        return nullptr;
    return QTextCodec::codecForName(getEncodingPattern().match(declaration).captured(1).toLatin1());
}

/// By the byte-order mark, else by the declaration, else from UTF-8.
QString decode(const QByteArray& bytes) {
    QTextCodec* codec = QTextCodec::codecForUtfText(bytes, findDeclaredCodec(bytes));
    return codec ? codec->toUnicode(bytes) : QString::fromUtf8(bytes);
}

bool parse(const QString& text, QDomDocument& document, ParseError& error) {
    const auto fault = KyXmlNesting::findFault(text, KyQDomDocument::cMaxDepth);
    if (fault)
        error = {fault->text, fault->line, fault->column};
    return !fault && document.setContent(text, &error.text, &error.line, &error.column);
}

bool parse(const QByteArray& bytes, QDomDocument& document) {
    ParseError error;
    return parse(decode(bytes), document, error);
}

/// Documents are written as UTF-8, whatever they were read as.
void setEncoding(QDomDocument& document) {
    QDomProcessingInstruction declaration = document.firstChild().toProcessingInstruction();
    if (declaration.isNull() || declaration.target() != QLatin1String("xml"))
        return;
    declaration.setData(declaration.data().replace(getEncodingPattern(), QStringLiteral("encoding=\"UTF-8\"")));
}

/// The file that a path leads to, through all links, whether it is there or not; empty for links in a circle.
QString findTarget(const QString& path) {
    QString target = path;
    for (int i = 0; i < cMaxLinks && QFileInfo(target).isSymLink(); ++i)
        target = QFileInfo(target).symLinkTarget();
    return QFileInfo(target).isSymLink() ? QString() : target;
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
    , mIsOpened(false) {}

KyQDomDocument::~KyQDomDocument() = default;

QString KyQDomDocument::getRootElementTagName() const {
    return QString();
}

void KyQDomDocument::setFilePath(const QString& filePath) {
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
    if (isParsed)
        mUnreadable.remove(mFilePath);
    else
        mUnreadable.insert(mFilePath);
    return take(parsed, isParsed);
}

bool KyQDomDocument::load(const QString& text) {
    ParseError error;
    QDomDocument parsed;
    if (take(parsed, parse(text, parsed, error)))
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
    const QString target = findTarget(mFilePath);
    if (target.isEmpty() || !keepUnreadable() || !writeFile(target, bytes))
        return false;
    mUnreadable.remove(mFilePath);
    return true;
}

void KyQDomDocument::close() {
    clear();
    mFilePath = QString();
    mIsOpened = false;
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
    return !mUnreadable.contains(mFilePath) || !QFileInfo::exists(mFilePath) ||
           KyApplication::copyRecursively(mFilePath, mFilePath + QStringLiteral(".bak"), true);
}

// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyDoxygenXmlDocReader.h"

#include "KyDoxygenXmlParser_p.h"

#include "KyCallSignatures.h"
#include "KyCast.h"
#include "KyException.h"
#include "KyTypeBuilder.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <set>
#include <utility>

const KyType* KyDoxygenXmlDocReader::msType = nullptr;

namespace {

bool fail(const QString& path, const std::string& reason) {
    KyException::create("KyDoxygenXmlDocReader: " + path.toStdString() + ":" + reason);
    return false;
}

/// The whole file, no more than the limit; lowers the limit by its size.
bool load(const QString& path, long long& limit, QByteArray& document) {
    QFile file(path);
    if (!QFileInfo(file).isFile() || !file.open(QIODevice::ReadOnly))
        return fail(path, "1: The file cannot be opened.");
    const long long largest = std::min(limit, KyDoxygenXmlDocReader::cMaxFileSize);
    document = file.read(largest + 1);
    if (document.size() > largest)
        return fail(path, "1: The file is too large.");
    limit -= document.size();
    return true;
}

bool readClasses(const QString& path, long long& limit, std::vector<KyDoxygenClass>& classes) {
    QByteArray document;
    if (!load(path, limit, document))
        return false;
    KyDoxygenXmlParser parser(document, KyDoxygenXmlDocReader::cMaxDepth);
    return parser.readCompounds(classes) || fail(path, parser.getError());
}

bool readIndex(const QString& path, long long& limit, std::vector<QString>& files) {
    QByteArray document;
    if (!load(path, limit, document))
        return false;
    KyDoxygenXmlParser parser(document, KyDoxygenXmlDocReader::cMaxDepth);
    return parser.readIndex(files) || fail(path, parser.getError());
}

} // namespace

KyDoxygenXmlDocReader::KyDoxygenXmlDocReader() = default;

KyDoxygenXmlDocReader::~KyDoxygenXmlDocReader() {
    notifyEnd();
}

void KyDoxygenXmlDocReader::initializeType() {
    if (msType)
        return;
    KyObject::initializeType();
    msType = KyTypeBuilder<KyDoxygenXmlDocReader>("KyDoxygenXmlDocReader", KyObject::getType())
                 .factory()
                 .container("ClassNames", &KyDoxygenXmlDocReader::getNbClasses, &KyDoxygenXmlDocReader::getClassName)
                 .method("readFile", &KyDoxygenXmlDocReader::readFile)
                 .method("readDirectory", &KyDoxygenXmlDocReader::readDirectory)
                 .method("clear", &KyDoxygenXmlDocReader::clear)
                 .build();
    KyCallSignatures::add("KyDoxygenXmlDocReader", {"readDirectory(directory)", "readFile(path)"});
}

void KyDoxygenXmlDocReader::finalizeType() {
    KyType::remove(msType);
}

const KyType* KyDoxygenXmlDocReader::getType() {
    if (!msType)
        initializeType();
    return msType;
}

KyDoxygenXmlDocReader* KyDoxygenXmlDocReader::cast(KyObject* object) {
    return kyCast<KyDoxygenXmlDocReader>(object);
}

KyObject* KyDoxygenXmlDocReader::factory() {
    return new KyDoxygenXmlDocReader;
}

const KyType* KyDoxygenXmlDocReader::getObjectType() const {
    return getType();
}

bool KyDoxygenXmlDocReader::readFile(const std::string& path) {
    clear();
    std::vector<KyDoxygenClass> classes;
    long long limit = cMaxFileSize;
    if (!readClasses(QString::fromStdString(path), limit, classes))
        return false;
    mClasses = std::move(classes);
    return true;
}

bool KyDoxygenXmlDocReader::readDirectory(const std::string& directory) {
    clear();
    const QDir folder(QString::fromStdString(directory));
    std::vector<QString> files;
    std::vector<KyDoxygenClass> classes;
    long long limit = cMaxTotalSize;
    if (!readIndex(folder.filePath("index.xml"), limit, files))
        return false;
    // An index that names a file again would be read again and again.
    std::set<QString> known;
    std::erase_if(files, [&](const QString& file) { return !known.insert(file).second; });
    const auto readOne = [&](const QString& file) {
        return readClasses(folder.filePath(file + ".xml"), limit, classes);
    };
    if (!std::all_of(files.begin(), files.end(), readOne))
        return false;
    mClasses = std::move(classes);
    return true;
}

const KyDoxygenClass* KyDoxygenXmlDocReader::getClass(unsigned index) const {
    return index < mClasses.size() ? &mClasses[index] : nullptr;
}

const std::string& KyDoxygenXmlDocReader::getClassName(unsigned index) const {
    static const std::string none;
    return index < mClasses.size() ? mClasses[index].name : none;
}

std::vector<KyDoxygenClass> KyDoxygenXmlDocReader::takeClasses() {
    return std::exchange(mClasses, {});
}

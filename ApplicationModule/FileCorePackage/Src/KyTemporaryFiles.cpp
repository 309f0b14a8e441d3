// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyFileUtilities.h"

#include "KyFileName_p.h"
#include "KyFilePath_p.h"
#include "KyNewFile_p.h"

#include <QFile>
#include <QRandomGenerator>

#include <memory>
#include <string_view>

namespace {

constexpr int cMaxHintLength = 100;
// Most file systems take names of 255 bytes.
constexpr int cMaxHintSize = 240;
constexpr std::size_t cMaxNameSize = 255;

constexpr int cNbRandomLetters = 6;
constexpr std::string_view cLetters = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz";

// The end of the hint's name, where the extension is.
QString getHintName(const QString& hint) {
    QString name = QFileInfo(hint).fileName().right(cMaxHintLength);
    while (QFile::encodeName(name).size() > cMaxHintSize || (!name.isEmpty() && name.at(0).isLowSurrogate()))
        name.remove(0, 1);
    return name;
}

bool isTaken(const QString& path) {
    const QFileInfo entry(path);
    return entry.exists() || entry.isSymLink();
}

QString makeTemporaryPath(const QString& hintName) {
    QString letters;
    for (int i = 0; i < cNbRandomLetters; ++i)
        letters += QLatin1Char(cLetters[QRandomGenerator::system()->bounded(static_cast<quint32>(cLetters.size()))]);
    const QString path = QDir::temp().filePath(letters + hintName);
    return isTaken(path) ? makeTemporaryPath(hintName) : path;
}

int findCounterPosition(const QString& name) {
    const int dot = name.indexOf('.');
    return dot > 0 ? dot : name.size();
}

} // namespace

bool KyApplication::setUniqueFilename(QString& path) {
    if (!isTaken(path))
        return true;
    QString plain = QDir::fromNativeSeparators(path);
    while (plain.endsWith('/'))
        plain.chop(1);
    const int nameStart = plain.lastIndexOf('/') + 1;
    const int position = nameStart + findCounterPosition(plain.mid(nameStart));
    if (nameStart == plain.size())
        return false;
    for (quint32 counter = 1; counter != 0; ++counter) {
        const QString candidate = plain.left(position) + '_' + QString::number(counter) + plain.mid(position);
        if (KyFileName::fromText(candidate.mid(nameStart)).size() > cMaxNameSize)
            return false;
        if (isTaken(candidate))
            continue;
        path = candidate;
        return true;
    }
    return false;
}

QString KyApplication::saveToTemp(const QByteArray& data, const QString& nameHint) {
    const QString path = makeTemporaryPath(getHintName(nameHint));
    const KyFilePath::Place place = KyFilePath::find(path);
    if (!place.directory.isOpened())
        return {};
    KyNewFile file(place.directory, place.name, KyNewFile::Mode::ePrivate);
    const std::string_view bytes(data.constData(), static_cast<std::size_t>(data.size()));
    return file.isOpened() && file.write(bytes) && file.commit() ? path : QString();
}

QString KyApplication::unembed(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    const QByteArray data = file.readAll();
    return file.error() == QFileDevice::NoError ? saveToTemp(data, path) : QString();
}

int KyApplication::openFile(const QString& path, QFile** file) {
    if (!file)
        return eFileNotOpened;
    const QFileInfo info(path);
    if (!KyFilePath::isExact(path) || !QDir().mkpath(info.absolutePath()))
        return eDirectoryNotCreated;
    auto opened = std::make_unique<QFile>(info.absoluteFilePath());
    const bool isOpened = opened->open(QIODevice::WriteOnly);
    *file = isOpened ? opened.release() : nullptr;
    return isOpened ? eSuccess : eFileNotOpened;
}

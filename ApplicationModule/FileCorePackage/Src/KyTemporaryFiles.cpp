// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyFileUtilities.h"

#include "KyFilePath_p.h"

#include <QFile>
#include <QTemporaryFile>

#include <memory>

namespace {

constexpr int cMaxHintLength = 100;
// Most file systems take names of 255 bytes.
constexpr int cMaxHintSize = 240;

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
        if (isTaken(candidate))
            continue;
        path = candidate;
        return true;
    }
    return false;
}

QString KyApplication::saveToTemp(const QByteArray& data, const QString& nameHint) {
    QTemporaryFile file(QDir::temp().filePath(QStringLiteral("XXXXXX") + getHintName(nameHint)));
    file.setAutoRemove(false);
    if (!file.open())
        return {};
    // A full disk shows only when the buffer is written out.
    const bool isComplete = file.write(data) == data.size() && file.flush();
    return isComplete ? file.fileName() : QString();
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
    if (path.isEmpty() || !QDir().mkpath(info.absolutePath()))
        return eDirectoryNotCreated;
    auto opened = std::make_unique<QFile>(info.absoluteFilePath());
    const bool isOpened = KyFilePath::isExact(path) && opened->open(QIODevice::WriteOnly);
    *file = isOpened ? opened.release() : nullptr;
    return isOpened ? eSuccess : eFileNotOpened;
}

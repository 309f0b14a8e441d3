// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyFileCopier_p.h"

#include "KyNewFile_p.h"
#include "KySourceFile_p.h"

#include "KyTracker.h"

#include <QDir>
#include <QFile>

#include <algorithm>

namespace {

using Kind = KyDirectory::Kind;

constexpr qint64 cChunk = qint64{256} << 10;
/// Of a large file, per step of the tracker.
constexpr std::uint64_t cBytesPerStep = std::uint64_t{16} << 20;

template <class Entries>
unsigned countSteps(const Entries& entries) {
    return static_cast<unsigned>(entries.size());
}

bool isCopied(const KyDirectory::Entry& entry) {
    return !entry.isHidden && entry.name.front() != '.' && entry.name.front() != '_';
}

bool isReplaceable(Kind kind) {
    return kind == Kind::eFile || kind == Kind::eFileLink || kind == Kind::eOtherLink;
}

// What is no file of the system is none that could be replaced.
bool isAnyFile() {
    return true;
}

bool writeAll(QFile& source, KyNewFile& target, const KyTracker& tracker) {
    while (!source.atEnd()) {
        const QByteArray chunk = source.read(cChunk);
        if (tracker.isCanceled() || chunk.isEmpty())
            return false;
        if (!target.write(std::string_view(chunk.constData(), static_cast<std::size_t>(chunk.size()))))
            return false;
    }
    return true;
}

} // namespace

KyFileCopier::KyFileCopier(bool overwrites, KyTracker& tracker)
    : mOverwrites(overwrites)
    , mTracker(tracker) {}

bool KyFileCopier::make(const KyDirectory& to, const KyDirectory::Name& newName, const KySourceFile* model,
                        const Check& isOther, const Writer& write) {
    const Kind kind = to.getKind(newName);
    const bool isNew = kind == Kind::eMissing;
    if (!isNew && (!mOverwrites || !isReplaceable(kind) || !isOther()))
        return false;
    KyNewFile target(to, newName, isNew ? KyNewFile::Mode::eNew : KyNewFile::Mode::eReplace, model);
    return target.isOpened() && write(target) && target.commit();
}

bool KyFileCopier::copyFile(const KyDirectory& from, const KyDirectory::Name& name, const KyDirectory& to,
                            const KyDirectory::Name& newName) {
    const KySourceFile source(from, name);
    if (!source.isOpened())
        return false;
    const std::uint64_t nbSteps = source.getSize() / cBytesPerStep;
    if (nbSteps > 0)
        mTracker.setNbSteps(static_cast<unsigned>(nbSteps));
    std::uint64_t nbDone = 0;
    const auto progress = [&](std::uint64_t nbBytes) {
        for (; nbDone < std::min(nbSteps, nbBytes / cBytesPerStep); ++nbDone)
            mTracker.step();
        return !mTracker.isCanceled();
    };
    return make(
        to, newName, &source, [&] { return !KyDirectory::isSameFile(from, name, to, newName); },
        [&](KyNewFile& target) { return target.write(source, progress); });
}

bool KyFileCopier::writeFile(std::string_view bytes, const KyDirectory& to, const KyDirectory::Name& newName) {
    return make(to, newName, nullptr, &isAnyFile, [&](KyNewFile& target) { return target.write(bytes); });
}

bool KyFileCopier::copyTree(KyDirectory& from, KyDirectory& to, bool isNew) {
    if (!isNew)
        return copyEntries(from, to);
    to.takePermissions(from, KyDirectory::Stage::eFilling);
    const bool isComplete = copyEntries(from, to);
    to.takePermissions(from, KyDirectory::Stage::eFilled);
    return isComplete;
}

bool KyFileCopier::copyEntries(KyDirectory& from, KyDirectory& to) {
    std::vector<KyDirectory::Entry> entries;
    bool isComplete = from.list(entries);
    std::erase_if(entries, [](const KyDirectory::Entry& entry) { return !isCopied(entry); });
    mTracker.setNbSteps(countSteps(entries));
    for (const KyDirectory::Entry& entry : entries) {
        if (mTracker.isCanceled())
            return false;
        mTracker.beginSubTask();
        isComplete &= copyEntry(from, entry, to);
        mTracker.endSubTask();
    }
    return isComplete;
}

bool KyFileCopier::copyEntry(KyDirectory& from, const KyDirectory::Entry& entry, KyDirectory& to) {
    if (entry.kind == Kind::eFile || entry.kind == Kind::eFileLink)
        return copyFile(from, entry.name, to, entry.name);
    if (entry.kind != Kind::eDirectory)
        return true;
    return from.visit(entry.name, [&](KyDirectory& source) {
        const bool isNew = to.createDirectory(entry.name);
        return to.visit(entry.name, [&](KyDirectory& target) { return copyTree(source, target, isNew); });
    });
}

bool KyFileCopier::copyResource(const QString& path, const KyDirectory& to, const KyDirectory::Name& newName) {
    QFile source(path);
    if (!source.open(QIODevice::ReadOnly))
        return false;
    return make(to, newName, nullptr, &isAnyFile,
                [&](KyNewFile& target) { return writeAll(source, target, mTracker); });
}

bool KyFileCopier::copyResourceTree(const QString& path, KyDirectory& to) {
    const QDir directory(path);
    const QFileInfoList entries = directory.entryInfoList(QDir::Files | QDir::Dirs | QDir::NoDotAndDotDot);
    bool isComplete = true;
    mTracker.setNbSteps(countSteps(entries));
    for (const QFileInfo& entry : entries) {
        if (mTracker.isCanceled())
            return false;
        mTracker.beginSubTask();
        isComplete &= KyFilePath::isPrivate(entry.fileName()) || copyResourceEntry(entry, to);
        mTracker.endSubTask();
    }
    return isComplete;
}

bool KyFileCopier::copyResourceEntry(const QFileInfo& entry, KyDirectory& to) {
    const auto name = KyFilePath::toNative(entry.fileName()).native();
    if (name.empty())
        return false;
    if (!entry.isDir())
        return copyResource(entry.filePath(), to, name);
    to.createDirectory(name);
    return to.visit(name, [&](KyDirectory& target) { return copyResourceTree(entry.filePath(), target); });
}

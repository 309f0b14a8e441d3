// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyFileUtilities.h"

#include "KyTracker.h"

#include <QCoreApplication>
#include <QDirIterator>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

/// A temporary directory; all paths are relative to it.
class KyFileTest : public testing::Test {
protected:
    KyFileTest() {
        static int count = 1;
        static char name[] = "FileCoreTest";
        static char* arguments[] = {name, nullptr};
        static const QCoreApplication application(count, arguments);
    }

    QString at(const QString& path) const { return mDirectory.filePath(path); }

    void write(const QString& path, const QByteArray& content = "content") const {
        QFile* file = nullptr;
        ASSERT_EQ(KyApplication::openFile(at(path), &file), 0);
        const std::unique_ptr<QFile> owner(file);
        ASSERT_EQ(file->write(content), content.size());
    }
    void write(const QStringList& paths) const {
        for (const QString& path : paths)
            write(path);
    }
    QByteArray read(const QString& path) const {
        QFile file(at(path));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("unreadable");
    }
    bool exists(const QString& path) const { return QFileInfo::exists(at(path)); }
    void link(const QString& target, const QString& path) const { ASSERT_TRUE(QFile::link(target, at(path))); }
    void makeDirectory(const QString& path) const { ASSERT_TRUE(QDir().mkpath(at(path))); }

    /// A tree with every kind of link, and what they lead to.
    void writeLinkedTree() const {
        write({"tree/a.txt", "tree/sub/b.txt", "outside/keep.txt"});
        link(at("outside/keep.txt"), "tree/toFile.txt");
        link(at("outside"), "tree/sub/toDirectory");
        link("..", "tree/sub/loop");
        link("self.txt", "tree/self.txt");
        link("nothing", "tree/dangling.txt");
    }

    /// Everything below, links not followed, sorted and joined by blanks.
    std::string list(const QString& path) const {
        QStringList names;
        QDirIterator iterator(at(path), QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot,
                              QDirIterator::Subdirectories);
        while (iterator.hasNext())
            names.append(QDir(at(path)).relativeFilePath(iterator.next()));
        names.sort();
        return names.join(' ').toStdString();
    }

    const QTemporaryDir mDirectory;
};

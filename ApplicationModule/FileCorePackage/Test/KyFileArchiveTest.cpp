// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyFileTest.h"

#include "KyURL.h"

#include <QProcess>
#include <QStandardPaths>
#include <QThread>

using KyApplication::copyAssetToExternalFilesDir;
using KyApplication::extract7z;

namespace {

class KyFileArchiveTest : public KyFileTest {
protected:
    /// Packs a new file "packed.txt" into "unpack/here.7z".
    bool pack(const QStringList& options = {}) const {
        QString tool;
        for (const char* name : {"7za", "7zz", "7z", "7zr"})
            tool = tool.isEmpty() ? QStandardPaths::findExecutable(name) : tool;
        write("packed.txt");
        QProcess process;
        process.start(tool, QStringList{"a", at("unpack/here.7z"), at("packed.txt")} + options);
        return !tool.isEmpty() && process.waitForFinished(-1) && process.exitCode() == 0;
    }
    /// A program found instead of the real tool.
    void installTool(const QByteArray& script) const {
        write("bin/7za", "#!/bin/sh\n" + script);
        QFile::setPermissions(at("bin/7za"), QFile::ReadOwner | QFile::ExeOwner);
        qputenv("PATH", at("bin").toUtf8() + ":" + mPath);
        write("un pack/%1.7z");
    }
    ~KyFileArchiveTest() override { qputenv("PATH", mPath); }

    const QByteArray mPath = qgetenv("PATH");
};

TEST_F(KyFileArchiveTest, AnArchiveIsUnpackedBesideItselfAndRemoved) {
    if (!pack())
        GTEST_SKIP() << "no 7-Zip tool";
    write("unpack/packed.txt", "to be replaced");
    EXPECT_EQ(extract7z(QFileInfo(at("unpack/here.7z"))), 0);
    EXPECT_EQ(list("unpack"), "packed.txt");
    EXPECT_EQ(read("unpack/packed.txt"), "content");
}

TEST_F(KyFileArchiveTest, APasswordFailsInsteadOfWaiting) {
    if (!pack({"-mhe=on", "-psecret"}))
        GTEST_SKIP() << "no 7-Zip tool";
    EXPECT_EQ(extract7z(QFileInfo(at("unpack/here.7z"))), -1015);
    EXPECT_EQ(list("unpack"), "here.7z");
}

TEST_F(KyFileArchiveTest, TheToolGetsItsArgumentsAndNothingToRead) {
    installTool("printf '%s|' \"$@\" > \"${0%/*}/../arguments\"\nread line && exit 1\nexit 0\n");
    EXPECT_EQ(extract7z(QFileInfo(at("un pack/%1.7z"))), 0);
    EXPECT_EQ(read("arguments"), ("x|-o" + at("un pack") + "|-y|" + at("un pack/%1.7z") + "|").toUtf8());
    EXPECT_EQ(list("un pack"), "");
}

TEST_F(KyFileArchiveTest, WhatTheToolWouldExpandOrIsNoFileIsRefused) {
    installTool("touch \"${0%/*}/../called\"");
    write({"a*.7z", "ab.7z", "a?.7z", "d*/a.7z", "gone.7z"});
    const QFileInfo old(at("gone.7z"));
    ASSERT_TRUE(old.isFile() && QFile::remove(at("gone.7z")));
    EXPECT_EQ(extract7z(old), -1015);
    for (const char* path : {"a*.7z", "a?.7z", "d*/a.7z", "missing.7z", "bin"})
        EXPECT_EQ(extract7z(QFileInfo(at(path))), -1015) << path;
    EXPECT_FALSE(QFileInfo::exists(at("called")));
}

TEST_F(KyFileArchiveTest, WhateverTheToolDoesGivesACode) {
    const struct {
        const char* script;
        int code;
    } cases[] = {{"exit 2", -1015}, {"kill -9 $$", -1015}, {"rm \"$4\"", -1016}, {"exit 0", 0}};
    for (const auto& [script, code] : cases) {
        installTool(script);
        EXPECT_EQ(extract7z(QFileInfo(at("un pack/%1.7z"))), code) << script;
        EXPECT_EQ(QFileInfo::exists(at("un pack/%1.7z")), code == -1015) << script;
        KyApplication::deleteFile(at("bin/7za"));
    }
    qputenv("PATH", at("bin").toUtf8());
    write("un pack/%1.7z");
    EXPECT_EQ(extract7z(QFileInfo(at("un pack/%1.7z"))), -1015) << "there is no tool";
}

TEST_F(KyFileArchiveTest, CancelingEndsTheToolAndItsChildren) {
    installTool("(sleep 0.5; touch \"${0%/*}/../late\") & wait");
    KyTracker tracker;
    tracker.setListener([&](double progress) {
        EXPECT_TRUE(progress < 0.01 || tracker.isCanceled()) << "it still works";
        tracker.cancel();
    });
    EXPECT_EQ(extract7z(QFileInfo(at("un pack/%1.7z")), &tracker), -1015);
    QThread::msleep(700);
    EXPECT_FALSE(QFileInfo::exists(at("late")));
    EXPECT_EQ(list("un pack"), "%1.7z");
}

class KyFileLocationsTest : public KyFileTest {
protected:
    KyFileLocationsTest() { setLocations(at("home"), at("system")); }
    ~KyFileLocationsTest() override {
        qunsetenv("XDG_DATA_HOME");
        qunsetenv("XDG_DATA_DIRS");
    }
    static void setLocations(const QString& home, const QString& system) {
        QCoreApplication::setApplicationName("app");
        qputenv("XDG_DATA_HOME", home.toUtf8());
        qputenv("XDG_DATA_DIRS", system.toUtf8());
    }
    KyURL getURL(const QString& path) const { return KyURL(at(path).toStdString(), KyURL::eLocalPath); }
};

TEST_F(KyFileLocationsTest, TheLastLocationIsTheExternalDirectory) {
    QString path;
    EXPECT_TRUE(KyApplication::getExternalFilesDir(path));
    EXPECT_EQ(path, at("system/app"));
    EXPECT_FALSE(QFileInfo::exists(path)) << "only copying creates it";
}

TEST_F(KyFileLocationsTest, AnAssetIsCopiedAndReplacesTheOlderCopy) {
    KyURL copied;
    for (const char* content : {"one", "two"}) {
        write(".as set%.txt", content);
        ASSERT_TRUE(copyAssetToExternalFilesDir(getURL(".as set%.txt"), copied));
        EXPECT_EQ(copied.getLocalPath(), at("system/app/.as set%.txt").toStdString());
        EXPECT_EQ(read("system/app/.as set%.txt"), content);
    }
    EXPECT_FALSE(copyAssetToExternalFilesDir(copied, copied)) << "it is itself there";
    EXPECT_EQ(read("system/app/.as set%.txt"), "two");
    EXPECT_EQ(list("system/app"), ".as set%.txt");
}

TEST_F(KyFileLocationsTest, TheFirstLocationServesWhereTheLastCanNotBeMade) {
    write({"asset", "file"});
    setLocations(at("home"), at("file/below"));
    KyURL copied;
    EXPECT_TRUE(copyAssetToExternalFilesDir(getURL("asset"), copied));
    EXPECT_EQ(copied, getURL("home/app/asset"));
    EXPECT_EQ(read("home/app/asset"), "content");
    setLocations(at("file/home"), at("file/below"));
    EXPECT_FALSE(copyAssetToExternalFilesDir(getURL("asset"), copied));
}

TEST_F(KyFileLocationsTest, AnythingButAFileIsRefused) {
    write({"directory/inner", "escaped", QString("bad") + QChar(QChar::ReplacementCharacter)});
    const KyURL before("keep:me");
    for (const KyURL& url : {KyURL(), getURL("missing"), getURL("directory"), getURL("directory/"),
                             KyURL(getURL("directory").toString() + "/..%2F..%2Fescaped"), KyURL("unknown:/a"),
                             KyURL(getURL("bad").toString() + "%FF")}) {
        KyURL copied = before;
        EXPECT_FALSE(copyAssetToExternalFilesDir(url, copied)) << url.toString();
        EXPECT_EQ(copied, before);
    }
    EXPECT_EQ(list("system/app"), "");
}

} // namespace

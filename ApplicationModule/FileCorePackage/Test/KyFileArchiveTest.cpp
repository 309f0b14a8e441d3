// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyFileTest.h"

#include "KyURL.h"

#include <QProcess>
#include <QThread>

using namespace KyApplication;

namespace {

class KyFileArchiveTest : public KyFileTest {
protected:
    ~KyFileArchiveTest() override { qputenv("PATH", mPath); }

    /// Packs a new file "packed.txt" into "unpack/here.7z".
    bool pack(const QStringList& options = {}) const {
        write("packed.txt");
        const QStringList arguments = {"a", "-bso0", "-bsp0", at("unpack/here.7z"), at("packed.txt")};
        const auto succeeds = [&](const char* tool) { return QProcess::execute(tool, arguments + options) == 0; };
        return std::ranges::any_of(std::array{"7za", "7zz", "7z", "7zr"}, succeeds);
    }
    /// Unpacks a new "un pack/%1.7z" with a program that is found instead of the real tool.
    int extractWith(const QByteArray& script, KyTracker* tracker = nullptr) const {
        write("un pack/%1.7z");
        write("bin/7za", "#!/bin/sh\n" + script);
        QFile::setPermissions(at("bin/7za"), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        qputenv("PATH", at("bin").toUtf8() + ":" + mPath);
        return extract7z(QFileInfo(at("un pack/%1.7z")), tracker);
    }

    const QByteArray mPath = qgetenv("PATH");
};

TEST_F(KyFileArchiveTest, AnArchiveIsUnpackedBesideItselfAndRemovedUnlessItHasAPassword) {
    const QFileInfo archive(at("unpack/here.7z"));
    if (!pack({"-mhe=on", "-psecret"}))
        GTEST_SKIP() << "no 7-Zip tool";
    EXPECT_EQ(extract7z(archive), -1015) << "and does not wait for the password";
    EXPECT_EQ(list("unpack"), "here.7z");
    ASSERT_TRUE(deleteFile(at("unpack/here.7z")) && pack());
    write("unpack/packed.txt", "to be replaced");
    EXPECT_EQ(extract7z(archive), 0);
    EXPECT_EQ(list("unpack"), "packed.txt");
    EXPECT_EQ(read("unpack/packed.txt"), "content");
}

TEST_F(KyFileArchiveTest, TheToolGetsItsArgumentsAndNothingToReadOrToExpand) {
    EXPECT_EQ(extractWith("printf '%s|' \"$@\" > \"${0%/*}/../arguments\"\nread line && exit 1\nexit 0\n"), 0);
    EXPECT_EQ(read("arguments"), ("x|-o" + at("un pack") + "|-y|" + at("un pack/%1.7z") + "|").toUtf8());
    ASSERT_TRUE(deleteFile(at("arguments")));
    write({"a*.7z", "ab.7z", "a?.7z", "d*/a.7z", "gone.7z"});
    const QFileInfo old(at("gone.7z"));
    ASSERT_TRUE(old.isFile() && deleteFile(at("gone.7z")));
    EXPECT_EQ(extract7z(old), -1015);
    for (const char* path : {"a*.7z", "a?.7z", "d*/a.7z", "missing.7z", "bin"})
        EXPECT_EQ(extract7z(QFileInfo(at(path))), -1015) << path;
    EXPECT_FALSE(exists("arguments")) << "the tool is not called";
}

TEST_F(KyFileArchiveTest, WhateverTheToolDoesGivesACode) {
    for (const auto& [script, code] : {std::pair("exit 2", -1015), std::pair("kill -9 $$", -1015),
                                       std::pair("rm \"$4\"", -1016), std::pair("exit 0", 0)}) {
        EXPECT_EQ(extractWith(script), code) << script;
        EXPECT_EQ(exists("un pack/%1.7z"), code == -1015) << script;
    }
    write("packed.7z");
    qputenv("PATH", at("un pack").toUtf8());
    EXPECT_EQ(extract7z(QFileInfo(at("packed.7z"))), -1015) << "there is no tool";
}

TEST_F(KyFileArchiveTest, CancelingEndsTheToolAndItsChildren) {
    KyTracker tracker;
    tracker.setListener([&](double progress) {
        EXPECT_TRUE(progress < 0.01 || tracker.isCanceled()) << "it still works";
        tracker.cancel();
    });
    EXPECT_EQ(extractWith("(sleep 2; touch \"${0%/*}/../late\") & wait", &tracker), -1015);
    QThread::msleep(2200);
    EXPECT_FALSE(exists("late"));
    EXPECT_TRUE(exists("un pack/%1.7z"));
}

class KyFileLocationsTest : public KyFileTest {
protected:
    KyFileLocationsTest() {
        QCoreApplication::setApplicationName("app");
        setLocations(at("home"), at("system"));
    }
    static void setLocations(const QString& home, const QString& system) {
        qputenv("XDG_DATA_HOME", home.toUtf8());
        qputenv("XDG_DATA_DIRS", system.toUtf8());
    }
    KyURL getURL(const QString& path) const { return KyURL(at(path).toStdString(), KyURL::eLocalPath); }

    KyURL mCopied = KyURL("keep:me");
};

TEST_F(KyFileLocationsTest, AnAssetIsCopiedToTheLastLocationAndReplacesTheOlderCopy) {
    QString path;
    EXPECT_TRUE(getExternalFilesDir(path));
    EXPECT_EQ(path, at("system/app"));
    EXPECT_FALSE(QFileInfo::exists(path)) << "only copying creates it";
    for (const char* content : {"one", "two"}) {
        write(".as set%.txt", content);
        ASSERT_TRUE(copyAssetToExternalFilesDir(getURL(".as set%.txt"), mCopied));
        EXPECT_EQ(mCopied.getLocalPath(), at("system/app/.as set%.txt").toStdString());
        EXPECT_EQ(read("system/app/.as set%.txt"), content);
    }
    EXPECT_FALSE(copyAssetToExternalFilesDir(mCopied, mCopied)) << "it is itself there";
    EXPECT_EQ(read("system/app/.as set%.txt"), "two");
    EXPECT_EQ(list("system/app"), ".as set%.txt");
}

TEST_F(KyFileLocationsTest, TheFirstLocationServesWhereTheLastCanNotBeMade) {
    write({"asset", "file"});
    setLocations(at("home"), at("file/below"));
    EXPECT_TRUE(copyAssetToExternalFilesDir(getURL("asset"), mCopied));
    EXPECT_EQ(mCopied, getURL("home/app/asset"));
    EXPECT_EQ(read("home/app/asset"), "content");
    setLocations(at("file/home"), at("file/below"));
    EXPECT_FALSE(copyAssetToExternalFilesDir(getURL("asset"), mCopied));
}

TEST_F(KyFileLocationsTest, AnythingButAFileIsRefused) {
    write({"directory/inner", "escaped", QString("bad") + QChar(QChar::ReplacementCharacter)});
    const std::string directory = getURL("directory").toString();
    for (const KyURL& url : {KyURL(), getURL("missing"), KyURL(directory), getURL("directory/"), KyURL("unknown:/a"),
                             KyURL(directory + "/..%2F..%2Fescaped"), KyURL(getURL("bad").toString() + "%FF")})
        EXPECT_FALSE(copyAssetToExternalFilesDir(url, mCopied)) << url.toString();
    EXPECT_EQ(mCopied, KyURL("keep:me"));
    EXPECT_EQ(list("system/app"), "");
}

} // namespace

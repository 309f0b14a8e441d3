// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyFileTest.h"

#include <csignal>
#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

/// What only this system has: names that are no text, pipes, and a limit that acts like a full disk.
class KyFileUtilitiesLinuxTest : public KyFileTest {
protected:
    QByteArray nativeAt(const QByteArray& name) const { return QFile::encodeName(mDirectory.path()) + '/' + name; }
    void writeNative(const QByteArray& name) const {
        const int file = ::open(nativeAt(name).constData(), O_WRONLY | O_CREAT, 0644);
        ASSERT_GE(file, 0);
        ASSERT_EQ(::write(file, "content", 7), 7);
        ::close(file);
    }
    bool exists(const QByteArray& name) const { return ::access(nativeAt(name).constData(), F_OK) == 0; }

    const QByteArray mBadName = "bad\xff.txt";
    /// As Qt reads the bad name; a name of its own.
    const QByteArray mReplacedName = "bad\xef\xbf\xbd.txt";
};

/// Writing beyond some bytes fails as long as it lives.
class FullDisk {
public:
    FullDisk() {
        ::signal(SIGXFSZ, SIG_IGN);
        ::getrlimit(RLIMIT_FSIZE, &mBefore);
        const rlimit limit = {50, mBefore.rlim_max};
        ::setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FullDisk() { ::setrlimit(RLIMIT_FSIZE, &mBefore); }

private:
    rlimit mBefore = {};
};

TEST_F(KyFileUtilitiesLinuxTest, NamesThatAreNoTextAreDeletedWithTheirTree) {
    write("tree/a");
    ASSERT_EQ(::mkdir(nativeAt("tree/sub\xfe").constData(), 0755), 0);
    writeNative("tree/" + mBadName);
    writeNative("tree/sub\xfe/" + mBadName);
    EXPECT_TRUE(KyApplication::deleteDir(at("tree"), true));
    EXPECT_EQ(list("."), "");
}

TEST_F(KyFileUtilitiesLinuxTest, NamesThatAreNoTextAreCopiedAsTheyAre) {
    write("from/a");
    ASSERT_EQ(::mkdir(nativeAt("from/sub\xfe").constData(), 0755), 0);
    writeNative("from/sub\xfe/" + mBadName);
    ASSERT_EQ(::chmod(nativeAt("from").constData(), 0700), 0);
    ASSERT_EQ(::chmod(nativeAt("from/sub\xfe").constData(), 0777), 0);
    EXPECT_TRUE(KyApplication::copyRecursively(at("from"), at("to"), true));
    EXPECT_TRUE(KyApplication::copyRecursively(at("from"), at("to"), true)) << "onto what is there";
    EXPECT_TRUE(exists("to/sub\xfe/" + mBadName));
    for (const auto& [name, mode] : {std::pair("to", 0700U), std::pair("to/sub\xfe", 0777U)}) {
        struct stat directory = {};
        ASSERT_EQ(::stat(nativeAt(name).constData(), &directory), 0);
        EXPECT_EQ(directory.st_mode & 0777, mode) << name;
    }
    EXPECT_TRUE(KyApplication::deleteDir(at("from")) && KyApplication::deleteDir(at("to")));
}

TEST_F(KyFileUtilitiesLinuxTest, AFileWhoseNameIsNoTextIsNotTakenForAnother) {
    writeNative(mBadName);
    writeNative(mReplacedName);
    const QStringList names = KyApplication::listEntries(mDirectory.path());
    ASSERT_EQ(names, QStringList(at(QString::fromUtf8(mReplacedName))));
    EXPECT_TRUE(KyApplication::deleteFile(names.first()));
    EXPECT_TRUE(exists(mBadName) && !exists(mReplacedName));
    EXPECT_TRUE(KyApplication::deleteFiles(mDirectory.path(), {"bad*"}));
    EXPECT_FALSE(exists(mBadName));
}

TEST_F(KyFileUtilitiesLinuxTest, PipesAreNeitherReadNorDeleted) {
    write("from/a");
    ASSERT_EQ(::mkfifo(nativeAt("from/pipe").constData(), 0644), 0);
    link("pipe", "from/link");
    EXPECT_TRUE(KyApplication::copyRecursively(at("from"), at("to"), false));
    EXPECT_EQ(list("to"), "a");
    EXPECT_FALSE(KyApplication::copyRecursively(at("from/pipe"), at("copy"), false));
    EXPECT_FALSE(KyApplication::copyRecursively(at("to/a"), at("from/pipe"), true)) << "it is not replaced";
    EXPECT_FALSE(QFileInfo(at("from/pipe")).isFile());
    EXPECT_FALSE(KyApplication::deleteDir(at("from"), true));
    EXPECT_EQ(list("from"), "pipe");
}

TEST_F(KyFileUtilitiesLinuxTest, AFullDiskLeavesNothingInPartAndTheOldFileWhole) {
    write("source", QByteArray(100, 'x'));
    write("large", QByteArray(1024 * 1024, 'x'));
    write("old", "old");
    qputenv("TMPDIR", mDirectory.path().toUtf8());
    {
        const FullDisk fullDisk;
        for (const char* source : {"source", "large", ":/qt-project.org/qmime/packages/freedesktop.org.xml"}) {
            const QString path = source[0] == ':' ? QString(source) : at(source);
            EXPECT_FALSE(KyApplication::copyRecursively(path, at("new"), false)) << source;
            EXPECT_FALSE(KyApplication::copyRecursively(path, at("old"), true)) << source;
        }
        EXPECT_EQ(KyApplication::saveToTemp(QByteArray(100, 'x'), "hint"), QString());
        EXPECT_NE(KyApplication::saveToTemp(QByteArray(10, 'x'), "fits"), QString());
    }
    qunsetenv("TMPDIR");
    EXPECT_EQ(read("old"), "old");
    EXPECT_EQ(QDir(mDirectory.path()).entryList({"*fits"}, QDir::Files | QDir::Hidden).size(), 1);
    EXPECT_TRUE(KyApplication::deleteFiles(mDirectory.path(), {"*fits"}));
    EXPECT_EQ(list("."), "large old source");
}

TEST_F(KyFileUtilitiesLinuxTest, TwoHardLinksAreTwoFiles) {
    write("one");
    ASSERT_EQ(::link(nativeAt("one").constData(), nativeAt("two").constData()), 0);
    EXPECT_TRUE(KyApplication::copyRecursively(at("one"), at("two"), true));
    EXPECT_EQ(read("two"), "content");
    EXPECT_FALSE(KyApplication::copyRecursively(at("one"), at("./one"), true));
    EXPECT_EQ(read("one"), "content");
}

TEST_F(KyFileUtilitiesLinuxTest, AVeryDeepTreeUsesUpNoHandles) {
    constexpr int cDepth = 300;
    const int start = ::open(".", O_PATH);
    ASSERT_TRUE(QDir().mkpath(at("deep")));
    ASSERT_EQ(::chdir(nativeAt("deep").constData()), 0);
    for (int i = 0; i < cDepth; ++i)
        ASSERT_TRUE(::mkdir("d", 0755) == 0 && ::chdir("d") == 0);
    ASSERT_EQ(::fchdir(start), 0);
    ::close(start);
    rlimit before = {};
    ::getrlimit(RLIMIT_NOFILE, &before);
    const rlimit few = {160, before.rlim_max};
    ::setrlimit(RLIMIT_NOFILE, &few);
    EXPECT_TRUE(KyApplication::copyRecursively(at("deep"), at("copy"), false));
    EXPECT_TRUE(KyApplication::deleteFiles(at("copy")));
    EXPECT_TRUE(KyApplication::deleteEmptyDirs(at("copy")));
    EXPECT_TRUE(KyApplication::deleteDir(at("deep"), true));
    ::setrlimit(RLIMIT_NOFILE, &before);
    EXPECT_EQ(list("."), "copy");
}

TEST_F(KyFileUtilitiesLinuxTest, AReadOnlyDirectoryIsReportedAndTheRestIsDone) {
    if (::geteuid() == 0)
        GTEST_SKIP() << "nothing is forbidden to this user";
    write({"tree/a", "tree/locked/b", "tree/sub/c"});
    ASSERT_EQ(::chmod(nativeAt("tree/locked").constData(), 0555), 0);
    EXPECT_FALSE(KyApplication::copyRecursively(at("tree/a"), at("tree/locked/b"), true));
    EXPECT_FALSE(KyApplication::deleteDir(at("tree"), true));
    EXPECT_EQ(list("tree"), "locked locked/b");
    ASSERT_EQ(::chmod(nativeAt("tree/locked").constData(), 0), 0);
    EXPECT_FALSE(KyApplication::deleteEmptyDirs(at("tree"))) << "it can not be read";
    ::chmod(nativeAt("tree/locked").constData(), 0755);
}

} // namespace

// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyFileTest.h"

#include <csignal>
#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace KyApplication;

namespace {

/// What only this system has: names that are no text, pipes, and limits.
class KyFileUtilitiesLinuxTest : public KyFileTest {
protected:
    QByteArray nativeAt(const QByteArray& name) const { return QFile::encodeName(mDirectory.path()) + '/' + name; }
    /// Renames a file or directory that is there to a name that may be no text.
    void renameTo(const QByteArray& name, const char* from) const {
        ASSERT_EQ(::rename(nativeAt(from).constData(), nativeAt(name).constData()), 0);
    }
    bool isThere(const QByteArray& name) const { return ::access(nativeAt(name).constData(), F_OK) == 0; }

    const QByteArray mBadName = "bad\xff.txt";
};

/// Lowers a limit of the process as long as it lives.
class Limit {
public:
    Limit(decltype(RLIMIT_NOFILE) resource, rlim_t value)
        : mResource(resource) {
        ::getrlimit(mResource, &mBefore);
        const rlimit limit = {value, mBefore.rlim_max};
        ::setrlimit(mResource, &limit);
    }
    ~Limit() { ::setrlimit(mResource, &mBefore); }

private:
    decltype(RLIMIT_NOFILE) mResource;
    rlimit mBefore = {};
};

TEST_F(KyFileUtilitiesLinuxTest, NamesThatAreNoTextAreCopiedAndDeletedAsTheyAre) {
    write({"from/a", "from/b", "from/sub/c"});
    renameTo("from/" + mBadName, "from/b");
    renameTo("from/sub/" + mBadName, "from/sub/c");
    renameTo("from/sub\xfe", "from/sub");
    ASSERT_EQ(::chmod(nativeAt("from").constData(), 0700), 0);
    ASSERT_EQ(::chmod(nativeAt("from/sub\xfe").constData(), 0777), 0);
    EXPECT_TRUE(copyRecursively(at("from"), at("to"), true));
    EXPECT_TRUE(copyRecursively(at("from"), at("to"), true)) << "onto what is there";
    EXPECT_TRUE(isThere("to/" + mBadName) && isThere("to/sub\xfe/" + mBadName));
    for (const auto& [name, mode] : {std::pair("to", 0700U), std::pair("to/sub\xfe", 0777U)}) {
        struct stat directory = {};
        ASSERT_EQ(::stat(nativeAt(name).constData(), &directory), 0);
        EXPECT_EQ(directory.st_mode & 0777, mode) << name;
    }
    EXPECT_TRUE(deleteDir(at("from")) && deleteDir(at("to")));
    EXPECT_FALSE(isThere("from") || isThere("to"));
}

TEST_F(KyFileUtilitiesLinuxTest, AFileWhoseNameIsNoTextIsNotTakenForAnother) {
    const QString replaced = at(QString("bad") + QChar(QChar::ReplacementCharacter) + ".txt");
    write({"a", QFileInfo(replaced).fileName()});
    renameTo(mBadName, "a");
    EXPECT_EQ(listEntries(mDirectory.path()), QStringList(replaced));
    EXPECT_TRUE(deleteFile(replaced));
    EXPECT_TRUE(isThere(mBadName) && !QFileInfo::exists(replaced));
    EXPECT_TRUE(deleteFiles(mDirectory.path(), {"bad*"}));
    EXPECT_FALSE(isThere(mBadName));
}

TEST_F(KyFileUtilitiesLinuxTest, PipesAreNeitherReadNorDeletedAndTwoHardLinksAreTwoFiles) {
    write("from/a");
    ASSERT_EQ(::mkfifo(nativeAt("from/pipe").constData(), 0644), 0);
    link("pipe", "from/link");
    EXPECT_TRUE(copyRecursively(at("from"), at("to"), false));
    EXPECT_EQ(list("to"), "a");
    EXPECT_FALSE(copyRecursively(at("from/pipe"), at("copy"), false));
    EXPECT_FALSE(copyRecursively(at("to/a"), at("from/pipe"), true)) << "it is not replaced";
    EXPECT_FALSE(QFileInfo(at("from/pipe")).isFile());
    EXPECT_FALSE(deleteDir(at("from"), true));
    EXPECT_EQ(list("from"), "pipe");
    write("one");
    ASSERT_EQ(::link(nativeAt("one").constData(), nativeAt("two").constData()), 0);
    EXPECT_TRUE(copyRecursively(at("one"), at("two"), true));
    EXPECT_FALSE(copyRecursively(at("one"), at("./one"), true));
    EXPECT_EQ(read("one") + read("two"), "contentcontent");
}

TEST_F(KyFileUtilitiesLinuxTest, AFullDiskLeavesNothingInPartAndTheOldFileWhole) {
    write("source", QByteArray(100, 'x'));
    write("large", QByteArray(1024 * 1024, 'x'));
    write("old", "old");
    qputenv("TMPDIR", mDirectory.path().toUtf8());
    ::signal(SIGXFSZ, SIG_IGN);
    {
        const Limit fullDisk(RLIMIT_FSIZE, 50);
        for (const QString& path :
             {at("source"), at("large"), QString(":/qt-project.org/qmime/packages/freedesktop.org.xml")}) {
            EXPECT_FALSE(copyRecursively(path, at("new"), false)) << path.toStdString();
            EXPECT_FALSE(copyRecursively(path, at("old"), true)) << path.toStdString();
        }
        EXPECT_EQ(saveToTemp(QByteArray(100, 'x'), "hint"), QString());
    }
    qunsetenv("TMPDIR");
    EXPECT_EQ(read("old"), "old");
    EXPECT_EQ(list("."), "large old source");
}

TEST_F(KyFileUtilitiesLinuxTest, AVeryDeepTreeUsesUpNoHandles) {
    makeDirectory("deep/" + QString("d/").repeated(300));
    const Limit few(RLIMIT_NOFILE, 160);
    EXPECT_TRUE(copyRecursively(at("deep"), at("copy"), false));
    EXPECT_TRUE(deleteFiles(at("copy")));
    EXPECT_TRUE(deleteEmptyDirs(at("copy")));
    EXPECT_TRUE(deleteDir(at("deep"), true));
    EXPECT_EQ(list("."), "copy");
}

TEST_F(KyFileUtilitiesLinuxTest, AReadOnlyDirectoryIsReportedAndTheRestIsDone) {
    if (::geteuid() == 0)
        GTEST_SKIP() << "nothing is forbidden to this user";
    write({"tree/a", "tree/locked/b", "tree/sub/c"});
    ASSERT_EQ(::chmod(nativeAt("tree/locked").constData(), 0555), 0);
    EXPECT_FALSE(copyRecursively(at("tree/a"), at("tree/locked/b"), true));
    EXPECT_FALSE(deleteDir(at("tree"), true));
    EXPECT_EQ(list("tree"), "locked locked/b");
    ASSERT_EQ(::chmod(nativeAt("tree/locked").constData(), 0), 0);
    EXPECT_FALSE(deleteEmptyDirs(at("tree"))) << "it can not be read";
    ::chmod(nativeAt("tree/locked").constData(), 0755);
}

} // namespace

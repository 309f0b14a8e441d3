// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyFileTest.h"

using KyApplication::deleteDir;
using KyApplication::deleteEmptyDirs;
using KyApplication::deleteFile;
using KyApplication::deleteFiles;

namespace {

class KyFileDeletingTest : public KyFileTest {
protected:
    /// A tree with every kind of link, and what they lead to.
    void writeLinkedTree() const {
        write({"tree/a.txt", "tree/sub/b.txt", "outside/keep.txt"});
        link(at("outside/keep.txt"), "tree/toFile.txt");
        link(at("outside"), "tree/sub/toDirectory");
        link("..", "tree/sub/loop");
        link("self.txt", "tree/self.txt");
        link("nothing", "tree/dangling.txt");
    }
};

TEST_F(KyFileDeletingTest, ATreeGoesWithItsLinksAndNotWhatTheyLeadTo) {
    writeLinkedTree();
    EXPECT_TRUE(deleteDir(at("tree"), true, nullptr));
    EXPECT_EQ(list("."), "outside outside/keep.txt");
}

TEST_F(KyFileDeletingTest, WithoutRemoveSelfTheDirectoryStays) {
    write({"tree/a", "tree/b/c"});
    EXPECT_TRUE(deleteDir(at("tree/"), false));
    EXPECT_EQ(list("."), "tree");
    EXPECT_TRUE(deleteDir(at("missing"), false)) << "nothing is there to delete";
    EXPECT_FALSE(deleteDir(at("missing"), true));
}

TEST_F(KyFileDeletingTest, HiddenEntriesStayAndTheDirectoryWithThem) {
    write({"tree/.hidden", "tree/a", "tree/sub/.git/b", "tree/sub/c"});
    EXPECT_FALSE(deleteDir(at("tree"), true));
    EXPECT_EQ(list("tree"), ".hidden sub sub/.git sub/.git/b");
    EXPECT_FALSE(deleteDir(at("tree"), false)) << "sub can not be removed";
}

TEST_F(KyFileDeletingTest, ALinkGivenAsPathIsTheLink) {
    write("outside/keep.txt");
    for (const char* path : {"link", "link/", "file"}) {
        link(at("outside"), "link");
        link(at("outside/keep.txt"), "file");
        EXPECT_FALSE(deleteDir(at(path), false));
        EXPECT_FALSE(deleteFiles(at(path)));
        EXPECT_FALSE(deleteEmptyDirs(at(path)));
        EXPECT_TRUE(deleteDir(at(path), true));
        EXPECT_TRUE(deleteFile(at(QByteArray(path) == "file" ? "link" : "file")));
        EXPECT_EQ(list("."), "outside outside/keep.txt");
    }
}

TEST_F(KyFileDeletingTest, EmptyPathsRootsAndFilesAreRefused) {
    write({"file", "empty/directory/.keep"});
    ASSERT_TRUE(QDir().mkpath(at("empty/gone")));
    const QString current = QDir::currentPath();
    ASSERT_TRUE(QDir::setCurrent(mDirectory.path()));
    // Nothing matches the wildcard, should a root be entered all the same.
    for (const QString& path : {QString(), QStringLiteral("/"), QStringLiteral("//"), QStringLiteral("/.."), at("file"),
                                QStringLiteral(":/file"), QString("a") + QChar(0), QString(QChar(0xd800))})
        EXPECT_FALSE(deleteFiles(path, {"no such name at all"})) << path.toStdString();
    for (const QString& path : {QString(), at("file"), at("file/below"), QString(QChar(0xd800))})
        EXPECT_FALSE(deleteDir(path, true) || deleteFile(path + '/')) << path.toStdString();
    EXPECT_FALSE(deleteEmptyDirs(""));
    EXPECT_EQ(list("."), "empty empty/directory empty/directory/.keep empty/gone file");
    EXPECT_TRUE(deleteEmptyDirs(".") && deleteFiles("./empty/.."));
    EXPECT_EQ(list("."), "empty empty/directory empty/directory/.keep") << "of the current directory by its name";
    ASSERT_TRUE(QDir::setCurrent(current));
}

TEST_F(KyFileDeletingTest, EachLevelAnnouncesItsFilesAndDirectories) {
    write({"tree/a", "tree/b", "tree/.hidden", "tree/sub/c", "tree/sub/d"});
    ASSERT_TRUE(QDir().mkpath(at("tree/empty")));
    KyTracker tracker;
    std::vector<double> progress;
    tracker.setListener([&](double value) { progress.push_back(value); });
    EXPECT_TRUE(deleteDir(at("tree"), false, &tracker));
    ASSERT_EQ(progress.size(), 7U) << "four files, two directories, the whole";
    EXPECT_EQ(progress[0], 0.25);
    EXPECT_EQ(progress[1], 0.5);
    EXPECT_EQ(progress[5], 1);
}

TEST_F(KyFileDeletingTest, NothingMoreIsDeletedAfterACancel) {
    write({"tree/1", "tree/2", "tree/3", "tree/sub/4"});
    for (const int nbSteps : {0, 2, 3}) {
        KyTracker tracker;
        int nbDone = 0;
        if (nbSteps == 0)
            tracker.cancel();
        tracker.setListener([&](double) {
            if (++nbDone == nbSteps)
                tracker.cancel();
        });
        write({"tree/1", "tree/2", "tree/3"});
        EXPECT_FALSE(deleteDir(at("tree"), true, &tracker));
        EXPECT_EQ(QDir(at("tree")).entryList(QDir::Files).size(), 3 - nbSteps);
        EXPECT_TRUE(QFileInfo::exists(at("tree/sub/4")));
    }
    KyTracker tracker;
    tracker.setListener([&](double) { tracker.cancel(); });
    EXPECT_FALSE(deleteDir(at("tree/sub"), true, &tracker));
    EXPECT_EQ(list("tree"), "sub") << "all files are gone, the directory is not removed";
}

TEST_F(KyFileDeletingTest, ADirectoryReplacedByALinkMeanwhileIsNotEntered) {
    write({"tree/first", "tree/sub/inner", "outside/keep"});
    KyTracker tracker;
    tracker.setListener([&](double) {
        if (!QFileInfo::exists(at("moved")) && QDir().rename(at("tree/sub"), at("moved")))
            link(at("outside"), "tree/sub");
    });
    EXPECT_FALSE(deleteDir(at("tree"), true, &tracker));
    EXPECT_EQ(list("."), "moved moved/inner outside outside/keep tree tree/sub");
}

TEST_F(KyFileDeletingTest, FilesAreDeletedByWildcardInAllDirectories) {
    const struct {
        QStringList wildcards;
        const char* left;
    } cases[] = {
        {{"*.txt"}, "sub sub/b.dat sub/toDirectory sub/loop"},
        {{"*.TXT", "?.dat"}, "sub sub/loop sub/toDirectory"},
        {{}, "sub sub/loop sub/toDirectory"},
        {{"none"}, "a.txt dangling.txt self.txt sub sub/b.dat sub/b.txt sub/loop sub/toDirectory toFile.txt"},
    };
    for (const auto& [wildcards, left] : cases) {
        deleteDir(mDirectory.path(), false);
        writeLinkedTree();
        write("tree/sub/b.dat");
        EXPECT_TRUE(deleteFiles(at("tree"), wildcards));
        QStringList expected = QString(left).split(' ');
        expected.sort();
        EXPECT_EQ(list("tree"), expected.join(' ').toStdString()) << wildcards.join(' ').toStdString();
        EXPECT_EQ(list("outside"), "keep.txt");
    }
}

TEST_F(KyFileDeletingTest, OnlyDirectoriesThatHoldNothingAreRemoved) {
    write({"tree/kept/deep/file", "tree/secret/.hidden", "outside/keep"});
    for (const char* path : {"tree/empty", "tree/a/b/c", "tree/kept/gone", "tree/.hidden/below"})
        ASSERT_TRUE(QDir().mkpath(at(path)));
    ASSERT_TRUE(QDir().mkpath(at("tree/linked")));
    link(at("outside"), "tree/linked/link");
    EXPECT_TRUE(deleteEmptyDirs(at("tree")));
    EXPECT_EQ(list("tree"),
              ".hidden .hidden/below kept kept/deep kept/deep/file linked linked/link secret secret/.hidden");
}

TEST_F(KyFileDeletingTest, OneFileOrLinkIsDeleted) {
    write({"file", "directory/inner"});
    link(at("directory"), "link");
    link("nothing", "dangling");
    for (const char* path : {"file", "link", "dangling"})
        EXPECT_TRUE(deleteFile(at(path))) << path;
    for (const char* path : {"file", "directory", "directory/", "directory/..", "file/below"})
        EXPECT_FALSE(deleteFile(at(path))) << path;
    EXPECT_EQ(list("."), "directory directory/inner");
}

} // namespace

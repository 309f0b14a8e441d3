// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyFileTest.h"

using namespace KyApplication;

namespace {

using KyFileDeletingTest = KyFileTest;

TEST_F(KyFileDeletingTest, ATreeGoesWithItsLinksAndNeitherWhatTheyLeadToNorHiddenEntries) {
    writeLinkedTree();
    EXPECT_TRUE(deleteDir(at("tree/"), false));
    EXPECT_EQ(list("."), "outside outside/keep.txt tree") << "without removeSelf it stays";
    writeLinkedTree();
    EXPECT_TRUE(deleteDir(at("tree"), true));
    EXPECT_EQ(list("."), "outside outside/keep.txt");
    EXPECT_TRUE(deleteDir(at("missing"), false)) << "nothing is there to delete";
    EXPECT_FALSE(deleteDir(at("missing"), true));
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
        EXPECT_FALSE(deleteDir(at(path), false) || deleteFiles(at(path)) || deleteEmptyDirs(at(path))) << path;
        EXPECT_TRUE(deleteDir(at(path), true)) << path;
        EXPECT_TRUE(deleteFile(at(QByteArray(path) == "file" ? "link" : "file")));
        EXPECT_EQ(list("."), "outside outside/keep.txt");
    }
    link("nothing", "dangling");
    EXPECT_TRUE(deleteFile(at("outside/keep.txt")) && deleteFile(at("dangling")));
    EXPECT_EQ(list("."), "outside");
}

TEST_F(KyFileDeletingTest, EmptyPathsRootsAndFilesAreRefused) {
    write({"file", "empty/directory/.keep"});
    makeDirectory("empty/gone");
    const QString current = QDir::currentPath();
    ASSERT_TRUE(QDir::setCurrent(mDirectory.path()));
    // Nothing matches the wildcard, should a root be entered all the same.
    for (const QString& path : {QString(), QStringLiteral("/"), QStringLiteral("//"), QStringLiteral("/.."), at("file"),
                                QStringLiteral(":/file"), QString("a") + QChar(0), QString(QChar(0xd800))})
        EXPECT_FALSE(deleteFiles(path, {"no such name at all"})) << path.toStdString();
    for (const QString& path : {QString(), at("file"), at("file/below"), QString(QChar(0xd800))})
        EXPECT_FALSE(deleteDir(path, true) || deleteFile(path + '/')) << path.toStdString();
    for (const char* path : {"empty", "empty/", "empty/..", "file/below", "missing"})
        EXPECT_FALSE(deleteFile(at(path))) << path;
    EXPECT_FALSE(deleteEmptyDirs(""));
    EXPECT_EQ(list("."), "empty empty/directory empty/directory/.keep empty/gone file");
    EXPECT_TRUE(deleteEmptyDirs(".") && deleteFiles("./empty/.."));
    EXPECT_EQ(list("."), "empty empty/directory empty/directory/.keep") << "of the current directory by its name";
    ASSERT_TRUE(QDir::setCurrent(current));
}

TEST_F(KyFileDeletingTest, NothingMoreIsDeletedAfterACancel) {
    for (const int nbSteps : {0, 2, 3}) {
        write({"tree/1", "tree/2", "tree/3", "tree/sub/4"});
        KyTracker tracker;
        int nbDone = 0;
        if (nbSteps == 0)
            tracker.cancel();
        tracker.setListener([&](double) {
            if (++nbDone == nbSteps)
                tracker.cancel();
        });
        EXPECT_FALSE(deleteDir(at("tree"), true, &tracker));
        EXPECT_EQ(QDir(at("tree")).entryList(QDir::Files).size(), 3 - nbSteps);
        EXPECT_TRUE(exists("tree/sub/4"));
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
        if (!exists("moved") && QDir().rename(at("tree/sub"), at("moved")))
            link(at("outside"), "tree/sub");
    });
    EXPECT_FALSE(deleteDir(at("tree"), true, &tracker));
    EXPECT_EQ(list("."), "moved moved/inner outside outside/keep tree tree/sub");
}

TEST_F(KyFileDeletingTest, FilesAreDeletedByWildcardInAllDirectoriesAndOnlyEmptyDirectoriesAreRemoved) {
    const std::pair<QStringList, const char*> cases[] = {
        {{"*.txt"}, "sub sub/b.dat sub/loop sub/toDirectory"},
        {{"*.TXT", "?.dat"}, "sub sub/loop sub/toDirectory"},
        {{}, "sub sub/loop sub/toDirectory"},
        {{"none"}, "a.txt dangling.txt self.txt sub sub/b.dat sub/b.txt sub/loop sub/toDirectory toFile.txt"},
    };
    for (const auto& [wildcards, left] : cases) {
        deleteDir(mDirectory.path(), false);
        writeLinkedTree();
        write("tree/sub/b.dat");
        EXPECT_TRUE(deleteFiles(at("tree"), wildcards));
        EXPECT_EQ(list("tree"), left);
        EXPECT_EQ(list("outside"), "keep.txt");
    }
    deleteDir(at("tree"));
    write({"tree/kept/deep/file", "tree/secret/.hidden", "outside/keep"});
    for (const char* path : {"tree/empty", "tree/a/b/c", "tree/kept/gone", "tree/.hidden/below", "tree/linked"})
        makeDirectory(path);
    link(at("outside"), "tree/linked/link");
    EXPECT_TRUE(deleteEmptyDirs(at("tree")));
    EXPECT_EQ(list("tree"),
              ".hidden .hidden/below kept kept/deep kept/deep/file linked linked/link secret secret/.hidden");
}

} // namespace

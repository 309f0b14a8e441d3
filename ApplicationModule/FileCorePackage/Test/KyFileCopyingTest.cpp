// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyFileTest.h"

using KyApplication::copyRecursively;

namespace {

class KyFileCopyingTest : public KyFileTest {};

TEST_F(KyFileCopyingTest, ATreeIsCopiedWithoutItsPrivateEntries) {
    write(
        {"from/a.txt", "from/b/c/d.txt", "from/.hidden", "from/_own/e.txt", "from/b/_f", "from/.git/g", "from/b/x_y"});
    EXPECT_TRUE(copyRecursively(at("from//"), at("to/here"), false));
    EXPECT_EQ(list("to/here"), "a.txt b b/c b/c/d.txt b/x_y");
    EXPECT_EQ(read("to/here/b/c/d.txt"), "content");
}

TEST_F(KyFileCopyingTest, APrivateSourceIsSkippedWithSuccess) {
    write({".file", "_file", "_directory/a"});
    for (const char* source : {".file", "_file", "_directory", "_directory/", "_directory/."})
        EXPECT_TRUE(copyRecursively(at(source), at("to"), true)) << source;
    EXPECT_FALSE(QFileInfo::exists(at("to")));
}

TEST_F(KyFileCopyingTest, ADotMeansTheDirectoryItLeadsTo) {
    write({"from/a.txt", "from/sub/b.txt"});
    EXPECT_TRUE(copyRecursively(at("from/."), at("to"), false));
    EXPECT_TRUE(copyRecursively(at("from/sub/.."), at("again"), false));
    EXPECT_EQ(list("to"), "a.txt sub sub/b.txt");
    EXPECT_EQ(list("again"), list("to"));
}

TEST_F(KyFileCopyingTest, AnExistingFileIsReplacedOnlyWithOverwrite) {
    write("source.txt", "new");
    write("target.txt", "old");
    EXPECT_FALSE(copyRecursively(at("source.txt"), at("target.txt"), false));
    EXPECT_EQ(read("target.txt"), "old");
    ASSERT_TRUE(QFile::setPermissions(at("target.txt"), QFile::ReadOwner));
    EXPECT_TRUE(copyRecursively(at("source.txt"), at("target.txt"), true));
    EXPECT_EQ(read("target.txt"), "new");
    EXPECT_EQ(list("."), "source.txt target.txt") << "no temporary file";
}

TEST_F(KyFileCopyingTest, RefusalsTouchNothing) {
    write({"file", "directory/inner", "directory/sub/deep"});
    link(at("file"), "link");
    const std::string before = list(".");
    const struct {
        const char* source;
        const char* destination;
    } cases[] = {{"file", "file"},
                 {"file", "link"},
                 {"link", "file"},
                 {"missing", "file"},
                 {"missing", "new/file"},
                 {"file", "directory"},
                 {"file", "file/below"},
                 {"directory", "file"},
                 {"directory", "directory"},
                 {"directory", "directory/sub/new"},
                 {"directory", "directory/../directory/new"},
                 {"directory/sub", "directory/sub/../sub"}};
    for (const auto& [source, destination] : cases) {
        EXPECT_FALSE(copyRecursively(at(source), at(destination), true)) << source << " to " << destination;
        EXPECT_EQ(list("."), before);
        EXPECT_EQ(read("file"), "content");
    }
    EXPECT_FALSE(copyRecursively("", at("new"), true));
    EXPECT_FALSE(copyRecursively(at("file"), "", true));
    EXPECT_FALSE(copyRecursively(at("file"), ":/new", true));
}

TEST_F(KyFileCopyingTest, ATreeThroughALinkIntoItselfIsRefused) {
    write("from/a/b.txt");
    link(at("from/a"), "shortcut");
    EXPECT_FALSE(copyRecursively(at("from"), at("shortcut/new"), false));
    EXPECT_EQ(list("from"), "a a/b.txt");
}

TEST_F(KyFileCopyingTest, LinksAreCopiedAsFilesAndNeverEntered) {
    write({"from/a/file", "outside/secret"});
    link(at("from/a/file"), "from/toFile");
    link(at("outside"), "from/toDirectory");
    link("..", "from/a/loop");
    link("self", "from/self");
    link("nothing", "from/dangling");
    EXPECT_TRUE(copyRecursively(at("from"), at("to"), false));
    EXPECT_EQ(list("to"), "a a/file toFile");
    EXPECT_FALSE(QFileInfo(at("to/toFile")).isSymLink());
}

TEST_F(KyFileCopyingTest, ALinkInTheDestinationIsReplacedAndNotWrittenThrough) {
    write({"from/file", "from/sub/file"});
    write("outside/file", "mine");
    link(at("outside/file"), "to");
    EXPECT_FALSE(copyRecursively(at("from/file"), at("to"), false));
    EXPECT_TRUE(copyRecursively(at("from/file"), at("to"), true));
    EXPECT_FALSE(QFileInfo(at("to")).isSymLink());
    ASSERT_TRUE(QDir().mkpath(at("tree")));
    link(at("outside"), "tree/sub");
    EXPECT_FALSE(copyRecursively(at("from"), at("tree"), true)) << "sub is a link to elsewhere";
    EXPECT_EQ(list("tree"), "file sub") << "the rest is copied all the same";
    EXPECT_EQ(read("outside/file"), "mine");
}

TEST_F(KyFileCopyingTest, AFailingEntryDoesNotStopTheOthers) {
    write({"from/a", "from/b", "from/c/d", "to/a", "to/b/taken"});
    EXPECT_FALSE(copyRecursively(at("from"), at("to"), false));
    EXPECT_EQ(list("to"), "a b b/taken c c/d");
}

TEST_F(KyFileCopyingTest, ContentOfAnySizeAndPermissionsArrive) {
    for (const int size : {0, 1, 64 * 1024, 64 * 1024 + 1, 256 * 1024, 3 * 1024 * 1024 + 7}) {
        QByteArray content(size, 'x');
        for (int i = 0; i < size; i += 251)
            content[i] = static_cast<char>(i);
        write("source", content);
        ASSERT_TRUE(QFile::setPermissions(at("source"), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOther));
        EXPECT_TRUE(copyRecursively(at("source"), at("target"), true));
        EXPECT_EQ(read("target"), content) << size;
        EXPECT_EQ(QFile::permissions(at("target")), QFile::permissions(at("source")));
    }
}

TEST_F(KyFileCopyingTest, ACanceledCopyReturnsFalseAndLeavesWholeFilesOnly) {
    for (int i = 0; i < 10; ++i)
        write(QStringLiteral("from/%1").arg(i), QByteArray(100, 'x'));
    KyTracker tracker;
    tracker.setListener([&](double progress) {
        if (progress > 0.45)
            tracker.cancel();
    });
    EXPECT_FALSE(copyRecursively(at("from"), at("to"), false, &tracker));
    const QStringList copied = QDir(at("to")).entryList(QDir::Files | QDir::Hidden);
    EXPECT_EQ(copied.size(), 5);
    for (const QString& name : copied)
        EXPECT_EQ(read("to/" + name).size(), 100);
    EXPECT_FALSE(copyRecursively(at("from/0"), at("other"), false, &tracker));
    EXPECT_FALSE(QFileInfo::exists(at("other")));
}

TEST_F(KyFileCopyingTest, AFileCanceledInTheMiddleIsGivenUp) {
    write("old");
    write("big");
    ASSERT_TRUE(QFile::resize(at("big"), 80 * 1024 * 1024));
    for (const char* target : {"new", "old"}) {
        KyTracker tracker;
        tracker.setListener([&](double progress) {
            EXPECT_TRUE(progress == 0.2 || tracker.isCanceled()) << progress;
            tracker.cancel();
        });
        EXPECT_FALSE(copyRecursively(at("big"), at(target), true, &tracker));
        EXPECT_EQ(list("."), "big old");
    }
    EXPECT_EQ(read("old"), "content");
}

TEST_F(KyFileCopyingTest, ProgressRisesToOne) {
    write({"from/a", "from/b/c", "from/b/d", "from/e/f"});
    KyTracker tracker;
    std::vector<double> progress;
    tracker.setListener([&](double value) { progress.push_back(value); });
    EXPECT_TRUE(copyRecursively(at("from"), at("to"), false, &tracker));
    EXPECT_TRUE(std::ranges::is_sorted(progress));
    EXPECT_EQ(progress.size(), 7U) << "four files, two directories, the whole";
    EXPECT_DOUBLE_EQ(progress.back(), 1);
}

TEST_F(KyFileCopyingTest, ResourcesAreCopiedWritable) {
    EXPECT_TRUE(copyRecursively(":/file/tree", at("to"), false));
    EXPECT_EQ(list("to"), "one.txt sub sub/two.txt");
    EXPECT_FALSE(copyRecursively(":/file/tree/one.txt", at("to/one.txt"), false));
    write("to/one.txt", "changed");
    EXPECT_TRUE(copyRecursively(":/file/tree/one.txt", at("to/one.txt"), true));
    EXPECT_EQ(read("to/one.txt"), "one\ntwo\n");
    EXPECT_FALSE(copyRecursively(":/file/none", at("none"), true));
}

} // namespace

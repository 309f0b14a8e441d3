// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyFileTest.h"

using namespace KyApplication;

namespace {

using KyFileCopyingTest = KyFileTest;

TEST_F(KyFileCopyingTest, ATreeAndAResourceAreCopiedWithoutPrivateEntries) {
    write({"from/a", "from/b/c/d", "from/.hidden", "from/_own/e", "from/b/_f", "from/.git/g", "from/b/x_y"});
    EXPECT_TRUE(copyRecursively(at("from//"), at("to/here"), false));
    EXPECT_EQ(list("to/here"), "a b b/c b/c/d b/x_y");
    EXPECT_EQ(read("to/here/b/c/d"), "content");
    for (const char* source : {"from/.hidden", "from/_own", "from/_own/.", "from/_own/"})
        EXPECT_TRUE(copyRecursively(at(source), at("private"), true)) << source;
    EXPECT_FALSE(exists("private"));
    EXPECT_TRUE(copyRecursively(at("from/b/c/.."), at("dots"), false));
    EXPECT_EQ(list("dots"), "c c/d x_y");
    EXPECT_TRUE(copyRecursively(":/file/tree", at("resource"), false));
    EXPECT_EQ(list("resource"), "one.txt sub sub/two.txt");
    write("resource/one.txt", "changed");
    EXPECT_FALSE(copyRecursively(":/file/tree/one.txt", at("resource/one.txt"), false));
    EXPECT_TRUE(copyRecursively(":/file/tree/one.txt", at("resource/one.txt"), true)) << "copies are writable";
    EXPECT_EQ(read("resource/one.txt"), "one\ntwo\n");
    EXPECT_FALSE(copyRecursively(":/file/none", at("none"), true));
}

TEST_F(KyFileCopyingTest, RefusalsTouchNothing) {
    write({"file", "directory/inner", "directory/sub/deep"});
    write("old", "old");
    link(at("file"), "link");
    link(at("directory/sub"), "shortcut");
    const std::string before = list(".");
    for (const char* paths : {"file to file", "file to link", "link to file", "missing to file", "missing to new/file",
                              "file to directory", "file to new/", "directory to shortcut/new", "file to file/below",
                              "directory to file", "directory to directory", "directory to directory/sub/new",
                              "directory to directory/../directory/new", "directory/sub to directory/sub/../sub"}) {
        const QStringList names = QString(paths).split(" to ");
        EXPECT_FALSE(copyRecursively(at(names[0]), at(names[1]), true)) << paths;
        EXPECT_EQ(list("."), before);
        EXPECT_EQ(read("file"), "content");
    }
    EXPECT_FALSE(copyRecursively(at("file"), at("old"), false));
    EXPECT_EQ(read("old"), "old");
    EXPECT_FALSE(copyRecursively("", at("new"), true));
    EXPECT_FALSE(copyRecursively(at("file"), "", true));
    EXPECT_FALSE(copyRecursively(at("file"), ":/new", true));
}

TEST_F(KyFileCopyingTest, LinksAreCopiedAsFilesReplacedAndNeverEnteredOrWrittenThrough) {
    writeLinkedTree();
    EXPECT_TRUE(copyRecursively(at("tree"), at("to"), false));
    EXPECT_EQ(list("to"), "a.txt sub sub/b.txt toFile.txt");
    EXPECT_FALSE(QFileInfo(at("to/toFile.txt")).isSymLink());
    write({"from/file", "from/sub/file"});
    write("outside/file", "mine");
    link(at("outside/file"), "link");
    EXPECT_FALSE(copyRecursively(at("from/file"), at("link"), false));
    EXPECT_TRUE(copyRecursively(at("from/file"), at("link"), true));
    EXPECT_FALSE(QFileInfo(at("link")).isSymLink());
    makeDirectory("linked");
    link(at("outside"), "linked/sub");
    EXPECT_FALSE(copyRecursively(at("from"), at("linked"), true)) << "sub is a link to elsewhere";
    EXPECT_EQ(list("linked"), "file sub") << "the rest is copied all the same";
    EXPECT_EQ(read("outside/file"), "mine");
}

TEST_F(KyFileCopyingTest, ContentOfAnySizeAndPermissionsArrive) {
    for (const int size : {0, 64 * 1024, 64 * 1024 + 1, 3 * 1024 * 1024 + 7}) {
        QByteArray content(size, 'x');
        for (int i = 0; i < size; i += 251)
            content[i] = static_cast<char>(i);
        write("source", content);
        // 0666, of which the process's mask takes some from new files.
        ASSERT_TRUE(QFile::setPermissions(at("source"), QFile::Permissions(0x6666)));
        EXPECT_TRUE(copyRecursively(at("source"), at("target"), true));
        EXPECT_EQ(read("target"), content) << size;
        EXPECT_EQ(QFile::permissions(at("target")), QFile::permissions(at("source")));
    }
}

TEST_F(KyFileCopyingTest, ACanceledCopyReturnsFalseAndLeavesWholeFilesOnly) {
    for (int i = 0; i < 10; ++i)
        write(QStringLiteral("from/%1").arg(i));
    KyTracker tracker;
    tracker.setListener([&](double progress) {
        if (progress > 0.45)
            tracker.cancel();
    });
    EXPECT_FALSE(copyRecursively(at("from"), at("to"), false, &tracker));
    const QStringList copied = QDir(at("to")).entryList(QDir::Files | QDir::Hidden);
    EXPECT_EQ(copied.size(), 5);
    for (const QString& name : copied)
        EXPECT_EQ(read("to/" + name), "content");
    EXPECT_FALSE(copyRecursively(at("from/0"), at("other"), false, &tracker));
    EXPECT_FALSE(exists("other"));
}

TEST_F(KyFileCopyingTest, ALargeFileIsGivenUpWhenItIsCanceledOrItsNameIsTakenMeanwhile) {
    constexpr qint64 cSize = 80 * 1024 * 1024;
    write({"old", "big"});
    ASSERT_TRUE(QFile::resize(at("big"), cSize));
    const struct {
        const char* target;
        bool isTaken;
        bool isCanceled;
        const char* content;
    } cases[] = {{"new", false, true, "unreadable"},
                 {"old", false, true, "content"},
                 {"new", true, false, "theirs"},
                 {"new", true, true, "theirs"}};
    for (const auto& [target, isTaken, isCanceled, content] : cases) {
        KyTracker tracker;
        tracker.setListener([&, name = target, takes = isTaken, cancels = isCanceled](double progress) {
            EXPECT_TRUE(progress == 0.2 || !cancels || tracker.isCanceled()) << progress;
            EXPECT_NE(QFileInfo(at(name)).size(), cSize);
            if (takes && !exists(name))
                write(name, "theirs");
            if (cancels)
                tracker.cancel();
        });
        EXPECT_FALSE(copyRecursively(at("big"), at(target), !isTaken, &tracker));
        EXPECT_EQ(read(target), content);
        EXPECT_EQ(list("."), isTaken ? "big new old" : "big old");
        deleteFile(at("new"));
    }
}

TEST_F(KyFileCopyingTest, ProgressRisesToOneUnlessCanceled) {
    write({"from/a", "from/b/c", "from/b/d", "from/e/f", "_private"});
    write({"tree/a", "tree/b", "tree/.hidden", "tree/sub/c", "tree/sub/d", "tree/sub/e"});
    makeDirectory("tree/empty");
    makeDirectory("empty");
    link("from", "link");
    using Operation = std::function<bool(KyTracker*)>;
    const std::pair<Operation, std::size_t> cases[] = {
        {[&](KyTracker* tracker) { return copyRecursively(at("from"), at("to"), false, tracker); }, 7},
        {[&](KyTracker* tracker) { return copyRecursively(at("_private"), at("no"), false, tracker); }, 1},
        {[&](KyTracker* tracker) { return deleteDir(at("link"), true, tracker); }, 1},
        {[&](KyTracker* tracker) { return deleteDir(at("missing"), false, tracker); }, 1},
        {[&](KyTracker* tracker) { return deleteDir(at("empty"), true, tracker); }, 1},
        {[&](KyTracker* tracker) { return deleteDir(at("tree"), false, tracker); }, 8},
    };
    std::vector<double> progress;
    for (const auto& [operation, nbReports] : cases) {
        KyTracker tracker;
        progress.clear();
        tracker.setListener([&](double value) { progress.push_back(value); });
        EXPECT_TRUE(operation(&tracker));
        EXPECT_TRUE(std::ranges::is_sorted(progress));
        EXPECT_EQ(progress.size(), nbReports);
        EXPECT_DOUBLE_EQ(tracker.getProgress(), 1);
    }
    ASSERT_GE(progress.size(), 2U);
    EXPECT_EQ(progress[0], 0.25) << "each level announces its files and directories";
    EXPECT_EQ(progress[1], 0.5);
    KyTracker tracker;
    tracker.setListener([&](double) { tracker.cancel(); });
    EXPECT_FALSE(copyRecursively(at("from"), at("again"), false, &tracker));
    EXPECT_LT(tracker.getProgress(), 0.5);
}

} // namespace

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
    for (const char* source : {"from/.hidden", "from/_own", "from/_own/.", "from/_own/"})
        EXPECT_TRUE(copyRecursively(at(source), at("private"), true)) << source;
    EXPECT_TRUE(copyRecursively(at("from/b/c/.."), at("dots"), false));
    EXPECT_EQ(list("dots"), "c c/d.txt x_y");
    EXPECT_FALSE(QFileInfo::exists(at("private")));
}

TEST_F(KyFileCopyingTest, RefusalsTouchNothing) {
    write({"file", "directory/inner", "directory/sub/deep"});
    link(at("file"), "link");
    link(at("directory/sub"), "shortcut");
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
                 {"file", "new/"},
                 {"directory", "shortcut/new"},
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
    write("old", "old");
    EXPECT_FALSE(copyRecursively(at("file"), at("old"), false));
    EXPECT_EQ(read("old"), "old");
    EXPECT_FALSE(copyRecursively("", at("new"), true));
    EXPECT_FALSE(copyRecursively(at("file"), "", true));
    EXPECT_FALSE(copyRecursively(at("file"), ":/new", true));
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

TEST_F(KyFileCopyingTest, ContentOfAnySizeAndPermissionsArrive) {
    for (const int size : {0, 1, 64 * 1024, 64 * 1024 + 1, 256 * 1024, 3 * 1024 * 1024 + 7}) {
        QByteArray content(size, 'x');
        for (int i = 0; i < size; i += 251)
            content[i] = static_cast<char>(i);
        write("source", content);
        // The process's mask takes some of these from new files.
        const QFile::Permissions all = QFile::ReadOwner | QFile::WriteOwner | QFile::ReadGroup | QFile::WriteGroup |
                                       QFile::ReadOther | QFile::WriteOther;
        ASSERT_TRUE(QFile::setPermissions(at("source"), all));
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

TEST_F(KyFileCopyingTest, WhatSomebodyPutsUnderTheNameMeanwhileStays) {
    write("big");
    ASSERT_TRUE(QFile::resize(at("big"), 80 * 1024 * 1024));
    for (const bool isCanceled : {false, true}) {
        KyTracker tracker;
        tracker.setListener([&](double) {
            EXPECT_NE(QFileInfo(at("new")).size(), 80 * 1024 * 1024);
            if (!QFileInfo::exists(at("new")))
                write("new", "theirs");
            if (isCanceled)
                tracker.cancel();
        });
        EXPECT_FALSE(copyRecursively(at("big"), at("new"), false, &tracker));
        EXPECT_EQ(read("new"), "theirs");
        EXPECT_EQ(list("."), "big new");
        ASSERT_TRUE(QFile::remove(at("new")));
    }
}

TEST_F(KyFileCopyingTest, ProgressRisesToOneUnlessCanceled) {
    write({"from/a", "from/b/c", "from/b/d", "from/e/f", "_private"});
    ASSERT_TRUE(QDir().mkpath(at("empty")));
    link("from", "link");
    using Operation = std::function<bool(KyTracker*)>;
    const struct {
        Operation operation;
        std::size_t nbReports;
    } cases[] = {
        {[&](KyTracker* tracker) { return copyRecursively(at("from"), at("to"), false, tracker); }, 7},
        {[&](KyTracker* tracker) { return copyRecursively(at("_private"), at("no"), false, tracker); }, 1},
        {[&](KyTracker* tracker) { return KyApplication::deleteDir(at("link"), true, tracker); }, 1},
        {[&](KyTracker* tracker) { return KyApplication::deleteDir(at("missing"), false, tracker); }, 1},
        {[&](KyTracker* tracker) { return KyApplication::deleteDir(at("empty"), true, tracker); }, 1},
    };
    for (const auto& [operation, nbReports] : cases) {
        KyTracker tracker;
        std::vector<double> progress;
        tracker.setListener([&](double value) { progress.push_back(value); });
        EXPECT_TRUE(operation(&tracker));
        EXPECT_TRUE(std::ranges::is_sorted(progress));
        EXPECT_EQ(progress.size(), nbReports);
        EXPECT_DOUBLE_EQ(tracker.getProgress(), 1);
    }
    KyTracker tracker;
    tracker.setListener([&](double) { tracker.cancel(); });
    EXPECT_FALSE(copyRecursively(at("from"), at("again"), false, &tracker));
    EXPECT_LT(tracker.getProgress(), 0.5);
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

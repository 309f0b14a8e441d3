// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyResource.h"

#include "KyProgress.h"
#include "KyTemporaryDirectory.h"

namespace fs = std::filesystem;

namespace {
class KyResourceFilesTest : public KyTemporaryDirectory {
protected:
    void TearDown() override {
        while (KyResource::popThreadDirectory())
            continue;
        KyTemporaryDirectory::TearDown();
    }

    // Works in "work" as a script would that lies in "script".
    void goFromScriptToWork() const {
        write("script/shared", "script");
        write("script/only", "script");
        write("work/shared", "work");
        fs::create_directories(mRoot / "work" / "q" / "q");
        fs::create_directories(mRoot / "script" / "q");
        KyResource::pushThreadDirectory(getURL("script"));
        KyResource::setCurrentDirectory(getURL("work"));
    }
};
} // namespace

TEST_F(KyResourceFilesTest, NothingHappensToURLsThatAreNotLocal) {
    write("file", "x");
    for (const KyURL& url : {KyURL(), KyURL("http://h/a"), KyURL("file:///a%00b"), KyURL("qrc:/a")}) {
        EXPECT_FALSE(KyResource::createFile(url) || KyResource::createDirectory(url) ||
                     KyResource::createDirectoryHierarchy(url) || KyResource::deleteFile(url) ||
                     KyResource::deleteDirectory(url) || KyResource::copyFile(getURL("file"), url) ||
                     KyResource::renameFile(url, getURL("new")) || KyResource::setCurrentDirectory(url));
    }
    EXPECT_EQ(read("file"), "x");
}

TEST_F(KyResourceFilesTest, DirectoriesAndEmptyFilesAreCreatedOnce) {
    EXPECT_TRUE(KyResource::createDirectory(getURL("one")));
    EXPECT_FALSE(KyResource::createDirectory(getURL("one")));
    EXPECT_FALSE(KyResource::existFile(getURL("one")));
    for (const char* url : {"a/b/c/", "a/b/c"})
        EXPECT_TRUE(KyResource::createDirectoryHierarchy(getURL(url)));
    EXPECT_TRUE(KyResource::existDirectory(getURL("a/b/c")));
    write("file", "x");
    EXPECT_FALSE(KyResource::existDirectory(getURL("file")));
    EXPECT_FALSE(KyResource::createDirectoryHierarchy(getURL("file/sub")));
    const std::u8string name = isWindows() ? u8"\u00E9 #%.txt" : u8"\u00E9 #?.txt";
    EXPECT_TRUE(KyResource::createFile(getURL(std::string(name.begin(), name.end()))));
    EXPECT_EQ(fs::file_size(mRoot / fs::path(name)), 0U);
    EXPECT_FALSE(KyResource::createFile(getURL("file")));
    EXPECT_EQ(read("file"), "x");
}

TEST_F(KyResourceFilesTest, CopyingAndRenamingNeverOverwriteAndTakeNoDirectories) {
    write("a", "one");
    write("b", "two");
    EXPECT_FALSE(KyResource::copyFile(getURL("a"), getURL("b")) ||
                 KyResource::copyFile(getURL("missing"), getURL("new")));
    EXPECT_FALSE(KyResource::renameFile(getURL("a"), getURL("b")) || KyResource::renameFile(getURL("a"), getURL("a")));
    EXPECT_EQ(read("b"), "two");
    EXPECT_TRUE(KyResource::copyFile(getURL("a"), getURL("c")));
    EXPECT_TRUE(KyResource::renameFile(getURL("b"), getURL("d")));
    EXPECT_EQ(read("a") + read("c") + read("d"), "oneonetwo");
    write("directory/file", "x");
    fs::create_directory(mRoot / "empty");
    EXPECT_FALSE(KyResource::copyFile(getURL("directory"), getURL("copy")));
    EXPECT_FALSE(KyResource::renameFile(getURL("directory"), getURL("other")));
    EXPECT_FALSE(KyResource::deleteFile(getURL("empty")));
    EXPECT_FALSE(KyResource::deleteDirectory(getURL("directory/file")));
    EXPECT_EQ(read("directory/file"), "x");
}

TEST_F(KyResourceFilesTest, ATreeIsDeletedWithoutFollowingLinks) {
    write("outside/keep", "x");
    write("tree/sub/file", "y");
    if (!makeLink(mRoot / "outside", mRoot / "tree" / "link"))
        GTEST_SKIP() << "there are no links here";
    fs::create_symlink(mRoot / "nowhere", mRoot / "tree" / "dangling");
    EXPECT_FALSE(KyResource::deleteDirectory(getURL("tree/link/")));
    EXPECT_TRUE(KyResource::deleteDirectory(getURL("tree")));
    EXPECT_FALSE(fs::exists(mRoot / "tree"));
    fs::create_directory_symlink(mRoot / "outside", mRoot / "link");
    EXPECT_TRUE(KyResource::deleteFile(getURL("link")));
    EXPECT_EQ(read("outside/keep"), "x");
}

TEST_F(KyResourceFilesTest, ADeletionThatTakesLongIsToldAndMayBeCancelled) {
    KyProgress& progress = KyProgress::get();
    progress.open();
    progress.setQuietTime(0);
    KyHasSlots slots;
    std::string title;
    bool cancels = true;
    progress.changedSignal().connect(slots, [&](const std::string& text, double) {
        title = text;
        if (cancels)
            progress.cancel();
    });
    for (int i = 0; i < 200; ++i)
        write("tree/" + std::to_string(i % 10) + "/" + std::to_string(i), "");
    write("work/keep", "x");
    makeLink(mRoot / "work", mRoot / "tree" / "link");
    EXPECT_FALSE(KyResource::deleteDirectory(getURL("tree")));
    const auto count = std::distance(fs::recursive_directory_iterator(mRoot / "tree"), {});
    EXPECT_TRUE(count > 0 && count < 211) << count;
    EXPECT_EQ(title, "Deleting tree");
    cancels = false;
    EXPECT_TRUE(KyResource::deleteDirectory(getURL("tree")));
    progress.close();
    progress.setQuietTime(100);
    EXPECT_FALSE(fs::exists(mRoot / "tree"));
    EXPECT_TRUE(fs::exists(mRoot / "work" / "keep"));
}

TEST_F(KyResourceFilesTest, ChangesAreMadeInTheCurrentDirectoryAndNotInTheThreads) {
    goFromScriptToWork();
    EXPECT_TRUE(KyResource::createFile(KyURL("only")));
    EXPECT_TRUE(KyResource::createDirectory(KyURL("directory")));
    EXPECT_TRUE(KyResource::createDirectoryHierarchy(KyURL("a/b")));
    EXPECT_TRUE(KyResource::copyFile(KyURL("shared"), KyURL("copy")));
    EXPECT_TRUE(KyResource::renameFile(KyURL("only"), KyURL("renamed")));
    EXPECT_TRUE(KyResource::deleteFile(KyURL("shared")));
    EXPECT_FALSE(KyResource::deleteFile(KyURL("shared")));
    EXPECT_TRUE(KyResource::existFile(KyURL("shared"))) << "beside the script";
    KyResource written(KyURL("written"));
    EXPECT_TRUE(written.openStreamBuffer(KyResource::eWrite));
    EXPECT_EQ(read("work/copy"), "script") << "reading asks the thread's directory first";
    for (const char* name : {"work/directory", "work/a/b", "work/renamed", "work/written", "script/only"})
        EXPECT_TRUE(fs::exists(mRoot / name)) << name;
    EXPECT_EQ(std::distance(fs::directory_iterator(mRoot / "script"), {}), 3);
    EXPECT_TRUE(KyResource::setCurrentDirectory(KyURL("q")) && KyResource::pushCurrentDirectory("q"));
    EXPECT_EQ(fs::current_path(), mRoot / "work" / "q" / "q");
    EXPECT_TRUE(KyResource::popCurrentDirectory());
}

TEST_F(KyResourceFilesTest, DirectoriesInUseAreNotDeleted) {
    goFromScriptToWork();
    KyResource::pushThreadDirectory(getURL("script/q"));
    const std::string link = makeLink(mRoot, mRoot / "link") ? "link/" : "";
    const KyURL cases[] = {
        KyURL("."),        KyURL(".."),         getURL("work"),        getURL(""),
        getURL("script/"), getURL("script/q/"), getURL(link + "work"), getURL(link + "script/q/../q")};
    for (const KyURL& url : cases)
        EXPECT_FALSE(KyResource::deleteDirectory(url)) << url.toString();
    EXPECT_EQ(read("script/only") + read("work/shared"), "scriptwork");
    EXPECT_TRUE(KyResource::deleteDirectory(KyURL("q"))) << "below the current one";
    EXPECT_TRUE(fs::exists(mRoot / "script" / "q"));
    KyResource::popThreadDirectory();
    EXPECT_TRUE(KyResource::deleteDirectory(getURL("script/q"))) << "no longer in use";
}

// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyLuaTestFixture.h"

#include "KyResource.h"

#include <filesystem>
#include <fstream>

namespace fs = std::filesystem;

namespace {

/// Scripts work in a fresh directory, which is also the process's.
class KyLuaResourceFunctionsTest : public KyLuaTestFixture {
protected:
    void SetUp() override {
        KyLuaTestFixture::SetUp();
        const auto* info = ::testing::UnitTest::GetInstance()->current_test_info();
        mBefore = fs::current_path();
        mRoot = fs::canonical(fs::temp_directory_path()) / (std::string("Ky Lua ") + info->name());
        fs::remove_all(mRoot);
        fs::create_directories(mRoot / "tree" / "sub");
        fs::create_directories(mRoot / "outside");
        write("file.txt", "12345");
        write("tree/sub/leaf", "x");
        write("outside/keep", "x");
        fs::current_path(mRoot);
        engine().setLuaVariable("root", KyField(mRoot.generic_string()));
    }

    void TearDown() override {
        fs::current_path(mBefore);
        fs::remove_all(mRoot);
        KyLuaTestFixture::TearDown();
    }

    void write(const std::string& name, const std::string& text) const {
        std::ofstream(mRoot / name, std::ios::binary) << text;
    }
    bool exists(const std::string& name) const { return fs::exists(fs::symlink_status(mRoot / name)); }

    fs::path mRoot;
    fs::path mBefore;
};

TEST_F(KyLuaResourceFunctionsTest, PlacesAreTextsOrURLs) {
    expectTrue({"Resource.existFile('file.txt')", "Resource.existFile(root .. '/file.txt')",
                "Resource.existFile(URL('file.txt'))", "Resource.existDirectory('tree/')",
                "Resource.existFile('file://' .. root:gsub(' ', '%%20') .. '/file.txt')"});
    expectFalse({"Resource.existFile('tree')", "Resource.existFile('')", "Resource.existFile('file.txt\\0')",
                 "Resource.existFile('http://host/file.txt')", "Resource.existDirectory('file.txt')"});
}

TEST_F(KyLuaResourceFunctionsTest, FilesAndDirectoriesAreMadeCopiedRenamedAndDeleted) {
    expectTexts({
        {"Resource.createFile('new'), Resource.createFile('new')", "true, false"},
        {"Resource.copyFile('file.txt', URL('tree/copy')), Resource.copyFile('file.txt', 'new')", "true, false"},
        {"Resource.renameFile(URL('new'), 'newer'), Resource.renameFile('newer', 'file.txt')", "true, false"},
        {"Resource.deleteFile('newer'), Resource.deleteFile('newer'), Resource.deleteFile('tree')",
         "true, false, false"},
        {"Resource.createDirectory('one'), Resource.createDirectory('a/b')", "true, false"},
        {"Resource.copyFile('missing', 'other'), Resource.createDirectoryHierarchy('a/b/c')", "false, true"},
    });
    EXPECT_EQ(fs::file_size(mRoot / "tree/copy"), 5u);
    EXPECT_TRUE(fs::is_directory(mRoot / "a/b/c"));
    EXPECT_EQ(eval("Resource.deleteDirectory('a'), Resource.deleteDirectory(URL('one/'))"), "true, true");
    EXPECT_FALSE(exists("new") || exists("newer") || exists("other") || exists("a") || exists("one"));
}

TEST_F(KyLuaResourceFunctionsTest, DeletingATreeNeverLeavesIt) {
    fs::create_directory_symlink(mRoot / "outside", mRoot / "tree/sub/link");
    fs::create_symlink(mRoot / "nowhere", mRoot / "tree/dangling");
    fs::create_directory_symlink(mRoot / "outside", mRoot / "link");
    for (const char* place : {"link", "link/", "link/.", "link/./", "tree/sub/link/."})
        EXPECT_EQ(eval("Resource.deleteDirectory(root .. '/" + std::string(place) + "')"), "false") << place;
    EXPECT_EQ(eval("Resource.deleteDirectory('tree')"), "true");
    EXPECT_FALSE(exists("tree"));
    EXPECT_TRUE(exists("outside/keep"));
}

TEST_F(KyLuaResourceFunctionsTest, DeletingWithoutAPathAndDeletingFilesIsRefused) {
    fs::create_directories(mRoot / "here");
    fs::current_path(mRoot / "here");
    write("here/file", "x");
    for (const char* place :
         {"''", "URL()", "URL('#part')", "URL('?query')", "URL('file:')", "'file'", "'http://host/dir'"})
        EXPECT_EQ(eval(std::string("Resource.deleteDirectory(") + place + ")"), "false") << place;
    EXPECT_TRUE(exists("here/file"));
}

TEST_F(KyLuaResourceFunctionsTest, TheCurrentDirectoryIsTheProcesssAndTheThreadDirectoryComesFirst) {
    expectTexts({
        {"Resource.getCurrentDirectory():getLocalPath() == root .. '/'", "true"},
        {"Resource.setCurrentDirectory('missing'), Resource.setCurrentDirectory(URL())", "false, false"},
        {"Resource.setCurrentDirectory('tree'), Resource.existFile('sub/leaf')", "true, true"},
    });
    EXPECT_EQ(fs::current_path(), mRoot / "tree");
    expectTexts({
        {"Resource.setCurrentDirectory(URL('..')), Resource.getThreadDirectory():isEmpty()", "true, true"},
        {"Resource.pushThreadDirectory(''), Resource.pushThreadDirectory('tree')", "false, true"},
        {"Resource.pushThreadDirectory(URL('tree/sub'))", "true"},
        {"Resource.getThreadDirectory():getLocalPath() == root .. '/tree/sub/'", "true"},
        {"Resource.existFile('leaf'), Resource.popThreadDirectory(), Resource.existFile('leaf')", "true, true, false"},
        {"Resource.existFile('sub/leaf'), Resource.popThreadDirectory()", "true, true"},
        {"Resource.existFile('sub/leaf'), Resource.popThreadDirectory()", "false, false"},
    });
    EXPECT_EQ(fs::current_path(), mRoot);
}

TEST_F(KyLuaResourceFunctionsTest, OtherValuesAreNoPlaces) {
    for (const char* function : {"existDirectory", "existFile", "setCurrentDirectory", "createFile", "createDirectory",
                                 "createDirectoryHierarchy", "deleteFile", "deleteDirectory", "pushThreadDirectory"})
        for (const char* place : {"nil", "5", "true", "{}", "print", "Date()", "io.stdout", ""}) {
            const std::string code = std::string("Resource.") + function + "(" + place + ")";
            EXPECT_TRUE(eval(code).starts_with("error: ")) << code;
        }
    for (const std::string function : {"copyFile", "renameFile"})
        for (const char* places : {"nil, 'to'", "'file.txt', nil", "'file.txt'", "'file.txt', 5", "'a', 'b', 'c'"})
            EXPECT_TRUE(eval("Resource." + function + "(" + places + ")").starts_with("error: ")) << places;
    EXPECT_NE(eval("Resource.existFile(1)").find("bool existFile(text or URL)"), std::string::npos);
    EXPECT_FALSE(exists("5"));
}

TEST_F(KyLuaResourceFunctionsTest, InformationAsksTheDiskAnew) {
    fs::create_symlink(mRoot / "nowhere", mRoot / "dangling");
    run("file, dangling = ResourceInformation(URL('file.txt')), ResourceInformation(URL('dangling'))");
    expectTexts({
        {"file:getSize32(), file:isReadable(), file:isWritable(), file:isExecutable()", "5, true, true, false"},
        {"file:isHidden(), ResourceInformation(URL('tree')):isDirectory()", "false, true"},
        {"dangling:isSymbolicLink(), dangling:isReadable(), ResourceInformation():isValid()", "true, false, false"},
        {"file == ResourceInformation(URL('file.txt')), file == dangling", "true, false"},
    });
    run("info = ResourceInformation() info:setURL(URL('later'))");
    EXPECT_EQ(eval("info:isValid()"), "false");
    write("later", "123");
    EXPECT_EQ(eval("info:isValid(), info:getSize32()"), "true, 3");
    run("url = info:getURL() info = nil collectgarbage() collectgarbage()");
    EXPECT_EQ(eval("url:toString()"), "later");
    EXPECT_TRUE(eval("ResourceInformation('file.txt')").starts_with("error: "));
}

} // namespace

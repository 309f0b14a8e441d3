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
    expectTexts({
        {"Resource.existFile('file.txt')", "true"},
        {"Resource.existFile(root .. '/file.txt')", "true"},
        {"Resource.existFile(URL('file.txt'))", "true"},
        {"Resource.existFile('file://' .. root:gsub(' ', '%%20') .. '/file.txt')", "true"},
        {"Resource.existFile('tree')", "false"},
        {"Resource.existFile('')", "false"},
        {"Resource.existFile('file.txt\\0')", "false"},
        {"Resource.existFile('http://host/file.txt')", "false"},
        {"Resource.existDirectory('tree/')", "true"},
        {"Resource.existDirectory('file.txt')", "false"},
    });
}

TEST_F(KyLuaResourceFunctionsTest, FilesAreMadeCopiedRenamedAndDeleted) {
    expectTexts({
        {"Resource.createFile('new')", "true"},
        {"Resource.createFile('new')", "false"},
        {"Resource.copyFile('file.txt', URL('tree/copy'))", "true"},
        {"Resource.copyFile('file.txt', 'new')", "false"},
        {"Resource.copyFile('missing', 'other')", "false"},
    });
    EXPECT_EQ(fs::file_size(mRoot / "tree/copy"), 5u);
    expectTexts({
        {"Resource.renameFile(URL('new'), 'newer')", "true"},
        {"Resource.renameFile('newer', 'file.txt')", "false"},
        {"Resource.deleteFile('newer')", "true"},
        {"Resource.deleteFile('newer')", "false"},
        {"Resource.deleteFile('tree')", "false"},
    });
    EXPECT_FALSE(exists("new") || exists("newer") || exists("other"));
}

TEST_F(KyLuaResourceFunctionsTest, DirectoriesAreMadeAndDeleted) {
    expectTexts({
        {"Resource.createDirectory('one')", "true"},
        {"Resource.createDirectory('a/b')", "false"},
        {"Resource.createDirectoryHierarchy('a/b/c')", "true"},
    });
    EXPECT_TRUE(fs::is_directory(mRoot / "a/b/c"));
    EXPECT_EQ(eval("Resource.deleteDirectory('a')"), "true");
    EXPECT_EQ(eval("Resource.deleteDirectory(URL('one/'))"), "true");
    EXPECT_FALSE(exists("a") || exists("one"));
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

TEST_F(KyLuaResourceFunctionsTest, TheCurrentDirectoryIsTheProcesss) {
    expectTexts({
        {"Resource.getCurrentDirectory():getLocalPath() == root .. '/'", "true"},
        {"Resource.setCurrentDirectory('tree')", "true"},
        {"Resource.existFile('sub/leaf')", "true"},
        {"Resource.setCurrentDirectory('missing')", "false"},
        {"Resource.setCurrentDirectory(URL())", "false"},
    });
    EXPECT_EQ(fs::current_path(), mRoot / "tree");
    EXPECT_EQ(eval("Resource.setCurrentDirectory(URL('..'))"), "true");
    EXPECT_EQ(fs::current_path(), mRoot);
}

TEST_F(KyLuaResourceFunctionsTest, TheThreadDirectoryComesFirst) {
    expectTexts({
        {"Resource.getThreadDirectory():isEmpty()", "true"},
        {"Resource.pushThreadDirectory('')", "false"},
        {"Resource.pushThreadDirectory('tree')", "true"},
        {"Resource.pushThreadDirectory(URL('tree/sub'))", "true"},
        {"Resource.getThreadDirectory():getLocalPath() == root .. '/tree/sub/'", "true"},
        {"Resource.existFile('leaf')", "true"},
        {"Resource.popThreadDirectory()", "true"},
        {"Resource.existFile('sub/leaf')", "true"},
        {"Resource.popThreadDirectory()", "true"},
        {"Resource.popThreadDirectory()", "false"},
        {"Resource.existFile('sub/leaf')", "false"},
    });
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
    expectTexts({
        {"ResourceInformation():isValid()", "false"},
        {"ResourceInformation(URL('file.txt')):getSize32()", "5"},
        {"ResourceInformation(URL('file.txt')):isReadable()", "true"},
        {"ResourceInformation(URL('file.txt')):isWritable()", "true"},
        {"ResourceInformation(URL('file.txt')):isExecutable()", "false"},
        {"ResourceInformation(URL('tree')):isDirectory()", "true"},
        {"ResourceInformation(URL('dangling')):isSymbolicLink()", "true"},
        {"ResourceInformation(URL('dangling')):isReadable()", "false"},
        {"ResourceInformation(URL('file.txt')):isHidden()", "false"},
        {"ResourceInformation(URL('a')) == ResourceInformation(URL('a'))", "true"},
        {"ResourceInformation(URL('a')) == ResourceInformation(URL('b'))", "false"},
    });
    run("info = ResourceInformation() info:setURL(URL('later'))");
    EXPECT_EQ(eval("info:isValid()"), "false");
    write("later", "123");
    EXPECT_EQ(eval("info:isValid() and info:getSize32()"), "3");
    run("url = info:getURL() info = nil collectgarbage() collectgarbage()");
    EXPECT_EQ(eval("url:toString()"), "later");
    EXPECT_TRUE(eval("ResourceInformation('file.txt')").starts_with("error: "));
}

} // namespace

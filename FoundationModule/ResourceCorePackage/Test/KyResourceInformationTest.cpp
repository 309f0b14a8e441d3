// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyResourceInformation.h"

#include "KyTemporaryDirectory.h"

#include "KyResource.h"

namespace fs = std::filesystem;

namespace {
class KyResourceInformationTest : public KyTemporaryDirectory {
protected:
    [[nodiscard]] KyResourceInformation getInformation(const std::string& name) const {
        return KyResourceInformation(getURL(name));
    }
};
} // namespace

TEST_F(KyResourceInformationTest, AFileIsDescribed) {
    write("a file", "12345");
    const auto file = getInformation("a file");
    EXPECT_TRUE(file.isValid());
    EXPECT_EQ(file.getSize32(), 5U);
    EXPECT_FALSE(file.isDirectory());
    EXPECT_FALSE(file.isSymbolicLink());
    EXPECT_FALSE(file.isHidden());
    EXPECT_TRUE(file.isReadable());
    EXPECT_TRUE(file.isWritable());
    EXPECT_FALSE(file.isExecutable());
}

TEST_F(KyResourceInformationTest, ADirectoryIsDescribed) {
    fs::create_directory(mRoot / "directory");
    for (const char* name : {"directory", "directory/"}) {
        EXPECT_TRUE(getInformation(name).isValid());
        EXPECT_TRUE(getInformation(name).isDirectory());
        EXPECT_EQ(getInformation(name).getSize32(), 0U);
    }
}

TEST_F(KyResourceInformationTest, NothingIsSaidOfWhatIsNotThere) {
    for (const auto& url : {getURL("missing"), getURL(".missing"), KyURL(), KyURL("http://h/a")}) {
        const KyResourceInformation information(url);
        EXPECT_FALSE(information.isValid() || information.isDirectory() || information.isHidden() ||
                     information.isReadable() || information.isWritable() || information.isExecutable() ||
                     information.isSymbolicLink());
        EXPECT_EQ(information.getSize32(), 0U);
    }
}

TEST_F(KyResourceInformationTest, ALinkIsSeenEvenWhenItDangles) {
    fs::create_symlink(mRoot / "nowhere", mRoot / "dangling");
    EXPECT_TRUE(getInformation("dangling").isSymbolicLink());
    EXPECT_TRUE(getInformation("dangling").isValid());
    EXPECT_FALSE(getInformation("dangling").isReadable());
}

TEST_F(KyResourceInformationTest, PermissionsAreThoseOfTheFile) {
    write("program", "#!");
    fs::permissions(mRoot / "program", fs::perms::owner_all);
    EXPECT_TRUE(getInformation("program").isExecutable());
    fs::permissions(mRoot / "program", fs::perms::owner_read);
    EXPECT_FALSE(getInformation("program").isExecutable());
}

TEST_F(KyResourceInformationTest, ALargeFileHasTheLargestSize) {
    write("sparse", "");
    std::error_code error;
    fs::resize_file(mRoot / "sparse", 0x1'0000'0005ULL, error);
    if (error)
        GTEST_SKIP() << "the file system has no room for a sparse file";
    EXPECT_EQ(getInformation("sparse").getSize32(), 0xFFFFFFFFU);
}

TEST_F(KyResourceInformationTest, DirectoryAndNameAreTakenFromTheURLAlone) {
    std::string directory;
    std::string name;
    const auto missing = getInformation("no where/script #1.lua");
    EXPECT_TRUE(missing.getLocalDirectory(directory));
    EXPECT_TRUE(missing.getFileName(name));
    EXPECT_EQ(directory, getPath("no where/"));
    EXPECT_EQ(name, "script #1.lua");
}

TEST_F(KyResourceInformationTest, ABareNameLiesInTheCurrentDirectory) {
    KyResource::setCurrentDirectory(KyURL(mRoot.generic_string(), KyURL::eLocalPath));
    std::string directory;
    const KyResourceInformation bare(KyURL("script.lua", KyURL::eLocalPath));
    EXPECT_TRUE(bare.getLocalDirectory(directory));
    EXPECT_EQ(directory, getPath(""));
}

TEST_F(KyResourceInformationTest, URLsThatAreNotLocalHaveNeither) {
    for (const char* text : {"http://h/a/b.lua", "qrc:/a/b.lua", "", "file:///a%00/b%00"}) {
        std::string part = "unchanged";
        KyResourceInformation information;
        information.setURL(KyURL(text));
        EXPECT_FALSE(information.getLocalDirectory(part)) << text;
        EXPECT_FALSE(information.getFileName(part)) << text;
        EXPECT_EQ(part, "unchanged");
    }
    std::string name;
    EXPECT_FALSE(getInformation("directory/").getFileName(name));
}

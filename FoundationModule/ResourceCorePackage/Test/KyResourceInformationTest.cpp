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

TEST_F(KyResourceInformationTest, AFileIsDescribedWithItsPermissions) {
    write("a file", "12345");
    const auto file = getInformation("a file");
    EXPECT_EQ(file.getSize32(), 5U);
    EXPECT_FALSE(file.isDirectory() || file.isSymbolicLink() || file.isHidden() || file.isExecutable());
    EXPECT_TRUE(file.isValid() && file.isReadable() && file.isWritable());
    const std::string program = isWindows() ? "a program.EXE" : "a program";
    write(program, "");
    fs::permissions(mRoot / program, fs::perms::owner_all);
    EXPECT_TRUE(getInformation(program).isExecutable());
    fs::resize_file(mRoot / "a file", 0x1'0000'0005ULL);
    EXPECT_EQ(getInformation("a file").getSize32(), 0xFFFFFFFFU);
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

TEST_F(KyResourceInformationTest, DirectoryAndNameAreTakenFromLocalURLsAlone) {
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
    const auto missing = getInformation("no where/script #1.lua");
    std::string directory;
    EXPECT_TRUE(missing.getLocalDirectory(directory) && missing.getFileName(name));
    EXPECT_EQ(directory, getPath("no where/"));
    EXPECT_EQ(name, "script #1.lua");
}

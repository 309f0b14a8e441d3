// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KySettingsTest.h"

#include <csignal>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

/// Over an old file that is there.
class KySettingsFileLinuxTest : public KySettingsTest {
protected:
    KySettingsFileLinuxTest() {
        write("host.xml", "<Settings old=\"1\"/>\n");
        mSettings.setFilePath(at("host.xml"));
        mSettings.setAttribute("A", "text", QString(100000, 'x'));
    }

    KySettings mSettings;
};

TEST_F(KySettingsFileLinuxTest, AFullDiskLeavesTheOldFile) {
    ::signal(SIGXFSZ, SIG_IGN);
    rlimit before = {};
    ::getrlimit(RLIMIT_FSIZE, &before);
    const rlimit limit = {50, before.rlim_max};
    ::setrlimit(RLIMIT_FSIZE, &limit);
    EXPECT_FALSE(mSettings.save());
    mSettings.setAttribute("A", "text", QString(100, 'x'));
    EXPECT_FALSE(mSettings.save()) << "it shows at the flush only";
    ::setrlimit(RLIMIT_FSIZE, &before);
    EXPECT_EQ(read("host.xml"), "<Settings old=\"1\"/>\n");
    EXPECT_EQ(list(), "host.xml");
    EXPECT_TRUE(mSettings.save());
}

TEST_F(KySettingsFileLinuxTest, AReaderNeverMeetsAnUnfinishedFile) {
    ASSERT_TRUE(mSettings.save());
    const pid_t writer = ::fork();
    if (writer == 0) {
        while (mSettings.save()) {
        }
        ::_exit(1);
    }
    KySettings other;
    other.setFilePath(at("host.xml"));
    for (int i = 0; i < 20; ++i)
        EXPECT_TRUE(other.open());
    ::kill(writer, SIGKILL);
    ::waitpid(writer, nullptr, 0);
    EXPECT_TRUE(other.open());
    EXPECT_EQ(other.getAttribute("A", "text").size(), 100000);
}

TEST_F(KySettingsFileLinuxTest, LinksPermissionsAndPipesStay) {
    ASSERT_TRUE(QFile::setPermissions(at("host.xml"), QFile::ReadOwner | QFile::WriteOwner | QFile::ReadGroup));
    ASSERT_TRUE(QFile::link(at("host.xml"), at("one")) && QFile::link(at("one"), at("two")));
    mSettings.setFilePath(at("two"));
    ASSERT_TRUE(mSettings.save());
    EXPECT_TRUE(QFileInfo(at("two")).isSymLink() && QFileInfo(at("one")).isSymLink());
    EXPECT_FALSE(QFile::permissions(at("host.xml")) & QFile::ReadOther);
    EXPECT_TRUE(read("host.xml").contains("xxx"));
    ASSERT_TRUE(QFile::link(at("circle"), at("circle")) && QFile::link(at("new.xml"), at("three")));
    mSettings.setFilePath(at("circle"));
    EXPECT_FALSE(mSettings.save());
    mSettings.setFilePath(at("three"));
    EXPECT_TRUE(mSettings.save() && QFileInfo(at("new.xml")).isFile());
    EXPECT_TRUE(QFileInfo(at("circle")).isSymLink() && QFileInfo(at("three")).isSymLink());
    ASSERT_EQ(::mkfifo(QFile::encodeName(at("pipe")).constData(), 0644), 0);
    mSettings.setFilePath(at("pipe"));
    EXPECT_FALSE(mSettings.save() || mSettings.open() || QFileInfo(at("pipe")).isFile());
}

} // namespace

// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyFileTest.h"

using namespace KyApplication;

namespace {

class KyTemporaryFilesTest : public KyFileTest {
protected:
    KyTemporaryFilesTest() { qputenv("TMPDIR", mDirectory.path().toUtf8()); }
    ~KyTemporaryFilesTest() override { qunsetenv("TMPDIR"); }
};

TEST_F(KyTemporaryFilesTest, TheCounterGoesBeforeTheFirstDot) {
    const std::pair<QStringList, const char*> cases[] = {
        {{"free.txt", "free_1.txt", "free_2.txt"}, "free_3.txt"},
        {{"a.tar.gz"}, "a_1.tar.gz"},
        {{".a.b"}, ".a.b_1"},
        {{"%1%2.%L1"}, "%1%2_1.%L1"},
        {{"v1.2/name"}, "v1.2/name_1"},
    };
    for (const auto& [taken, expected] : cases) {
        QString path = at(taken.first());
        EXPECT_TRUE(setUniqueFilename(path));
        EXPECT_EQ(path, at(taken.first())) << "it is free";
        write(taken);
        EXPECT_TRUE(setUniqueFilename(path));
        EXPECT_EQ(path.toStdString(), at(expected).toStdString());
    }
}

TEST_F(KyTemporaryFilesTest, DirectoriesAndDanglingLinksAreTakenAndANameMayBecomeTooLong) {
    link("nothing", "link.txt");
    link("nothing", "link_1.txt");
    makeDirectory("directory");
    const QString longest(255, 'n');
    write(longest);
    const std::pair<QString, QString> cases[] = {{at("link.txt"), at("link_2.txt")},
                                                 {at("directory/"), at("directory_1")},
                                                 {"/", "/"},
                                                 {at(longest), at(longest)}};
    for (const auto& [given, expected] : cases) {
        QString path = given;
        EXPECT_EQ(setUniqueFilename(path), given != expected);
        EXPECT_EQ(path, expected);
    }
}

TEST_F(KyTemporaryFilesTest, DataAndResourcesAreSavedUnderTheEndOfTheirNames) {
    const std::pair<QString, QString> cases[] = {
        {"/some/where/name.png", "name.png"},
        {"", ""},
        {QString(300, 'n') + ".png", QString(96, 'n') + ".png"},
        {QString(300, QChar(0x4e00)) + ".png", QString(78, QChar(0x4e00)) + ".png"},
        {"a%1.txt", "a%1.txt"},
        {"XXX_XXXXXXX.txt", "XXX_XXXXXXX.txt"},
    };
    for (const auto& [hint, ending] : cases) {
        const QFileInfo file(saveToTemp("bytes", hint));
        ASSERT_TRUE(file.isFile()) << hint.toStdString();
        EXPECT_EQ(file.absolutePath(), mDirectory.path());
        EXPECT_EQ(file.fileName().mid(6), ending);
        EXPECT_EQ(file.permissions() & (QFile::ReadGroup | QFile::ReadOther), 0);
        EXPECT_EQ(read(file.fileName()), "bytes");
    }
    EXPECT_TRUE(QFileInfo(saveToTemp("", "empty")).isFile());
    EXPECT_NE(saveToTemp("x", "same"), saveToTemp("x", "same"));
    const QString path = unembed(":/file/tree/one.txt");
    EXPECT_TRUE(path.endsWith("one.txt"));
    EXPECT_EQ(read(QFileInfo(path).fileName()), "one\ntwo\n");
    EXPECT_EQ(unembed(":/file/none.txt") + unembed(mDirectory.path()), QString());
    qputenv("TMPDIR", "/dev/null");
    EXPECT_EQ(unembed(":/file/tree/one.txt") + saveToTemp("x", "name"), QString());
}

TEST_F(KyTemporaryFilesTest, OpeningCreatesDirectoriesAndTellsWhatFailed) {
    QFile existing;
    QFile* file = &existing;
    EXPECT_EQ(openFile(at("a/b/c.txt"), nullptr), -1002);
    EXPECT_FALSE(exists("a"));
    ASSERT_EQ(openFile(at("a/b/c.txt"), &file), 0);
    EXPECT_TRUE(file->isOpen() && file->isWritable());
    EXPECT_EQ(file->fileName(), at("a/b/c.txt"));
    delete file;
    file = &existing;
    for (const QString& path : {at("a/b/c.txt/d.txt"), QString(), at("d/") + QChar(0xd800)})
        EXPECT_EQ(openFile(path, &file), -1001) << path.toStdString();
    EXPECT_FALSE(exists("d"));
    EXPECT_EQ(file, &existing) << "untouched";
    EXPECT_EQ(openFile(at("a/b"), &file), -1002);
    EXPECT_EQ(file, nullptr);
}

} // namespace

// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyFileTest.h"

using KyApplication::openFile;
using KyApplication::saveToTemp;
using KyApplication::setUniqueFilename;

namespace {

class KyTemporaryFilesTest : public KyFileTest {
protected:
    KyTemporaryFilesTest() { qputenv("TMPDIR", mDirectory.path().toUtf8()); }
    ~KyTemporaryFilesTest() override { qunsetenv("TMPDIR"); }
};

TEST_F(KyTemporaryFilesTest, TheCounterGoesBeforeTheFirstDot) {
    const struct {
        QStringList taken;
        const char* expected;
    } cases[] = {
        {{"report.txt"}, "report_1.txt"}, {{"report.txt", "report_1.txt", "report_2.txt"}, "report_3.txt"},
        {{"a.tar.gz"}, "a_1.tar.gz"},     {{"plain"}, "plain_1"},
        {{".profile"}, ".profile_1"},     {{".a.b"}, ".a.b_1"},
        {{"a%1.txt"}, "a%1_1.txt"},       {{"%1%2.%L1"}, "%1%2_1.%L1"},
        {{"v1.2/name"}, "v1.2/name_1"},
    };
    for (const auto& [taken, expected] : cases) {
        write(taken);
        QString path = at(taken.first());
        EXPECT_TRUE(setUniqueFilename(path));
        EXPECT_EQ(path.toStdString(), at(expected).toStdString());
    }
}

TEST_F(KyTemporaryFilesTest, AFreePathStaysAndDirectoriesAndDanglingLinksAreTaken) {
    QString path = at("free.txt");
    EXPECT_TRUE(setUniqueFilename(path));
    EXPECT_EQ(path, at("free.txt"));
    link("nothing", "free.txt");
    link("nothing", "free_1.txt");
    EXPECT_TRUE(setUniqueFilename(path));
    EXPECT_EQ(path, at("free_2.txt"));
    ASSERT_TRUE(QDir().mkpath(at("directory")));
    path = at("directory/");
    EXPECT_TRUE(setUniqueFilename(path));
    EXPECT_EQ(path, at("directory_1"));
    const QString longest(255, 'n');
    write(longest);
    for (const QString& refused : {QStringLiteral("/"), at(longest)}) {
        path = refused;
        EXPECT_FALSE(setUniqueFilename(path));
        EXPECT_EQ(path, refused);
    }
}

TEST_F(KyTemporaryFilesTest, DataIsSavedUnderTheEndOfTheHint) {
    const struct {
        QByteArray data;
        QString hint;
        QString ending;
    } cases[] = {
        {"bytes", "/some/where/name.png", "name.png"},
        {"", "empty", "empty"},
        {"bytes", "", ""},
        {"bytes", QString(300, 'n') + ".png", QString(96, 'n') + ".png"},
        {"bytes", QString(300, QChar(0x4e00)) + ".png", QString(78, QChar(0x4e00)) + ".png"},
        {"bytes", "a%1.txt", "a%1.txt"},
        {"bytes", "XXX_XXXXXXX.txt", "XXX_XXXXXXX.txt"},
    };
    for (const auto& [data, hint, ending] : cases) {
        const QString path = saveToTemp(data, hint);
        ASSERT_TRUE(QFileInfo(path).isFile()) << hint.toStdString();
        EXPECT_EQ(QFileInfo(path).absolutePath(), mDirectory.path());
        EXPECT_EQ(QFileInfo(path).fileName().mid(6), ending);
        EXPECT_EQ(QFile::permissions(path) & (QFile::ReadGroup | QFile::ReadOther), 0);
        EXPECT_EQ(read(QFileInfo(path).fileName()), data);
    }
    EXPECT_NE(saveToTemp("x", "same"), saveToTemp("x", "same"));
}

TEST_F(KyTemporaryFilesTest, ADirectoryThatIsNoneGivesNoFile) {
    qputenv("TMPDIR", "/dev/null");
    EXPECT_EQ(saveToTemp("x", "name"), QString());
    EXPECT_EQ(KyApplication::unembed(":/file/tree/one.txt"), QString());
}

TEST_F(KyTemporaryFilesTest, AResourceBecomesAFile) {
    const QString path = KyApplication::unembed(":/file/tree/one.txt");
    EXPECT_TRUE(path.endsWith("one.txt"));
    EXPECT_EQ(read(QFileInfo(path).fileName()), "one\ntwo\n");
    EXPECT_EQ(KyApplication::unembed(":/file/none.txt"), QString());
    EXPECT_EQ(KyApplication::unembed(mDirectory.path()), QString());
}

TEST_F(KyTemporaryFilesTest, OpeningCreatesDirectoriesAndTellsWhatFailed) {
    QFile existing;
    QFile* file = &existing;
    EXPECT_EQ(openFile(at("a/b/c.txt"), nullptr), -1002);
    EXPECT_FALSE(QFileInfo::exists(at("a")));
    ASSERT_EQ(openFile(at("a/b/c.txt"), &file), 0);
    EXPECT_TRUE(file->isOpen() && file->isWritable());
    EXPECT_EQ(file->fileName(), at("a/b/c.txt"));
    delete file;
    file = &existing;
    EXPECT_EQ(openFile(at("a/b/c.txt/d.txt"), &file), -1001);
    EXPECT_EQ(openFile("", &file), -1001);
    EXPECT_EQ(openFile(at("d/") + QChar(0xd800), &file), -1001);
    EXPECT_FALSE(QFileInfo::exists(at("d")));
    EXPECT_EQ(file, &existing) << "untouched";
    EXPECT_EQ(openFile(at("a/b"), &file), -1002);
    EXPECT_EQ(file, nullptr);
}

} // namespace

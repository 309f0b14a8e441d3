// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyFileTest.h"

using namespace KyApplication;

namespace {

using KyFileListingTest = KyFileTest;

TEST_F(KyFileListingTest, EachKindOfEntryIsReportedWhenItIsAskedFor) {
    write({"tree/b.txt", "tree/a.dat", "tree/v1./c.txt", "tree/v1./.deep/d.txt", "tree/_x/e.txt", "outside/f.txt"});
    link("..", "tree/v1./loop");
    link(at("outside"), "tree/link");
    const QDir::Filters none = QDir::NoDotAndDotDot;
    const struct {
        bool recursive;
        QStringList wildcards;
        QDir::Filters filters;
        const char* expected;
    } cases[] = {
        {false, {}, QDir::Files, "a.dat b.txt"},
        {true, {}, QDir::Files, "a.dat b.txt _x/e.txt v1./c.txt"},
        {true, {"*.txt"}, QDir::Files, "b.txt _x/e.txt v1./c.txt"},
        {true, {"*.TXT"}, QDir::Files | QDir::CaseSensitive, ""},
        {true, {}, QDir::Files | QDir::Hidden, "a.dat b.txt _x/e.txt v1./c.txt v1./.deep/d.txt"},
        {true, {}, QDir::Dirs | none, "_x link v1. v1./loop"},
        {true, {"v*"}, QDir::Dirs | none, "v1."},
        {true, {"*.dat"}, QDir::Dirs | QDir::Files | none, "a.dat"},
        {true, {"*.dat"}, QDir::AllDirs | QDir::Files | none, "_x a.dat link v1. v1./loop"},
        {false, {}, QDir::NoFilter, ". .. _x a.dat b.txt link v1."},
        {true, {}, QDir::Files | QDir::NoSymLinks, "a.dat b.txt _x/e.txt v1./c.txt"},
    };
    for (const auto& [recursive, wildcards, filters, expected] : cases) {
        QStringList names;
        for (const QString& path : listEntries(at("tree"), recursive, wildcards, filters, QDir::Name))
            names.append(path.mid(at("tree/").size()));
        EXPECT_EQ(names.join(' ').toStdString(), expected) << static_cast<int>(filters);
    }
    const QList<QFileInfo> entries = listEntriesInfo(at("tree"), true);
    ASSERT_EQ(entries.size(), 4);
    EXPECT_EQ(entries[0].filePath(), at("tree/a.dat"));
    EXPECT_EQ(entries[0].size(), 7);
    for (const QString& path : {at("missing"), at("tree/b.txt"), at("tree/") + QChar(0)})
        EXPECT_TRUE(listEntries(path, true).isEmpty()) << path.toStdString();
    EXPECT_EQ(listEntries(":/file/tree", true).size(), 3);
}

} // namespace

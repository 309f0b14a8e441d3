// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyConversionFixture.h"

#include <array>
#include <thread>

using namespace KyApplication;

namespace {

constexpr int cUnknownCharSet = 99999;

std::string lossy(int charSet) {
    return "String conversion error : some characters may not be correctly encoded with caracter set #" +
           std::to_string(charSet) + ".";
}

struct Row {
    int charSet;
    QString text;
    std::string bytes;
};

} // namespace

class KyQtTextTest : public KyConversionFixture {};

TEST_F(KyQtTextTest, TextsCrossInTheirCharacterSet) {
    using namespace std::string_literals;
    const Row rows[] = {
        {4, "", ""},
        {4, QString(QChar(0)) + QString::fromUtf8("h\u00e9"), "\0h\xe9"s},
        {106, QString(QChar(0)) + QString::fromUtf8("h\u00e9\u20ac\U0001F600"), "\0h\u00e9\u20ac\U0001F600"s},
        {111, QString::fromUtf8("1 \u20ac"), "1 \xa4"},
        {1013, QString::fromUtf8("a\u20ac"), "\0a\x20\xac"s},
        {1018, QString::fromUtf8("a\U0001F600"), "\0\0\0a\0\x01\xf6\0"s},
        {1019, QString::fromUtf8("\U0001F600a"), "\0\xf6\x01\0a\0\0\0"s},
        {2252, QString::fromUtf8("\u20ac\u201c"), "\x80\x93"},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(toKyString(row.text, row.charSet), row.bytes) << row.charSet;
        EXPECT_EQ(toQString(row.bytes, row.charSet), row.text) << row.charSet;
    }
    EXPECT_FALSE(toQString(std::string()).isNull());
    EXPECT_EQ(takeReports(), Texts());
}

TEST_F(KyQtTextTest, TheDefaultSetIsUsedForZeroAndAnUnknownOneReportedEachTime) {
    EXPECT_EQ(toQString("\xc3\xa9"), QString::fromUtf8("\u00c3\u00a9"));
    setDefaultCharSet(106);
    EXPECT_EQ(toQString("\xc3\xa9", 0), QString::fromUtf8("\u00e9"));
    EXPECT_EQ(toKyString(QString::fromUtf8("\u00e9")), "\xc3\xa9");
    setDefaultCharSet(0);
    EXPECT_EQ(getDefaultCharSet(), 106);
    setDefaultCharSet(cUnknownCharSet);
    const Texts unknown{"String conversion error: unknown character set #99999."};
    for (int round = 0; round < 2; ++round) {
        EXPECT_EQ(toQString("abc"), QString());
        EXPECT_EQ(takeReports(), unknown);
        EXPECT_EQ(toKyString(QString("abc")), "");
        EXPECT_EQ(takeReports(), unknown);
    }
}

TEST_F(KyQtTextTest, CharactersThatTheSetLacksAreReplacedAndReportedOnce) {
    const QString mixed = QString::fromUtf8("\u00e9\u20ac\U0001F600");
    const QChar half(0xD83D);
    const Row rows[] = {
        {3, mixed, "???"},
        {4, mixed, "\xe9???"},
        {2252, mixed, "\xe9\x80?"},
        {106, QString("a") + half + "b", "a?b"},
        {106, QString("a") + half, "a?"},
        {106, QString("a") + QChar(0xDC00), "a?"},
        {111, QString("a") + half, "a?"},
        {2252, QString("a") + half, "a?"},
        {1018, half, std::string("\0\0\xff\xfd", 4)},
        {1001, QString("a") + half, std::string("a\0\0\0\xfd\xff\0\0", 8)},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(toKyString(row.text, row.charSet), row.bytes) << row.charSet;
        EXPECT_EQ(takeReports(), Texts{lossy(row.charSet)});
    }
}

TEST_F(KyQtTextTest, BytesThatAreNoTextBecomeReplacementCharactersUnreported) {
    for (const int charSet : {3, 4, 39, 106, 1013, 1015, 1017, 2026})
        for (const std::string bytes : {"\xff", "\xc3", "\xf0\x9f\x98", "a\xed\xa0\x80z", "\x1b\x24"})
            EXPECT_LE(toQString(bytes, charSet).size(), static_cast<int>(bytes.size())) << charSet;
    EXPECT_EQ(toQString("a\xff z", 106), QString("a") + QChar(0xFFFD) + " z");
    EXPECT_EQ(takeReports(), Texts());
}

TEST_F(KyQtTextTest, ListsAndByteArraysCrossAsTheyAre) {
    const QStringList texts{"a", "", QString::fromUtf8("\u00e9")};
    const std::list<std::string> bytes{"a", "", "\xc3\xa9"};
    EXPECT_EQ(toKyStringList(texts, 106), bytes);
    EXPECT_EQ(toQStringList(bytes, 106), texts);
    EXPECT_EQ(toKyStringVector(texts), (Texts{"a", "", "\xe9"}));
    const std::string zeros("\xff\0\x80z", 4);
    EXPECT_EQ(toKyString(toQByteArray(zeros)), zeros);
}

TEST_F(KyQtTextTest, ThreadsConvertSideBySideInTheirOwnSets) {
    std::array<int, 4> wrong{};
    std::vector<std::thread> threads;
    for (int& count : wrong)
        threads.emplace_back([&count] {
            for (int round = 0; round < 2000; ++round)
                count += toKyString(QString(QChar(0x20AC)), round % 2 ? 111 : 2252) != (round % 2 ? "\xa4" : "\x80");
        });
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(wrong, (std::array<int, 4>{}));
}

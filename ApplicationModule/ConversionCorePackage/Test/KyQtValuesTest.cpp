// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyConversionFixture.h"

#include <QTimeZone>

#include <limits>

using namespace KyApplication;

namespace {

constexpr double cNaN = std::numeric_limits<double>::quiet_NaN();
constexpr float cNaNf = std::numeric_limits<float>::quiet_NaN();

} // namespace

TEST(KyQtValuesTest, EightBitAndBrightColoursSurviveAndAlphaIsLimited) {
    for (int level = 0; level < 256; ++level) {
        const QColor color(level, 255 - level, 7, level);
        EXPECT_EQ(toQColor(toKyColor(color)), color);
    }
    EXPECT_EQ(toKyColor(toQColor(KyColor(4.0f, 0.5f, -1.0f, 7.0f))), KyColor(4.0f, 0.5f, -1.0f, 1.0f));
    EXPECT_EQ(toQColor(KyColor(1, 1, 1, cNaNf)).alphaF(), 0.0);
    EXPECT_EQ(toQColor(KyColor(cNaNf, 1, cNaNf, 1)), QColor(0, 255, 0));
}

TEST(KyQtValuesTest, DatesCrossByTheProlepticGregorianCalendar) {
    for (const KyDate& date : {KyDate(1582, 10, 4), KyDate(1, 1, 1), KyDate(-1, 12, 31), KyDate(200000, 6, 1)}) {
        EXPECT_EQ(toQDate(date).year(), date.getYear()) << date;
        EXPECT_EQ(toQDate(date).day(), date.getDay()) << date;
        EXPECT_EQ(toKyDate(toQDate(date)), date);
    }
    EXPECT_TRUE(toQDate(KyDate()).isNull());
    EXPECT_EQ(toKyDate(QDate(2023, 2, 29)), KyDate());
}

TEST(KyQtValuesTest, TimesRoundToTheNearestMillisecondOfTheDay) {
    const std::pair<double, QTime> rows[] = {
        {-0.0, QTime(0, 0)}, {0.0004, QTime(0, 0)}, {59.9996, QTime(0, 1)}, {86399.9999, QTime(23, 59, 59, 999)},
        {86400.0, QTime()},  {-0.001, QTime()},     {cNaN, QTime()},
    };
    for (const auto& [seconds, time] : rows)
        EXPECT_EQ(toQTime(KyTime(seconds)), time) << seconds;
    EXPECT_EQ(toKyTime(QTime(12, 30, 15, 250)).getTime(), 45015.25);
    EXPECT_EQ(toKyTime(QTime()), KyTime());
    int nbLost = 0;
    for (int milliseconds = 0; milliseconds < 86400000; milliseconds += 7) {
        const QTime time = QTime::fromMSecsSinceStartOfDay(milliseconds);
        nbLost += toQTime(toKyTime(time)) != time;
    }
    EXPECT_EQ(nbLost, 0);
}

TEST(KyQtValuesTest, DateAndTimeCrossEachByItself) {
    const KyDateTime skipped(KyDate(2024, 3, 31), KyTime(2, 30, 0.0));
    for (const KyDateTime& value : {skipped, KyDateTime(KyDate(), KyTime(12, 30, 0.0)), KyDateTime()})
        for (const Qt::TimeSpec spec : {Qt::LocalTime, Qt::UTC}) {
            EXPECT_EQ(toKyDateTime(toQDateTime(value, spec)), value) << spec;
            EXPECT_EQ(toQDateTime(value, spec).timeSpec(), spec);
        }
    EXPECT_FALSE(toQDateTime(skipped, Qt::LocalTime).isValid()) << "the gap of this zone is not where it was";
    const QDateTime elsewhere(QDate(2024, 7, 1), QTime(8, 0), QTimeZone("Asia/Tokyo"));
    EXPECT_EQ(toKyDateTime(elsewhere), KyDateTime(KyDate(2024, 7, 1), KyTime(8, 0, 0.0)));
}

TEST(KyQtValuesTest, UserInformationCrossesVerbatim) {
    for (const char* user : {"anna", "anna:pa:ss", "anna:p%40ss", "anna:p/s?s#s", "a@b", ":secret"}) {
        KyURL url("http://host.org:8080/dir/a.png?q=1#f");
        url.setUser(user);
        const QUrl crossed = toQUrl(url);
        const QStringList parts = toQString(user).split(':');
        EXPECT_EQ(crossed.userName(QUrl::FullyDecoded), parts.first()) << user;
        EXPECT_EQ(crossed.password(QUrl::FullyDecoded), parts.mid(1).join(':')) << user;
        EXPECT_EQ(toKyURL(crossed).toString(), url.toString());
    }
}

TEST(KyQtValuesTest, UrlsCrossWhateverTheDefaultCharacterSet) {
    const std::pair<std::string, QString> rows[] = {
        {"", ""},
        {"http://host/caf\xc3\xa9", "http://host/caf%C3%A9"},
        {"https://[::1]:8443/?a=b&c=%26", "https://[::1]:8443/?a=b&c=%26"},
        {"C:\\dir\\a.png", "file:///C:/dir/a.png"},
        {"textures/wood.png#x", "textures/wood.png#x"},
    };
    setDefaultCharSet(1015);
    for (const auto& [text, expected] : rows) {
        const KyURL url(text);
        EXPECT_EQ(toQUrl(url).toString(QUrl::FullyEncoded), expected) << text;
        EXPECT_EQ(toKyURL(toQUrl(url)), url) << text;
    }
    setDefaultCharSet(4);
    EXPECT_TRUE(toKyURL(QUrl("http://a b:99999/")).isEmpty());
}

// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KySettingsTest.h"

namespace {

class KySettingsFileTest : public KySettingsTest {
protected:
    KySettingsFileTest() { mSettings.setFilePath(at("host.xml")); }

    static QByteArray widen(const QString& text) {
        QByteArray wide("\xff\xfe", 2);
        for (const QChar c : text)
            wide.append(char(c.unicode() & 0xFF)).append(char(c.unicode() >> 8));
        return wide;
    }

    KySettings mSettings;
};

TEST_F(KySettingsFileTest, DepthIsThatOfTheDecodedText) {
    const QString nest = QString("<a>").repeated(200000) + QString("</a>").repeated(200000);
    const QString flat = QString("<a b='\u4E3C\u4E3E'/>").repeated(1500);
    const QString declared = "<?xml version='1.0' encoding='UTF-16'?><r b=\"\u2722\">%1</r>";
    QString narrow = "<?xml version='1.0' encoding='UTF-7'?><r>" + nest + "</r>";
    narrow.replace("<a", "+ADw-a").replace("</a", "+ADw-/a");
    const std::pair<QByteArray, bool> table[] = {
        {widen(declared.arg(nest)), false}, {widen(declared.arg(flat)), true}, {narrow.toLatin1(), false}};
    for (const auto& [bytes, isRead] : table) {
        write("host.xml", bytes);
        EXPECT_EQ(mSettings.open(), isRead) << bytes.left(60).toStdString();
    }
}

TEST_F(KySettingsFileTest, AnUnreadableFileIsKeptAfterADetour) {
    write("host.xml", "<Settings>");
    EXPECT_FALSE(mSettings.open());
    mSettings.setFilePath(at("other.xml"));
    mSettings.create();
    ASSERT_TRUE(mSettings.save());
    mSettings.setFilePath(at("host.xml"));
    ASSERT_TRUE(mSettings.save());
    EXPECT_EQ(read("host.xml.bak"), "<Settings>");
    EXPECT_EQ(list(), "host.xml host.xml.bak other.xml");
}

TEST_F(KySettingsFileTest, PathsAreToldInPartsAndTheEmptyOneIsNotWritten) {
    EXPECT_EQ(mSettings.getFileName(), "host.xml");
    EXPECT_EQ(mSettings.getFileDir(false), QDir::toNativeSeparators(mDirectory.path()));
    EXPECT_EQ(mSettings.getFileDir(true), mSettings.getFileDir(false) + QDir::separator());
    KySettings settings;
    settings.create();
    EXPECT_FALSE(settings.save());
    EXPECT_FALSE(settings.open());
    EXPECT_EQ(settings.getFileDir(true) + settings.getFileName(), "");
}

TEST_F(KySettingsFileTest, WhatIsSavedIsOpenedAgain) {
    mSettings.setAttribute("View/Window", "width", 800);
    ASSERT_TRUE(mSettings.save());
    EXPECT_EQ(read("host.xml"), "<Settings>\n    <View>\n        <Window width=\"800\"/>\n    </View>\n</Settings>\n");
    KySettings again;
    again.setFilePath(at("host.xml"));
    ASSERT_TRUE(again.open() && again.isOpened());
    EXPECT_EQ(again.getAttribute("View/Window", "width", 0), 800);
    again.close();
    EXPECT_TRUE(again.getFilePath().isNull() && !again.isOpened() && again.documentElement().isNull());
    EXPECT_EQ(list(), "host.xml");
}

TEST_F(KySettingsFileTest, AFileCutAnywhereLeavesNothingAndIsKept) {
    mSettings.setAttribute("A/B", "text", "value");
    mSettings.setAttribute("C", "colour", KyColor::eRed);
    ASSERT_TRUE(mSettings.save());
    const QByteArray whole = read("host.xml").trimmed();
    for (int size = 0; size < whole.size(); ++size) {
        write("host.xml", whole.left(size));
        ASSERT_FALSE(mSettings.open()) << size;
        ASSERT_TRUE(mSettings.documentElement().isNull() && !mSettings.isOpened());
        ASSERT_EQ(mSettings.save(), size == 0) << "nothing in the place of something";
        write("host.xml", whole.left(size));
        ASSERT_FALSE(mSettings.open());
        mSettings.create();
        ASSERT_TRUE(mSettings.save());
        ASSERT_EQ(read("host.xml.bak"), whole.left(size));
        ASSERT_EQ(read("host.xml"), "<Settings/>\n");
    }
    ASSERT_TRUE(mSettings.save());
    EXPECT_EQ(read("host.xml.bak"), whole.left(whole.size() - 1)) << "only the first save keeps it";
    EXPECT_EQ(msReports, "");
}

TEST_F(KySettingsFileTest, OtherEncodingsAreReadAndBecomeUtf8) {
    const QString text = QString::fromUtf8("<?xml version='1.0' encoding=\"%1\"?>\n<Settings a=\"\u00FC\"/>");
    write("latin1.xml", text.arg("ISO-8859-1").toLatin1());
    write("utf16.xml", widen(text.arg("UTF-16")));
    for (const QString name : {"latin1.xml", "utf16.xml"}) {
        mSettings.setFilePath(at(name));
        ASSERT_TRUE(mSettings.open()) << name.toStdString();
        EXPECT_EQ(mSettings.getAttribute("", "a"), "\u00FC");
        ASSERT_TRUE(mSettings.save());
        EXPECT_EQ(read(name), text.arg("UTF-8").toUtf8() + '\n');
    }
}

TEST_F(KySettingsFileTest, WhatCannotBeReadAgainOrHasNoPlaceIsNotWritten) {
    mSettings.create();
    ASSERT_TRUE(mSettings.save());
    mSettings.documentElement().setAttribute("no name", "x");
    EXPECT_FALSE(mSettings.save());
    EXPECT_EQ(read("host.xml"), "<Settings/>\n");
    KySettings other;
    other.create();
    for (const QString& path : {mDirectory.path(), at("none/host.xml")}) {
        other.setFilePath(path);
        EXPECT_FALSE(other.save());
    }
}

} // namespace

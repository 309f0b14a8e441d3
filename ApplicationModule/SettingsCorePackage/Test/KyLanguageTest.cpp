// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyLanguage.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTranslator>
#include <QXmlStreamReader>

#include <gtest/gtest.h>

#include <vector>

namespace {

struct Message {
    QString source;
    QStringList translations;
    bool isUnfinished = false;
};

const QDir cCheckout(QStringLiteral(KY_TEST_DATA_DIR "/../../.."));

QByteArray readFile(const QString& path) {
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
    return file.readAll();
}

QStringList listFiles() {
    return QDir(cCheckout.filePath("translations")).entryList({"kyapplication_*.ts"});
}

std::vector<Message> readMessages(const QString& file) {
    QXmlStreamReader reader(readFile(cCheckout.filePath("translations/" + file)));
    std::vector<Message> messages;
    bool hasForms = false;
    while (!reader.atEnd()) {
        reader.readNext();
        if (!reader.isStartElement())
            continue;
        if (reader.name() == "message") {
            messages.emplace_back();
            hasForms = reader.attributes().hasAttribute("numerus");
        } else if (reader.name() == "source") {
            messages.back().source = reader.readElementText();
        } else if (reader.name() == "translation" || reader.name() == "numerusform") {
            messages.back().isUnfinished |= reader.attributes().hasAttribute("type");
            if (hasForms != (reader.name() == "translation"))
                messages.back().translations.append(reader.readElementText());
        }
    }
    EXPECT_FALSE(reader.hasError()) << reader.errorString().toStdString();
    return messages;
}

/// "%1", "%n" and, as "&", the letter that Alt reaches.
QStringList findMarks(const QString& text) {
    static const QRegularExpression cMark("%[1-9n]|&(?=\\w)");
    QStringList marks;
    for (auto found = cMark.globalMatch(text); found.hasNext();)
        marks.append(found.next().captured());
    marks.sort();
    return marks;
}

class KyLanguageTest : public testing::Test {
protected:
    ~KyLanguageTest() override { KyLanguage::set(KyLanguage::cEnglish); }
};

} // namespace

TEST_F(KyLanguageTest, EveryTextIsTranslatedWithItsPlaceholdersAndItsLetterForAlt) {
    EXPECT_EQ(listFiles(), QStringList({"kyapplication_de.ts", "kyapplication_en.ts", "kyapplication_fr.ts"}));
    for (const QString& file : listFiles()) {
        const std::vector<Message> messages = readMessages(file);
        EXPECT_GE(messages.size(), file.contains("_en") ? 1u : 100u) << file.toStdString();
        for (const Message& message : messages) {
            EXPECT_FALSE(message.isUnfinished || message.translations.isEmpty() || message.translations.contains(""))
                << message.source.toStdString();
            for (const QString& translation : message.translations)
                EXPECT_EQ(findMarks(message.source), findMarks(translation)) << translation.toStdString();
        }
    }
}

TEST_F(KyLanguageTest, TheTranslationsHaveTheTextsThatTheSourcesHave) {
    const QTemporaryDir folder;
    for (const QString& file : listFiles())
        ASSERT_TRUE(QFile::copy(cCheckout.filePath("translations/" + file), folder.filePath(file)));
    QProcess translate;
    translate.start(cCheckout.filePath("tools/translate"), {folder.path()});
    ASSERT_TRUE(translate.waitForFinished());
    if (translate.exitCode() == 77)
        GTEST_SKIP() << "there is no lupdate";
    ASSERT_EQ(translate.exitCode(), 0) << translate.readAllStandardError().toStdString();
    for (const QString& file : listFiles())
        EXPECT_EQ(readFile(folder.filePath(file)), readFile(cCheckout.filePath("translations/" + file)))
            << file.toStdString() << ": run tools/translate and translate what is new";
}

TEST_F(KyLanguageTest, NamesOfLocalesFindTheirLanguage) {
    EXPECT_EQ(KyLanguage::getAvailable(), QStringList({"de", "en", "fr"}));
    const std::pair<const char*, const char*> cases[] = {{"de", "de"},
                                                         {"DE-at", "de"},
                                                         {"de_DE.UTF-8", "de"},
                                                         {"fr_FR@euro", "fr"},
                                                         {"en-US", "en"},
                                                         {"C", ""},
                                                         {"german", ""},
                                                         {"../kyapplication_de", ""},
                                                         {"*", ""},
                                                         {"", ""},
                                                         {"d", ""}};
    for (const auto& [name, language] : cases) {
        EXPECT_EQ(KyLanguage::find(name), language) << name;
        EXPECT_EQ(KyLanguage::set(name), *language != '\0') << name;
    }
    EXPECT_EQ(KyLanguage::getName("de"), "Deutsch");
    EXPECT_EQ(KyLanguage::getName("fr"), "Français");
    EXPECT_EQ(KyLanguage::getName("en"), "English");
}

TEST_F(KyLanguageTest, OfSeveralTheFirstThatIsThereIsTaken) {
    EXPECT_EQ(KyLanguage::choose({"fr"}), "fr");
    EXPECT_EQ(KyLanguage::choose({"it", "fr-CA", "de"}), "fr");
    EXPECT_EQ(KyLanguage::choose({"en-GB", "de"}), "en") << "English is there without a translation";
    EXPECT_EQ(KyLanguage::choose({"C"}), "en");
    EXPECT_EQ(KyLanguage::choose({}), "en");
    EXPECT_TRUE(KyLanguage::getAvailable().contains(KyLanguage::getOfSystem()));
}

TEST_F(KyLanguageTest, AChangeIsToldToWidgetsAndTheTextsAreThere) {
    class Watcher : public QLabel {
    public:
        int nbChanges = 0;

    protected:
        void changeEvent(QEvent* event) override { nbChanges += event->type() == QEvent::LanguageChange ? 1 : 0; }
    } watcher;
    const auto translate = [](int count) {
        return QCoreApplication::translate("KyQAttributeModel", "%n value(s)", nullptr, count).toStdString();
    };
    const std::tuple<const char*, const char*, const char*> cases[] = {
        {"de", "1 Wert", "2 Werte"}, {"fr", "1 valeur", "2 valeurs"}, {"en", "1 value", "2 values"}};
    for (const auto& [language, one, two] : cases) {
        watcher.nbChanges = 0;
        ASSERT_TRUE(KyLanguage::set(language));
        QCoreApplication::processEvents();
        EXPECT_GT(watcher.nbChanges, 0) << language;
        EXPECT_EQ(KyLanguage::get(), language);
        EXPECT_EQ(translate(1), one);
        EXPECT_EQ(translate(2), two);
    }
    EXPECT_LE(QCoreApplication::instance()->findChildren<QTranslator*>().size(), 2) << "those before are gone";
    EXPECT_FALSE(KyLanguage::set("tlh"));
    EXPECT_EQ(KyLanguage::get(), "en");
}

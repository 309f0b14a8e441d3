// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyLanguage.h"

#include <QCoreApplication>
#include <QDir>
#include <QDomDocument>
#include <QFile>
#include <QLabel>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTranslator>

#include <gtest/gtest.h>

namespace {

const QDir cCheckout(QStringLiteral(KY_TEST_DATA_DIR "/../../.."));

QByteArray readFile(const QString& path) {
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
    return file.readAll();
}

QStringList listFiles() {
    return QDir(cCheckout.filePath("translations")).entryList({"kyapplication_*.ts"});
}

/// The translations of a message: one, or one a number.
QStringList listTranslations(const QDomElement& message) {
    const QDomElement translation = message.firstChildElement("translation");
    QStringList texts;
    for (QDomElement form = translation.firstChildElement(); !form.isNull(); form = form.nextSiblingElement())
        texts.append(form.text());
    return texts.isEmpty() ? QStringList(translation.text()) : texts;
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
        QDomDocument document;
        ASSERT_TRUE(document.setContent(readFile(cCheckout.filePath("translations/" + file)))) << file.toStdString();
        const QDomNodeList messages = document.elementsByTagName("message");
        EXPECT_GE(messages.size(), file.contains("_en") ? 1 : 100) << file.toStdString();
        for (int i = 0; i < messages.size(); ++i) {
            const QDomElement message = messages.at(i).toElement();
            const QString source = message.firstChildElement("source").text();
            EXPECT_FALSE(message.firstChildElement("translation").hasAttribute("type")) << source.toStdString();
            for (const QString& translation : listTranslations(message))
                EXPECT_TRUE(!translation.isEmpty() && findMarks(source) == findMarks(translation))
                    << source.toStdString();
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
    const std::pair<const char*, QStringList> cases[] = {{"de", {"DE-at", "de.UTF-8"}},
                                                         {"fr", {"fr@euro"}},
                                                         {"en", {"en-US"}},
                                                         {"", {"C", "german", "../kyapplication_de", "*", "", "d"}}};
    for (const auto& [language, names] : cases)
        for (const QString& name : names) {
            EXPECT_EQ(KyLanguage::find(name), language) << name.toStdString();
            EXPECT_EQ(KyLanguage::set(name), *language != '\0') << name.toStdString();
        }
    EXPECT_EQ(KyLanguage::getName("de"), "Deutsch");
    EXPECT_EQ(KyLanguage::getName("fr"), "Français");
    EXPECT_EQ(KyLanguage::getName("en"), "English");
}

TEST_F(KyLanguageTest, OfSeveralTheFirstThatIsThereIsTaken) {
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

// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyHostDialogs.h"

#include "KyDynamicObject.h"
#include "KyQAttributeModel.h"
#include "KySettings.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAction>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QDoubleSpinBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

#include <algorithm>
#include <tuple>

namespace {

class KyHostLanguageTest : public KyHostDialogs {
protected:
    /// All that a person may read or hear in a window.
    static QStringList listTexts(const QWidget& window) {
        QStringList texts{window.windowTitle()};
        QList<QWidget*> widgets = window.findChildren<QWidget*>();
        widgets.append(const_cast<QWidget*>(&window));
        for (const QWidget* widget : widgets)
            texts << widget->accessibleName() << widget->accessibleDescription() << widget->toolTip()
                  << widget->property("text").toString() << widget->property("placeholderText").toString();
        for (const auto* action : window.findChildren<QAction*>())
            texts << action->text() << action->toolTip();
        for (const auto* box : window.findChildren<QComboBox*>())
            texts << box->itemText(0);
        for (const auto* view : window.findChildren<QAbstractItemView*>())
            addTexts(*view->model(), {}, texts);
        return texts;
    }
    static void addTexts(const QAbstractItemModel& model, const QModelIndex& parent, QStringList& texts) {
        for (int column = 0; column < model.columnCount(parent); ++column)
            texts << model.headerData(column, Qt::Horizontal).toString();
        for (int row = 0; row < model.rowCount(parent); ++row)
            for (int column = 0; column < model.columnCount(parent); ++column) {
                const QModelIndex index = model.index(row, column, parent);
                texts << index.data().toString();
                addTexts(model, index, texts);
            }
    }
    QStringList listTexts() {
        QStringList texts;
        forEachDialog([&](const Dialog& dialog) { texts += listTexts(*dialog.window); });
        return texts;
    }
};

} // namespace

TEST_F(KyHostLanguageTest, AllTextsOfOpenWindowsChangeAtOnceAndBack) {
    setLanguage("en");
    listTexts(); // brings all pages into the dialog
    const QStringList english = listTexts();
    for (const auto& [language, translations] :
         {std::pair("de", QStringList{"Einstellungen", "Sprache", "Netzwerk", "&Zoomen", "Debugger - kyhost", "Läuft",
                                      "Prozedurschritt", "Wert &bearbeiten", "Suchen", "Über&nehmen", "0 Werte",
                                      "Hält in der nächsten Zeile (F11)", "Wie das System (English)"}),
          std::pair("fr", QStringList{"Paramètres", "&Zoomer", "En cours", "&Modifier la valeur", "0 valeur"})}) {
        setLanguage(language);
        const QStringList texts = listTexts();
        for (const QString& translation : translations)
            EXPECT_TRUE(texts.contains(translation)) << translation.toStdString();
        EXPECT_TRUE(mHelp.text().contains(*language == 'd' ? "das ganze Modell zeigen" : "montrer tout le modèle"));
        for (const char* text : {"Settings", "&Apply", "Running", "Search", "&Resume", "Step over", "none"})
            EXPECT_FALSE(texts.contains(text)) << text << " in " << language;
    }
    setLanguage("en");
    EXPECT_EQ(listTexts(), english);
}

TEST_F(KyHostLanguageTest, FlagsNumbersAndOurOwnCategoriesFollowAndTheNamesOfOthersDoNot) {
    KyDynamicObject object;
    object.addAttribute("Value", KyField(true), "category=Locals;");
    object.addAttribute("true", KyField(false), "category=Attribute;");
    KyQAttributeModel model;
    model.setOptions(KyQAttributeModel::eCategories);
    model.setObject(&object);
    mSettingsDialog.showPage("navigation");
    settle();
    auto* const speed = mNavigationPage.findChild<QDoubleSpinBox*>("zoomSpeed");
    speed->setValue(2.5);
    const std::tuple<const char*, const char*, const char*> rows[] = {
        {"de", "Lokale Variablen||Value|wahr|Attribute||true|falsch", "2,50"},
        {"fr", "Variables locales||Value|vrai|Attribute||true|faux", "2,50"},
        {"en", "Locals||Value|true|Attribute||true|false", "2.50"}};
    for (const auto& [language, expected, number] : rows) {
        setLanguage(language);
        QStringList texts;
        for (int category = 0; category < model.rowCount(); ++category)
            for (const QModelIndex& row : {model.index(category, 0), model.index(0, 0, model.index(category, 0))})
                texts << row.data().toString() << row.siblingAtColumn(1).data().toString();
        EXPECT_EQ(texts.join('|'), expected);
        EXPECT_EQ(speed->text(), number);
        EXPECT_EQ(speed->value(), 2.5);
    }
}

TEST_F(KyHostLanguageTest, TheResultOfATrialAndTheProblemsOfPagesChangeToo) {
    mSettingsDialog.showPage("proxy");
    mProxyPage.findChild<QLineEdit*>("testURL")->setText("ftp://example.org");
    mProxyPage.findChild<QPushButton*>("test")->click();
    EXPECT_FALSE(mSettingsDialog.apply());
    const auto getTexts = [this] {
        return mProxyPage.findChild<QLabel*>("result")->text() + "|" +
               mSettingsDialog.findChild<QLabel*>("settingsMessage")->text();
    };
    const auto makeTwice = [](const QString& text) { return text + "|" + text; };
    EXPECT_EQ(getTexts(), makeTwice("The test address does not begin with http:// or https://."));
    setLanguage("de");
    EXPECT_EQ(getTexts(), makeTwice("Die Testadresse beginnt nicht mit http:// oder https://."));
    ASSERT_TRUE(QFile(mFolder.filePath("settings.xml")).open(QIODevice::WriteOnly));
    setLanguage("fr");
    EXPECT_EQ(getTexts(), makeTwice("L'adresse de test ne commence pas par http:// ou https://."));
}

TEST_F(KyHostLanguageTest, AChoiceHoldsWhenItIsTakenOverAndInTheNextRun) {
    auto* const languages = mLanguagePage.findChild<QComboBox*>("language");
    const auto choose = [&](const QString& language) { languages->setCurrentIndex(languages->findText(language)); };
    EXPECT_EQ(languages->count(), 4);
    choose("Deutsch");
    settle();
    EXPECT_EQ(mSettingsDialog.windowTitle(), "Settings") << "not taken over yet";
    EXPECT_TRUE(mSettingsDialog.apply());
    settle();
    EXPECT_EQ(mSettingsDialog.windowTitle(), "Einstellungen");
    KyLanguage::set("en");
    KyHostSettings next(mFolder.filePath("settings.xml"));
    EXPECT_EQ(next.getLanguage(), "de");
    next.applyLanguage();
    EXPECT_EQ(KyLanguage::get(), "de");
    next.setLanguage("a language of a later version");
    next.applyLanguage();
    EXPECT_EQ(KyLanguage::get(), KyLanguage::getOfSystem());
    choose("Français");
    mSettingsDialog.reject();
    mSettingsDialog.show();
    EXPECT_EQ(languages->currentText(), "Deutsch");
}

// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KySettingsTest.h"

#include "KyQSettingsDialog.h"
#include "KyQSettingsEditor.h"

#include <QApplication>
#include <QDialogButtonBox>
#include <QLabel>
#include <QPushButton>
#include <QStackedWidget>
#include <QTest>
#include <QTranslator>
#include <QTreeWidget>
#include <QTreeWidgetItemIterator>

namespace {

class Page : public KyQSettingsEditor {
public:
    Page(const QString& name, const QString& group, const QString& item)
        : KyQSettingsEditor(name, group, item, nullptr) {}

    bool accept() override {
        ++mNbAccepted;
        mVictim.reset();
        return false;
    }

    void reset() override { ++mNbReset; }
    using KyQSettingsEditor::setProblem;

    int mNbAccepted = 0;
    int mNbReset = 0;
    std::unique_ptr<Page> mVictim;

protected:
    void updateTranslations() override { setItemName(tr("item").toStdString()); }
};

/// Puts every text in capital letters.
class Capitals : public QTranslator {
public:
    bool isEmpty() const override { return false; }
    QString translate(const char*, const char* text, const char*, int) const override {
        return QString(text).toUpper();
    }
};

class KyQSettingsDialogTest : public KySettingsTest {
protected:
    static QTreeWidget* getTree(const QDialog& dialog) { return dialog.findChild<QTreeWidget*>("settingsTree"); }
    /// "|group:item:item|..."
    static std::string list(const QDialog& dialog) {
        QString text;
        for (QTreeWidgetItemIterator item(getTree(dialog)); *item; ++item)
            text += ((*item)->parent() ? ':' : '|') + (*item)->text(0);
        return text.toStdString();
    }

    Page mOne{"One", "Display", "Window"};
    Page mTwo{"Two", "Input", "Mouse"};
    Page mThree{"Three", "Display", ""};
    Page mFour{"Four", "", "Plain"};
};

TEST_F(KyQSettingsDialogTest, PagesAreListedByGroupAndItem) {
    KyQSettingsDialog dialog;
    EXPECT_EQ(list(dialog), "|Display:Window:Three|Input:Mouse|Plain");
    EXPECT_EQ(dialog.editCurrentPage(), &mOne);
    EXPECT_TRUE(dialog.showPage("Three"));
    EXPECT_EQ(dialog.editCurrentPage(), &mThree);
    EXPECT_EQ(dialog.findChild<QStackedWidget*>("settingsPages")->currentWidget(), &mThree);
    KySettingsEditorManager::finalizeClass();
    dialog.show();
    EXPECT_TRUE(list(dialog).empty() && !dialog.editCurrentPage() && !dialog.showPage("One"));
}

TEST_F(KyQSettingsDialogTest, TheKeyboardIsEnough) {
    KyQSettingsDialog dialog;
    dialog.show();
    EXPECT_EQ(dialog.focusWidget(), getTree(dialog));
    QTest::keyClick(getTree(dialog), Qt::Key_Down);
    EXPECT_EQ(dialog.editCurrentPage(), &mThree);
    QTest::keyClick(getTree(dialog), Qt::Key_Down);
    EXPECT_EQ(dialog.editCurrentPage(), &mTwo) << "a group stands for its first page";
    EXPECT_TRUE(mTwo.isVisible() && !mThree.isVisible());
    QTest::keyClick(&dialog, Qt::Key_Escape);
    EXPECT_TRUE(mOne.mNbAccepted == 0 && !dialog.isVisible());
    dialog.show();
    EXPECT_EQ(dialog.editCurrentPage(), &mTwo);
    QTest::keyClick(&dialog, Qt::Key_Return);
    EXPECT_TRUE(mOne.mNbAccepted == 1 && dialog.result() == QDialog::Accepted);
}

TEST_F(KyQSettingsDialogTest, OkAndApplyAcceptEachPageWhateverItAnswers) {
    KyQSettingsDialog dialog;
    for (const auto button : {QDialogButtonBox::Apply, QDialogButtonBox::Ok, QDialogButtonBox::Cancel}) {
        dialog.show();
        dialog.findChild<QDialogButtonBox*>("settingsButtons")->button(button)->click();
        EXPECT_EQ(dialog.isVisible(), button == QDialogButtonBox::Apply);
    }
    for (const Page* page : {&mOne, &mTwo, &mThree, &mFour})
        EXPECT_EQ(page->mNbAccepted, 2);
}

TEST_F(KyQSettingsDialogTest, EachOpeningResetsEachPageOnce) {
    KyQSettingsDialog dialog;
    EXPECT_EQ(mOne.mNbReset, 0);
    dialog.show();
    for (const char* name : {"Two", "One", "Two"})
        dialog.showPage(name);
    dialog.showMinimized();
    QTest::qWait(50);
    dialog.showNormal();
    QTest::qWait(50);
    dialog.apply();
    EXPECT_EQ(mOne.mNbReset + mTwo.mNbReset, 2);
    dialog.reject();
    dialog.show();
    for (const Page* page : {&mOne, &mTwo, &mThree, &mFour})
        EXPECT_EQ(page->mNbReset, 2);
}

TEST_F(KyQSettingsDialogTest, AProblemIsShownAndKeepsItOpen) {
    KyQSettingsDialog dialog;
    const auto* const message = dialog.findChild<QLabel*>("settingsMessage");
    for (const QString problem : {"<full>", ""}) {
        dialog.show();
        EXPECT_FALSE(message->isVisible());
        mTwo.setProblem(problem);
        mFour.setProblem(problem);
        dialog.accept();
        EXPECT_EQ(dialog.isVisible(), !problem.isEmpty());
        EXPECT_EQ(message->isVisible(), !problem.isEmpty());
        EXPECT_EQ(message->text(), problem);
        EXPECT_EQ(dialog.editCurrentPage(), problem.isEmpty() ? &mFour : &mTwo) << "the first one";
        EXPECT_LE(message->height(), 3 * message->fontMetrics().height());
        dialog.showPage("Four");
        dialog.apply();
        EXPECT_EQ(dialog.editCurrentPage(), &mFour) << "has one itself";
        dialog.reject();
    }
}

TEST_F(KyQSettingsDialogTest, PagesMayComeAndGoWhileItIsShown) {
    KyQSettingsDialog dialog;
    mOne.mVictim = std::make_unique<Page>("Five", "", "New");
    dialog.show();
    EXPECT_TRUE(list(dialog).ends_with("|New"));
    EXPECT_TRUE(dialog.showPage("Five"));
    dialog.apply();
    EXPECT_EQ(dialog.editCurrentPage(), nullptr);
    QTest::keyClick(getTree(dialog), Qt::Key_Up);
    QCoreApplication::processEvents();
    EXPECT_EQ(list(dialog).find("New"), std::string::npos);
    EXPECT_TRUE(dialog.editCurrentPage());
}

TEST_F(KyQSettingsDialogTest, OfTwoDialogsEitherMayEndFirst) {
    QWidget parent;
    const QPointer<Page> page = new Page("Five", "", "");
    page->setParent(&parent);
    for (const bool isFirstFirst : {true, false}) {
        auto first = std::make_unique<KyQSettingsDialog>();
        auto second = std::make_unique<KyQSettingsDialog>();
        for (KyQSettingsDialog* dialog : {first.get(), second.get(), first.get(), second.get()})
            EXPECT_TRUE(dialog->showPage("Five") && dialog->isAncestorOf(page) && dialog->showPage("One"));
        (isFirstFirst ? first : second).reset();
        ASSERT_TRUE(page);
        (isFirstFirst ? second : first).reset();
        ASSERT_TRUE(page);
        EXPECT_TRUE(page->parentWidget() == &parent && !mOne.parentWidget());
    }
}

TEST_F(KyQSettingsDialogTest, AChangeOfTheLanguageReachesAllTexts) {
    KyQSettingsDialog dialog;
    dialog.showPage("Three");
    Capitals capitals;
    QCoreApplication::installTranslator(&capitals);
    EXPECT_TRUE(QTest::qWaitFor([&] { return list(dialog) == "|Display:ITEM:ITEM|Input:ITEM|ITEM"; }));
    EXPECT_EQ(dialog.windowTitle(), "SETTINGS");
    EXPECT_EQ(dialog.editCurrentPage(), &mThree);
}

} // namespace

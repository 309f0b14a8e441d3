// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyHostDialogs.h"

#include <QAbstractButton>
#include <QAccessible>
#include <QAction>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QDir>
#include <QDoubleSpinBox>
#include <QFile>
#include <QFocusEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScreen>
#include <QToolBar>
#include <QTreeView>
#include <QWindow>

#include <algorithm>
#include <map>
#include <set>

namespace {

/// A person without a pointer, or without a screen.
class KyHostAccessTest : public KyHostDialogs {
protected:
    /// What the keyboard can reach; inner parts of other widgets stand behind those.
    static QList<QWidget*> listReachable(const QWidget& window) {
        QList<QWidget*> widgets = window.findChildren<QWidget*>();
        const auto isNot = [&window](const QWidget* widget) {
            return !widget->isVisibleTo(&window) || widget->window() != &window || widget->focusProxy() ||
                   widget->focusPolicy() == Qt::NoFocus;
        };
        widgets.erase(std::remove_if(widgets.begin(), widgets.end(), isNot), widgets.end());
        return widgets;
    }
    static QList<QWidget*> followTab(QWidget& window) {
        QList<QWidget*> order;
        for (QWidget* next = window.nextInFocusChain(); next != &window; next = next->nextInFocusChain())
            if (next->isVisibleTo(&window) && next->isEnabledTo(&window) && (next->focusPolicy() & Qt::TabFocus) &&
                !next->focusProxy())
                order.append(next);
        return order;
    }
    static std::string describe(QWidget* widget, QAccessible::Text text) {
        const QAccessibleInterface* const access = QAccessible::queryAccessibleInterface(widget);
        return access ? access->text(text).toStdString() : std::string();
    }
    /// Qt calls a combo box by its present text where systems ask for the label beside.
    static std::string getName(QWidget* widget) {
        if (!qobject_cast<QComboBox*>(widget))
            return describe(widget, QAccessible::Name);
        if (!widget->accessibleName().isEmpty())
            return widget->accessibleName().toStdString();
        const auto labels = QAccessible::queryAccessibleInterface(widget)->relations(QAccessible::Label);
        return labels.isEmpty() ? std::string() : labels.front().first->text(QAccessible::Name).toStdString();
    }
    static void press(QWidget& window, Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        QWidget* const focus = window.focusWidget();
        QTest::keyClick(focus ? focus : &window, key, modifiers);
        settle();
    }
    /// Letters that Alt reaches, with what has them; buttons of a window and labels of fields.
    static std::multimap<QString, std::string> listLetters(const QWidget& window) {
        std::multimap<QString, std::string> letters;
        const auto add = [&letters](const QString& text) {
            const QString letter = QKeySequence::mnemonic(text).toString();
            if (!letter.isEmpty())
                letters.emplace(letter, text.toStdString());
        };
        for (const auto* button : window.findChildren<QAbstractButton*>())
            if (button->isVisibleTo(&window))
                add(button->text());
        for (const auto* label : window.findChildren<QLabel*>())
            if (label->isVisibleTo(&window) && label->buddy())
                add(label->text());
        return letters;
    }
};

} // namespace

TEST_F(KyHostAccessTest, EveryWidgetIsReachedByTabAndHasANameOfItsOwnAndSaysWhatItIsFor) {
    for (const char* language : cLanguages) {
        setLanguage(language);
        forEachDialog([&](const Dialog& dialog) {
            std::set<std::string> names;
            const QList<QWidget*> chain = followTab(*dialog.window);
            for (QWidget* widget : listReachable(*dialog.window)) {
                const std::string what = dialog.name + ": " + widget->metaObject()->className() + " " +
                                         widget->objectName().toStdString() + " in " + language;
                EXPECT_TRUE(chain.contains(widget) || !widget->isEnabled()) << what;
                EXPECT_NE(getName(widget), "") << what;
                EXPECT_TRUE(names.insert(getName(widget)).second) << what << " is called like another";
                EXPECT_NE(describe(widget, QAccessible::Description), "") << what;
                EXPECT_EQ(getName(widget).find('&'), std::string::npos) << what;
            }
            EXPECT_EQ(names.empty(), dialog.name == "help");
        });
    }
}

TEST_F(KyHostAccessTest, WhatAWindowTellsIsHeardAsItIsRead) {
    EXPECT_NE(getName(&mHelp).find("show the whole model"), std::string::npos) << getName(&mHelp);
    mProxyPage.findChild<QLineEdit*>("testURL")->setText("foo");
    mProxyPage.findChild<QPushButton*>("test")->click();
    EXPECT_EQ(getName(mProxyPage.findChild<QLabel*>("result")),
              "The test address does not begin with http:// or https://.");
    auto* const state = mDebugger.findChild<QLabel*>("state");
    EXPECT_EQ(getName(state), "Running");
    state->setText(QString(200, 'x') + ' ' + QString(200, 'y'));
    mDebugger.resize(700, 500);
    settle();
    EXPECT_GE(state->height(), state->heightForWidth(state->width())) << "all of it is seen";
    EXPECT_GT(state->height(), state->fontMetrics().height()) << "in lines";
}

TEST_F(KyHostAccessTest, ABreakpointIsHeardInItsLine) {
    QFile file(mFolder.filePath("two.lua"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly) && file.write("print(1)\nprint(2)\n") > 0);
    file.close();
    mDebugger.addScript(file.fileName());
    activate(mDebugger);
    auto* const source = mDebugger.findChild<QPlainTextEdit*>("source");
    const QList<QAction*> actions = mDebugger.findChild<QToolBar*>()->actions();
    const auto toggle =
        std::ranges::find(actions, QKeySequence(Qt::Key_F9), [](const QAction* action) { return action->shortcut(); });
    ASSERT_NE(toggle, actions.end());
    const auto hear = [&] { return describe(source, QAccessible::Description).substr(0, 17); };
    (*toggle)->trigger();
    EXPECT_EQ(hear(), "Line 1 has a brea");
    QTest::keyClick(source, Qt::Key_Down);
    EXPECT_EQ(hear(), "Line 2 has no bre");
    QTest::keyClick(source, Qt::Key_Up);
    (*toggle)->trigger();
    EXPECT_EQ(hear(), "Line 1 has no bre");
}

TEST_F(KyHostAccessTest, TheHelpStaysOnTheScreenAndGoesWithTheFocusOfItsWindow) {
    QWindow window;
    const QRect screen = window.screen()->availableGeometry();
    for (const char* language : cLanguages) {
        setLanguage(language);
        window.setGeometry(QRect(screen.bottomRight() - QPoint(80, 60), QSize(200, 200)));
        window.show();
        mHelp.hide();
        mHelp.toggle(window);
        EXPECT_TRUE(screen.contains(mHelp.geometry())) << language;
        EXPECT_GE(mHelp.height(), mHelp.heightForWidth(mHelp.width())) << language;
        QFocusEvent event(QEvent::FocusOut);
        QCoreApplication::sendEvent(&window, &event);
        EXPECT_FALSE(mHelp.isVisible()) << language;
    }
}

TEST_F(KyHostAccessTest, NoTwoPlacesOfADialogHaveOneLetterAndEveryFieldHasOne) {
    for (const char* language : cLanguages) {
        setLanguage(language);
        forEachDialog([&](const Dialog& dialog) {
            const auto letters = listLetters(*dialog.window);
            for (const auto& [letter, text] : letters)
                EXPECT_EQ(letters.count(letter), 1u) << dialog.name << ": " << text << " in " << language;
            for (const auto* label : dialog.window->findChildren<QLabel*>()) {
                const bool hasLetter = !QKeySequence::mnemonic(label->text()).isEmpty();
                EXPECT_TRUE(hasLetter || !label->buddy()) << label->text().toStdString();
            }
        });
    }
}

TEST_F(KyHostAccessTest, TabGoesFromTheTreeDownThePageToTheButtonsWhicheverPageWasShownBefore) {
    const auto* const box = mSettingsDialog.findChild<QDialogButtonBox*>();
    for (int i = 0; i < 2; ++i)
        for (const char* page : {"proxy", "navigation", "language"}) {
            ASSERT_TRUE(mSettingsDialog.showPage(page));
            settle();
            const QList<QWidget*> order = followTab(mSettingsDialog);
            ASSERT_GE(order.size(), 5) << page;
            EXPECT_EQ(order.front()->objectName(), "settingsTree") << page;
            int height = -1;
            for (QWidget* widget : order.mid(1, order.size() - 4)) {
                EXPECT_TRUE(mSettingsDialog.editCurrentPage()->isAncestorOf(widget)) << getName(widget);
                const int y = widget->mapTo(&mSettingsDialog, QPoint(0, 0)).y();
                EXPECT_GT(y, height) << page << ": " << getName(widget);
                height = y;
            }
            int right = -1;
            for (QWidget* widget : order.mid(order.size() - 3)) {
                EXPECT_EQ(widget->parentWidget(), box) << page << ": " << getName(widget);
                EXPECT_GT(widget->x(), right) << page << ": " << getName(widget);
                right = widget->x();
            }
        }
}

TEST_F(KyHostAccessTest, TabItselfComesRoundAndShowsWhereItIs) {
    forEachDialog([&](const Dialog& dialog) {
        const QList<QWidget*> order = followTab(*dialog.window);
        if (order.isEmpty())
            return;
        activate(*dialog.window);
        order.back()->setFocus(Qt::TabFocusReason);
        QImage focused;
        for (int i = 0; i < order.size(); ++i) {
            QWidget* const former = dialog.window->focusWidget();
            press(*dialog.window, Qt::Key_Tab);
            ASSERT_EQ(dialog.window->focusWidget(), order[i])
                << dialog.name << ": " << getName(former) << " -> " << getName(dialog.window->focusWidget());
            const auto* const view = qobject_cast<QTreeView*>(former);
            const bool isEmpty = view && view->model()->rowCount() == 0; // there is nothing to go to
            EXPECT_TRUE(isEmpty || former->grab().toImage() != focused) << dialog.name << ": " << getName(former);
            focused = order[i]->grab().toImage();
        }
    });
}

TEST_F(KyHostAccessTest, EscapeClosesEveryWindowAndReturnTakesOverTheSettings) {
    activate(mSettingsDialog);
    mSettingsDialog.showPage("navigation");
    auto* const speed = mNavigationPage.findChild<QDoubleSpinBox*>("zoomSpeed");
    const double before = mSettings.getSpeed(2);
    for (const bool isTaken : {false, true}) {
        mSettingsDialog.show();
        speed->setFocus();
        speed->setValue(before + 1.0);
        press(mSettingsDialog, isTaken ? Qt::Key_Return : Qt::Key_Escape);
        EXPECT_FALSE(mSettingsDialog.isVisible());
        EXPECT_EQ(mSettings.getSpeed(2), isTaken ? before + 1.0 : before);
    }
    for (QWidget* window : {static_cast<QWidget*>(&getInspector()), static_cast<QWidget*>(&mDebugger)})
        for (QWidget* widget : followTab(*window)) {
            activate(*window);
            widget->setFocus();
            press(*window, Qt::Key_Escape);
            if (window->isVisible()) // the search gives up its text first
                press(*window, Qt::Key_Escape);
            EXPECT_FALSE(window->isVisible()) << getName(widget);
        }
}

TEST_F(KyHostAccessTest, EveryActionHasAKeyThatIsShown) {
    const auto* const bar = mDebugger.findChild<QToolBar*>();
    QList<QAction*> actions = bar->actions();
    EXPECT_GE(actions.size(), 5);
    actions += getInspector().editView()->actions();
    std::set<QKeySequence> keys;
    for (const QAction* action : actions) {
        const std::string text = action->text().toStdString();
        ASSERT_FALSE(action->shortcut().isEmpty()) << text;
        EXPECT_TRUE(keys.insert(action->shortcut()).second) << text;
        const QString key = action->shortcut().toString(QKeySequence::NativeText);
        const bool isInBar = action->parent() == bar;
        EXPECT_TRUE(!isInBar || action->toolTip().endsWith("(" + key + ")")) << text;
    }
    EXPECT_EQ(getInspector().editView()->contextMenuPolicy(), Qt::ActionsContextMenu) << "the menu shows them";
    for (const auto& [button, key] : {std::pair("mResumeButton", "(F5)"), std::pair("mStepButton", "(F11)")})
        EXPECT_TRUE(mDebugger.findChild<QPushButton*>(button)->toolTip().endsWith(key)) << button;
}

TEST_F(KyHostAccessTest, TheFormsOfTheExamplesHaveNamesForTheirFields) {
    const QDir examples(QStringLiteral(KY_TEST_DATA_DIR "/../../../examples"));
    const QStringList files = examples.entryList({"*.ui"});
    EXPECT_GE(files.size(), 3);
    KyScriptEngine::get().executeChunk("bindAllClasses()", "forms", {});
    for (const QString& file : files) {
        const std::string load = "form = loadUi('" + examples.filePath(file).toStdString() + "', nil) form:show()";
        const QWidgetList others = QApplication::topLevelWidgets();
        ASSERT_TRUE(KyScriptEngine::get().executeChunk(load, "forms", {}));
        const QWidgetList all = QApplication::topLevelWidgets();
        const auto found =
            std::ranges::find_if(all, [&](QWidget* widget) { return widget->isVisible() && !others.contains(widget); });
        ASSERT_NE(found, all.end());
        QWidget* const form = *found;
        std::set<std::string> names;
        for (QWidget* widget : listReachable(*form))
            EXPECT_TRUE(getName(widget) != "" && names.insert(getName(widget)).second)
                << file.toStdString() << ": " << widget->objectName().toStdString();
        EXPECT_GE(names.size(), 3u);
        KyScriptEngine::get().executeChunk("deleteQObject(form)", "forms", {});
        settle();
    }
}

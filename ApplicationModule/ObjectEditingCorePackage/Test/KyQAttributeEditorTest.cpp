// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyQAttributeEditor.h"

#include "KyQAttributeItemDelegate.h"
#include "KyQFieldEditor.h"
#include "KyQmlTestObjects.h"
#include "KyReportsFixture.h"
#include "KyScriptEngine.h"

#include "KyDateTime.h"
#include "KyQuat.h"

#include <QAbstractSpinBox>
#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QColorDialog>
#include <QComboBox>
#include <QFileDialog>
#include <QLineEdit>
#include <QTest>
#include <QToolButton>
#include <QTreeView>

#include <cmath>
#include <limits>

namespace {

/// An editor that is shown, and a user with a keyboard.
class KyQAttributeEditorTest : public KyReportsFixture {
protected:
    static void SetUpTestSuite() {
        KyScriptEngine::initializeClass();
        KyQAttributeItemDelegate::initializeDefaultEditors();
    }
    static void TearDownTestSuite() {
        KyQAttributeItemDelegate::finalizeEditors();
        KyScriptEngine::finalizeClass();
    }
    void SetUp() override {
        mEditor.resize(500, 900);
        mEditor.show();
        QApplication::setActiveWindow(&mEditor);
        mEditor.editView()->setFocus();
        open(mLamp);
    }

    void open(KyObject& object) { mEditor.setObject(&object); }
    QModelIndex find(const QString& name) {
        const QAbstractItemModel& model = *mEditor.editView()->model();
        const auto found =
            model.match(model.index(0, 0), Qt::DisplayRole, name, 1, Qt::MatchExactly | Qt::MatchRecursive);
        return found.isEmpty() ? QModelIndex() : found.front();
    }
    QString getText(const QString& name) { return find(name).siblingAtColumn(1).data().toString(); }
    KyQFieldEditor* findEditor() {
        const auto editors = mEditor.editView()->viewport()->findChildren<KyQFieldEditor*>();
        const auto isOpen = [](const KyQFieldEditor* editor) { return editor->isVisible(); };
        const auto found = std::find_if(editors.begin(), editors.end(), isOpen);
        return found == editors.end() ? nullptr : *found;
    }
    KyQFieldEditor* edit(const QString& name) {
        mEditor.editView()->setCurrentIndex(find(name));
        press(Qt::Key_F2);
        return findEditor();
    }
    static void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        if (QWidget* focus = QApplication::focusWidget())
            QTest::keyClick(focus, key, modifiers);
        settle();
    }
    static void type(const char* text) {
        if (QWidget* focus = QApplication::focusWidget())
            QTest::keyClicks(focus, text);
    }
    /// Editors close and go by events of their own.
    static void settle() {
        QCoreApplication::processEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    QString current() { return mEditor.editView()->currentIndex().siblingAtColumn(0).data().toString(); }
    int countSteps() { return mEditor.editUndoStack()->count(); }

    QmlTestLamp mLamp;
    KyQAttributeEditor mEditor;
};

/// Types over what stands in each kind's editor.
TEST_F(KyQAttributeEditorTest, WritesWhatIsTypedAndUndoesItInOneStep) {
    KyDynamicObject object;
    struct Row {
        const char* name;
        KyField before;
        const char* typed;
        KyField after;
    };
    const std::vector<Row> rows{
        {"double", KyField(0.5), "-1e300", KyField(-1e300)},
        {"float", KyField(0.1f), "0.3", KyField(0.3f)},
        {"float not", KyField(0.1f), "1e39", KyField(0.1f)},
        {"infinite", KyField(0.1f), "-inf", KyField(-std::numeric_limits<float>::infinity())},
        {"int", KyField(5), "-12", KyField(-12)},
        {"int not", KyField(5), "3000000000", KyField(5)},
        {"unsigned", KyField(std::uint64_t{1}), "18446744073709551615",
         KyField(std::numeric_limits<std::uint64_t>::max())},
        {"text", KyField("a"), "b c", KyField("b c")},
        {"color", KyField(KyColor(7, 0.123456f, 0, 1)), "orange", KyField(KyColor(KyColor::eOrange))},
        {"vec2", KyField(KyVec2d(1, 2)), "4\t5", KyField(KyVec2d(4, 5))},
        {"vec3i", KyField(KyVec3i(1, 2, 3)), "\t5", KyField(KyVec3i(1, 5, 3))},
        {"quat", KyField(KyQuatd(0, 0, 0, 1)), "1\t\t\t0.1", KyField(KyQuatd(1, 0, 0, 0.1))},
        {"url", KyField(KyURL("a.png")), "http://x/y", KyField(KyURL("http://x/y"))},
        {"url not", KyField(KyURL("a.png")), "http://[bad", KyField(KyURL("a.png"))},
        {"color not", KyField(KyColor(1, 0, 0, 1)), "1e39 0 0 1", KyField(KyColor(1, 0, 0, 1))},
        {"date", KyField(KyDate(2020, 2, 29)), "2024", KyField(KyDate(2024, 2, 29))},
        {"old date", KyField(KyDate(-5, 1, 1)), "2024-03-01", KyField(KyDate(2024, 3, 1))},
        {"time", KyField(KyTime(1, 2, 3.004)), "12", KyField(KyTime(12, 2, 3.004))},
        {"span", KyField(KyTime(30, 0, 0.0)), "40:00", KyField(KyTime(40, 0, 0.0))},
        {"moment", KyField(KyDateTime(KyDate(2020, 3, 29), KyTime(2, 30, 0.0))), "2021",
         KyField(KyDateTime(KyDate(2021, 3, 29), KyTime(2, 30, 0.0)))},
        {"list", KyField(std::vector<double>{1, 2}), "3;4.5;5", KyField(std::vector<double>{3, 4.5, 5})},
    };
    for (const Row& row : rows)
        object.addAttribute(row.name, row.before);
    open(object);
    for (const Row& row : rows) {
        ASSERT_TRUE(edit(row.name)) << row.name;
        for (const char* c = row.typed; *c; ++c)
            *c == '\t' ? press(Qt::Key_Tab) : type(std::string(1, *c).c_str());
        press(Qt::Key_Return);
        ASSERT_FALSE(findEditor()) << row.name;
        KyField value;
        object.getAttribute(row.name)->getValue(object, value);
        EXPECT_TRUE(value == row.after) << row.name << " is " << value.toString(17);
        if (row.before == row.after)
            continue;
        EXPECT_EQ(countSteps(), 1) << row.name;
        press(Qt::Key_Z, Qt::ControlModifier);
        object.getAttribute(row.name)->getValue(object, value);
        EXPECT_TRUE(value == row.before) << row.name << " is again " << value.toString(17);
        mEditor.editUndoStack()->clear();
    }
}

TEST_F(KyQAttributeEditorTest, LeavesWhatNobodyChangedExactlyAsItWas) {
    mLamp.mTint = KyColor(7.1f, 0.1234567f, -1, 0.3f);
    mLamp.mPower = 0.1 + 0.2;
    mLamp.mPosition = KyVec3d(1.0 / 3, 0.1 + 0.2, 1e-310);
    const auto [tint, power, position] = std::tuple(mLamp.mTint, mLamp.mPower, mLamp.mPosition);
    for (const char* name : {"Power", "Tint", "Position", "Source", "Born", "Mode", "Partner", "Friends"}) {
        ASSERT_TRUE(edit(name)) << name;
        press(Qt::Key_Return);
        ASSERT_TRUE(edit(name)) << name;
        press(Qt::Key_Escape);
        EXPECT_FALSE(findEditor()) << name;
    }
    EXPECT_EQ(countSteps(), 0);
    EXPECT_TRUE(mLamp.mTint == tint && mLamp.mPower == power && mLamp.mPosition == position);
    edit("Position");
    press(Qt::Key_Tab);
    type("2");
    press(Qt::Key_Return);
    EXPECT_TRUE(mLamp.mPosition == KyVec3d(1.0 / 3, 2, 1e-310)) << "one component changed, two kept every digit";
}

TEST_F(KyQAttributeEditorTest, MergesStepsAndTakesThemBackWithEscape) {
    mLamp.mPower = 0.1;
    edit("Power");
    for (const double power : {0.11, 0.12, 0.13}) {
        press(Qt::Key_Up);
        EXPECT_EQ(mLamp.mPower, power) << "seen at once";
    }
    press(Qt::Key_Return);
    EXPECT_EQ(countSteps(), 1);
    edit("Count");
    press(Qt::Key_PageUp);
    press(Qt::Key_Down);
    EXPECT_EQ(mLamp.mCount, 9);
    type("77");
    press(Qt::Key_Escape);
    EXPECT_EQ(mLamp.mCount, 0);
    EXPECT_EQ(countSteps(), 1);
    press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(mLamp.mPower, 0.1);
    press(Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(mLamp.mPower, 0.13);
    mLamp.mCount = std::numeric_limits<int>::max();
    edit("Count");
    press(Qt::Key_Up);
    EXPECT_EQ(mLamp.mCount, std::numeric_limits<int>::max());
}

TEST_F(KyQAttributeEditorTest, StepsNoFurtherThanANumberGoes) {
    for (const auto& [before, key, after] : std::vector<std::tuple<KyField, Qt::Key, const char*>>{
             {KyField(1.7e308), Qt::Key_PageUp, "1.7976931348623157e+308"},
             {KyField(std::numeric_limits<double>::lowest()), Qt::Key_Down, "-1.7976931348623157e+308"},
             {KyField(std::numeric_limits<float>::max()), Qt::Key_PageUp, "3.4028235e+38"},
             {KyField(std::nan("")), Qt::Key_Up, "nan"},
             {KyField(0.1f), Qt::Key_PageDown, "0"},
         }) {
        KyDynamicObject object;
        object.addAttribute("number", before);
        open(object);
        edit("number");
        const QString shown = getText("number");
        press(key);
        EXPECT_EQ(getText("number").toStdString(), after);
        EXPECT_EQ(countSteps(), shown == after ? 0 : 1) << after;
    }
}

TEST_F(KyQAttributeEditorTest, GoesWithTabToTheNextThatCanBeEdited) {
    edit("Mode");
    press(Qt::Key_Tab);
    EXPECT_EQ(current(), "Refusing") << "Fixed stands between";
    ASSERT_TRUE(findEditor());
    press(Qt::Key_Backtab);
    EXPECT_EQ(current(), "Mode");
    ASSERT_TRUE(findEditor());
    press(Qt::Key_Escape);
    EXPECT_FALSE(edit("Fixed"));
}

TEST_F(KyQAttributeEditorTest, ChoosesAmongNamesFlagsAndPublishedObjects) {
    QmlTestLamp other;
    KyScriptEngine::get().bindInstance(&other, "other");
    edit("Mode");
    press(Qt::Key_Down);
    EXPECT_EQ(mLamp.mMode, 2);
    press(Qt::Key_Return);
    auto* names = edit("Partner")->findChild<QComboBox*>();
    ASSERT_EQ(names->count(), 2);
    EXPECT_EQ(names->itemText(1), "other (QmlTestLamp)");
    press(Qt::Key_Down);
    EXPECT_EQ(mLamp.mPartner, &other);
    press(Qt::Key_Up);
    EXPECT_EQ(mLamp.mPartner, nullptr);
    press(Qt::Key_Return);
    KyScriptEngine::get().unbindInstance(&other);
    EXPECT_EQ(edit("Partner")->findChild<QComboBox*>()->count(), 1);
    press(Qt::Key_Escape);

    KyDynamicObject object;
    object.addAttribute("flag", KyField(false));
    open(object);
    mEditor.editView()->setCurrentIndex(find("flag"));
    press(Qt::Key_Space);
    EXPECT_EQ(getText("flag"), "true");
    edit("flag");
    press(Qt::Key_Up);
    press(Qt::Key_Space);
    press(Qt::Key_Return);
    EXPECT_EQ(getText("flag"), "false");
}

TEST_F(KyQAttributeEditorTest, OffersWhatWasPublishedBeforeAndByLaterEngines) {
    QmlTestLamp early;
    QmlTestLamp late;
    QmlTestKit kit;
    KyQAttributeItemDelegate::finalizeEditors();
    KyScriptEngine::get().bindInstance(&early, "early");
    KyQAttributeItemDelegate::initializeDefaultEditors();
    KyScriptEngine::get().bindInstance(&late, "late");
    EXPECT_EQ(edit("Partner")->findChild<QComboBox*>()->count(), 3);
    press(Qt::Key_Escape);
    KyScriptEngine::finalizeClass();
    KyScriptEngine::initializeClass();
    KyScriptEngine::get().bindInstance(&kit, "kit");
    KyScriptEngine::get().bindInstance(&late, "late");
    auto* names = edit("Partner")->findChild<QComboBox*>();
    ASSERT_EQ(names->count(), 2) << "a kit is no lamp";
    press(Qt::Key_Down);
    EXPECT_EQ(mLamp.mPartner, &late);
}

TEST_F(KyQAttributeEditorTest, ChoosesColoursWithAlphaAndTakesThemBack) {
    const KyColor before(7.1f, 0.1234567f, -1, 0.3f);
    mLamp.mTint = before;
    for (const bool isAccepted : {false, true}) {
        KyQFieldEditor* editor = edit("Tint");
        QTest::mouseClick(editor->findChild<QToolButton*>("mSwatch"), Qt::LeftButton);
        auto* dialog = editor->findChild<QColorDialog*>();
        ASSERT_TRUE(dialog && dialog->testOption(QColorDialog::ShowAlphaChannel));
        dialog->setCurrentColor(QColor::fromRgbF(0, 1, 0, 0.5));
        dialog->setCurrentColor(QColor::fromRgbF(0, 0, 1, 0.5));
        EXPECT_EQ(mLamp.mTint.blue, 1) << "seen at once";
        isAccepted ? dialog->accept() : dialog->reject();
        settle();
        QApplication::setActiveWindow(&mEditor);
        ASSERT_EQ(findEditor(), editor) << "the dialog is a part of it";
        editor->setFocus();
        press(Qt::Key_Return);
        EXPECT_EQ(countSteps(), isAccepted ? 1 : 0);
        EXPECT_EQ(mLamp.mTint == before, !isAccepted);
    }
    EXPECT_NEAR(mLamp.mTint.alpha, 0.5, 0.003);
}

TEST_F(KyQAttributeEditorTest, ChoosesFiles) {
    KyQFieldEditor* editor = edit("Source");
    QTest::mouseClick(editor->findChild<QToolButton*>("mFileButton"), Qt::LeftButton);
    auto* dialog = editor->findChild<QFileDialog*>();
    ASSERT_TRUE(dialog);
    dialog->fileSelected("/a b/\u00e9.png");
    EXPECT_EQ(mLamp.mSource.getLocalPath(), "/a b/\xc3\xa9.png");
    delete dialog;
}

TEST_F(KyQAttributeEditorTest, ShowsWhatOthersChangeUnlessItIsBeingTypedOver) {
    auto* line = edit("Label")->findChild<QLineEdit*>();
    mLamp.getAttribute("Label")->setValue(mLamp, KyField("outside"));
    EXPECT_EQ(line->text(), "outside");
    line->selectAll();
    type("typed");
    mLamp.getAttribute("Label")->setValue(mLamp, KyField("again"));
    EXPECT_EQ(line->text(), "typed");
    mEditor.editView()->setFocus();
    settle();
    EXPECT_FALSE(findEditor());
    EXPECT_EQ(mLamp.mLabel, "typed");
}

TEST_F(KyQAttributeEditorTest, IsEmptyWhenTheObjectEndsWhileItIsEdited) {
    auto lamp = std::make_unique<QmlTestLamp>();
    open(*lamp);
    edit("Power");
    press(Qt::Key_Up);
    ASSERT_EQ(countSteps(), 1);
    lamp.reset();
    settle();
    EXPECT_FALSE(findEditor() || mEditor.getObject());
    EXPECT_EQ(mEditor.editView()->model()->rowCount() + countSteps(), 0);
}

/// Ends its lamp when the power is 1.
struct Ender : KyHasSlots {
    void onModified(KyObject*, KyObjectModificationType kind, const std::string&, int) {
        if (kind == eAttributeChanged && lamp->mPower == 1)
            lamp.reset();
    }
    std::unique_ptr<QmlTestLamp> lamp = std::make_unique<QmlTestLamp>();
};

TEST_F(KyQAttributeEditorTest, OutlivesAnUndoThatEndsTheObject) {
    Ender ender;
    open(*ender.lamp);
    edit("Power");
    press(Qt::Key_Up);
    ender.lamp->connectModified(&ender, &Ender::onModified);
    press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_FALSE(ender.lamp || mEditor.getObject() || countSteps() || findEditor());
}

TEST_F(KyQAttributeEditorTest, WritesWhatIsTypedBeforeASearchHidesItsRow) {
    edit("Power");
    type("5");
    static int nbWarnings = 0;
    const auto count = [](QtMsgType, const QMessageLogContext&, const QString&) { ++nbWarnings; };
    const QtMessageHandler handler = qInstallMessageHandler(count);
    mEditor.setSearchText("Label");
    settle();
    qInstallMessageHandler(handler);
    EXPECT_FALSE(findEditor());
    EXPECT_EQ(mLamp.mPower, 5);
    EXPECT_EQ(nbWarnings, 0) << "no value changes while the filter does";
}

TEST_F(KyQAttributeEditorTest, UndoesFromInsideAnEditor) {
    for (const char* name : {"Power", "Position", "Mode"}) {
        const QString before = getText(name);
        edit(name);
        press(Qt::Key_Up);
        const QString after = getText(name);
        press(Qt::Key_Z, Qt::ControlModifier);
        EXPECT_EQ(getText(name), before) << name;
        press(Qt::Key_Y, Qt::ControlModifier);
        EXPECT_TRUE(getText(name) == after && after != before) << name;
        press(Qt::Key_Escape);
    }
}

TEST_F(KyQAttributeEditorTest, SearchesNamesFromTheKeyboard) {
    press(Qt::Key_F, Qt::ControlModifier);
    type("POS");
    EXPECT_TRUE(find("Position").isValid() && !find("Power").isValid());
    press(Qt::Key_Return);
    EXPECT_EQ(current(), "Position");
    press(Qt::Key_F, Qt::ControlModifier);
    press(Qt::Key_Escape);
    EXPECT_TRUE(find("Power").isValid());
    EXPECT_EQ(QApplication::focusWidget(), mEditor.editView());
    KyDynamicObject object;
    object.addAttribute("x", KyField(1), "category=Locals;");
    object.addAttribute("y", KyField(1), "category=Other;");
    open(object);
    mEditor.setSearchText("local");
    EXPECT_TRUE(find("x").isValid() && mEditor.editView()->isExpanded(find("Locals")) && !find("y").isValid());
}

TEST_F(KyQAttributeEditorTest, CostsTheObjectNothingWhileItIsHidden) {
    EXPECT_EQ(mLamp.modifiedSignal().getNbConnections(), 1u);
    mEditor.hide();
    EXPECT_EQ(mLamp.modifiedSignal().getNbConnections(), 0u);
    mLamp.mPower = 5;
    mEditor.show();
    EXPECT_EQ(getText("Power"), "5");
}

/// Answers every key with one text.
class HostEditor : public KyQFieldEditor {
public:
    using KyQFieldEditor::KyQFieldEditor;
    bool getField(KyField& field) const override {
        field = KyField("host's");
        return true;
    }

protected:
    void showField(const KyField&) override {}
    void keyPressEvent(QKeyEvent*) override { commitNow(); }
};

TEST_F(KyQAttributeEditorTest, TakesEditorsOfHosts) {
    const KyFieldKind kind = cFieldKindOf<std::string>;
    KyQAttributeItemDelegate::registerEditor(kind, [](QWidget* parent) { return new HostEditor(parent); });
    edit("Label");
    type("x");
    EXPECT_EQ(mLamp.mLabel, "host's");
    press(Qt::Key_Escape);
    EXPECT_EQ(mLamp.mLabel, "lamp");
    KyQAttributeItemDelegate::registerEditor(kind, nullptr);
    EXPECT_TRUE(edit("Label")->findChild<QLineEdit*>());
}

} // namespace

TEST_F(KyQAttributeEditorTest, TellsThoseWhoDoNotSeeWhatTheyEditAndOpensDialogsByKey) {
    const std::pair<const char*, QStringList> rows[] = {{"Power", {"Power"}},
                                                        {"Position", {"Position, 1 of 3", "Position, 2 of 3"}},
                                                        {"Tint", {"Tint"}},
                                                        {"Mode", {"Mode"}}};
    for (const auto& [row, names] : rows) {
        ASSERT_TRUE(edit(row)) << row;
        for (const QString& name : names) {
            EXPECT_EQ(QApplication::focusWidget()->accessibleName(), name) << row;
            EXPECT_FALSE(QApplication::focusWidget()->accessibleDescription().isEmpty()) << row;
            if (name != names.back())
                press(Qt::Key_Tab);
        }
        press(Qt::Key_Escape);
    }
    auto* const button = edit("Tint")->findChild<QToolButton*>("mSwatch");
    EXPECT_EQ(button->accessibleName(), "Choose a colour");
    EXPECT_EQ(button->toolTip(), "Choose a colour (Alt+Down)");
    EXPECT_FALSE(findEditor()->findChild<QColorDialog*>());
    press(Qt::Key_Down, Qt::AltModifier);
    EXPECT_TRUE(findEditor()->findChild<QColorDialog*>());
}

TEST_F(KyQAttributeEditorTest, AButtonTellsItsKeyOnceInEveryLanguage) {
    QWidget* const editor = edit("Tint");
    for (int i = 0; i < 2; ++i) {
        QEvent event(QEvent::LanguageChange);
        QCoreApplication::sendEvent(editor, &event);
    }
    class OfConstructor : public HostEditor {
    public:
        OfConstructor()
            : HostEditor(nullptr) {
            button->setToolTip("Opens");
            addButton(button);
            setLabel("x");
            setLabel("y");
        }
        QToolButton* const button = new QToolButton;
    } own;
    for (const auto& [button, help] :
         {std::pair(editor->findChild<QToolButton*>("mSwatch"), "Choose a colour"), std::pair(own.button, "Opens")}) {
        EXPECT_EQ(button->accessibleName(), help);
        EXPECT_EQ(button->toolTip(), QString(help) + " (Alt+Down)");
    }
}

TEST_F(KyQAttributeEditorTest, WhatCannotBeEditedIsReadAndCopiedByKey) {
    mLamp.mLabel = "a label that is far longer than the cell it is shown in, and is elided there";
    QClipboard& clipboard = *QGuiApplication::clipboard();
    for (const int options : {KyQAttributeEditor::eDefaultOptions, KyQAttributeEditor::eInspection}) {
        mEditor.setOptions(options);
        mEditor.editView()->setFocus();
        mEditor.editView()->setCurrentIndex(find("Label"));
        clipboard.clear();
        press(Qt::Key_C, Qt::ControlModifier);
        EXPECT_EQ(clipboard.text().toStdString(), mLamp.mLabel) << options;
    }
    EXPECT_FALSE(mEditor.editView()->accessibleDescription().contains("edits"));
    for (const Qt::Key closing : {Qt::Key_Escape, Qt::Key_Return, Qt::Key_Tab}) {
        press(Qt::Key_F2);
        const auto* const line = qobject_cast<QLineEdit*>(QApplication::focusWidget());
        ASSERT_TRUE(line && line->isReadOnly() && line->parentWidget() == mEditor.editView()->viewport());
        EXPECT_EQ(line->selectedText().toStdString(), mLamp.mLabel);
        EXPECT_EQ(line->accessibleName(), "Label");
        type("x");
        press(closing);
        EXPECT_EQ(QApplication::focusWidget(), mEditor.editView());
        EXPECT_TRUE(mEditor.isVisible() && mEditor.editView()->viewport()->findChildren<QLineEdit*>().isEmpty());
    }
    EXPECT_EQ(countSteps(), 0);
}

TEST_F(KyQAttributeEditorTest, ShowsInItsMenuWhatCanBeUndone) {
    QAction* const undo = mEditor.editView()->actions().value(2);
    EXPECT_EQ(undo->text(), "&Undo");
    EXPECT_FALSE(undo->isEnabled());
    edit("Power");
    type("7");
    press(Qt::Key_Return);
    EXPECT_EQ(undo->text(), "&Undo the change of Power");
    undo->trigger();
    EXPECT_EQ(mEditor.editView()->actions().value(3)->text(), "&Redo the change of Power");
    mEditor.setOptions(KyQAttributeEditor::eInspection);
    EXPECT_FALSE(undo->isVisible()) << "nothing can be changed";
    mEditor.editView()->setFocus();
    press(Qt::Key_Escape);
    EXPECT_FALSE(mEditor.isVisible());
}

// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyQLuaDebuggerEditor.h"

#include "KyLuaDebugger.h"
#include "KyQAttributeEditor.h"
#include "KyScriptEngine.h"

#include "KyDynamicObject.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QPushButton>
#include <QTest>
#include <QTreeView>

#include <algorithm>
#include <functional>
#include <memory>

namespace {

/// A host that processes events while a script stands still, with a user who looks once at each stop.
class KyQLuaDebuggerEditorTest : public testing::Test, public KyLuaDebugger {
protected:
    void SetUp() override {
        KyScriptEngine::initializeClass();
        KyScriptEngine::get().setLuaDebugger(this);
        KyScriptEngine::get().setHook();
        mEditor = std::make_unique<KyQLuaDebuggerEditor>();
    }
    void TearDown() override {
        mEditor.reset();
        KyScriptEngine::finalizeClass();
    }
    void wait() override {
        QCoreApplication::processEvents();
        mUser();
    }

    KyQAttributeEditor& attributes() { return *mEditor->findChild<KyQAttributeEditor*>("mAttributeEditor"); }
    std::string value(const QString& category, const QString& name) {
        const QAbstractItemModel& model = *attributes().editView()->model();
        const auto categories = model.match(model.index(0, 0), Qt::DisplayRole, category);
        for (const QModelIndex& parent : categories)
            for (int row = 0; row < model.rowCount(parent); ++row)
                if (model.index(row, 0, parent).data().toString() == name)
                    return model.index(row, 1, parent).data().toString().toStdString();
        return "-";
    }
    void press(const char* button) { QTest::mouseClick(mEditor->findChild<QPushButton*>(button), Qt::LeftButton); }
    bool run(const char* script) { return KyScriptEngine::get().executeChunk(script, "@test.lua", {3}); }

    std::unique_ptr<KyQLuaDebuggerEditor> mEditor;
    std::function<void()> mUser = [this] { press("mResumeButton"); };
};

constexpr char cScript[] = "local a = 'one'\n"
                           "local b = 2\n"
                           "shared = a .. b\n"
                           "local late = {}\n"
                           "return late\n";

TEST_F(KyQLuaDebuggerEditorTest, ShowsTheEntityForReadingOnly) {
    EXPECT_EQ(mEditor->objectName(), "KyQLuaDebuggerEditorWidget");
    EXPECT_EQ(attributes().getObject(), KyScriptEngine::get().getDebugEntity());
    EXPECT_EQ(attributes().getOptions(), 18);
}

TEST_F(KyQLuaDebuggerEditorTest, ShowsAStoppedScriptAndStepsAndResumesIt) {
    mEditor->show();
    std::vector<std::string> seen;
    mUser = [&] {
        seen.push_back(value("Callstack", "CurrentLine") + " " + value("Locals", "a") + " " + value("Locals", "b") +
                       " " + value("Globals", "shared"));
        press(seen.size() < 3 ? "mStepButton" : "mResumeButton");
    };
    EXPECT_TRUE(run(cScript));
    EXPECT_EQ(seen, (std::vector<std::string>{"3 one 2 -", "4 one 2 one2", "5 one 2 one2"}));
    const QTreeView& view = *attributes().editView();
    const auto locals = view.model()->match(view.model()->index(0, 0), Qt::DisplayRole, "Locals");
    EXPECT_TRUE(!locals.isEmpty() && view.isExpanded(locals.front()));
    EXPECT_FALSE(view.model()->index(0, 1, locals.front()).flags().testFlag(Qt::ItemIsEditable));
}

TEST_F(KyQLuaDebuggerEditorTest, LooksAtScriptsThatRunNowAndThenAndListensNever) {
    mEditor->show();
    EXPECT_TRUE(KyScriptEngine::get().executeChunk("shared = 'first'"));
    EXPECT_TRUE(QTest::qWaitFor([this] { return value("Globals", "shared") == "first"; }, 2000));
    EXPECT_EQ(KyScriptEngine::get().getDebugEntity()->modifiedSignal().getNbConnections(), 0u);
    mEditor->hide();
    EXPECT_TRUE(run(cScript)) << "the buttons work all the same";
    EXPECT_EQ(value("Globals", "shared"), "first");
    mEditor->show();
    EXPECT_EQ(value("Globals", "shared"), "one2");
}

TEST_F(KyQLuaDebuggerEditorTest, AViewOfTheProgramStandsInForAStopAndGoesWithIt) {
    auto* const view = new QWidget;
    mEditor->setStopView(view);
    mEditor->show();
    EXPECT_TRUE(attributes().isVisible() && !view->isVisible());
    int nbStops = 0;
    mUser = [&] {
        EXPECT_TRUE(view->isVisible() && !attributes().isVisible());
        press(++nbStops < 3 ? "mStepButton" : "mResumeButton");
    };
    EXPECT_TRUE(run(cScript));
    EXPECT_EQ(nbStops, 3);
    EXPECT_TRUE(QTest::qWaitFor([&] { return attributes().isVisible() && !view->isVisible(); }, 2000));
}

TEST_F(KyQLuaDebuggerEditorTest, OutlivesTheEngineAndFindsTheNext) {
    mEditor->show();
    KyScriptEngine::finalizeClass();
    EXPECT_FALSE(attributes().getObject());
    press("mResumeButton");
    press("mStepButton");
    mEditor->hide();
    KyScriptEngine::initializeClass();
    mEditor->show();
    EXPECT_EQ(attributes().getObject(), KyScriptEngine::get().getDebugEntity());
}

} // namespace

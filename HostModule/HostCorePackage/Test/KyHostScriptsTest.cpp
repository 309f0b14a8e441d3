// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyHostSession.h"

#include "KyHostCompletion.h"
#include "KyHostErrors.h"
#include "KyHostOptions.h"
#include "KyHostScripts.h"
#include "KyHostSettings.h"

#include "KyMainTaskManager.h"
#include "KyScriptEngine.h"

#include <QApplication>
#include <QTemporaryDir>

#include <algorithm>
#include <fstream>
#include <tuple>
#include <vector>

namespace {

/// A session without a view, in this process. Errors go to standard error and are counted.
class KyHostScriptsTest : public KyHostSession<QCoreApplication> {
protected:
    KyHostScriptsTest() {
        mOptions.items.push_back({KyHostOptions::Item::eFile, mFolder.filePath("a.lua").toStdString()});
    }
    ~KyHostScriptsTest() override { KyScriptEngine::get().closeLuaState(); }

    bool run(const std::string& text, bool (KyHostScripts::*start)() = &KyHostScripts::run) {
        std::ofstream(mOptions.items[0].text, std::ios::trunc) << text;
        return (mScripts.*start)();
    }
    bool runAgain(const std::string& text) { return run(text, &KyHostScripts::runAgain); }
    std::string evaluate(const std::string& expression) const {
        std::vector<KyField> results;
        KyScriptEngine::get().executeChunktWithReturnValues("return tostring(" + expression + ")", results);
        return results.empty() ? std::string() : results[0].toString();
    }
    KyScenePass& getPass() const { return *KyScenePass::cast(mStage.getView().getMainPass()); }
    /// One pass with the settings that a view begins with shows that scene.
    void expectFreshView(const KyScene& scene) const {
        EXPECT_EQ(1u, mStage.getView().getNbPasses());
        EXPECT_EQ(KyGraphicsViewMultiPass::eClearColorAndDepth, mStage.getView().getClearOrder());
        EXPECT_EQ(4, getPass().getSamples());
        EXPECT_EQ(&scene, getPass().getScene());
        EXPECT_EQ(&mStage.getCamera(), getPass().getCamera());
    }

    QTemporaryDir mFolder;
    KyHostOptions mOptions;
    KyHostErrors mErrors{false};
    KyHostSettings mSettings{mFolder.filePath("settings.xml")};
    KyHostScripts mScripts{mOptions, mErrors, mHost, mStage, mSettings};
};

using KyHostFormTest = KyHostSession<QApplication>;

constexpr const char* cTree = "local n = KyNode() n.Name = 'tree' scene:addChild(n)";
constexpr const char* cHouse = "local n = KyNode() n.Name = 'house' scene:addChild(n)";
constexpr const char* cSpoiled = " view.MainPass.Samples = 1 view.ClearOrder = 0 view:addPass(KyScenePass())";

} // namespace

TEST_F(KyHostScriptsTest, ASyntaxErrorLeavesTheRunningScriptsAloneAndALaterOneEndsThem) {
    ASSERT_TRUE(
        run("count = 0 return coroutine.create(function() while true do count = count + 1 coroutine.yield() end end)"));
    EXPECT_FALSE(runAgain("this is no Lua"));
    EXPECT_EQ(1u, KyScriptEngine::get().getNbCoroutines());
    KyMainTaskManager::get().update();
    EXPECT_EQ("1", evaluate("count"));
    EXPECT_FALSE(runAgain("error('late')"));
    EXPECT_EQ(0u, KyScriptEngine::get().getNbCoroutines());
}

TEST_F(KyHostScriptsTest, TheHostSurvivesItsDestruction) {
    for (const char* end : {"host:destroy()", "deleteKyObject(host)"}) {
        EXPECT_TRUE(run(end)) << end;
        EXPECT_FALSE(mHost.isEnding());
        EXPECT_TRUE(runAgain("seen = host.FrameCount")) << end;
        EXPECT_EQ("0", evaluate("seen")) << end;
    }
}

TEST_F(KyHostScriptsTest, AFailureKeepsTheSceneAndTakesBackWhatItDidToTheView) {
    ASSERT_TRUE(run(cTree));
    const KyGraphicsViewMultiPass* const view = &mStage.getView();
    const KyScene* const scene = getPass().getScene();
    EXPECT_FALSE(runAgain(std::string(cHouse) + " view.MainPass.Scene = KyScene()" + cSpoiled + " error('late')"));
    EXPECT_EQ(1u, mErrors.getNbScriptErrors());
    EXPECT_EQ("tree", evaluate("scene.Children[0].Name"));
    EXPECT_EQ(view, &mStage.getView());
    expectFreshView(*scene);
}

TEST_F(KyHostScriptsTest, RunningAgainBeginsWithAFreshSceneViewAndState) {
    mOptions.isSandboxed = true;
    ASSERT_TRUE(run(std::string(cTree) + cSpoiled + " leftover = 1"));
    ASSERT_EQ(2u, mStage.getView().getNbPasses());
    ASSERT_TRUE(runAgain(std::string(cHouse) + " seen = tostring(leftover) .. tostring(io) .. tostring(os.execute)"));
    EXPECT_EQ("nilnilnil", evaluate("seen")) << "no globals, and the sandbox holds";
    expectFreshView(mStage.getScene());
    EXPECT_NE(nullptr, mStage.getScene().find("house"));
    EXPECT_EQ(nullptr, mStage.getScene().find("tree"));
}

TEST_F(KyHostScriptsTest, NothingRunsAfterQuitting) {
    mOptions.items.push_back({KyHostOptions::Item::eChunk, "seen = true"});
    EXPECT_TRUE(run("host:quit()"));
    EXPECT_EQ("nil", evaluate("seen"));
    EXPECT_TRUE(mHost.isQuitting());
}

TEST_F(KyHostScriptsTest, CompletionFollowsPathsWithoutRunningCode) {
    ASSERT_TRUE(run("box = KyMeshNode() box.Name = 'box' scene:addChild(box) deep = {inner = {leaf = box}} "
                    "trap = setmetatable({}, {__index = function() error('ran') end})"));
    const std::tuple<const char*, const char*, const char*> cases[] = {
        {"pri", "print(", "print"},
        {"box:make", "box:makeBox(", "box:addChild("},
        {"box.", "box.Roughness", "box.addChild("},
        {"box.Parent.Backg", "box.Parent.BackgroundTop", "box.Parent.Name"},
        {"deep.inner.leaf.Col", "deep.inner.leaf.Color", "deep.inner.leaf.Name"},
        {"math.pi", "math.pi", "math.sin("}};
    for (const auto& [word, expected, unexpected] : cases) {
        const std::vector<std::string> words = KyHostCompletion::complete(word);
        EXPECT_EQ(1, std::ranges::count(words, expected)) << word << testing::PrintToString(words);
        EXPECT_EQ(0, std::ranges::count(words, unexpected)) << word;
    }
    for (const char* word : {"nothing", "nothing.at.all", "trap.x", "scene.Name.x", "scene..", "1.", ".", ":"})
        EXPECT_EQ(0, std::ranges::count(KyHostCompletion::complete(word), "scene")) << word;
    EXPECT_EQ(0u, mErrors.getNbScriptErrors());
}

TEST_F(KyHostFormTest, AFormThatIsShownWithoutAPartIsNoFailure) {
    const QTemporaryDir folder;
    const std::string form = folder.filePath("a.ui").toStdString();
    std::ofstream(form) << "<ui version='4.0'><widget class='QWidget'><widget class='QLabel' name='label'/>"
                           "<widget class='Promoted' name='rest'/></widget><connections><connection>"
                           "<sender>label</sender><signal>destroyed()</signal><receiver>label</receiver>"
                           "<slot>missing()</slot></connection></connections></ui>";
    const KyHostErrors errors(false);
    const auto load = [](const std::string& path) {
        return KyScriptEngine::get().executeChunk("deleteQObject(loadUi('" + path + "'))");
    };
    testing::internal::CaptureStderr();
    EXPECT_TRUE(load(form));
    const std::string warnings = testing::internal::GetCapturedStderr();
    EXPECT_EQ(0u, errors.getNbScriptErrors()) << warnings;
    EXPECT_NE(std::string::npos, warnings.find("unknown widget Promoted"));
    EXPECT_NE(std::string::npos, warnings.find("missing()"));
    load(form + "x");
    EXPECT_LT(0u, errors.getNbScriptErrors());
}

// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyHostSession.h"

#include "KyHostCompletion.h"
#include "KyHostErrors.h"
#include "KyHostOptions.h"
#include "KyHostScripts.h"

#include "KyMainTaskManager.h"
#include "KyScriptEngine.h"

#include <QCoreApplication>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <string>
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

    void write(const std::string& text) const { std::ofstream(mOptions.items[0].text, std::ios::trunc) << text; }
    bool run(const std::string& text) {
        write(text);
        return mScripts.run();
    }
    bool runAgain(const std::string& text) {
        write(text);
        return mScripts.runAgain();
    }
    std::string evaluate(const std::string& expression) const {
        std::vector<KyField> results;
        KyScriptEngine::get().executeChunktWithReturnValues("return tostring(" + expression + ")", results);
        return results.empty() ? std::string() : results[0].toString();
    }
    KyScene* getShownScene() const { return KyScenePass::cast(mStage.getView().getMainPass())->getScene(); }
    KyCamera* getShownCamera() const { return KyScenePass::cast(mStage.getView().getMainPass())->getCamera(); }

    QTemporaryDir mFolder;
    KyHostOptions mOptions;
    KyHostErrors mErrors{false};
    KyHostScripts mScripts{mOptions, mErrors, mHost, mStage};
};

constexpr const char* cTree = "local n = KyNode() n.Name = 'tree' scene:addChild(n)";
constexpr const char* cHouse = "local n = KyNode() n.Name = 'house' scene:addChild(n)";

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
    KyGraphicsViewMultiPass* const view = &mStage.getView();
    KyScene* const scene = getShownScene();
    EXPECT_FALSE(runAgain(std::string(cHouse) + " view.MainPass.Samples = 1 view.MainPass.Scene = KyScene() "
                                                "view.ClearOrder = 0 view:addPass(KyScenePass()) error('late')"));
    EXPECT_EQ(1u, mErrors.getNbScriptErrors());
    EXPECT_EQ("tree", evaluate("scene.Children[0].Name"));
    EXPECT_EQ(view, &mStage.getView());
    EXPECT_EQ(scene, getShownScene());
    EXPECT_EQ(1u, view->getNbPasses());
    EXPECT_EQ(KyGraphicsViewMultiPass::eClearColorAndDepth, view->getClearOrder());
    EXPECT_EQ(4, KyScenePass::cast(view->getMainPass())->getSamples());
}

TEST_F(KyHostScriptsTest, RunningAgainBeginsWithAFreshSceneViewAndState) {
    mOptions.isSandboxed = true;
    ASSERT_TRUE(run(std::string(cTree) + " view.MainPass.Samples = 1 view.ClearOrder = 0 view:addPass(KyScenePass()) "
                                         "leftover = 1"));
    ASSERT_EQ(2u, mStage.getView().getNbPasses());
    ASSERT_TRUE(runAgain(std::string(cHouse) + " seen = tostring(leftover) .. tostring(io) .. tostring(os.execute)"));
    EXPECT_EQ("nilnilnil", evaluate("seen")) << "no globals, and the sandbox holds";
    EXPECT_EQ(1u, mStage.getView().getNbPasses());
    EXPECT_EQ(KyGraphicsViewMultiPass::eClearColorAndDepth, mStage.getView().getClearOrder());
    EXPECT_EQ(4, KyScenePass::cast(mStage.getView().getMainPass())->getSamples());
    EXPECT_EQ(&mStage.getScene(), getShownScene());
    EXPECT_EQ(&mStage.getCamera(), getShownCamera());
    EXPECT_NE(nullptr, getShownScene()->find("house"));
    EXPECT_EQ(nullptr, getShownScene()->find("tree"));
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
        EXPECT_TRUE(std::ranges::none_of(KyHostCompletion::complete(word), [](const std::string& found) {
            return found == "scene";
        })) << word;
    EXPECT_EQ(0u, mErrors.getNbScriptErrors());
}

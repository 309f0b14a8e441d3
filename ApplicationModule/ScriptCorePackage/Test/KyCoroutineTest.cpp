// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyScriptEngineFixture.h"

#include "KyMainTaskManager.h"
#include "KyResumeCoroutinesTask.h"

#include <chrono>
#include <cmath>
#include <thread>

namespace {

class KyCoroutineTest : public KyScriptEngineFixture {
protected:
    /// What the chunks have appended to the global text "log".
    static std::string log() { return text("log"); }
    void SetUp() override {
        KyScriptEngineFixture::SetUp();
        engine().executeChunk("log = '' function note(...) log = log .. table.concat({...}, ',') .. ';' end");
    }
};

TEST_F(KyCoroutineTest, AChunkGoesOnEveryFrameWithTheElapsedTime) {
    EXPECT_TRUE(
        engine().executeChunkAsCoroutine("note('start') for i = 1, 2 do note(coroutine.yield()) end note('end')"));
    EXPECT_TRUE(engine().executeChunkAsCoroutine("return 1, 2")) << "it ends at once";
    EXPECT_FALSE(engine().executeChunkAsCoroutine("x ="));
    EXPECT_EQ(engine().getNbCoroutines(), 1u);
    EXPECT_EQ(top(), 0);
    engine().resumeCoroutines(0.25);
    engine().resumeCoroutines(0.5);
    EXPECT_EQ(engine().getNbCoroutines(), 0u);
    engine().resumeCoroutines(0.75);
    EXPECT_EQ(log(), "start;0.25;0.5;end;");
    EXPECT_EQ(top(), 0);
}

TEST_F(KyCoroutineTest, AFailedThreadStaysOnTheStackUntilTheNextOperation) {
    constexpr std::size_t cMany = 20000;
    for (std::size_t i = 0; i < cMany; ++i)
        EXPECT_FALSE(engine().executeChunkAsCoroutine("local function deep() error('lost', 0) end deep()"));
    EXPECT_EQ(msOutput, std::vector<std::string>(cMany, "lost"));
    EXPECT_NE(engine().getLastTraceback().find("'deep'"), std::string::npos) << engine().getLastTraceback();
    EXPECT_EQ(top(), 1);
    EXPECT_EQ(lua_type(state(), 1), LUA_TTHREAD);
    EXPECT_TRUE(engine().executeChunk("return 1"));
    EXPECT_EQ(top(), 0);
}

TEST_F(KyCoroutineTest, ResultsAreCountedFromTheBottomOfTheStack) {
    lua_pushnil(state());
    EXPECT_TRUE(engine().executeChunk("return coroutine.create(function() end)"));
    EXPECT_EQ(engine().getNbCoroutines(), 0u);
    EXPECT_TRUE(engine().executeChunk("return coroutine.create(function() end), 2"));
    EXPECT_EQ(engine().getNbCoroutines(), 1u);
    lua_settop(state(), 0);
    engine().executeChunk(
        "co = coroutine.create(function(...) note('first', ...) coroutine.yield() end) return co, co");
    EXPECT_EQ(engine().getNbCoroutines(), 3u) << "registered twice";
    engine().resumeCoroutines(0.5);
    EXPECT_EQ(log(), "first,0.5;");
}

TEST_F(KyCoroutineTest, AnErrorRemovesOneCoroutineOnly) {
    engine().executeChunkAsCoroutine("coroutine.yield() local function bad() error({}) end bad()");
    engine().executeChunkAsCoroutine("while true do note(coroutine.yield()) end");
    engine().resumeCoroutines(1);
    EXPECT_EQ(msOutput, std::vector<std::string>{"(error object is not a string)"});
    EXPECT_NE(engine().getLastTraceback().find("'bad'"), std::string::npos);
    EXPECT_EQ(engine().getNbCoroutines(), 1u);
    engine().resumeCoroutines(2);
    EXPECT_EQ(log(), "1;2;");
}

TEST_F(KyCoroutineTest, ACoroutineThatRunsIsLeftForTheNextFrame) {
    bind("resumeAll", [](double dt) { engine().resumeCoroutines(dt); });
    engine().executeChunk("me = coroutine.create(function(a, b) resumeAll(7) note(a, b) end) return me");
    engine().executeChunk("coroutine.resume(me, 'a', 'b')");
    EXPECT_EQ(log(), "a,b;");
    EXPECT_EQ(engine().getNbCoroutines(), 1u);
    EXPECT_TRUE(msOutput.empty());
    engine().resumeCoroutines(0);
    EXPECT_EQ(msOutput, std::vector<std::string>{"cannot resume dead coroutine"}) << "the script has ended it";
    EXPECT_EQ(engine().getNbCoroutines(), 0u);
}

TEST_F(KyCoroutineTest, ThousandsThatStartOthersMissNoFrameAndAnEagerCollectorTakesNone) {
    bind("launch", [](const std::string& chunk) { engine().executeChunkAsCoroutine(chunk); });
    engine().executeChunk("collectgarbage('setpause', 1)");
    for (int i = 0; i < 5000; ++i)
        engine().executeChunkAsCoroutine("coroutine.yield() old = (old or 0) + 1"
                                         " launch('coroutine.yield() new = (new or 0) + 1')");
    engine().resumeCoroutines(0);
    EXPECT_EQ(text("old") + text("new"), "5000nil");
    EXPECT_EQ(engine().getNbCoroutines(), 5000u);
    engine().resumeCoroutines(0);
    EXPECT_EQ(text("new"), "5000");
    EXPECT_EQ(engine().getNbCoroutines(), 0u);
}

TEST_F(KyCoroutineTest, CallsFromCoroutinesOfTheScriptRunOnThemAndFailedOnesAreForgotten) {
    bind("run", [](const std::string& chunk) {
        std::vector<KyField> results;
        engine().executeChunktWithReturnValues(chunk, results);
        return results.empty() ? KyField() : results[0];
    });
    EXPECT_EQ(text("coroutine.wrap(function() local me = tostring(coroutine.running())"
                   " return me == run('return tostring(coroutine.running())') end)()"),
              "true");
    EXPECT_EQ(text("run('return tostring(coroutine.running())')"), "nil");
    EXPECT_TRUE(engine().executeChunk("for i = 1, 200 do"
                                      " coroutine.resume(coroutine.create(function() bindClass({}) end))"
                                      " coroutine.resume(coroutine.create(function() bindClass() end))"
                                      " collectgarbage() assert(run('return true')) end"));
    EXPECT_TRUE(msOutput.empty()) << lastOutput();
}

TEST_F(KyCoroutineTest, TheTaskManagerResumesThoseOfEveryEngineOnceAFrame) {
    engine().executeChunkAsCoroutine("while true do note(coroutine.yield()) end");
    KyScriptEngine other;
    other.executeChunkAsCoroutine("coroutine.yield()");
    KyMainTaskManager::get().update();
    EXPECT_EQ(log(), "-0.001;");
    EXPECT_EQ(other.getNbCoroutines(), 0u);
}

TEST_F(KyCoroutineTest, TheElapsedTimeIsWholeMillisecondsAndLosesNothing) {
    KyResumeCoroutinesTask task(engine());
    EXPECT_EQ(task.takeElapsedTime(), -0.001);
    const auto begin = std::chrono::steady_clock::now();
    double sum = 0;
    for (int i = 0; i < 40; ++i) {
        std::this_thread::sleep_for(std::chrono::microseconds(1700));
        const double elapsed = task.takeElapsedTime();
        EXPECT_NEAR(elapsed * 1000, std::round(elapsed * 1000), 1e-9);
        sum += elapsed;
    }
    const std::chrono::duration<double> whole = std::chrono::steady_clock::now() - begin;
    EXPECT_NEAR(sum, whole.count(), 0.003);
}

} // namespace

// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyScriptSandbox.h"

#include "KyLuaTestObjects.h"
#include "KyScriptTestFixture.h"

#include "KyDynamicObject.h"
#include "KyException.h"
#include "KyMeshNode.h"

#include <chrono>
#include <thread>
#include <vector>

namespace {

/// What native code does for a script in a sandbox.
class KyScriptSandboxNativeTest : public KyScriptTestFixture {
protected:
    void SetUp() override {
        KyDynamicObject::initializeType();
        KyMeshNode::initializeType();
        KyScriptTestFixture::SetUp();
        ASSERT_EQ(engine().bindInstance(&mLamp, "lamp"), 1);
        mLimits.instructions = 2'000'000;
        mLimits.seconds = 3;
        mLimits.output = 4096;
        mLimits.message = 2000;
        ASSERT_TRUE(engine().editSandbox().enable(mLimits));
    }

    KyScriptLimits mLimits;
    LuaTestLamp mLamp;
};

TEST_F(KyScriptSandboxNativeTest, LooksAtTheClockBeforeEachCall) {
    int nbCalls = 0;
    mLamp.mHook = [&nbCalls] {
        ++nbCalls;
        std::this_thread::sleep_for(std::chrono::milliseconds(60));
    };
    mLimits.seconds = 0.05;
    ASSERT_TRUE(engine().editSandbox().enable(mLimits));
    for (const char* chunk : {"for i = 1, 30 do lamp:callHook() end", "lamp:callHook() lamp.Power = 1 lamp:callHook()",
                              "lamp:callHook() createKyObject('KyDynamicObject') lamp:callHook()"}) {
        nbCalls = 0;
        EXPECT_NE(run(chunk).find("more than 0.05 seconds"), std::string::npos) << chunk << ": " << msOutput;
        EXPECT_EQ(nbCalls, 1) << chunk;
    }
}

TEST_F(KyScriptSandboxNativeTest, BoundsTheSegmentsOfShapes) {
    const std::string make = "local n = createKyObject('KyMeshNode') ";
    expectOutput({
        {make + "n:makeSphere(1, 1e9)", "more than 512 segments"},
        {make + "n:makeCone(1, 2, '513')", "more than 512 segments"},
        {make + "n:makeCylinder(1, 2, 1e300)", "more than 512 segments"},
        {make + "n.makeTorus(n, 2, 1, 513)", "more than 512 segments"},
        {make + "for i = 1, 1e6 do n:makeSphere(1, 512) end", "sandbox: more than"},
    });
    expectRuns(make + "n:makeSphere(1000) n:makeCylinder(1000, 2000) n:makeTorus(1000, 600, 16) n:makeGrid(1e3, 1e3)");
}

TEST_F(KyScriptSandboxNativeTest, RangesThatNoIntHoldsAreRefusedOrEmpty) {
    for (const char* const range :
         {"0, 2^31 - 1", "-1, 2^31 - 1", "-2^30, 2^31 - 1", "-2^31, 0", "-2^31, 2^31 - 1", "1, 2^32", "-2^53, 2^53",
          "1, 8001", "0/0", "1, 0/0", "0/0, 0/0", "1, 1/0", "-1/0, 1/0", "1/0, 1/0", "-1/0, -1/0"})
        for (const char* const table : {"{}", "{1, 2, 3}"})
            EXPECT_NE(run("unpack(" + std::string(table) + ", " + range + ")").find("too many results to unpack"),
                      std::string::npos)
                << range << ": " << msOutput;
    expectOutput({
        {"unpack()", "table expected"},
        {"unpack(nil, 0, 2^31 - 1)", "table expected"},
        {"unpack('abc', 1, 2)", "table expected"},
        {"unpack({}, {})", "number expected"},
        {"for i = 1, 1e6 do unpack({}, 1, 7000) end", "sandbox: more than 2000000 instructions"},
    });
    expectTexts({
        {"unpack({1, 2, 3})", "1, 2, 3"},
        {"unpack({1, 2, 3}, '2')", "2, 3"},
        {"unpack({1, 2, 3}, 1.9, 2.9)", "1, 2"},
        {"unpack({1, nil, 3}, 0, 4)", "nil, 1, nil, 3, nil"},
        {"select('#', unpack({}, 2^53 - 1, 2^53))", "2"},
        {"select('#', unpack({}, 2^31, 1)), select('#', unpack({}, 1/0, 0))", "0, 0"},
        {"select('#', unpack({}, -6999, 0))", "7000"},
        {"('abc'):find('b', 0/0)", "2, 2"},
        {"('abc'):match('b.', 0/0), ('abc'):find('b', 1/0), ('abc'):find('b', -1/0)", "bc, nil, 2, 2"},
    });
}

TEST_F(KyScriptSandboxNativeTest, CutsFloodsOfErrorsInSlotsAndOfReports) {
    static std::size_t nbBytes = 0;
    const auto former = KyException::setReportHandler([](const std::string& text) { nbBytes += text.size(); });
    mLamp.mHook = [] { engine().executeChunk("error(('x'):rep(1000))"); };
    const std::string flood = "for i = 1, 1e4 do pcall(lamp.callHook, lamp) end";
    EXPECT_NE(run(flood).find("more than 4096 bytes printed"), std::string::npos);
    EXPECT_LT(msOutput.size(), 2 * mLimits.output);
    mLamp.mHook = [] { KyException::create(std::string(100'000, 'x')); };
    EXPECT_NE(run(flood).find("more than 4096 bytes printed"), std::string::npos);
    EXPECT_GT(nbBytes, mLimits.message);
    EXPECT_LE(nbBytes, mLimits.output);
    // Those of the host, and what ends a run, are told in full.
    nbBytes = 0;
    KyException::create(std::string(100'000, 'x'));
    EXPECT_EQ(nbBytes, 100'000u);
    KyScriptEngine::setPrintCallback(nullptr);
    nbBytes = 0;
    run(flood);
    EXPECT_GT(nbBytes, mLimits.message) << "of the hook";
    EXPECT_LT(nbBytes, mLimits.output + mLimits.message);
    nbBytes = 0;
    run("while true do end");
    EXPECT_GT(nbBytes, 20u);
    KyException::setReportHandler(former);
}

TEST_F(KyScriptSandboxNativeTest, AProcessThatIsFullAlreadyLeavesScriptsAMargin) {
    mLimits.processMemory = std::size_t{16} << 20;
    ASSERT_TRUE(engine().editSandbox().enable(mLimits));
    std::vector<std::vector<char>> blocks;
    // More than the heap keeps of what was freed.
    mLamp.mHook = [&blocks] { blocks.emplace_back(std::size_t{96} << 20, 'x'); };
    const char* const chunk = "lamp:callHook() local t = os.clock() while os.clock() < t + 0.01 do end";
    for (int i = 0; i < 2; ++i)
        EXPECT_NE(run(chunk).find("bytes of the process"), std::string::npos) << msOutput;
    EXPECT_EQ(blocks.size(), 2u);
    expectRuns("local t = os.clock() while os.clock() < t + 0.01 do end");
}

} // namespace

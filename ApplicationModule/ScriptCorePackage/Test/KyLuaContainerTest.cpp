// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyLuaTestFixture.h"

class KyLuaContainerTest : public KyLuaTestFixture {
protected:
    void SetUp() override {
        KyLuaTestFixture::SetUp();
        engine().bindInstance(&mLamp, "lamp");
        engine().bindInstance(&mFailing, "failing");
        run("proxy = lamp.Targets bad = failing.Values");
    }

    LuaTestLamp mLamp;
    LuaTestFailing mFailing;
};

namespace {

/// Calls with `x` as the container, and how their errors begin.
constexpr std::pair<const char*, const char*> cOperations[] = {
    {"get attribute on container failed: ", "local y = meta.__index(x, 0)"},
    {"set attribute on container failed: ", "meta.__newindex(x, 0, 1)"},
    {"get length on container failed: ", "local y = meta.__len(x)"},
    {"get length on container failed: ", "local y = size(x)"},
    {"add value on attribute container failed: ", "insert(x, 0, 1)"},
    {"remove value on attribute container failed: ", "remove(x, 0)"},
};

/// Chunks that make `x`, and how the errors end.
constexpr std::pair<const char*, const char*> cArguments[] = {
    {"invalid table.", "x = nil"},
    {"invalid table.", "x = newproxy()"},
    {"invalid table.", "x = lamp"},
    {"invalid object.", "x = {}"},
    {"invalid object.", "x = {__tessaly_object = newproxy(true), __tessaly_attr = proxy.__tessaly_attr}"},
    {"invalid object.", "x = {__tessaly_object = proxy, __tessaly_attr = proxy.__tessaly_attr}"},
    {"NULL object.", "local made = createKyObject('LuaTestLamp') x = made.Targets made:destroy()"},
    {"invalid attribute.", "x = {__tessaly_object = lamp}"},
    {"invalid attribute.", "x = {__tessaly_object = lamp, __tessaly_attr = io.stdout}"},
    {"invalid attribute.", "x = {__tessaly_object = failing, __tessaly_attr = proxy.__tessaly_attr}"},
};

} // namespace

TEST_F(KyLuaContainerTest, WrongArgumentsAreRefusedWithTheOperationsPrefix) {
    run("meta = getmetatable(proxy) size = proxy.size insert = proxy.insert remove = proxy.remove");
    for (const auto& [text, chunk] : cArguments)
        for (const auto& [prefix, call] : cOperations) {
            run(chunk);
            expectErrors({{call, std::string(prefix) + text}});
        }
}

TEST_F(KyLuaContainerTest, IndicesStartAtZeroAndElementsAreReplacedInsertedAndRemoved) {
    EXPECT_EQ(eval("#proxy, proxy:size(), proxy[0], proxy[1], proxy['2'], proxy[1.9]"), "3, 3, 10, 20, 30, 20");
    mLamp.mTargets.push_back(40);
    EXPECT_EQ(eval("#proxy, proxy[3]"), "4, 40");
    expectRuns("proxy[1] = 5 proxy:insert(0, 1) proxy.insert(proxy, #proxy, 9) proxy:remove(1)");
    EXPECT_EQ(mLamp.mTargets, (std::vector<double>{1, 5, 30, 40, 9}));
    EXPECT_EQ(evalField("proxy"), KyField(std::vector<KyField>{1.0, 5.0, 30.0, 40.0, 9.0}));
}

TEST_F(KyLuaContainerTest, AccessBeyondTheEndFailsAndNamesTheRange) {
    expectErrors("get attribute on container failed: index out of bounds",
                 {"return proxy[3]", "return proxy[-1]", "return proxy[0/0]", "return proxy[1/0]",
                  "return proxy[4294967296]", "return proxy[4294967295]", "return proxy[-0.5]"});
    const std::string failed = "set attribute on container failed: ";
    const std::string range = failed + "index out of range, ";
    expectErrors({{"proxy[#proxy] = 1", range + "3 given, valid is [0,2]"},
                  {"proxy[-1] = 1", range + "-1 given, valid is [0,2]"},
                  {"proxy[0/0] = 1", range + "nan given, valid is [0,2]"},
                  {"proxy[0] = 'text'", failed + "setValue call failed"}});
    expectErrors("add value on container failed: addValue call failed",
                 {"proxy:insert(0, {})", "proxy:insert(7, 1)", "proxy:remove(-1)"});
    EXPECT_EQ(mLamp.mTargets.size(), 3u);
    mLamp.mTargets.clear();
    expectErrors({{"proxy[0] = 1", failed + "empty container."}});
}

TEST_F(KyLuaContainerTest, FailingAccessorsHaveTheirTexts) {
    EXPECT_EQ(eval("bad[1]"), "1");
    mFailing.mContainer->mReadWorks = false;
    expectErrors({{"return bad[0]", "get attribute on container failed: getValue call failed"}});
    mFailing.mContainer->mCountWorks = false;
    expectErrors({{"return bad[0]", "get attribute on container failed: getNbValues call failed"},
                  {"bad[0] = 1", "set attribute on container failed: getNbValues call failed."},
                  {"return #bad", "get length on container failed: getNbValues call failed."}});
    mFailing.mContainer.reset();
    expectErrors({{"return bad[0]", "get attribute on container failed: invalid attribute."}});
}

TEST_F(KyLuaContainerTest, APlainTableWithTheFieldsWorksLikeAProxy) {
    run("table = {} for _, name in ipairs{'__tessaly_object', '__tessaly_attr', 'size', 'insert', 'remove'} do "
        "table[name] = proxy[name] end setmetatable(table, getmetatable(proxy))");
    EXPECT_EQ(eval("table:size(), table[1], proxy.size(table)"), "3, 20, 3");
    expectRuns("table[0] = 4 table:insert(3, 5) table:remove(1)");
    EXPECT_EQ(mLamp.mTargets, (std::vector<double>{4, 30, 5}));
}

TEST_F(KyLuaContainerTest, AProxyKeepsItsInstanceAliveAndNoticesAReplacedEnvironment) {
    run("made = createKyObject('LuaTestLamp') targets = made.Targets made = nil");
    collect();
    EXPECT_EQ(eval("targets[0]"), "10");
    run("deleteKyObject(targets.__tessaly_object) debug.getfenv(proxy).__tessaly_object = nil");
    collect();
    expectErrors({{"return targets[0]", "get attribute on container failed: NULL object."},
                  {"return proxy[0]", "get attribute on container failed: invalid object."}});
}

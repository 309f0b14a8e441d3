// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyLuaTestFixture.h"

class KyLuaContainerTest : public KyLuaTestFixture {
protected:
    void SetUp() override {
        KyLuaTestFixture::SetUp();
        engine().bindInstance(&mLamp, "lamp");
        engine().bindInstance(&mFailing, "failing");
        run("proxy = lamp.Targets");
    }

    LuaTestLamp mLamp;
    LuaTestFailing mFailing;
};

TEST_F(KyLuaContainerTest, IndicesStartAtZeroAndLengthIsTheCount) {
    EXPECT_EQ(eval("#proxy"), "3");
    EXPECT_EQ(eval("proxy:size()"), "3");
    EXPECT_EQ(eval("proxy[0] .. proxy[1] .. proxy[2]"), "102030");
    mLamp.mTargets.push_back(40);
    EXPECT_EQ(eval("#proxy .. ':' .. proxy[3]"), "4:40");
}

TEST_F(KyLuaContainerTest, ElementsAreReplacedInsertedAndRemoved) {
    EXPECT_EQ(run("proxy[1] = 5 proxy:insert(0, 1) proxy.insert(proxy, #proxy, 9) proxy:remove(1)"), "");
    EXPECT_EQ(mLamp.mTargets, (std::vector<double>{1, 5, 30, 9}));
}

TEST_F(KyLuaContainerTest, TheFieldsCanBeRead) {
    EXPECT_EQ(eval("proxy.__tessaly_object == lamp"), "true");
    EXPECT_EQ(eval("type(proxy.__tessaly_attr)"), "userdata");
    for (const char* name : {"size", "insert", "remove"})
        EXPECT_EQ(eval("type(proxy." + std::string(name) + ")"), "function") << name;
    EXPECT_EQ(eval("getmetatable(proxy) == getmetatable(lamp.Targets)"), "true");
    EXPECT_TRUE(contains(eval("proxy.nothing"), "number expected"));
}

TEST_F(KyLuaContainerTest, ReadingBeyondTheEndFails) {
    for (const char* index : {"3", "-1", "0/0", "1/0", "-1/0", "1e300", "4294967296", "4294967295", "-0.5"})
        EXPECT_TRUE(contains(eval("proxy[" + std::string(index) + "]"),
                             "get attribute on container failed: index out of bounds"))
            << index;
    EXPECT_EQ(eval("proxy[1.9]"), "20");
    EXPECT_EQ(eval("proxy['1']"), "20");
}

TEST_F(KyLuaContainerTest, WritingBeyondTheEndNamesTheRange) {
    EXPECT_TRUE(contains(run("proxy[#proxy] = 1"),
                         "set attribute on container failed: index out of range, 3 given, valid is [0,2]"));
    EXPECT_TRUE(contains(run("proxy[-1] = 1"),
                         "set attribute on container failed: index out of range, -1 given, valid is [0,2]"));
    EXPECT_TRUE(contains(run("proxy[0/0] = 1"), "index out of range, nan given, valid is [0,2]"));
    EXPECT_TRUE(contains(run("proxy[1e300] = 1"), "index out of range, 1e+300 given, valid is [0,2]"));
    EXPECT_EQ(mLamp.mTargets.size(), 3u);
    mLamp.mTargets.clear();
    EXPECT_TRUE(contains(run("proxy[0] = 1"), "set attribute on container failed: empty container."));
}

TEST_F(KyLuaContainerTest, AValueThatDoesNotConvertFails) {
    EXPECT_TRUE(contains(run("proxy[0] = 'text'"), "set attribute on container failed: setValue call failed"));
    EXPECT_TRUE(contains(run("proxy:insert(0, {})"), "add value on container failed: addValue call failed"));
}

TEST_F(KyLuaContainerTest, FailedInsertionAndRemovalReportTheSameText) {
    EXPECT_TRUE(contains(run("proxy:insert(7, 1)"), "add value on container failed: addValue call failed"));
    EXPECT_TRUE(contains(run("proxy:remove(3)"), "add value on container failed: addValue call failed"));
    EXPECT_TRUE(contains(run("proxy:remove(-1)"), "add value on container failed: addValue call failed"));
}

TEST_F(KyLuaContainerTest, FailingAccessorsHaveTheirTexts) {
    run("bad = failing.Values");
    EXPECT_EQ(eval("bad[1]"), "1");
    mFailing.mContainer->mReadWorks = false;
    EXPECT_TRUE(contains(eval("bad[0]"), "get attribute on container failed: getValue call failed"));
    mFailing.mContainer->mCountWorks = false;
    EXPECT_TRUE(contains(eval("bad[0]"), "get attribute on container failed: getNbValues call failed"));
    EXPECT_TRUE(contains(run("bad[0] = 1"), "set attribute on container failed: getNbValues call failed."));
    EXPECT_TRUE(contains(eval("#bad"), "get length on container failed: getNbValues call failed."));
    EXPECT_TRUE(contains(eval("bad:size()"), "get length on container failed: getNbValues call failed."));
}

namespace {

struct Operation {
    const char* prefix;
    /// A call with `x` as the container.
    const char* call;
};

constexpr Operation cOperations[] = {
    {"get attribute on container failed: ", "local y = meta.__index(x, 0)"},
    {"set attribute on container failed: ", "meta.__newindex(x, 0, 1)"},
    {"get length on container failed: ", "local y = meta.__len(x)"},
    {"get length on container failed: ", "local y = size(x)"},
    {"add value on attribute container failed: ", "insert(x, 0, 1)"},
    {"remove value on attribute container failed: ", "remove(x, 0)"},
};

struct Argument {
    const char* text;
    /// Makes `x`.
    const char* chunk;
};

constexpr Argument cArguments[] = {
    {"invalid table.", "x = nil"},
    {"invalid table.", "x = 5"},
    {"invalid table.", "x = io.stdout"},
    {"invalid table.", "x = newproxy()"},
    {"invalid table.", "x = lamp"},
    {"invalid object.", "x = {}"},
    {"invalid object.", "x = {__tessaly_object = 5}"},
    {"invalid object.", "x = {__tessaly_object = io.stdout, __tessaly_attr = proxy.__tessaly_attr}"},
    {"invalid object.", "x = {__tessaly_object = newproxy(true), __tessaly_attr = proxy.__tessaly_attr}"},
    {"invalid object.", "x = {__tessaly_object = proxy, __tessaly_attr = proxy.__tessaly_attr}"},
    {"invalid attribute.", "x = {__tessaly_object = lamp}"},
    {"invalid attribute.", "x = {__tessaly_object = lamp, __tessaly_attr = 5}"},
    {"invalid attribute.", "x = {__tessaly_object = lamp, __tessaly_attr = io.stdout}"},
    {"invalid attribute.", "x = {__tessaly_object = failing, __tessaly_attr = proxy.__tessaly_attr}"},
};

} // namespace

TEST_F(KyLuaContainerTest, WrongArgumentsAreRefusedWithTheOperationsPrefix) {
    run("meta = getmetatable(proxy) size = proxy.size insert = proxy.insert remove = proxy.remove");
    for (const Argument& argument : cArguments)
        for (const Operation& operation : cOperations) {
            run(argument.chunk);
            EXPECT_TRUE(contains(run(operation.call), std::string(operation.prefix) + argument.text))
                << argument.chunk << " / " << operation.call << ": " << msOutput;
        }
}

TEST_F(KyLuaContainerTest, APlainTableWithTheFieldsWorksLikeAProxy) {
    run("table = {} for _, name in ipairs{'__tessaly_object', '__tessaly_attr', 'size', 'insert', 'remove'} do "
        "table[name] = proxy[name] end setmetatable(table, getmetatable(proxy))");
    EXPECT_EQ(eval("table:size()"), "3");
    EXPECT_EQ(eval("table[1]"), "20");
    EXPECT_EQ(run("table[0] = 4 table:insert(3, 5) table:remove(1)"), "");
    EXPECT_EQ(mLamp.mTargets, (std::vector<double>{4, 30, 5}));
    EXPECT_EQ(eval("proxy.size(table)"), "3");
}

TEST_F(KyLuaContainerTest, AReplacedEnvironmentIsNoticed) {
    run("debug.getfenv(proxy).__tessaly_object = nil collectgarbage() collectgarbage()");
    EXPECT_TRUE(contains(eval("proxy[0]"), "get attribute on container failed: invalid object."));
    run("debug.setfenv(proxy, {})");
    EXPECT_TRUE(contains(eval("#proxy"), "get length on container failed: invalid object."));
}

TEST_F(KyLuaContainerTest, AProxyKeepsItsInstanceAlive) {
    run("made = createKyObject('LuaTestLamp') targets = made.Targets made = nil");
    collect();
    EXPECT_EQ(eval("targets[0]"), "10");
    run("deleteKyObject(targets.__tessaly_object)");
    EXPECT_TRUE(contains(eval("targets[0]"), "get attribute on container failed: NULL object."));
}

TEST_F(KyLuaContainerTest, TheProxyOfADestroyedObjectHasANullObject) {
    run("made = createKyObject('LuaTestLamp') targets = made.Targets made:destroy()");
    EXPECT_TRUE(contains(eval("targets[0]"), "get attribute on container failed: NULL object."));
    EXPECT_TRUE(contains(run("targets[0] = 1"), "set attribute on container failed: NULL object."));
    EXPECT_TRUE(contains(eval("#targets"), "get length on container failed: NULL object."));
    EXPECT_TRUE(contains(run("targets:insert(0, 1)"), "add value on attribute container failed: NULL object."));
    EXPECT_TRUE(contains(run("targets:remove(0)"), "remove value on attribute container failed: NULL object."));
}

TEST_F(KyLuaContainerTest, ARemovedAttributeOfOneObjectIsInvalid) {
    run("bad = failing.Values");
    mFailing.mContainer.reset();
    EXPECT_TRUE(contains(eval("bad[0]"), "get attribute on container failed: invalid attribute."));
    EXPECT_TRUE(contains(eval("#bad"), "get length on container failed: invalid attribute."));
}

TEST_F(KyLuaContainerTest, AProxyCrossesAsAListOfItsValues) {
    const KyField field = evalField("lamp.Targets");
    const auto* values = field.get<std::vector<KyField>>();
    ASSERT_NE(values, nullptr);
    ASSERT_EQ(values->size(), 3u);
    EXPECT_EQ(values->at(2).toDouble(), 30);
}

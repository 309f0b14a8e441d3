// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyScriptEngineFixture.h"

namespace {

class KyScriptDebuggingTest : public KyScriptEngineFixture {
protected:
    static std::string parameter(const std::string& name, const std::string& category) {
        const KyDynamicObject& entity = *engine().getDebugEntity();
        const KyAttributeInterface* attribute = entity.findAttribute(name, category);
        KyField value;
        return attribute && attribute->getValue(entity, value) ? value.toString() : "absent";
    }

    /// Inspects the Lua function that calls it.
    static int inspect(lua_State* running) {
        lua_Debug record;
        if (lua_getstack(running, 1, &record) == 1)
            engine().getLocalVariables(running, &record);
        engine().getGlobalVariables(running, &record);
        return 0;
    }
};

TEST_F(KyScriptDebuggingTest, BreakpointsBelongToChunkNames) {
    EXPECT_FALSE(engine().needToBreak("a", 3));
    engine().executeChunk("x = 1", "a", {3, 5});
    EXPECT_TRUE(engine().needToBreak("a", 3));
    EXPECT_FALSE(engine().needToBreak("a", 4) || engine().needToBreak("b", 3));
    engine().executeChunk("x = 1", "a", {});
    EXPECT_TRUE(engine().needToBreak("a", 5));
    engine().executeChunk("x = 1", "a", {4});
    EXPECT_FALSE(engine().needToBreak("a", 3));
    engine().clearBreakpoints("a");
    EXPECT_FALSE(engine().needToBreak("a", 4));
}

TEST_F(KyScriptDebuggingTest, ParametersAreFoundByNameAndCategory) {
    EXPECT_NE(engine().getOrCreateLuaDebuggerParameter("x", "category=Locals;"), nullptr);
    EXPECT_NE(engine().addOrEditLuaDebuggerParameter("x", KyField(3), "category=Globals;"), nullptr);
    EXPECT_NE(engine().addOrEditLuaDebuggerParameter("x", KyField("text"), "category=Locals;"), nullptr);
    EXPECT_EQ(parameter("x", "Globals"), "3");
    EXPECT_EQ(parameter("x", "Locals"), "text");
    EXPECT_NE(engine().addOrEditLuaDebuggerParameter("x", KyField(true), "category=Locals;"), nullptr);
    EXPECT_EQ(parameter("x", "Globals"), "3");
    EXPECT_EQ(engine().addOrEditLuaDebuggerParameter("y", KyField(), "category=Locals;"), nullptr);
    EXPECT_EQ(engine().getOrCreateLuaDebuggerParameter("x", "category=Globals;"),
              engine().getDebugEntity()->findAttribute("x", "Globals"));
}

TEST_F(KyScriptDebuggingTest, VariablesAreFiledAndForgotten) {
    lua_register(state(), "inspect", &KyScriptDebuggingTest::inspect);
    engine().executeChunk("count = 4 [5] = nil");
    engine().executeChunk("count = 4 _G[7] = 'numeric key' local a, b, c, d = 1, 'two', true, {} for i = 5, 5 do"
                          " local a = 'inner' inspect() end");
    const std::pair<const char*, const char*> cLocals[] = {
        {"a", "inner"}, {"b", "two"}, {"d", "table"}, {"i", "5"}, {"(for index)", "absent"}};
    for (const auto& [name, value] : cLocals)
        EXPECT_EQ(parameter(name, "Locals"), value) << name;
    EXPECT_EQ(parameter("count", "Globals") + parameter("print", "Globals") + parameter("7", "Globals"),
              "4absentabsent");
    engine().executeChunk("count = nil local e = 1 inspect()");
    EXPECT_EQ(parameter("a", "Locals") + parameter("e", "Locals") + parameter("count", "Globals"), "absent1absent");
}

TEST_F(KyScriptDebuggingTest, TheHookCoversCoroutinesAndSurvivesAReset) {
    engine().executeChunk("co = coroutine.create(function() coroutine.yield() end) return co");
    lua_getglobal(state(), "co");
    lua_State* thread = lua_tothread(state(), -1);
    lua_pop(state(), 1);
    engine().setHook();
    EXPECT_NE(lua_gethook(state()), nullptr);
    EXPECT_EQ(lua_gethookmask(state()), 5);
    EXPECT_EQ(lua_gethook(thread), lua_gethook(state()));
    EXPECT_TRUE(engine().executeChunk("for i = 1, 10 do local x = i end"));
    engine().removeHook();
    EXPECT_EQ(lua_gethook(thread), nullptr);
    EXPECT_EQ(lua_gethook(state()), nullptr);
    engine().setHook();
    engine().resetLuaState();
    EXPECT_NE(lua_gethook(state()), nullptr);
}

} // namespace

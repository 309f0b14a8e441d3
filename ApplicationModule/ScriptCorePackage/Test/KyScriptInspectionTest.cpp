// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyLuaTestObjects.h"
#include "KyScriptDebuggerFixture.h"

#include <tuple>

namespace {

class KyScriptInspectionTest : public KyScriptDebuggerFixture {};

TEST_F(KyScriptInspectionTest, FramesShowWhatTheirFunctionsSee) {
    std::string seen;
    mLook = [&seen] {
        for (const KyScriptFrame& frame : debugger().getFrames(1))
            seen += frame.kind + ' ' + frame.name + ' ' + frame.chunkName + std::to_string(frame.line) + ", ";
        seen += locals(1, 0) + "| " + locals(1, 0, 1) + "| " + locals(1, 2) + "| " + evaluate("t.list[2] + x + up");
        seen += " " + std::to_string(debugger().getNbFrames(1)) + std::to_string(debugger().getFrames(1, 1, 1).size());
        seen += locals(1, 9) + locals(77) + list(4711);
    };
    run("local up = 10\nlocal function f(x) local x = x + 1\n  local t = {list = {1, 2}, [3] = 'three', ok = true}\n"
        "  return up, t\nend\n(function() local r = f(1) end)()",
        4);
    EXPECT_EQ(seen, "Lua f =test4, Lua  =test6, main  =test6, x=2 t=table of 3 | up=10 | up=10 f=function test:2 | 14 "
                    "31nonenone");
    EXPECT_EQ(locals(1), "none");
    EXPECT_EQ(evaluate("1"), "failed: no script stands still");
    EXPECT_EQ(evaluate("1 + 1", 0), "2");
}

TEST_F(KyScriptInspectionTest, TablesAndObjectsOpenStepByStep) {
    const struct {
        const char* value;
        const char* entries;
    } cCases[] = {
        {"{5, 6, x = 'a\"\\n', [true] = 1.5, [-1] = {}}", "[-1]=table of 0 [1]=5 [2]=6 [true]=1.5 x=\"a\\\"\\n\" "},
        {"setmetatable({1}, {__index = error})", "[1]=1 (metatable)=table of 1 "},
        {"{}", ""},
        {"'text'", ""},
    };
    for (const auto& [value, entries] : cCases) {
        std::string seen;
        mLook = [&seen] { seen = list(findReference(debugger().getScopes(1, 0)[0].reference, "v")); };
        run("local v = " + std::string(value) + "\nx = v", 2);
        EXPECT_EQ(seen, entries) << value;
    }
    std::string pages;
    mLook = [&pages] {
        const int reference = findReference(debugger().getScopes(1, 0)[0].reference, "v");
        pages = list(reference, 8, 3) + "| " + list(reference, 98) + "| " + list(reference, 200, 5) + "| " +
                list(debugger().getScopes(1, 0)[0].reference, 1, 1);
    };
    run("local v, w = {}, 1 for i = 1, 99 do v[i] = i end\nx = v", 2);
    EXPECT_EQ(pages, "[9]=9 [10]=10 [11]=11 | [99]=99 | | w=1 ");
}

TEST_F(KyScriptInspectionTest, ObjectsOpenAndTakeValues) {
    LuaTestLamp lamp;
    engine().bindInstance(&lamp, "lamp");
    std::string seen;
    mLook = [&seen] {
        const int reference = findReference(debugger().getScopes(1, 0)[0].reference, "v");
        const auto attributes = debugger().getVariables(reference);
        for (const KyScriptVariable& attribute : attributes)
            seen += attribute.name + (attribute.isWritable ? "" : "!") +
                    (attribute.name == "Failing" ? "" : '=' + attribute.value) + ' ';
        const int targets = findReference(reference, "Targets");
        seen += list(targets, 1);
        seen += set(reference, "Power", "v.Count + 2.5") + ' ';
        seen += set(targets, "[2]", "7");
    };
    run("local v = lamp\nx = v", 2);
    EXPECT_EQ(seen, "Power=1 Count=0 Label=\"\" On=false Position=0 0 0 Partner=nil Fixed!=1 Refusing=1 Failing! "
                    "Targets=userdata [1]=20 [2]=30 2.5 7");
    EXPECT_EQ(lamp.mPower + lamp.mTargets[2], 9.5);
}

TEST_F(KyScriptInspectionTest, VariablesCanBeGivenValues) {
    std::string seen;
    mLook = [&seen] {
        const auto scopes = debugger().getScopes(1, 0);
        const int table = findReference(scopes[0].reference, "t");
        const int inner = findReference(table, "inner");
        const std::tuple<int, const char*, const char*> cSettings[] = {
            {scopes[0].reference, "x", "x * 5 + up"},
            {scopes[1].reference, "up", "'new'"},
            {scopes[2].reference, "global", "{}"},
            {table, "[1]", "nil"},
            {inner, "deep", "t"},
            {scopes[0].reference, "absent", "1"},
            {table, "[9]", "1"},
            {scopes[0].reference, "x", "1 +"},
            {999, "x", "1"},
        };
        for (const auto& [reference, name, expression] : cSettings)
            seen += set(reference, name, expression) + ' ';
        for (const char* expression : {"x = x + 1", "made = x", "up = up .. 'er'", "f(", "error('oh')"})
            seen += evaluate(expression) + ' ';
    };
    run("global = 1 local up = 2\nlocal function f(x, t)\n  local y = 1\n  seen = tostring(x) .. up .. type(global) .."
        " tostring(t[1]) .. tostring(t.inner.deep == t) end f(3, {1, inner = {deep = 1}})",
        3);
    EXPECT_EQ(seen, "17 \"new\" table of 0 nil table of 1 failed: no such variable failed: no such variable "
                    "failed: expression:1: unexpected symbol near '<eof>' failed: no such variable nil nil nil "
                    "failed: expression:1: unexpected symbol near '<eof>' failed: expression:1: oh ");
    EXPECT_EQ(text("seen") + text("made"), "18newertableniltrue18");
}

} // namespace

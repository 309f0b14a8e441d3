// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyScriptEngineFixture.h"

namespace {

using KyLuaChunksTest = KyScriptEngineFixture;

TEST_F(KyLuaChunksTest, ValuesArePrintedExactly) {
    constexpr std::pair<const char*, const char*> cCases[] = {
        {"tprint(5)", "5\n"},
        {"tprint(nil)", "nil\n"},
        {"tprint({})", "{\n}\n"},
        {"local p = newproxy(true) getmetatable(p).__tostring = function() error('x') end tprint(p)",
         "Error: Cannot print userdata\n"},
        {"tprint({a = 1})", "{\n    a = number: 1,\n}\n"},
        {"tprint({'b'})", "{\n    1 = string: b,\n}\n"},
        {"tprint({a = false})", "{\n    a = false,\n}\n"},
        {"tprint({a = print})", "{\n    a = function,\n}\n"},
        {"tprint({[true] = 1})", "{\n    true = number: 1,\n}\n"},
        {"tprint({a = 1}, 3)", "        {\n            a = number: 1,\n        },\n"},
        {"tprint({a = {b = {c = 2}}})",
         "{\n    a = \n    {\n        b = \n        {\n            c = number: 2,\n        },\n    },\n}\n"},
        {"local p = newproxy(true) getmetatable(p).__index = {__tostring = function() return 'me' end} tprint({p})",
         "{\n    1 = userdata: me,\n}\n"},
        {"local t = {} t.t = t tprint(t)", "{\n    t = table,\n}\n"},
        {"local s = {} tprint({s, s})", "{\n    1 = \n    {\n    },\n    2 = \n    {\n    },\n}\n"},
        {"local real = type function type(v) return real(v) == 'userdata' and 'entity' or real(v) end"
         " local p = newproxy(true) getmetatable(p).__index = {getName = function() return 'lamp' end} tprint({p})",
         "{\n    1 = Object: lamp,\n}\n"},
        {"ldb(setmetatable({}, {x = 1}))", "{\n    x = number: 1,\n}\n"},
        {"ldb(5)", "nil\n"}};
    ASSERT_TRUE(engine().executeChunk("local tostring = tostring"
                                      " function print(v) printed = printed .. tostring(v) .. '\\n' end"));
    for (const auto& [call, printed] : cCases) {
        ASSERT_TRUE(engine().executeChunk("printed = '' " + std::string(call))) << lastOutput();
        EXPECT_EQ(text("printed"), printed) << call;
    }
}

TEST_F(KyLuaChunksTest, AllGlobalsArePrintedInBoundedSpace) {
    EXPECT_TRUE(engine().executeChunk("lines = 0 function print() lines = lines + 1 end tprint(_G)"));
    EXPECT_LT(evaluate("lines").front().toInt(), 20000);
}

} // namespace

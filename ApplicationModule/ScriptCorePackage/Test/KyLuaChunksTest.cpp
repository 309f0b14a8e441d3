// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyScriptEngineFixture.h"

namespace {

struct PrintCase {
    const char* label;
    const char* call;
    const char* printed;
};

void PrintTo(const PrintCase& print, std::ostream* stream) {
    *stream << print.label;
}

class KyLuaChunksTest : public KyScriptEngineFixture, public ::testing::WithParamInterface<PrintCase> {};

TEST_P(KyLuaChunksTest, PrintsExactly) {
    ASSERT_TRUE(engine().executeChunk("printed = '' local tostring = tostring"
                                      " function print(v) printed = printed .. tostring(v) .. '\\n' end"));
    ASSERT_TRUE(engine().executeChunk(GetParam().call)) << lastOutput();
    EXPECT_EQ(text("printed"), GetParam().printed);
}

INSTANTIATE_TEST_SUITE_P(
    Values, KyLuaChunksTest,
    ::testing::Values(
        PrintCase{"Number", "tprint(5)", "5\n"}, PrintCase{"Nil", "tprint(nil)", "nil\n"},
        PrintCase{"Empty", "tprint({})", "{\n}\n"},
        PrintCase{"Unprintable",
                  "local p = newproxy(true) getmetatable(p).__tostring = function() error('x') end tprint(p)",
                  "Error: Cannot print userdata\n"},
        PrintCase{"Plain", "tprint({a = 1})", "{\n    a = number: 1,\n}\n"},
        PrintCase{"Text", "tprint({'b'})", "{\n    1 = string: b,\n}\n"},
        PrintCase{"True", "tprint({a = true})", "{\n    a = true,\n}\n"},
        PrintCase{"False", "tprint({a = false})", "{\n    a = false,\n}\n"},
        PrintCase{"Function", "tprint({a = print})", "{\n    a = function,\n}\n"},
        PrintCase{"KeyThatIsNoText", "tprint({[true] = 1})", "{\n    true = number: 1,\n}\n"},
        PrintCase{"Indent", "tprint({a = 1}, 3)", "        {\n            a = number: 1,\n        },\n"},
        PrintCase{"Nested", "tprint({a = {b = {c = 2}}})",
                  "{\n    a = \n    {\n        b = \n        {\n            c = number: 2,\n        },\n    },\n}\n"},
        PrintCase{"OwnText",
                  "local p = newproxy(true) getmetatable(p).__index = {__tostring = function() return 'me' end}"
                  " tprint({p})",
                  "{\n    1 = userdata: me,\n}\n"},
        PrintCase{"Cycle", "local t = {} t.t = t tprint(t)", "{\n    t = table,\n}\n"},
        PrintCase{"Shared", "local s = {} tprint({s, s})", "{\n    1 = \n    {\n    },\n    2 = \n    {\n    },\n}\n"},
        PrintCase{"Entity",
                  "local real = type function type(v) return real(v) == 'userdata' and 'entity' or real(v) end"
                  " local p = newproxy(true) getmetatable(p).__index = {getName = function() return 'lamp' end}"
                  " tprint({p})",
                  "{\n    1 = Object: lamp,\n}\n"},
        PrintCase{"Metatable", "ldb(setmetatable({}, {x = 1}))", "{\n    x = number: 1,\n}\n"},
        PrintCase{"NoMetatable", "ldb(5)", "nil\n"}),
    [](const auto& test) { return test.param.label; });

TEST_F(KyLuaChunksTest, AllGlobalsArePrintedInBoundedSpace) {
    EXPECT_TRUE(engine().executeChunk("lines = 0 function print() lines = lines + 1 end tprint(_G)"));
    EXPECT_LT(evaluate("lines").front().toInt(), 20000);
}

} // namespace

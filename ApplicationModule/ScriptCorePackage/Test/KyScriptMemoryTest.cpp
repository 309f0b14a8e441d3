// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyScriptEngineFixture.h"

#include "KyLuaSandbox.h"

#include <cstdlib>
#include <functional>

namespace {

/// An allocator whose n-th growing request fails, and all after it until it is told otherwise.
struct Shortage {
    long remaining = -1;

    static void* allocate(void* data, void* block, std::size_t before, std::size_t size) {
        auto& shortage = *static_cast<Shortage*>(data);
        if (size == 0) {
            std::free(block);
            return nullptr;
        }
        if (size > before && shortage.remaining >= 0 && shortage.remaining-- == 0) {
            shortage.remaining = 0;
            return nullptr;
        }
        return std::realloc(block, size);
    }
};

struct Operation {
    const char* label;
    /// True when it did its work.
    std::function<bool(KyScriptEngine&)> run;
};

void PrintTo(const Operation& operation, std::ostream* stream) {
    *stream << operation.label;
}

KyDynamicObject& sharedObject() {
    static KyDynamicObject object;
    return object;
}

/// Longer than what a text holds in itself.
KyField makeTexts() {
    return KyField(std::vector<KyField>{KyField(std::string(100, 'a')), KyField(std::string(100, 'b'))});
}

class KyScriptMemoryTest : public KyScriptEngineFixture, public ::testing::WithParamInterface<Operation> {
public:
    static std::vector<Operation> makeOperations();

protected:
    /// With memory back, a class whose binding broke off binds anew.
    static bool isClassBoundWhole() {
        KyLuaBinder::bind();
        return engine().executeChunk(
            "local o = createKyObject('KyDynamicObject') local m = getmetatable(o) "
            "local isWhole = m.__gc and m.__eq and m.__tessaly_type and KyDynamicObject.destroy "
            "o:destroy() assert(isWhole)");
    }
};

TEST_P(KyScriptMemoryTest, FailsCleanlyWhereverMemoryEnds) {
    constexpr long cMostRequests = 5000;
    bool done = false;
    for (long n = 0; n < cMostRequests && !done; ++n) {
        engine().resetLuaState();
        KyLuaBinder::bind();
        engine().executeChunk("function id(...) return ... end");
        Shortage shortage{n};
        void* before = nullptr;
        const lua_Alloc allocator = lua_getallocf(state(), &before);
        lua_setallocf(state(), &Shortage::allocate, &shortage);
        msOutput.clear();
        msReports.clear();
        done = GetParam().run(engine());
        const bool ranShort = shortage.remaining == 0;
        shortage.remaining = -1;
        lua_setallocf(state(), allocator, before);
        ASSERT_TRUE(done || ranShort) << "request " << n;
        for (const std::string& message : msOutput)
            ASSERT_NE(message.find("not enough memory"), std::string::npos) << message;
        ASSERT_EQ(text("1 + 1"), "2") << "request " << n;
        ASSERT_EQ(top(), 0) << "request " << n;
        ASSERT_TRUE(isClassBoundWhole()) << "request " << n;
    }
    EXPECT_TRUE(done);
}

std::vector<Operation> KyScriptMemoryTest::makeOperations() {
    return {Operation{
                "Chunk",
                [](KyScriptEngine& e) { return e.executeChunk("local t = {} for i = 1, 50 do t[i] = 'x' .. i end"); }},
            Operation{"Results",
                      [](KyScriptEngine& e) {
                          std::vector<KyField> results;
                          return e.executeChunktWithReturnValues("return 1, 'text ' .. 2, {1, 2}", results);
                      }},
            Operation{"Call",
                      [](KyScriptEngine& e) {
                          std::vector<KyField> results;
                          return e.callLuaFunction("id", {KyField("some text"), KyField(2), makeTexts()}, results);
                      }},
            Operation{"Variable",
                      [](KyScriptEngine& e) {
                          e.setLuaVariable("fresh", KyField("a text that nobody has yet"));
                          return msOutput.empty();
                      }},
            Operation{"List",
                      [](KyScriptEngine& e) {
                          sharedObject().addAttribute("Texts", makeTexts());
                          return e.bindInstance(&sharedObject(), "shared") == 1 &&
                                 e.executeChunk("assert(#shared.Texts == 2) shared.Texts = {shared.Texts[1]}");
                      }},
            Operation{"Coroutine",
                      [](KyScriptEngine& e) {
                          const bool launched = e.executeChunkAsCoroutine("coroutine.yield('x' .. 1) y = {}");
                          e.resumeCoroutines(1);
                          return launched && msOutput.empty() && e.getNbCoroutines() == 0;
                      }},
            Operation{"Publication",
                      [](KyScriptEngine& e) {
                          const int result = e.bindInstance(&sharedObject(), "shared");
                          EXPECT_EQ(e.getInstance("shared") != nullptr, result == 1);
                          EXPECT_EQ(msReports.empty(), result == 1);
                          return result == 1;
                      }},
            Operation{"Function",
                      [](KyScriptEngine& e) {
                          auto function = kyMakeFunction("f", [](const std::string& a) { return a + a; });
                          if (e.bindFunction("f", function.get()) != 1)
                              return false;
                          function.release();
                          return e.executeChunk("assert(f('some longer text') == 'some longer textsome longer text')");
                      }},
            Operation{"Class", [](KyScriptEngine& e) { return e.bindClass(*KyDynamicObject::getType()); }},
            Operation{"Values",
                      [](KyScriptEngine& e) {
                          return e.executeChunk("local r = Ray(Vec3(1, 2, 3), Vec3()) r.origin.x = 4 "
                                                "local v = (r.origin + Vec3(1, 1, 1) * 2) * 2 "
                                                "local u, list = URL('a/b'), IntVector({1, 2}) u:appendPath('c') "
                                                "assert(v == Vec3(12, 8, 10) and u.path == 'a/b/c')");
                      }},
            Operation{"Sandbox",
                      [](KyScriptEngine&) {
                          KyApplication::removeUnsafeLuaFunctionsAndModules();
                          return msOutput.empty();
                      }},
            Operation{"Error", [](KyScriptEngine& e) {
                          msOutput.clear();
                          const bool ran = e.executeChunk(
                              "pcall(error, setmetatable({}, {__tostring = function() return 'a' .. 1 end}))");
                          return ran && msOutput.empty();
                      }}};
}

INSTANTIATE_TEST_SUITE_P(Operations, KyScriptMemoryTest, ::testing::ValuesIn(KyScriptMemoryTest::makeOperations()),
                         [](const auto& test) { return test.param.label; });

} // namespace

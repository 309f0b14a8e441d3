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

class KyScriptMemoryTest : public KyScriptEngineFixture {
protected:
    /// True when it did its work.
    using Operation = std::function<bool()>;

    static Operation makeChunk(const std::string& chunk) {
        return [chunk] { return engine().executeChunk(chunk); };
    }
    /// With memory back, a class whose binding broke off binds anew.
    static bool isClassBoundWhole() {
        KyLuaBinder::bind();
        return engine().executeChunk(
            "local o = createKyObject('KyDynamicObject') local m = getmetatable(o) "
            "local isWhole = m.__gc and m.__eq and m.__tessaly_type and KyDynamicObject.destroy "
            "o:destroy() assert(isWhole)");
    }
    /// Whether the operation, which only so many growing requests are granted, did its work.
    static void tryWithin(long nbRequests, const Operation& operation, bool& done) {
        engine().resetLuaState();
        KyLuaBinder::bind();
        engine().executeChunk("function id(...) return ... end");
        Shortage shortage{nbRequests};
        void* before = nullptr;
        const lua_Alloc allocator = lua_getallocf(state(), &before);
        lua_setallocf(state(), &Shortage::allocate, &shortage);
        msOutput.clear();
        msReports.clear();
        done = operation();
        const bool ranShort = shortage.remaining == 0;
        shortage.remaining = -1;
        lua_setallocf(state(), allocator, before);
        ASSERT_TRUE(done || ranShort);
        for (const std::string& message : msOutput)
            ASSERT_NE(message.find("not enough memory"), std::string::npos) << message;
        ASSERT_EQ(text("1 + 1"), "2");
        ASSERT_EQ(top(), 0);
        ASSERT_TRUE(isClassBoundWhole());
    }
};

TEST_F(KyScriptMemoryTest, EveryOperationFailsCleanlyWhereverMemoryEnds) {
    constexpr long cMostRequests = 5000;
    KyDynamicObject shared;
    std::vector<KyField> results;
    // Longer than what a text holds in itself.
    const KyField texts(std::vector<KyField>{KyField(std::string(100, 'a')), KyField(std::string(100, 'b'))});
    const std::pair<const char*, Operation> operations[] = {
        {"chunk", makeChunk("local t = {} for i = 1, 50 do t[i] = 'x' .. i end")},
        {"error", makeChunk("pcall(error, setmetatable({}, {__tostring = function() return 'a' .. 1 end}))")},
        {"values", makeChunk("local r = Ray(Vec3(1, 2, 3), Vec3()) r.origin.x = 4 "
                             "local v = (r.origin + Vec3(1, 1, 1) * 2) * 2 "
                             "local u, list = URL('a/b'), IntVector({1, 2}) u:appendPath('c') "
                             "assert(v == Vec3(12, 8, 10) and u.path == 'a/b/c')")},
        {"results", [&] { return engine().executeChunktWithReturnValues("return 1, 'text ' .. 2, {1, 2}", results); }},
        {"call",
         [&] {
             return engine().callLuaFunction("id", {KyField("some text"), KyField(2), texts}, results);
         }},
        {"variable",
         [] {
             engine().setLuaVariable("fresh", KyField("a text that nobody has yet"));
             return msOutput.empty();
         }},
        {"list",
         [&] {
             shared.addAttribute("Texts", texts);
             return engine().bindInstance(&shared, "shared") == 1 &&
                    engine().executeChunk("assert(#shared.Texts == 2) shared.Texts = {shared.Texts[1]}");
         }},
        {"coroutine",
         [] {
             const bool launched = engine().executeChunkAsCoroutine("coroutine.yield('x' .. 1) y = {}");
             engine().resumeCoroutines(1);
             return launched && msOutput.empty() && engine().getNbCoroutines() == 0;
         }},
        {"publication",
         [&] {
             const int result = engine().bindInstance(&shared, "shared");
             EXPECT_EQ(engine().getInstance("shared") != nullptr, result == 1);
             EXPECT_EQ(msReports.empty(), result == 1);
             return result == 1;
         }},
        {"function",
         [] {
             auto function = kyMakeFunction("f", [](const std::string& a) { return a + a; });
             if (engine().bindFunction("f", function.get()) != 1)
                 return false;
             function.release();
             return engine().executeChunk("assert(f('some longer text') == 'some longer textsome longer text')");
         }},
        {"class", [] { return engine().bindClass(*KyDynamicObject::getType()); }},
        {"sandbox", [] {
             KyApplication::removeUnsafeLuaFunctionsAndModules();
             return msOutput.empty();
         }}};
    for (const auto& [label, operation] : operations) {
        bool done = false;
        for (long n = 0; n < cMostRequests && !done && !HasFatalFailure(); ++n) {
            SCOPED_TRACE(label + std::string(", request ") + std::to_string(n));
            tryWithin(n, operation, done);
        }
        EXPECT_TRUE(done) << label;
    }
}

} // namespace

// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <lua.hpp>

#include <luabind/luabind.hpp>

#include <memory>
#include <stdexcept>
#include <string>

namespace {

class Counter {
public:
    explicit Counter(int start)
        : mValue(start) {}
    int add(int step) {
        if (step == 0)
            throw std::invalid_argument("nothing to add");
        return mValue += step;
    }

private:
    int mValue;
};

/// Lua from its DLL, luabind linked into the program.
class KyLuabindWindowsTest : public testing::Test {
protected:
    void SetUp() override {
        luaL_openlibs(mState.get());
        luabind::open(mState.get());
        luabind::module(
            mState
                .get())[luabind::class_<Counter>("Counter").def(luabind::constructor<int>()).def("add", &Counter::add)];
    }

    /// What the chunk returns, or its error.
    std::string run(const char* chunk) {
        if (luaL_dostring(mState.get(), chunk) != 0)
            return std::string("error: ") + lua_tostring(mState.get(), -1);
        return lua_tostring(mState.get(), -1);
    }

    std::unique_ptr<lua_State, decltype(&lua_close)> mState{luaL_newstate(), &lua_close};
};

} // namespace

TEST_F(KyLuabindWindowsTest, ScriptsUseObjectsCoroutinesAndMeetExceptions) {
    const std::pair<const char*, const char*> cases[] = {
        {"return Counter(40):add(2)", "42"},
        {"return select(2, pcall(function() Counter(1):add(0) end))", "std::logic_error: 'nothing to add'"},
        {"local c = Counter(0) local f = coroutine.wrap(function() for i = 1, 3 do coroutine.yield(c:add(i)) end end) "
         "f() f() return f()",
         "6"},
        {"local f = coroutine.create(function() Counter(1):add(0) end) return tostring(coroutine.resume(f))", "false"},
        {"return tostring(2^53) .. string.format('%d', 2^31 - 1)", "9.007199254741e+152147483647"},
        {"error('own', 0)", "error: own"},
    };
    for (const auto& [chunk, result] : cases)
        EXPECT_EQ(run(chunk), result) << chunk;
}

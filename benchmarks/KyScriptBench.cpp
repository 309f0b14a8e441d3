// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyBenchValues.h"
#include "KyBenchmark.h"
#include "KyLuabindPeer.h"

#include "KyLuaBinder.h"
#include "KyScriptEngine.h"
#include "KyScriptSandbox.h"

#include "KyTypeBuilder.h"

#include <lua.hpp>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <limits>

namespace {

using Values = KyBenchValues;

class BenchObject : public KyObject {
public:
    static const KyType* getType() { return msType; }
    const KyType* getObjectType() const override { return msType; }
    static void initializeType() {
        if (msType)
            return;
        msType = KyTypeBuilder<BenchObject>("BenchObject", KyObject::getType())
                     .attribute("Size", &BenchObject::getSize, &BenchObject::setSize)
                     .attribute("Angle", &BenchObject::getAngle, &BenchObject::setAngle)
                     .attribute("Speed", &BenchObject::getSpeed, &BenchObject::setSpeed)
                     .container("Samples", &BenchObject::getNbSamples, &BenchObject::getSample)
                     .method("mix", &BenchObject::mix)
                     .build();
    }

    double getSize() const { return values.size; }
    void setSize(double size) { values.size = size; }
    double getAngle() const { return values.angle; }
    void setAngle(double angle) { values.angle = angle; }
    double getSpeed() const { return values.speed; }
    void setSpeed(double speed) { values.speed = speed; }
    double mix(double a, double b) const { return values.mix(a, b); }
    unsigned getNbSamples() const { return 16; }
    double getSample(unsigned index) const { return samples[index]; }

    Values values;
    double samples[16] = {};

private:
    static inline const KyType* msType = nullptr;
};

void fail(lua_State* state) {
    std::fprintf(stderr, "kybench: %s\n", lua_tostring(state, -1));
    std::exit(1);
}

/// A script function of one argument, the number of rounds, called through the engine as a host calls it.
std::function<void(long)> makeLoop(lua_State* state, const std::string& name, const char* chunk) {
    if (luaL_loadbuffer(state, chunk, std::strlen(chunk), "@bench.lua") != 0)
        fail(state);
    lua_setglobal(state, name.c_str());
    return [name](long count) {
        std::vector<KyField> results;
        if (!KyScriptEngine::get().callLuaFunction(name, {KyField(static_cast<double>(count))}, results))
            std::exit(1);
    };
}

struct PushFixture {
    KyLuaBinder binder;
    KyObject* object;
};

// The peers: the least that a careful hand would write in C for the same scripts.

int rawIndex(lua_State* state) {
    auto* values = static_cast<Values*>(luaL_checkudata(state, 1, "bench.raw"));
    const char* key = luaL_checkstring(state, 2);
    if (std::strcmp(key, "Size") == 0)
        lua_pushnumber(state, values->size);
    else if (std::strcmp(key, "Angle") == 0)
        lua_pushnumber(state, values->angle);
    else if (std::strcmp(key, "Speed") == 0)
        lua_pushnumber(state, values->speed);
    else
        lua_pushnil(state);
    return 1;
}

int rawNewIndex(lua_State* state) {
    auto* values = static_cast<Values*>(luaL_checkudata(state, 1, "bench.raw"));
    const char* key = luaL_checkstring(state, 2);
    const double value = luaL_checknumber(state, 3);
    if (std::strcmp(key, "Size") == 0)
        values->size = value;
    else if (std::strcmp(key, "Angle") == 0)
        values->angle = value;
    else if (std::strcmp(key, "Speed") == 0)
        values->speed = value;
    return 0;
}

int rawMix(lua_State* state) {
    auto* values = static_cast<Values*>(luaL_checkudata(state, 1, "bench.raw"));
    lua_pushnumber(state, values->mix(luaL_checknumber(state, 2), luaL_checknumber(state, 3)));
    return 1;
}

int rawArrayIndex(lua_State* state) {
    auto* samples = static_cast<double*>(luaL_checkudata(state, 1, "bench.array"));
    const lua_Integer index = luaL_checkinteger(state, 2);
    if (index < 0 || index >= 16)
        return luaL_error(state, "index out of bounds");
    lua_pushnumber(state, samples[index]);
    return 1;
}

int rawPush(lua_State* state) {
    auto** pointer = static_cast<Values**>(lua_newuserdata(state, sizeof(Values*)));
    *pointer = static_cast<Values*>(lua_touserdata(state, lua_upvalueindex(1)));
    luaL_getmetatable(state, "bench.raw");
    lua_setmetatable(state, -2);
    return 1;
}

int ourPush(lua_State* state) {
    auto* fixture = static_cast<PushFixture*>(lua_touserdata(state, lua_upvalueindex(1)));
    fixture->binder.pushUserType(*fixture->object);
    return 1;
}

/// The engine's state with an object "ours" and raw userdata "raw" and "array" in it.
struct Fixture {
    Fixture()
        : state(KyScriptEngine::get().editLuaState()) {
        BenchObject::initializeType();
        object = std::make_unique<BenchObject>();
        if (KyScriptEngine::get().bindInstance(object.get(), "ours") != 1)
            std::exit(1);
        luaL_newmetatable(state, "bench.raw");
        setFunction("__index", &rawIndex);
        setFunction("__newindex", &rawNewIndex);
        lua_pop(state, 1);
        luaL_newmetatable(state, "bench.array");
        setFunction("__index", &rawArrayIndex);
        lua_pop(state, 1);
        setRaw("raw", "bench.raw", sizeof(Values));
        *static_cast<Values*>(lua_touserdata(state, -1)) = Values();
        lua_setglobal(state, "raw");
        setRaw("array", "bench.array", sizeof(double) * 16);
        lua_setglobal(state, "array");
        setLuabindPeer(state);
        lua_register(state, "rawMix", &rawMix);
        lua_pushlightuserdata(state, &peerValues);
        lua_pushcclosure(state, &rawPush, 1);
        lua_setglobal(state, "rawPush");
        push = std::make_unique<PushFixture>(PushFixture{KyLuaBinder(state), object.get()});
        lua_pushlightuserdata(state, push.get());
        lua_pushcclosure(state, &ourPush, 1);
        lua_setglobal(state, "ourPush");
    }
    ~Fixture() { KyScriptEngine::get().unbindInstance(object.get()); }

    void setFunction(const char* name, lua_CFunction function) {
        lua_pushcfunction(state, function);
        lua_setfield(state, -2, name);
    }
    void setRaw(const char*, const char* metatable, std::size_t size) {
        std::memset(lua_newuserdata(state, size), 0, size);
        luaL_getmetatable(state, metatable);
        lua_setmetatable(state, -2);
    }

    lua_State* state;
    std::unique_ptr<BenchObject> object;
    std::unique_ptr<PushFixture> push;
    Values peerValues;
};

template <const char* const& Ours, const char* const& Peer>
KyBenchmarkSides prepareLoops() {
    auto fixture = std::make_shared<Fixture>();
    return {makeLoop(fixture->state, "benchOurs", Ours), makeLoop(fixture->state, "benchPeer", Peer), fixture};
}

const char* const cReadOurs = "local n, o, v = ..., ours for i = 1, n do v = o.Speed end";
const char* const cReadPeer = "local n, o, v = ..., raw for i = 1, n do v = o.Speed end";
const char* const cWriteOurs = "local n, o = ..., ours for i = 1, n do o.Speed = i end";
const char* const cWritePeer = "local n, o = ..., raw for i = 1, n do o.Speed = i end";
const char* const cMethodOurs = "local n, o, v = ..., ours local f = o.mix for i = 1, n do v = f(o, i, 2) end";
const char* const cMethodPeer = "local n, o, v = ..., raw local f = rawMix for i = 1, n do v = f(o, i, 2) end";
const char* const cMethodBound = "local n, o, v = ..., bound local f = o.mix for i = 1, n do v = f(o, i, 2) end";
const char* const cReadBound = "local n, o, v = ..., bound for i = 1, n do v = o.Speed end";
const char* const cProxyOurs = "local n, p, v = ..., ours.Samples for i = 1, n do v = p[i % 16] end";
const char* const cProxyPeer = "local n, p, v = ..., array for i = 1, n do v = p[i % 16] end";
// Without the collector: what becomes of the instances later is no part of pushing them.
const char* const cPushOurs = "local n, f, v = ..., ourPush collectgarbage('stop') for i = 1, n do v = f() end";
const char* const cPushPeer = "local n, f, v = ..., rawPush collectgarbage('stop') for i = 1, n do v = f() end";

/// Of everything a little: functions, texts, tables, an object, and values.
const char* const cHooked = R"(local n, o, seen = ..., ours, {}
local from, to = Vec3(0, 0, 0), Vec3(1, 2, 3)
local function clamp(value, low, high)
    if value < low then
        return low
    end
    return value > high and high or value
end
for i = 1, n do
    local speed = clamp(o.Speed + 0.1, 0, 10)
    o.Speed = speed
    local name = 'item ' .. i % 100
    seen[name] = (seen[name] or 0) + speed
    local position = from + (to - from) * speed
    o.Angle = position.y
end)";

/// The same script on both sides, on ours with the debug hook.
KyBenchmarkSides prepareHook() {
    auto fixture = std::make_shared<Fixture>();
    const auto loop = makeLoop(fixture->state, "benchHook", cHooked);
    const auto hooked = [loop](long count) {
        KyScriptEngine::get().setHook();
        loop(count);
        KyScriptEngine::get().removeHook();
    };
    return {hooked, loop, fixture};
}

/// The same script on both sides, on ours in an engine of its own with a sandbox, which cannot be left again.
KyBenchmarkSides prepareSandbox() {
    struct Sandboxed {
        KyScriptEngine engine;
        Fixture fixture;
    };
    const auto sides = std::make_shared<Sandboxed>();
    KyScriptLimits limits;
    limits.instructions = std::numeric_limits<std::uint64_t>::max();
    limits.seconds = 1e6;
    KyScriptEngine& engine = sides->engine;
    const std::string chunk = std::string("function benchSandboxed(...) ") + cHooked + " end";
    if (engine.bindInstance(sides->fixture.object.get(), "ours") != 1 || !engine.editSandbox().enable(limits) ||
        !engine.executeChunk(chunk))
        std::exit(1);
    const auto ours = [&engine](long count) {
        std::vector<KyField> results;
        if (!engine.callLuaFunction("benchSandboxed", {KyField(static_cast<double>(count))}, results))
            std::exit(1);
    };
    return {ours, makeLoop(sides->fixture.state, "benchOpen", cHooked), sides};
}

/// Coroutines that wait for ever, on both sides in tables keyed by the thread.
template <int Count>
KyBenchmarkSides prepareCoroutines() {
    auto fixture = std::make_shared<Fixture>();
    KyScriptEngine& engine = KyScriptEngine::get();
    lua_State* state = fixture->state;
    for (int i = 0; i < Count; ++i)
        engine.executeChunkAsCoroutine("local total = 0 while true do total = total + coroutine.yield() end");
    lua_newtable(state);
    for (int i = 0; i < Count; ++i) {
        lua_State* thread = lua_newthread(state);
        if (luaL_loadstring(thread, "local total = 0 while true do total = total + coroutine.yield() end") != 0)
            fail(thread);
        lua_resume(thread, 0);
        lua_settop(thread, 0);
        lua_pushboolean(state, 1);
        lua_rawset(state, -3);
    }
    // In the order of a table's walk, as the engine meets them: creation order would spare the peer the cache misses.
    const auto peers = std::make_shared<std::vector<lua_State*>>();
    for (lua_pushnil(state); lua_next(state, -2) != 0; lua_pop(state, 1))
        peers->push_back(lua_tothread(state, -2));
    lua_setfield(state, LUA_REGISTRYINDEX, "bench.peers");
    const auto ours = [&engine](long count) {
        for (long i = 0; i < count; ++i)
            engine.resumeCoroutines(0.016);
    };
    const auto peer = [peers](long count) {
        for (long i = 0; i < count; ++i)
            for (lua_State* thread : *peers) {
                lua_pushnumber(thread, 0.016);
                lua_resume(thread, 1);
                lua_settop(thread, 0);
            }
    };
    fixture = std::shared_ptr<Fixture>(fixture.get(), [fixture](Fixture*) { KyScriptEngine::get().resetLuaState(); });
    return {ours, peer, fixture};
}

} // namespace

std::vector<KyBenchmark> getScriptBenchmarks() {
    using Gate = KyBenchmark::Gate;
    return {
        {"attribute read from Lua", "raw C __index", 1.2, Gate::eInstructions, 20000,
         &prepareLoops<cReadOurs, cReadPeer>},
        {"attribute write from Lua", "raw C __newindex", 1.25, Gate::eInstructions, 20000,
         &prepareLoops<cWriteOurs, cWritePeer>},
        {"reflected method, 2 arguments", "raw C closure", 1.45, Gate::eInstructions, 20000,
         &prepareLoops<cMethodOurs, cMethodPeer>},
        {"reflected method, against luabind", "bare luabind", 1.0, Gate::eInstructions, 20000,
         &prepareLoops<cMethodOurs, cMethodBound>},
        {"attribute read, against luabind", "bare luabind property", 1.0, Gate::eInstructions, 20000,
         &prepareLoops<cReadOurs, cReadBound>},
        {"proxy[i]", "raw array __index", 2.2, Gate::eInstructions, 20000, &prepareLoops<cProxyOurs, cProxyPeer>},
        {"pushing an object", "lua_newuserdata + luaL_getmetatable", 0.95, Gate::eInstructions, 20000,
         &prepareLoops<cPushOurs, cPushPeer>},
        {"debug hook, nobody looking", "the same script, no hook", 2.0, Gate::eTime, 20000, &prepareHook},
        {"strict sandbox", "the same script, none", 2.0, Gate::eTime, 20000, &prepareSandbox},
        {"resuming 10,000 coroutines", "bare lua_resume", 1.3, Gate::eTime, 5, &prepareCoroutines<10000>},
        {"resuming 100 coroutines", "bare lua_resume", 1.6, Gate::eTime, 500, &prepareCoroutines<100>},
    };
}

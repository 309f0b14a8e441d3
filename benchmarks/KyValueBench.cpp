// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyBenchmark.h"

#include "KyLuaBinder.h"
#include "KyScriptEngine.h"

#include "KyVec3.h"

#include <lua.hpp>

#include <luabind/luabind.hpp>
#include <luabind/operator.hpp>

#include <cstdio>
#include <cstdlib>

namespace {

/// The value that both sides compute with; the peers bind it as luabind does by itself, or not at all.
struct PeerVec {
    double x = 0;
    double y = 0;
    double z = 0;

    PeerVec() = default;
    PeerVec(double xValue, double yValue, double zValue)
        : x(xValue)
        , y(yValue)
        , z(zValue) {}
    PeerVec operator+(const PeerVec& other) const { return {x + other.x, y + other.y, z + other.z}; }
    PeerVec operator-(const PeerVec& other) const { return {x - other.x, y - other.y, z - other.z}; }
    PeerVec operator*(double factor) const { return {x * factor, y * factor, z * factor}; }
};

constexpr char cRawName[] = "bench.vec3";

void bindPeer(lua_State* state) {
    using namespace luabind;
    module(state)[class_<PeerVec>("PeerVec")
                      .def(constructor<>())
                      .def(constructor<double, double, double>())
                      .def_readwrite("x", &PeerVec::x)
                      .def(const_self + other<const PeerVec&>())
                      .def(const_self - other<const PeerVec&>())
                      .def(const_self * double())];
}

void setMetatable(lua_State* state) {
    luaL_getmetatable(state, cRawName);
    lua_setmetatable(state, -2);
}

int rawPush(lua_State* state) {
    *static_cast<PeerVec*>(lua_newuserdata(state, sizeof(PeerVec))) = {1, 2, 3};
    setMetatable(state);
    return 1;
}

/// The value goes nowhere, but the compiler must not see that.
volatile double gSink = 0;

int rawCheck(lua_State* state) {
    const PeerVec vector = *static_cast<PeerVec*>(luaL_checkudata(state, 1, cRawName));
    gSink = vector.x + vector.y + vector.z;
    return 0;
}

struct FieldFixture {
    KyLuaBinder binder;
    KyField field;
};

FieldFixture& getFixture(lua_State* state) {
    return *static_cast<FieldFixture*>(lua_touserdata(state, lua_upvalueindex(1)));
}

int ourPush(lua_State* state) {
    FieldFixture& fixture = getFixture(state);
    fixture.binder.pushField(fixture.field);
    return 1;
}

int ourCheck(lua_State* state) {
    const KyField field = getFixture(state).binder.checkField(1);
    const KyVec3d& vector = field.unchecked<KyVec3d>();
    gSink = vector.x + vector.y + vector.z;
    return 0;
}

void setClosure(lua_State* state, const char* name, lua_CFunction function, FieldFixture& fixture) {
    lua_pushlightuserdata(state, &fixture);
    lua_pushcclosure(state, function, 1);
    lua_setglobal(state, name);
}

std::function<void(long)> makeLoop(lua_State* state, const std::string& name, const char* chunk) {
    if (luaL_loadstring(state, chunk) != 0) {
        std::fprintf(stderr, "kybench: %s\n", lua_tostring(state, -1));
        std::exit(1);
    }
    lua_setglobal(state, name.c_str());
    return [name](long count) {
        std::vector<KyField> results;
        if (!KyScriptEngine::get().callLuaFunction(name, {KyField(static_cast<double>(count))}, results))
            std::exit(1);
    };
}

template <const char* const& Ours, const char* const& Peer>
KyBenchmarkSides prepareLoops() {
    lua_State* state = KyScriptEngine::get().editLuaState();
    bindPeer(state);
    luaL_newmetatable(state, cRawName);
    lua_pop(state, 1);
    auto fixture = std::make_shared<FieldFixture>(FieldFixture{KyLuaBinder(state), KyField(KyVec3d(1, 2, 3))});
    lua_register(state, "rawPush", &rawPush);
    lua_register(state, "rawCheck", &rawCheck);
    setClosure(state, "ourPush", &ourPush, *fixture);
    setClosure(state, "ourCheck", &ourCheck, *fixture);
    return {makeLoop(state, "benchOurs", Ours), makeLoop(state, "benchPeer", Peer), fixture};
}

const char* const cAddOurs = "local n, a, b, c = ..., Vec3d(1, 2, 3), Vec3d(4, 5, 6) for i = 1, n do c = a + b end";
const char* const cAddPeer = "local n, a, b, c = ..., PeerVec(1, 2, 3), PeerVec(4, 5, 6) for i = 1, n do c = a + b end";
const char* const cScaleOurs = "local n, a, c = ..., Vec3d(1, 2, 3) for i = 1, n do c = a * i end";
const char* const cScalePeer = "local n, a, c = ..., PeerVec(1, 2, 3) for i = 1, n do c = a * i end";
const char* const cReadOurs = "local n, a, c = ..., Vec3d(1, 2, 3) for i = 1, n do c = a.x end";
const char* const cReadPeer = "local n, a, c = ..., PeerVec(1, 2, 3) for i = 1, n do c = a.x end";
const char* const cMakeOurs = "local n, f, c = ..., Vec3d for i = 1, n do c = f(i, 2, 3) end";
const char* const cMakePeer = "local n, f, c = ..., PeerVec for i = 1, n do c = f(i, 2, 3) end";
// Without the collector: what becomes of the values later is no part of pushing them.
const char* const cPushOurs = "local n, f, v = ..., ourPush collectgarbage('stop') for i = 1, n do v = f() end";
const char* const cPushPeer = "local n, f, v = ..., rawPush collectgarbage('stop') for i = 1, n do v = f() end";
const char* const cCheckOurs = "local n, f, v = ..., ourCheck, ourPush() for i = 1, n do f(v) end";
const char* const cCheckPeer = "local n, f, v = ..., rawCheck, rawPush() for i = 1, n do f(v) end";

} // namespace

std::vector<KyBenchmark> getValueBenchmarks() {
    using Gate = KyBenchmark::Gate;
    return {
        {"Vec3d a + b", "the class in bare luabind", 1.0, Gate::eInstructions, 20000,
         &prepareLoops<cAddOurs, cAddPeer>},
        {"Vec3d a * number", "the class in bare luabind", 1.0, Gate::eInstructions, 20000,
         &prepareLoops<cScaleOurs, cScalePeer>},
        {"Vec3d(x, y, z)", "the class in bare luabind", 1.0, Gate::eInstructions, 20000,
         &prepareLoops<cMakeOurs, cMakePeer>},
        {"reading x of a Vec3d", "the class in bare luabind", 1.0, Gate::eInstructions, 20000,
         &prepareLoops<cReadOurs, cReadPeer>},
        {"pushField of a Vec3d", "raw userdata", 3.6, Gate::eInstructions, 20000, &prepareLoops<cPushOurs, cPushPeer>},
        {"checkField of a Vec3d", "raw userdata", 2.5, Gate::eInstructions, 20000,
         &prepareLoops<cCheckOurs, cCheckPeer>},
    };
}

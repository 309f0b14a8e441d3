// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyLuaFrames_p.h"

#include "KyLuaThreads_p.h"

#include <algorithm>

namespace {

int findLocal(const KyLuaFrame& frame, std::string_view name) {
    int found = 0;
    for (int i = 1; const char* local = lua_getlocal(frame.thread, &frame.record, i); ++i) {
        lua_pop(frame.thread, 1);
        if (name == local)
            found = i;
    }
    return found;
}

const void* getFunction(lua_State* thread, lua_Debug& record) {
    lua_getinfo(thread, "f", &record);
    const void* const function = lua_topointer(thread, -1);
    lua_pop(thread, 1);
    return function;
}

void moveValue(lua_State* from, lua_State* to) {
    if (from != to)
        lua_xmove(from, to, 1);
}

} // namespace

bool kyLuaHasLevels(lua_State* thread, int count) {
    lua_Debug record;
    return count <= 0 || lua_getstack(thread, count - 1, &record) != 0;
}

int kyLuaNbLevels(lua_State* thread) {
    int high = 1;
    while (kyLuaHasLevels(thread, high))
        high *= 2;
    int low = high / 2;
    while (high - low > 1) {
        const int middle = (low + high) / 2;
        (kyLuaHasLevels(thread, middle) ? low : high) = middle;
    }
    return low;
}

void kyLuaNoteFrame(KyLuaFrame& frame, int level) {
    if (kyLuaThreadState(frame.thread) != KyLuaThreadState::eSuspended)
        return;
    frame.nbLevels = kyLuaNbLevels(frame.thread) - level;
    frame.function = getFunction(frame.thread, frame.record);
}

bool kyLuaFindAgain(KyLuaFrame& frame) {
    if (frame.nbLevels == 0)
        return true;
    const int level = kyLuaNbLevels(frame.thread) - frame.nbLevels;
    return level >= 0 && lua_getstack(frame.thread, level, &frame.record) != 0 &&
           getFunction(frame.thread, frame.record) == frame.function;
}

void kyLuaDescribeFrame(KyLuaFrame& frame, KyScriptFrame& description) {
    lua_Debug& record = frame.record;
    lua_getinfo(frame.thread, "nSl", &record);
    description.name = record.name ? record.name : "";
    description.kind = record.what;
    description.chunkName = record.source;
    description.shortName = record.short_src;
    description.line = std::max(record.currentline, 0);
}

bool kyLuaPushLocal(lua_State* state, const KyLuaFrame& frame, std::string_view name) {
    const int local = findLocal(frame, name);
    if (local == 0)
        return false;
    lua_getlocal(frame.thread, &frame.record, local);
    moveValue(frame.thread, state);
    return true;
}

bool kyLuaSetLocal(lua_State* state, const KyLuaFrame& frame, std::string_view name) {
    const int local = findLocal(frame, name);
    if (local == 0)
        return false;
    moveValue(state, frame.thread);
    lua_setlocal(frame.thread, &frame.record, local);
    return true;
}

lua_CFunction kyLuaCFunction(lua_State* thread, lua_Debug* record) {
    lua_getinfo(thread, "f", record);
    const lua_CFunction function = lua_tocfunction(thread, -1);
    lua_pop(thread, 1);
    return function;
}

void kyLuaPushFunction(lua_State* state, KyLuaFrame& frame) {
    lua_getinfo(frame.thread, "f", &frame.record);
    moveValue(frame.thread, state);
}

int kyLuaFindUpvalue(lua_State* state, int index, std::string_view name) {
    if (!lua_isfunction(state, index) || lua_iscfunction(state, index))
        return 0;
    for (int i = 1; const char* upvalue = lua_getupvalue(state, index, i); ++i) {
        lua_pop(state, 1);
        if (name == upvalue)
            return i;
    }
    return 0;
}

// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstddef>
#include <limits>

#include <lua.hpp>

/// Counts what a Lua state allocates and refuses what goes beyond a ceiling, which scripts see as Lua's "not enough
/// memory". Must outlive the state.
///
/// Single instructions take the longer the larger a text or a table is, up to seconds, so it also knows the size of the
/// largest block, and a large one that is new ends the interval of the count hook of the thread that runs.
class KyLuaMemory {
public:
    static constexpr std::size_t cUnlimited = std::numeric_limits<std::size_t>::max();
    /// Of the hook, while no block is large.
    static constexpr int cMaxInterval = 1000;

    /// Stands in for the allocator of the state, which goes on doing the work.
    explicit KyLuaMemory(lua_State* state);
    KyLuaMemory(const KyLuaMemory&) = delete;
    KyLuaMemory& operator=(const KyLuaMemory&) = delete;

    /// Of a state that has one.
    static KyLuaMemory& get(lua_State* state);

    std::size_t getUsed() const { return mUsed; }
    void setCeiling(std::size_t bytes) { mCeiling = bytes; }
    std::size_t getCeiling() const { return mCeiling; }
    /// Something was refused since this was asked last.
    bool takeRefusal();
    /// Intervals that large blocks ended since this was asked last.
    unsigned takeAlarms();
    /// Instructions to the next count event, so that they take some milliseconds at most.
    int getInterval() const;
    /// The thread whose code runs; null while none does. It has to be told of every change, since threads may go.
    void setRunning(lua_State* thread) { mRunning = thread; }
    lua_State* getRunning() const { return mRunning; }
    /// lua_checkstack beyond the ceiling: for stacks of threads that are not running, where nothing catches the error.
    int makeRoom(lua_State* thread, int nbValues);
    /// Whether a stack may grow by so many values.
    bool hasRoom(int nbValues) const;
    /// lua_resume, while which the thread is the one that runs.
    int resume(lua_State* thread, int nbArguments);

private:
    static void* allocate(void* memory, void* block, std::size_t oldSize, std::size_t newSize);
    void note(std::size_t size, int number);
    void raiseAlarm();

    lua_Alloc mAllocate = nullptr;
    void* mData = nullptr;
    std::size_t mUsed = 0;
    std::size_t mCeiling = cUnlimited;
    bool mIsRefused = false;
    unsigned mNbAlarms = 0;
    lua_State* mRunning = nullptr;
    /// Large blocks by the bits of their size; those from before are not known.
    std::array<int, std::numeric_limits<std::size_t>::digits + 1> mNbBlocks{};
};

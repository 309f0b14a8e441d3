// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyLuaMemory_p.h"

#include <algorithm>
#include <bit>
#include <utility>

namespace {

/// Blocks of so many bits count as large, and smaller ones do not shorten the interval.
constexpr int cLargeBits = 18;
constexpr std::size_t cLarge = std::size_t{1} << (cLargeBits - 1);
constexpr int cMinInterval = 8;

} // namespace

KyLuaMemory::KyLuaMemory(lua_State* state) {
    constexpr std::size_t cKilobyte = 1024;
    mAllocate = lua_getallocf(state, &mData);
    mUsed = static_cast<std::size_t>(lua_gc(state, LUA_GCCOUNT, 0)) * cKilobyte +
            static_cast<std::size_t>(lua_gc(state, LUA_GCCOUNTB, 0));
    lua_setallocf(state, &KyLuaMemory::allocate, this);
}

KyLuaMemory& KyLuaMemory::get(lua_State* state) {
    void* data = nullptr;
    lua_getallocf(state, &data);
    return *static_cast<KyLuaMemory*>(data);
}

bool KyLuaMemory::takeRefusal() {
    return std::exchange(mIsRefused, false);
}

unsigned KyLuaMemory::takeAlarms() {
    return std::exchange(mNbAlarms, 0U);
}

int KyLuaMemory::getInterval() const {
    const auto largest = std::find_if(mNbBlocks.rbegin(), mNbBlocks.rend(), [](int number) { return number > 0; });
    const auto bits = static_cast<int>(mNbBlocks.rend() - largest) - 1;
    return bits < cLargeBits ? cMaxInterval : std::max(cMaxInterval >> (bits - cLargeBits + 1), cMinInterval);
}

int KyLuaMemory::makeRoom(lua_State* thread, int nbValues) {
    const std::size_t ceiling = std::exchange(mCeiling, cUnlimited);
    const int hasRoom = lua_checkstack(thread, nbValues);
    mCeiling = ceiling;
    return hasRoom;
}

/// Stacks double, and values take up to 16 bytes.
bool KyLuaMemory::hasRoom(int nbValues) const {
    constexpr std::size_t cLeast = 16384;
    constexpr std::size_t cValueSize = 32;
    const std::size_t size = cLeast + cValueSize * static_cast<std::size_t>(nbValues);
    return mUsed <= mCeiling && size <= mCeiling - mUsed;
}

int KyLuaMemory::resume(lua_State* thread, int nbArguments) {
    const bool isCounted = (lua_gethookmask(thread) & LUA_MASKCOUNT) != 0;
    if (isCounted && lua_gethookcount(thread) != getInterval())
        lua_sethook(thread, lua_gethook(thread), lua_gethookmask(thread), getInterval());
    lua_State* const resuming = std::exchange(mRunning, thread);
    const int status = lua_resume(thread, nbArguments);
    mRunning = resuming;
    return status;
}

void* KyLuaMemory::allocate(void* memory, void* block, std::size_t oldSize, std::size_t newSize) {
    auto& self = *static_cast<KyLuaMemory*>(memory);
    if (newSize > oldSize && (self.mUsed > self.mCeiling || newSize - oldSize > self.mCeiling - self.mUsed)) {
        self.mIsRefused = true;
        return nullptr;
    }
    void* const result = self.mAllocate(self.mData, block, oldSize, newSize);
    if (!result && newSize > 0)
        return nullptr;
    self.mUsed += newSize - oldSize;
    self.note(oldSize, -1);
    self.note(newSize, 1);
    if (newSize >= cLarge && newSize > oldSize)
        self.raiseAlarm();
    return result;
}

void KyLuaMemory::note(std::size_t size, int number) {
    if (size < cLarge)
        return;
    int& nbBlocks = mNbBlocks[static_cast<std::size_t>(std::bit_width(size))];
    nbBlocks = std::max(nbBlocks + number, 0);
}

/// The very next instruction is a count event then. Lua lets hooks be set at any point of its work.
void KyLuaMemory::raiseAlarm() {
    if (!mRunning || (lua_gethookmask(mRunning) & LUA_MASKCOUNT) == 0)
        return;
    ++mNbAlarms;
    lua_sethook(mRunning, lua_gethook(mRunning), lua_gethookmask(mRunning), 1);
}

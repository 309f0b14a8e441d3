// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyLuaAttributeCache_p.h"

#include <algorithm>

void KyLuaAddressMap::set(lua_State* state, int anchors, const void* key, void* value) {
    if (const Slot* slot = findSlot(key)) {
        const_cast<Slot*>(slot)->value = value;
        return;
    }
    // At most half full, so that a search always meets an empty slot.
    if ((mSize + 1) * 2 > mMask + 1)
        grow(state, anchors);
    put(key, value);
}

void KyLuaAddressMap::clear() {
    if (mSlots == &msEmpty)
        return;
    std::fill_n(mSlots, mMask + 1, Slot{nullptr, nullptr});
    mSize = 0;
}

void KyLuaAddressMap::grow(lua_State* state, int anchors) {
    constexpr std::size_t cFirstCapacity = 16;
    const std::size_t capacity = mSlots == &msEmpty ? cFirstCapacity : (mMask + 1) * 2;
    Slot* const oldSlots = mSlots;
    const std::size_t oldCapacity = mMask + 1;

    // The address of the map is the key of its block in the table; the old block may go once the new one stands there.
    lua_pushvalue(state, anchors);
    lua_pushlightuserdata(state, this);
    lua_pushvalue(state, -1);
    lua_rawget(state, -3);
    lua_insert(state, -2);
    auto* slots = static_cast<Slot*>(lua_newuserdata(state, capacity * sizeof(Slot)));
    std::fill_n(slots, capacity, Slot{nullptr, nullptr});
    lua_rawset(state, -4);

    mSlots = slots;
    mMask = capacity - 1;
    mSize = 0;
    std::for_each(oldSlots, oldSlots + oldCapacity, [this](const Slot& slot) {
        if (slot.key)
            put(slot.key, slot.value);
    });
    lua_pop(state, 2);
}

void KyLuaAddressMap::put(const void* key, void* value) {
    std::size_t place = getPlace(key);
    while (mSlots[place].key)
        place = (place + 1) & mMask;
    mSlots[place] = {key, value};
    ++mSize;
}

void KyLuaAttributeCache::add(lua_State* state, int anchors, int keyIndex, const KyAttributeInterface* attribute) {
    lua_pushvalue(state, anchors);
    lua_pushvalue(state, keyIndex);
    lua_pushboolean(state, 1);
    lua_rawset(state, -3);
    lua_pop(state, 1);
    mNbOthers += attribute ? 0 : 1;
    mEntries.set(state, anchors, lua_tostring(state, keyIndex), const_cast<KyAttributeInterface*>(attribute));
}

void KyLuaAttributeCache::clear() {
    mEntries.clear();
    mNbOthers = 0;
}

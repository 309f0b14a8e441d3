// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>

#include <lua.hpp>

class KyAttributeInterface;

/// A map from addresses to addresses whose memory belongs to a Lua state: it grows inside it and ends with it. Entries
/// are never taken out one by one; a value may be set to null.
class KyLuaAddressMap {
public:
    struct Slot {
        const void* key;
        void* value;
    };

    /// The slot of the key, null when it is not in the map.
    const Slot* findSlot(const void* key) const {
        for (std::size_t i = getPlace(key);; i = (i + 1) & mMask) {
            if (mSlots[i].key == key)
                return &mSlots[i];
            if (!mSlots[i].key)
                return nullptr;
        }
    }
    void* find(const void* key) const {
        const Slot* slot = findSlot(key);
        return slot ? slot->value : nullptr;
    }
    std::size_t size() const { return mSize; }

    /// Enters or replaces. Anchors its memory in the table at `anchors`; raises a memory error.
    void set(lua_State* state, int anchors, const void* key, void* value);
    /// Forgets all entries; the memory stays.
    void clear();

private:
    std::size_t getPlace(const void* key) const {
        // Blocks of memory are aligned, so the low bits tell nothing.
        const auto address = reinterpret_cast<std::uintptr_t>(key);
        return static_cast<std::size_t>((address >> 4) ^ (address >> 11)) & mMask;
    }
    void grow(lua_State* state, int anchors);
    void put(const void* key, void* value);

    static inline Slot msEmpty{nullptr, nullptr};

    Slot* mSlots = &msEmpty;
    std::size_t mMask = 0;
    std::size_t mSize = 0;
};

/// Attributes of one class by the address of the interned Lua string that names them. A table keeps the strings alive,
/// so that an address means one name for ever. Names that are no attributes are entered, as null, only for what the
/// class table holds, and only so many: scripts may ask for any number of unknown names.
class KyLuaAttributeCache {
public:
    const KyLuaAddressMap::Slot* find(const char* key) const { return mEntries.findSlot(key); }
    static const KyAttributeInterface* getAttribute(const KyLuaAddressMap::Slot& slot) {
        return static_cast<const KyAttributeInterface*>(slot.value);
    }

    /// Enters the string at `keyIndex`; `anchors` is the index of the table that keeps it alive.
    void add(lua_State* state, int anchors, int keyIndex, const KyAttributeInterface* attribute);
    bool hasRoomForOthers() const { return mNbOthers < cMaxOthers; }
    void clear();
    std::size_t size() const { return mEntries.size(); }

private:
    static constexpr std::size_t cMaxOthers = 256;

    KyLuaAddressMap mEntries;
    std::size_t mNbOthers = 0;
};

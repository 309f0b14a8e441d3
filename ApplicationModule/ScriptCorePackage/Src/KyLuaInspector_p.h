// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyLuaCall_p.h"
#include "KyLuaFrames_p.h"

#include <map>
#include <string>
#include <vector>

#include <lua.hpp>

/// What a reference stands for: the locals or upvalues of a frame, or a value that holds others.
struct KyLuaReference {
    enum class Kind { eLocals, eUpvalues, eValue };

    Kind kind = Kind::eValue;
    /// The frame, or for a value the one it was reached from.
    int thread = 0;
    int level = 0;

    bool operator==(const KyLuaReference&) const = default;
};

/// Lists what frames, tables and objects hold, and keeps the values that were told with a reference. Functions that
/// take a state raise: they are called protected.
class KyLuaInspector {
public:
    using Variables = std::vector<KyScriptVariable>;
    /// `count` 0 means all.
    struct Page {
        int first = 0;
        int count = 0;
    };

    /// Forgets the references.
    void clear(lua_State* state);
    /// Null for a number that was not given out.
    const KyLuaReference* find(int reference) const;
    int refer(const KyLuaReference& reference);
    /// Reference of the value at `index`, the same each time.
    int referToValue(lua_State* state, int index, const KyLuaReference& origin);

    /// All but the name.
    void describe(lua_State* state, int index, const KyLuaReference& origin, KyScriptVariable& variable);
    static int countLocals(KyLuaFrame& frame);
    /// Of the function at `index`.
    static int countUpvalues(lua_State* state, int index);
    /// Number of entries of the value at `index`.
    static int count(lua_State* state, int index);
    /// `frame` is that of the reference. Locals and upvalues in the order of the script, entries of tables by key.
    void list(lua_State* state, int reference, KyLuaFrame& frame, Page page, Variables& variables);
    /// Gives the value on top to a variable of the reference; false when there is none of that name, or it cannot be
    /// written. Leaves the stack as it likes.
    bool assign(lua_State* state, int reference, KyLuaFrame& frame, const std::string& name);
    /// Pushes a variable of the reference; false when there is none of that name.
    bool push(lua_State* state, int reference, KyLuaFrame& frame, const std::string& name);

private:
    struct Key {
        bool isText;
        double number;
        std::string name;
        int position;
    };

    void pushValue(lua_State* state, int reference) const;
    bool pushKey(lua_State* state, int table, const std::string& name);
    void listLocals(lua_State* state, const KyLuaReference& origin, KyLuaFrame& frame, Page page, Variables& variables);
    void listUpvalues(lua_State* state, const KyLuaReference& origin, KyLuaFrame& frame, Page page,
                      Variables& variables);
    void listTable(lua_State* state, const KyLuaReference& origin, Page page, Variables& variables);
    void collectKeys(lua_State* state, int table);
    void sortKeys(std::size_t first, std::size_t last);
    void listObject(lua_State* state, const KyLuaReference& origin, Page page, Variables& variables);

    std::vector<KyLuaReference> mReferences;
    /// Kept out of the way of Lua errors, which jump over C++ objects.
    std::vector<Key> mKeys;
    /// Where in the list the entry of a position of the walk stands.
    std::map<int, std::size_t> mPlaces;
    std::string mText;
};

// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyObject.h"
#include "KySignal.h"

#include <memory>
#include <string>
#include <vector>

#include <lua.hpp>

/// The functions of one Lua state that signals of model objects call; lives in its registry. A connection ends with its
/// object, with the state, or when it is taken away.
class KyLuaConnections : public KyHasSlots {
public:
    explicit KyLuaConnections(lua_State* mainState);
    ~KyLuaConnections() override;
    KyLuaConnections(const KyLuaConnections&) = delete;
    KyLuaConnections& operator=(const KyLuaConnections&) = delete;

    /// Makes them for the state; nothing the second time. May raise memory errors.
    static void install(lua_State* state, lua_State* mainState);
    /// Null before install.
    static KyLuaConnections* find(lua_State* state);

    /// Connects to the function at the index, which gets the signal's arguments; false when the object has no signal of
    /// that name. Errors of the function go to the engine's output.
    bool connect(lua_State* state, KyObject& sender, const std::string& signal, int function);
    /// Number of connections taken away: of the signal, or of all for an empty name; of the function at the index, or
    /// of all for 0.
    int disconnect(lua_State* state, KyObject& sender, const std::string& signal, int function);

private:
    /// Null once the state closes, with which the functions go.
    using State = std::shared_ptr<lua_State*>;
    class Function;
    struct Connection {
        const KySignalBase* signal;
        KyConnection connection;
        int reference;
    };

    State mState;
    std::vector<Connection> mConnections;
};

// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyLuaConnections_p.h"

#include "KyLuaConverters_p.h"
#include "KyLuaState_p.h"
#include "KyScriptEngine.h"
#include "KyScriptRunner_p.h"
#include "KyScriptSandbox_p.h"

#include <algorithm>
#include <functional>
#include <new>
#include <span>

namespace {

/// Its address is a key of the registry.
char gConnectionsKey = 0;

int collectConnections(lua_State* state) {
    static_cast<KyLuaConnections*>(lua_touserdata(state, 1))->~KyLuaConnections();
    return 0;
}

/// Of the object, in the order of their indices; of that name, or all for an empty one.
std::vector<const KySignalBase*> listSignals(KyObject& sender, const std::string& name) {
    std::vector<const KySignalBase*> found;
    for (unsigned i = 0; i < sender.getNbSignals(); ++i)
        if (name.empty() || sender.getSignalName(i) == name)
            found.push_back(sender.editSignal(i));
    return found;
}

} // namespace

/// A function of the registry, given back with the last copy of the slot that calls it.
class KyLuaConnections::Function {
public:
    Function(State state, int reference)
        : mState(std::move(state))
        , mReference(reference) {}
    ~Function() {
        run([this](KyScriptRunner& runner) {
            runner.run([this](lua_State* state) { luaL_unref(state, LUA_REGISTRYINDEX, mReference); });
        });
    }
    Function(const Function&) = delete;
    Function& operator=(const Function&) = delete;

    void call(std::span<const KyField> arguments) const {
        run([&](KyScriptRunner& runner) {
            const auto callFunction = [&](lua_State* state) {
                const int number = static_cast<int>(arguments.size());
                luaL_checkstack(state, number + LUA_MINSTACK, "too many arguments");
                lua_rawgeti(state, LUA_REGISTRYINDEX, mReference);
                for (const KyField& argument : arguments)
                    kyLuaPushField(state, argument);
                lua_call(state, number, 0);
            };
            if (!runner.run(callFunction))
                runner.report();
        });
    }

private:
    template <class Body>
    void run(const Body& body) const {
        KyScriptEngine* const engine = *mState ? kyLuaEngine(*mState) : nullptr;
        if (!engine)
            return;
        KyScriptRunner runner(*engine);
        if (runner.isOpen() && runner.editGuard().getMainState() == *mState)
            body(runner);
    }

    State mState;
    int mReference;
};

KyLuaConnections::KyLuaConnections(lua_State* mainState)
    : mState(std::make_shared<lua_State*>(mainState)) {}

/// A state that closes frees its functions itself.
KyLuaConnections::~KyLuaConnections() {
    *mState = nullptr;
}

void KyLuaConnections::install(lua_State* state, lua_State* mainState) {
    if (find(state))
        return;
    lua_pushlightuserdata(state, &gConnectionsKey);
    new (lua_newuserdata(state, sizeof(KyLuaConnections))) KyLuaConnections(mainState);
    lua_createtable(state, 0, 1);
    lua_pushcfunction(state, &collectConnections);
    lua_setfield(state, -2, "__gc");
    lua_setmetatable(state, -2);
    lua_rawset(state, LUA_REGISTRYINDEX);
}

KyLuaConnections* KyLuaConnections::find(lua_State* state) {
    lua_pushlightuserdata(state, &gConnectionsKey);
    lua_rawget(state, LUA_REGISTRYINDEX);
    auto* connections = static_cast<KyLuaConnections*>(lua_touserdata(state, -1));
    lua_pop(state, 1);
    return connections;
}

bool KyLuaConnections::connect(lua_State* state, KyObject& sender, const std::string& signal, int function) {
    KySignalBase* const found = sender.editSignal(signal);
    if (!found || !*mState || !KyScriptSandbox::Private::mayListen(state, sender, signal))
        return false;
    std::erase_if(mConnections, [](const Connection& old) { return !old.connection.isConnected(); });
    lua_pushvalue(state, function);
    const int reference = luaL_ref(state, LUA_REGISTRYINDEX);
    const auto slot = std::make_shared<Function>(mState, reference);
    const auto call = [slot](std::span<const KyField> arguments) { slot->call(arguments); };
    mConnections.push_back({found, found->connectGeneric(call, this), reference});
    return true;
}

int KyLuaConnections::disconnect(lua_State* state, KyObject& sender, const std::string& signal, int function) {
    const std::vector<const KySignalBase*> meant = listSignals(sender, signal);
    const auto isMeant = [&](const Connection& connection) {
        if (!connection.connection.isConnected() || std::ranges::count(meant, connection.signal) == 0)
            return false;
        if (function == 0)
            return true;
        lua_rawgeti(state, LUA_REGISTRYINDEX, connection.reference);
        const bool isSame = lua_rawequal(state, -1, function) != 0;
        lua_pop(state, 1);
        return isSame;
    };
    const auto first = std::stable_partition(mConnections.begin(), mConnections.end(), std::not_fn(isMeant));
    // Out of the list first: what their end runs may change the list.
    std::vector<Connection> taken(first, mConnections.end());
    mConnections.erase(first, mConnections.end());
    for (Connection& connection : taken)
        connection.connection.disconnect();
    return static_cast<int>(taken.size());
}

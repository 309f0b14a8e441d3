// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QMetaMethod>
#include <QObject>
#include <QVariant>

#include <memory>
#include <vector>

#include <lua.hpp>

class KyQtConnections;

/// One signal of a Qt object that calls a function of Lua; ends with the object or with the Lua state.
class KyQtConnection final : public QObject {
public:
    /// The reference is that of the function in the registry, and taken over.
    KyQtConnection(KyQtConnections& owner, QObject& sender, const QMetaMethod& signal, int reference);
    ~KyQtConnection() override;

    int qt_metacall(QMetaObject::Call call, int id, void** arguments) override;

    const QObject* getSender() const { return mSender; }
    const QMetaMethod& getSignal() const { return mSignal; }
    int getReference() const { return mReference; }

private:
    QVariantList readArguments(void** arguments) const;

    KyQtConnections& mOwner;
    QObject* mSender;
    QMetaMethod mSignal;
    int mReference;
};

/// All connections of one Lua state; lives in its registry.
class KyQtConnections {
public:
    explicit KyQtConnections(lua_State* mainState);
    ~KyQtConnections();
    KyQtConnections(const KyQtConnections&) = delete;
    KyQtConnections& operator=(const KyQtConnections&) = delete;

    /// Makes them for the state; nothing the second time. May raise memory errors.
    static void install(lua_State* state, lua_State* mainState);
    /// Null before install.
    static KyQtConnections* find(lua_State* state);

    /// Connects to the function at the index. The signal is given as "name(types)" or by its name alone; false when the
    /// object has none such.
    bool connect(lua_State* state, QObject& sender, const QString& signal, int function);
    /// Number of connections taken away: of the signal, or of all for an empty one; of the function at the index, or of
    /// all for 0.
    int disconnect(lua_State* state, const QObject& sender, const QString& signal, int function);
    void remove(KyQtConnection& connection);

    /// Calls the function with the values; errors go to the engine's output. The connection may end meanwhile.
    void call(int reference, const QVariantList& values) const;
    void release(int reference) const;

private:
    lua_State* mMainState;
    std::vector<std::unique_ptr<KyQtConnection>> mConnections;
    bool mIsClosing = false;
};

// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyQtConnection_p.h"

#include "KyLuaState_p.h"
#include "KyQtLifetime_p.h"
#include "KyQtLuaVariant_p.h"
#include "KyQtTreeItem_p.h"
#include "KyScriptEngine.h"
#include "KyScriptRunner_p.h"

#include <QMetaEnum>

#include <algorithm>
#include <new>
#include <optional>

namespace {

/// Its address is a key of the registry.
char gConnectionsKey = 0;

bool isDestroyed(const QMetaMethod& signal) {
    return signal.name() == "destroyed" && signal.enclosingMetaObject() == &QObject::staticMetaObject;
}

QMetaMethod findSignal(const QMetaObject& meta, const QString& text) {
    QByteArray name = text.toUtf8();
    // As the toolkit's own macro writes it.
    if (name.startsWith('2'))
        name.remove(0, 1);
    const int index = meta.indexOfSignal(QMetaObject::normalizedSignature(name.constData()).constData());
    if (index >= 0)
        return meta.method(index);
    for (int i = meta.methodCount() - 1; i >= 0; --i)
        if (meta.method(i).methodType() == QMetaMethod::Signal && meta.method(i).name() == name &&
            !(meta.method(i).attributes() & QMetaMethod::Cloned))
            return meta.method(i);
    return {};
}

/// Whether the class, or the toolkit's namespace, describes the type as an enumeration or as flags of one.
bool describesEnumeration(const QMetaObject& meta, const QByteArray& type) {
    const int scope = type.lastIndexOf("::");
    const QByteArray name = type.mid(scope < 0 ? 0 : scope + 2);
    const QMetaObject* qtNamespace = QMetaEnum::fromType<Qt::DockWidgetArea>().enclosingMetaObject();
    const auto isIn = [&](const QMetaObject& owner) {
        const QMetaEnum known = owner.enumerator(owner.indexOfEnumerator(name.constData()));
        return known.isValid() && !known.isScoped() && (scope < 0 || type.left(scope) == known.scope());
    };
    return isIn(meta) || isIn(*qtNamespace);
}

/// Whether the value is an enumeration, or flags of one, and as nearly all of them an integer.
bool isEnumeration(const QMetaObject& meta, int type, const QByteArray& name) {
    if (type != QMetaType::UnknownType && QMetaType::sizeOf(type) != sizeof(int))
        return false;
    if (QMetaType::typeFlags(type).testFlag(QMetaType::IsEnumeration))
        return true;
    return (type == QMetaType::UnknownType || type >= QMetaType::User) && describesEnumeration(meta, name);
}

int collectConnections(lua_State* state) {
    static_cast<KyQtConnections*>(lua_touserdata(state, 1))->~KyQtConnections();
    return 0;
}

} // namespace

KyQtConnection::KyQtConnection(KyQtConnections& owner, QObject& sender, const QMetaMethod& signal, int reference)
    : mOwner(owner)
    , mSender(&sender)
    , mSignal(signal)
    , mReference(reference) {
    const int ownMethod = QObject::staticMetaObject.methodCount();
    QMetaObject::connect(&sender, signal.methodIndex(), this, ownMethod, Qt::AutoConnection, nullptr);
    QObject::connect(&sender, &QObject::destroyed, this, [this] { mOwner.remove(*this); });
}

KyQtConnection::~KyQtConnection() {
    mOwner.release(mReference);
}

int KyQtConnection::qt_metacall(QMetaObject::Call call, int id, void** arguments) {
    id = QObject::qt_metacall(call, id, arguments);
    if (id < 0 || call != QMetaObject::InvokeMetaMethod)
        return id;
    if (id > 0)
        return id - 1;
    // No guarded pointer may be made any more to what is in its destructor.
    std::optional<KyQtLifetime::SenderScope> sending;
    std::optional<KyQtLifetime::EndingScope> ending;
    if (isDestroyed(mSignal))
        ending.emplace(*mSender);
    else
        sending.emplace(*mSender);
    mOwner.call(mReference, readArguments(arguments));
    return -1;
}

QVariantList KyQtConnection::readArguments(void** arguments) const {
    QVariantList values;
    for (int i = 0; i < mSignal.parameterCount(); ++i) {
        const int type = mSignal.parameterType(i);
        if (type == QMetaType::QVariant)
            values.append(*static_cast<const QVariant*>(arguments[i + 1]));
        else if (isEnumeration(*mSender->metaObject(), type, mSignal.parameterTypes().at(i)))
            values.append(*static_cast<const int*>(arguments[i + 1]));
        else
            values.append(type == QMetaType::UnknownType ? QVariant() : QVariant(type, arguments[i + 1]));
    }
    return values;
}

KyQtConnections::KyQtConnections(lua_State* mainState)
    : mMainState(mainState) {}

KyQtConnections::~KyQtConnections() {
    mIsClosing = true;
    mConnections.clear();
}

void KyQtConnections::install(lua_State* state, lua_State* mainState) {
    if (find(state))
        return;
    qRegisterMetaType<QTreeWidgetItem*>("QTreeWidgetItem*");
    lua_pushlightuserdata(state, &gConnectionsKey);
    new (lua_newuserdata(state, sizeof(KyQtConnections))) KyQtConnections(mainState);
    lua_createtable(state, 0, 1);
    lua_pushcfunction(state, &collectConnections);
    lua_setfield(state, -2, "__gc");
    lua_setmetatable(state, -2);
    lua_rawset(state, LUA_REGISTRYINDEX);
}

KyQtConnections* KyQtConnections::find(lua_State* state) {
    lua_pushlightuserdata(state, &gConnectionsKey);
    lua_rawget(state, LUA_REGISTRYINDEX);
    auto* connections = static_cast<KyQtConnections*>(lua_touserdata(state, -1));
    lua_pop(state, 1);
    return connections;
}

bool KyQtConnections::connect(lua_State* state, QObject& sender, const QString& signal, int function) {
    const QMetaMethod method = findSignal(*sender.metaObject(), signal);
    if (!method.isValid() || mIsClosing)
        return false;
    lua_pushvalue(state, function);
    const int reference = luaL_ref(state, LUA_REGISTRYINDEX);
    mConnections.push_back(std::make_unique<KyQtConnection>(*this, sender, method, reference));
    return true;
}

int KyQtConnections::disconnect(lua_State* state, const QObject& sender, const QString& signal, int function) {
    const QMetaMethod method = findSignal(*sender.metaObject(), signal);
    const auto isMeant = [&](const KyQtConnection& connection) {
        if (connection.getSender() != &sender || (!signal.isEmpty() && connection.getSignal() != method))
            return false;
        if (function == 0)
            return true;
        lua_rawgeti(state, LUA_REGISTRYINDEX, connection.getReference());
        const bool isSame = lua_rawequal(state, -1, function) != 0;
        lua_pop(state, 1);
        return isSame;
    };
    std::vector<KyQtConnection*> meant;
    for (const auto& connection : mConnections)
        if (isMeant(*connection))
            meant.push_back(connection.get());
    for (KyQtConnection* connection : meant)
        remove(*connection);
    return static_cast<int>(meant.size());
}

void KyQtConnections::remove(KyQtConnection& connection) {
    const auto isIt = [&connection](const auto& known) { return known.get() == &connection; };
    const auto found = std::find_if(mConnections.begin(), mConnections.end(), isIt);
    if (found == mConnections.end())
        return;
    // Out of the list first: what its end runs may change the list.
    const std::unique_ptr<KyQtConnection> removed = std::move(*found);
    mConnections.erase(found);
}

void KyQtConnections::call(int reference, const QVariantList& values) const {
    KyScriptEngine* engine = kyLuaEngine(mMainState);
    if (mIsClosing || !engine)
        return;
    KyScriptRunner runner(*engine);
    if (!runner.isOpen() || runner.editGuard().getMainState() != mMainState)
        return;
    const auto callFunction = [&](lua_State* state) {
        luaL_checkstack(state, values.size() + LUA_MINSTACK, "too many arguments");
        lua_rawgeti(state, LUA_REGISTRYINDEX, reference);
        for (const QVariant& value : values)
            pushQVariantToLuaStack(state, value);
        lua_call(state, values.size(), 0);
    };
    if (!runner.run(callFunction))
        runner.report();
}

/// A state that closes frees its functions itself.
void KyQtConnections::release(int reference) const {
    KyScriptEngine* engine = mIsClosing ? nullptr : kyLuaEngine(mMainState);
    if (!engine)
        return;
    KyScriptRunner runner(*engine);
    if (runner.isOpen() && runner.editGuard().getMainState() == mMainState)
        runner.run([reference](lua_State* state) { luaL_unref(state, LUA_REGISTRYINDEX, reference); });
}

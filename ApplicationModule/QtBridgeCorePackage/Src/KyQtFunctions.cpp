// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyQtConnection_p.h"
#include "KyQtForm_p.h"
#include "KyQtLifetime_p.h"
#include "KyQtLuaBinding.h"
#include "KyQtLuaClass_p.h"
#include "KyQtTypes_p.h"

#include "KyLuaConnections_p.h"
#include "KyLuaInstance_p.h"

#include "KyCallSignatures.h"

#include <QCoreApplication>
#include <QDir>
#include <QThread>
#include <QUuid>
#include <QWidget>

namespace luabind {

/// An object of the object model.
template <>
struct default_converter<KyObject&, void> {
    using type = default_converter;
    using is_native = boost::mpl::true_;

    int consumed_args() const { return 1; }

    template <class By>
    int match(lua_State* state, By, int index) {
        return kyLuaToInstance(state, index) ? 0 : -1;
    }

    template <class By>
    KyObject& apply(lua_State* state, By, int index) {
        if (KyObject* const object = kyLuaToInstance(state, index)->get())
            return *object;
        throw KyScriptError("the object has been destroyed");
    }

    template <class By>
    void converter_postcall(lua_State*, By, int) {}
};

template <>
struct detail::type_to_string<KyObject&> {
    static void get(lua_State* state) { lua_pushliteral(state, "object"); }
};

} // namespace luabind

namespace {

using luabind::argument;

void deleteQObject(lua_State* state, const argument& value) {
    value.push(state);
    const luabind::detail::stack_pop pop(state, 1);
    const KyQtHandle* handle = kyFindQtHandle(state, lua_gettop(state));
    if (!handle && !lua_isnil(state, -1))
        throw KyScriptError("deleteQObject : Qt object expected");
    QObject* object = handle ? handle->find() : nullptr;
    if (!object)
        return;
    if (KyQtLifetime::isPart(*object))
        throw KyScriptError("this Qt object cannot be deleted");
    const KyLuaRunning running(state);
    KyQtLifetime::destroy(*object);
}

QObject* loadUi(lua_State* state, const QString& file, QWidget* parent) {
    kyCheckQtGui();
    const KyLuaRunning running(state);
    return kyLoadQtForm(file, QString::fromStdString(KyQtLuaBinding::getDataPath()), parent);
}

QString generateGUID() {
    return QUuid::createUuid().toString();
}

QObject* getApplication() {
    return QCoreApplication::instance();
}

KyQtConnections& editConnections(lua_State* state, const QObject& sender) {
    KyQtConnections* connections = KyQtConnections::find(state);
    if (!connections || sender.thread() != QThread::currentThread())
        throw KyScriptError("the Qt object belongs to another thread");
    return *connections;
}

void connectSignal(lua_State* state, QObject& sender, const QString& signal, const argument& function) {
    function.push(state);
    const luabind::detail::stack_pop pop(state, 1);
    if (!lua_isfunction(state, -1))
        throw KyScriptError("connect : function expected");
    if (!editConnections(state, sender).connect(state, sender, signal, lua_gettop(state)))
        throw KyScriptError("connect : " + std::string(sender.metaObject()->className()) + " has no signal " +
                            signal.toStdString());
}

int disconnectFunction(lua_State* state, QObject& sender, const QString& signal, const argument& function) {
    function.push(state);
    const luabind::detail::stack_pop pop(state, 1);
    return editConnections(state, sender).disconnect(state, sender, signal, lua_gettop(state));
}

int disconnectSignal(lua_State* state, QObject& sender, const QString& signal) {
    return editConnections(state, sender).disconnect(state, sender, signal, 0);
}

int disconnectAll(lua_State* state, QObject& sender) {
    return disconnectSignal(state, sender, {});
}

void connectObjectSignal(lua_State* state, KyObject& sender, const QString& signal, const argument& function) {
    function.push(state);
    const luabind::detail::stack_pop pop(state, 1);
    if (!lua_isfunction(state, -1))
        throw KyScriptError("connect : function expected");
    if (!KyLuaConnections::find(state)->connect(state, sender, signal.toStdString(), lua_gettop(state)))
        throw KyScriptError("connect : " + sender.getObjectType()->getName() + " has no signal " +
                            signal.toStdString());
}

int disconnectObjectFunction(lua_State* state, KyObject& sender, const QString& signal, const argument& function) {
    function.push(state);
    const luabind::detail::stack_pop pop(state, 1);
    return KyLuaConnections::find(state)->disconnect(state, sender, signal.toStdString(), lua_gettop(state));
}

int disconnectObjectSignal(lua_State* state, KyObject& sender, const QString& signal) {
    return KyLuaConnections::find(state)->disconnect(state, sender, signal.toStdString(), 0);
}

int disconnectObject(lua_State* state, KyObject& sender) {
    return disconnectObjectSignal(state, sender, {});
}

/// A method that is a global function too.
struct Alias {
    const char* name;
    const char* className;
    const char* method;
};

constexpr Alias cAliases[] = {
    {"QAxWidget_dynamicCall", "QAxWidget", "dynamicCall"},
    {"QAxWidget_GenerateDoc", "QAxWidget", "generateDocumentation"},
    {"QBoxLayout_insertWidget", "QBoxLayout", "insertWidget"},
    {"QComboBox_addItem", "QComboBox", "addItem"},
    {"QComboBox_insertItem", "QComboBox", "insertItem"},
    {"QDir_entryList", "QDir", "entryList"},
    {"QDir_entryListOld", "QDir", "entryList"},
    {"QObject_property", "QObject", "property"},
    {"QObject_setProperty", "QObject", "setProperty"},
    {"QSettings_beginGroup", "QSettings", "beginGroup"},
    {"QSettings_contains", "QSettings", "contains"},
    {"QSettings_remove", "QSettings", "remove"},
    {"QSettings_setValue", "QSettings", "setValue"},
    {"QSettings_value", "QSettings", "value"},
    {"QString_fromStdString", "QString", "fromStdString"},
    {"QString_fromUtf8", "QString", "fromUtf8"},
    {"QString_toQUrl", "QString", "toQUrl"},
    {"QString_toStdString", "QString", "toStdString"},
    {"QString_toUtf8", "QString", "toUtf8"},
    {"QUrl_toString", "QUrl", "toString"},
    {"QWidget_getGeometry", "QWidget", "geometry"},
    {"QWidget_mapToGlobal", "QWidget", "mapToGlobal"},
    {"findChild", "QObject", "findChild"},
    {"findChildren", "QObject", "findChildren"},
    {"getCursorPosition", "QLineEdit", "getCursorPosition"},
};

} // namespace

luabind::scope kyMakeQtFunctions() {
    using luabind::def;
    KyCallSignatures::add(
        "", {"deleteQObject(object: QObject?)", "loadUi(file, parent?)", "connect(sender, signal, callback: function)",
             "connect(sender, signal, callback: function)", "disconnect(sender, signal?, callback?: function)",
             "disconnect(sender, signal?, callback?: function)"});
    return def("deleteQObject", &deleteQObject), def("loadUi", &loadUi),
           def(
               "loadUi",
               +[](lua_State* state, const QString& file) -> QObject* { return loadUi(state, file, nullptr); }),
           def("generateGUID", &generateGUID), def("getQApplication", &getApplication), def("connect", &connectSignal),
           def("disconnect", &disconnectFunction), def("disconnect", &disconnectSignal),
           def("disconnect", &disconnectAll), def("connect", &connectObjectSignal),
           def("disconnect", &disconnectObjectFunction), def("disconnect", &disconnectObjectSignal),
           def("disconnect", &disconnectObject);
}

void kySetQtGlobals(lua_State* state) {
    KyCallSignatures::add(
        "", {"QAxWidget_dynamicCall(widget, functionName, parameters)",
             "QAxWidget_GenerateDoc(widget)",
             "QBoxLayout_insertWidget(layout, index: integer, widget, stretch?: integer, alignment?: integer)",
             "QObject_property(object, name)",
             "QObject_setProperty(object, name, value)",
             "QSettings_beginGroup(settings, prefix)",
             "QSettings_contains(settings, key)",
             "QSettings_remove(settings, key)",
             "QSettings_setValue(settings, key, value)",
             "QSettings_value(settings, key, fallback?)",
             "QString_fromStdString(text)",
             "QString_fromUtf8(text)",
             "QString_toQUrl(string)",
             "QString_toStdString(string)",
             "QString_toUtf8(string)",
             "QUrl_toString(url)",
             "QWidget_getGeometry(widget)",
             "QWidget_mapToGlobal(widget, position)",
             "findChild(object, name?)",
             "findChildren(object, name?)",
             "getCursorPosition(lineEdit)",
             "QComboBox_addItem(box, text)",
             "QComboBox_addItem(box, icon, text)",
             "QComboBox_addItem(box, text, data)",
             "QComboBox_addItem(box, icon, text, data)",
             "QComboBox_insertItem(box, index: integer, text)",
             "QComboBox_insertItem(box, index: integer, icon, text)",
             "QComboBox_insertItem(box, index: integer, text, data)",
             "QComboBox_insertItem(box, index: integer, icon, text, data)",
             "QDir_entryList(directory)",
             "QDir_entryList(directory, filter, flags?: integer, sort?: integer)",
             "QDir_entryList(directory, flags: integer, sort?: integer)",
             "QDir_entryListOld(directory)",
             "QDir_entryListOld(directory, filter, flags?: integer, sort?: integer)",
             "QDir_entryListOld(directory, flags: integer, sort?: integer)"});
    for (const auto& [name, className, method] : cAliases) {
        lua_pushstring(state, name);
        lua_getglobal(state, className);
        lua_getfield(state, -1, method);
        lua_remove(state, -2);
        lua_rawset(state, LUA_GLOBALSINDEX);
    }
    lua_pushliteral(state, "qApp");
    kyPushQtObject(state, QCoreApplication::instance());
    lua_rawset(state, LUA_GLOBALSINDEX);
}

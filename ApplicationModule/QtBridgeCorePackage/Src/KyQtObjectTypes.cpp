// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyQtArgument_p.h"
#include "KyQtForm_p.h"
#include "KyQtLifetime_p.h"
#include "KyQtTypes_p.h"

#include "KyCallSignatures.h"

#include <QAction>
#include <QApplication>
#include <QIcon>
#include <QLayout>
#include <QMovie>
#include <QThread>
#include <QWidget>

#include <algorithm>

namespace {

using luabind::argument;

/// In percent.
constexpr int cMaxSpeed = 100000;

/// Qt takes an empty name for the unnamed ones; here it stands for all but those that only Qt itself knows.
QObjectList findChildrenOf(QObject& object, const QString& name) {
    if (!name.isEmpty())
        return KyQtLifetime::getLiving(object.findChildren<QObject*>(name));
    QObjectList children = KyQtLifetime::getLiving(object.findChildren<QObject*>());
    children.erase(std::remove_if(children.begin(), children.end(),
                                  [](const QObject* child) { return KyQtLifetime::isInner(*child); }),
                   children.end());
    return children;
}

QObject* findChildOf(QObject& object, const QString& name) {
    const QObjectList children = findChildrenOf(object, name);
    return children.isEmpty() ? nullptr : children.front();
}

QString getProperty(QObject& object, const QString& name) {
    return object.property(name.toUtf8().constData()).toString();
}

bool setProperty(QObject& object, const QString& name, const argument& value) {
    const KyQtArgument read(value);
    const QVariant& variant = read.getValue();
    const int limit = kyGetQtLimit(name);
    const bool isOfClass = object.metaObject()->indexOfProperty(name.toUtf8().constData()) >= 0;
    if (limit > 0 && isOfClass && variant.toDouble() > limit)
        throw KyScriptError(name.toStdString() + " out of range");
    if (!read.isGood()) {
        read.refuse(QT_TRANSLATE_NOOP("KyQtLuaBinding", "QObject::setProperty : unknown type of value "));
        return false;
    }
    return object.setProperty(name.toUtf8().constData(), variant);
}

void setWidgetParent(QWidget& widget, QObject* parent) {
    if (parent && !parent->isWidgetType())
        throw KyScriptError("the parent of a widget must be a widget");
    widget.setParent(static_cast<QWidget*>(parent));
}

void setParent(QObject& object, QObject* parent) {
    if (qobject_cast<QLayout*>(&object))
        throw KyScriptError("a layout cannot be given another parent");
    kyCheckQtMovable(object);
    if (object.thread() != QThread::currentThread() || (parent && parent->thread() != object.thread()))
        throw KyScriptError("the Qt objects belong to different threads");
    if (parent)
        kyCheckQtParent(object, *parent);
    if (object.isWidgetType())
        setWidgetParent(static_cast<QWidget&>(object), parent);
    else
        object.setParent(parent);
}

/// Handles are compared without a look at whether their objects still exist.
KyQtHandle* findHandle(const argument& value) {
    lua_State* state = value.interpreter();
    value.push(state);
    const luabind::detail::stack_pop pop(state, 1);
    return kyFindQtHandle(state, lua_gettop(state));
}

bool areEqual(const argument& a, const argument& b) {
    const KyQtHandle* left = findHandle(a);
    const KyQtHandle* right = findHandle(b);
    return left && right && left->find() && left->find() == right->find();
}

QString describe(const argument& value) {
    const KyQtHandle* handle = findHandle(value);
    if (!handle)
        return {};
    const QObject* object = handle->find();
    const QString name = object ? object->objectName() : QStringLiteral("deleted");
    return QString::fromUtf8(handle->getClassName()) + QLatin1Char('(') + name + QLatin1Char(')');
}

luabind::scope makeObject() {
    kyAddQtClass({"QObject", luabind::detail::registered_class<QObject>::id, &QObject::staticMetaObject});
    luabind::class_<QObject> objectClass("QObject");
    KyCallSignatures::add("QObject", {"findChild(name?)", "findChildren(name?)", "property(name)",
                                      "setProperty(name, value)", "blockSignals(areBlocked)", "inherits(className)"});
    objectClass.def("__eq", &areEqual)
        .def("__tostring", &describe)
        .def("findChild", kyQt<&findChildOf>)
        .def("findChild", kyQtCall([](QObject& object) { return findChildOf(object, {}); }))
        .def("findChildren", kyQt<&findChildrenOf>)
        .def("findChildren", kyQtCall([](QObject& object) { return findChildrenOf(object, {}); }))
        .def("objectName", kyQt<&QObject::objectName>)
        .def("setObjectName", kyQt<&QObject::setObjectName>)
        .def("property", kyQt<&getProperty>)
        .def("setProperty", kyQt<&setProperty>)
        .def("parent", kyQtCall([](QObject& object) { return object.parent(); }))
        .def("setParent", kyQt<&setParent>)
        .def("blockSignals", kyQtCall([](QObject& object, bool areBlocked) { return object.blockSignals(areBlocked); }))
        .def("inherits",
             kyQtCall([](QObject& object, const QString& name) { return object.inherits(qUtf8Printable(name)); }));
    return objectClass;
}

luabind::scope makeApplication() {
    return kyQtClass<QApplication, QObject>("QApplication");
}

luabind::scope makeMovie() {
    auto movieClass = kyQtClass<QMovie, QObject>("QMovie");
    KyCallSignatures::add("QMovie", {"__init(parent?)", "__init(file, format?, parent?)", "setSpeed(percent)"});
    movieClass.def("__init", kyQtConstructor<QMovie>(+[]() -> QObject* { return new QMovie; }))
        .def("__init", kyQtConstructor<QMovie>(+[](QObject* parent) -> QObject* { return new QMovie(parent); }))
        .def("__init", kyQtConstructor<QMovie>(+[](const QString& file) -> QObject* { return new QMovie(file); }))
        .def("__init", kyQtConstructor<QMovie>(+[](const QString& file, const QString& format) -> QObject* {
                 return new QMovie(file, format.toUtf8());
             }))
        .def("__init",
             kyQtConstructor<QMovie>(+[](const QString& file, const QString& format, QObject* parent) -> QObject* {
                 return new QMovie(file, format.toUtf8(), parent);
             }))
        .def("speed", kyQt<&QMovie::speed>)
        .def("setSpeed", kyQtCall([](QMovie& movie, int percent) { movie.setSpeed(qBound(0, percent, cMaxSpeed)); }))
        .def("start", kyQt<&QMovie::start>)
        .def("stop", kyQt<&QMovie::stop>)
        .def("setPaused", kyQt<&QMovie::setPaused>)
        .def("fileName", kyQt<&QMovie::fileName>);
    return movieClass;
}

luabind::scope makeAction() {
    auto actionClass = kyQtClass<QAction, QObject>("QAction");
    KyCallSignatures::add("QAction", {"__init(parent?)", "__init(text, parent?)", "__init(icon, text, parent?)"});
    actionClass.def("__init", kyQtConstructor<QAction>(+[]() -> QObject* { return new QAction; }))
        .def("__init", kyQtConstructor<QAction>(+[](QObject* parent) -> QObject* { return new QAction(parent); }))
        .def("__init", kyQtConstructor<QAction>(+[](const QString& text) -> QObject* { return new QAction(text); }))
        .def("__init", kyQtConstructor<QAction>(
                           +[](const QString& text, QObject* parent) -> QObject* { return new QAction(text, parent); }))
        .def("__init", kyQtConstructor<QAction>(
                           +[](const QIcon& icon, const QString& text) -> QObject* { return new QAction(icon, text); }))
        .def("__init",
             kyQtConstructor<QAction>(+[](const QIcon& icon, const QString& text, QObject* parent) -> QObject* {
                 return new QAction(icon, text, parent);
             }))
        .def("isChecked", kyQt<&QAction::isChecked>)
        .def("isVisible", kyQt<&QAction::isVisible>)
        .def("text", kyQt<&QAction::text>)
        .def("icon", kyQt<&QAction::icon>)
        .def("setIcon", kyQt<&QAction::setIcon>);
    return actionClass;
}

} // namespace

luabind::scope kyMakeQtObjectTypes() {
    return makeObject(), makeApplication(), makeMovie(), makeAction();
}

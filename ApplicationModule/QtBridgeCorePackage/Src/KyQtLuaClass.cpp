// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyQtLuaClass_p.h"

#include "KyQtLifetime_p.h"
#include "KyQtLuaVariant_p.h"

#include <QApplication>
#include <QThread>

#include <algorithm>
#include <cstring>
#include <vector>

namespace {

using luabind::detail::object_rep;

/// Never shrinks: handles know their class by its index.
std::vector<KyQtClass>& classes() {
    static std::vector<KyQtClass> all;
    return all;
}

/// The nearest class of the object that scripts have.
std::size_t findNearest(const QMetaObject* meta) {
    const auto& all = classes();
    for (; meta; meta = meta->superClass()) {
        const auto isNamed = [meta](const KyQtClass& known) { return std::strcmp(known.name, meta->className()) == 0; };
        const auto found = std::find_if(all.begin(), all.end(), isNamed);
        if (found != all.end())
            return static_cast<std::size_t>(found - all.begin());
    }
    return all.size();
}

void setHandle(object_rep& place, QObject* object, std::size_t classIndex) {
    void* storage = place.allocate(sizeof(KyQtHandle));
    if (!storage)
        throw std::bad_alloc();
    place.set_instance(new (storage) KyQtHandle(object, static_cast<std::uint16_t>(classIndex)));
}

} // namespace

std::uint16_t kyAddQtClass(const KyQtClass& qtClass) {
    auto& all = classes();
    const auto hasId = [&qtClass](const KyQtClass& known) { return known.id == qtClass.id; };
    const auto found = std::find_if(all.begin(), all.end(), hasId);
    const auto index = static_cast<std::uint16_t>(found - all.begin());
    if (found == all.end())
        all.push_back(qtClass);
    return index;
}

KyQtHandle::KyQtHandle(QObject* object, std::uint16_t classIndex)
    : instance_holder(false)
    , mClassIndex(classIndex)
    , mObject(object) {}

std::pair<void*, int> KyQtHandle::get(const luabind::detail::cast_graph&, luabind::detail::class_id target) const {
    if (target != luabind::detail::registered_class<KyQtHandle>::id)
        return {nullptr, -1};
    return {const_cast<KyQtHandle*>(this), 0};
}

QObject* KyQtHandle::find() const {
    return mObject && !KyQtLifetime::isEnding(*mObject) ? mObject.data() : nullptr;
}

QObject& KyQtHandle::check() const {
    QObject* object = find();
    if (!object)
        throw KyScriptError("the Qt object has been deleted");
    return *object;
}

int KyQtHandle::getDistance(const QMetaObject& wanted) const {
    const QObject* object = find();
    const QMetaObject* meta = object ? object->metaObject() : classes()[mClassIndex].meta;
    int distance = 0;
    while (meta && meta != &wanted) {
        meta = meta->superClass();
        ++distance;
    }
    return meta ? distance : -1;
}

const char* KyQtHandle::getClassName() const {
    return classes()[mClassIndex].name;
}

KyQtHandle* kyFindQtHandle(lua_State* state, int index) {
    const object_rep* object = luabind::detail::get_instance(state, index);
    if (!object)
        return nullptr;
    const auto [handle, distance] = object->get_instance(luabind::detail::registered_class<KyQtHandle>::id);
    return distance < 0 ? nullptr : static_cast<KyQtHandle*>(handle);
}

void kyPushQtObject(lua_State* state, QObject* object) {
    if (!object || KyQtLifetime::isEnding(*object))
        return lua_pushnil(state);
    const std::size_t classIndex = findNearest(object->metaObject());
    const auto id = classIndex < classes().size() ? classes()[classIndex].id : luabind::detail::unknown_class;
    luabind::detail::class_rep* luaClass = kyFindLuaClass(state, id);
    if (!luaClass)
        throw std::runtime_error("Trying to use unregistered class");
    setHandle(*luabind::detail::push_new_instance(state, luaClass), object, classIndex);
}

void kyInitQtHandle(const luabind::argument& self, std::uint16_t classIndex, std::unique_ptr<QObject> object) {
    lua_State* state = self.interpreter();
    self.push(state);
    const luabind::detail::stack_pop pop(state, 1);
    object_rep* place = kyLuaCheckNewValue(state, lua_gettop(state), classes()[classIndex].id);
    if (kyFindQtHandle(state, lua_gettop(state)))
        throw KyScriptError("constructor called twice");
    setHandle(*place, object.get(), classIndex);
    KyQtLifetime::add(*object.release(), KyQtLifetime::eMade);
}

void kyCheckQtGui() {
    const auto* application = qobject_cast<QApplication*>(QCoreApplication::instance());
    if (!application || application->thread() != QThread::currentThread())
        throw KyScriptError("there is no user interface here");
}

bool kyReadQtText(lua_State* state, int index, QString* text) {
    if (lua_type(state, index) == LUA_TSTRING) {
        std::size_t size = 0;
        const char* bytes = lua_tolstring(state, index, &size);
        if (text)
            *text = QString::fromUtf8(bytes, static_cast<int>(std::min<std::size_t>(size, 1U << 30U)));
        return true;
    }
    const object_rep* object = luabind::detail::get_instance(state, index);
    if (!object)
        return false;
    const auto [value, distance] = object->get_instance(luabind::detail::registered_class<KyQtText>::id);
    if (distance < 0 || !value)
        return false;
    if (text)
        *text = static_cast<const KyQtText*>(value)->text;
    return true;
}

void kyPushQtText(lua_State* state, const QString& text) {
    const QByteArray bytes = text.toUtf8();
    lua_pushlstring(state, bytes.constData(), static_cast<std::size_t>(bytes.size()));
}

void kyCheckQtMovable(const QObject& object) {
    if (KyQtLifetime::isPart(object))
        throw KyScriptError("this Qt object cannot be given another parent");
}

void kyCheckQtParent(const QObject& object, const QObject& parent) {
    kyCheckQtMovable(object);
    for (const QObject* above = &parent; above; above = above->parent())
        if (above == &object)
            throw KyScriptError("a Qt object cannot be put below itself");
}

void luabind::default_converter<QStringList>::to(lua_State* state, const QStringList& texts) {
    lua_createtable(state, texts.size(), 0);
    for (int i = 0; i < texts.size(); ++i) {
        kyPushQtText(state, texts[i]);
        lua_rawseti(state, -2, i + 1);
    }
}

void luabind::default_converter<QObjectList>::to(lua_State* state, const QObjectList& objects) {
    lua_createtable(state, objects.size(), 0);
    for (int i = 0; i < objects.size(); ++i) {
        kyPushQtObject(state, objects[i]);
        lua_rawseti(state, -2, i + 1);
    }
}

void luabind::default_converter<QVariant>::to(lua_State* state, const QVariant& value) {
    pushQVariantToLuaStack(state, value);
}

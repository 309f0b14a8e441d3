// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyQtLuaVariant_p.h"

#include "KyLuaConverters_p.h"
#include "KyQtLuaClass_p.h"
#include "KyQtTreeItem_p.h"

#include "KyLuaBinder.h"
#include "KyQtValues.h"
#include "KyQtVariant.h"
#include "KyScriptEngine.h"

#include "KyDate.h"
#include "KyDateTime.h"
#include "KyRect.h"
#include "KyTime.h"
#include "KyURL.h"
#include "KyVec2.h"

#include <QCoreApplication>
#include <QPoint>
#include <QRect>
#include <QSize>
#include <QUrl>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <optional>

namespace {

constexpr int cMaxDepth = 32;

/// How far the reading of one value has got. A table that stands in several places counts in each.
struct Progress {
    int depth = 1;
    int nbValues = 0;
};

QVariant read(lua_State* state, int index, Progress& progress);

QVariant fromNumber(double number) {
    constexpr double cMaxInteger = 9007199254740992.0;
    if (std::trunc(number) != number || std::abs(number) > cMaxInteger)
        return number;
    if (number >= std::numeric_limits<int>::min() && number <= std::numeric_limits<int>::max())
        return static_cast<int>(number);
    return static_cast<qlonglong>(number);
}

/// The number of values when the keys are exactly 1 to n, or -1; -2 when all keys are texts.
int countList(lua_State* state, int table) {
    int nbTexts = 0;
    int nbNumbers = 0;
    double highest = 0;
    bool areFit = true;
    for (lua_pushnil(state); lua_next(state, table) != 0; lua_pop(state, 1)) {
        const double key = lua_type(state, -2) == LUA_TNUMBER ? lua_tonumber(state, -2) : 0;
        const bool isText = lua_type(state, -2) == LUA_TSTRING;
        areFit = areFit && (isText || (key >= 1 && key == std::trunc(key)));
        highest = std::max(highest, key);
        ++(isText ? nbTexts : nbNumbers);
    }
    if (nbTexts > 0)
        return areFit && nbNumbers == 0 ? -2 : -1;
    return areFit && highest == nbNumbers ? nbNumbers : -1;
}

QVariant readList(lua_State* state, int table, int size, Progress& progress) {
    QVariantList list;
    for (int i = 1; i <= size; ++i) {
        lua_rawgeti(state, table, i);
        list.append(read(state, lua_gettop(state), progress));
        lua_pop(state, 1);
        if (!list.back().isValid())
            return {};
    }
    return list;
}

QVariant readMap(lua_State* state, int table, Progress& progress) {
    QVariantMap map;
    bool areValid = true;
    for (lua_pushnil(state); lua_next(state, table) != 0; lua_pop(state, 1)) {
        QString key;
        kyReadQtText(state, -2, &key);
        const QVariant value = areValid ? read(state, lua_gettop(state), progress) : QVariant();
        areValid = value.isValid();
        map.insert(key, value);
        if (!areValid) {
            lua_pop(state, 2);
            return {};
        }
    }
    return map;
}

QVariant readTable(lua_State* state, int table, Progress& progress) {
    if (progress.depth > cMaxDepth || lua_checkstack(state, LUA_MINSTACK) == 0)
        return {};
    const int size = countList(state, table);
    if (size == -1)
        return {};
    ++progress.depth;
    QVariant value = size == -2 ? readMap(state, table, progress) : readList(state, table, size, progress);
    --progress.depth;
    return value;
}

template <class T>
std::optional<T> convertTo(const KyField& field) {
    KyField converted;
    if (!field.convert(cFieldKindOf<T>, converted))
        return {};
    return *converted.get<T>();
}

QVariant readValue(const KyField& field) {
    switch (field.getKind()) {
    case cFieldKindOf<KyVec2i>:
    case cFieldKindOf<KyVec2f>:
    case cFieldKindOf<KyVec2d>:
        if (const auto vector = convertTo<KyVec2d>(field))
            return KyApplication::toQPointF(*vector);
        return {};
    case cFieldKindOf<KyRecti>:
    case cFieldKindOf<KyRectf>:
    case cFieldKindOf<KyRectd>:
        if (const auto rect = convertTo<KyRectd>(field))
            return KyApplication::toQRectF(*rect);
        return {};
    case cFieldKindOf<KyColor>:
    case cFieldKindOf<KyDate>:
    case cFieldKindOf<KyTime>:
    case cFieldKindOf<KyDateTime>:
    case cFieldKindOf<KyURL>:
    case cFieldKindOf<KyObjectReference>:
        return KyApplication::toQVariant(field);
    default:
        return {};
    }
}

QVariant readObject(lua_State* state, int index) {
    if (const KyQtHandle* handle = kyFindQtHandle(state, index))
        return QVariant::fromValue(&handle->check());
    QString text;
    if (kyReadQtText(state, index, &text))
        return text;
    if (const luabind::detail::object_rep* object = luabind::detail::get_instance(state, index)) {
        const auto [url, distance] = object->get_instance(luabind::detail::registered_class<QUrl>::id);
        if (distance >= 0 && url)
            return *static_cast<const QUrl*>(url);
    }
    return readValue(kyLuaCheckField(state, index));
}

QVariant read(lua_State* state, int index, Progress& progress) {
    if (++progress.nbValues > cMaxQtValues)
        return {};
    switch (lua_type(state, index)) {
    case LUA_TBOOLEAN:
        return lua_toboolean(state, index) != 0;
    case LUA_TNUMBER:
        return fromNumber(lua_tonumber(state, index));
    case LUA_TSTRING:
    case LUA_TUSERDATA:
        return readObject(state, index);
    case LUA_TTABLE:
        return readTable(state, index, progress);
    default:
        return {};
    }
}

template <class T>
void pushNumber(lua_State* state, const QVariant& value) {
    lua_pushnumber(state, static_cast<lua_Number>(value.value<T>()));
}

void pushBoolean(lua_State* state, const QVariant& value) {
    lua_pushboolean(state, value.toBool() ? 1 : 0);
}

void pushBytes(lua_State* state, const QVariant& value) {
    const QByteArray bytes = value.toByteArray();
    lua_pushlstring(state, bytes.constData(), static_cast<std::size_t>(bytes.size()));
}

void pushText(lua_State* state, const QVariant& value) {
    kyPushQtText(state, value.toString());
}

void pushUrl(lua_State* state, const QVariant& value) {
    kyLuaPushValueObject(state, value.toUrl());
}

void pushList(lua_State* state, const QVariant& value) {
    const QVariantList list = value.toList();
    lua_createtable(state, list.size(), 0);
    for (int i = 0; i < list.size(); ++i) {
        pushQVariantToLuaStack(state, list[i]);
        lua_rawseti(state, -2, i + 1);
    }
}

void pushMap(lua_State* state, const QVariant& value) {
    const QVariantMap map = value.toMap();
    lua_createtable(state, 0, map.size());
    for (auto entry = map.begin(); entry != map.end(); ++entry) {
        kyPushQtText(state, entry.key());
        pushQVariantToLuaStack(state, entry.value());
        lua_rawset(state, -3);
    }
}

void pushField(lua_State* state, const QVariant& value) {
    KyLuaBinder(state).pushField(KyApplication::toKyField(value));
}

void pushPoint(lua_State* state, const QVariant& value) {
    pushField(state, value.toPointF());
}

void pushSize(lua_State* state, const QVariant& value) {
    const QSizeF size = value.toSizeF();
    pushField(state, QPointF(size.width(), size.height()));
}

void pushRect(lua_State* state, const QVariant& value) {
    pushField(state, value.toRectF());
}

/// Objects of the object model go as these.
void pushQObject(lua_State* state, const QVariant& value) {
    const KyField field = KyApplication::toKyField(value);
    const auto* reference = field.get<KyObjectReference>();
    if (reference && reference->get())
        KyLuaBinder(state).pushField(field);
    else
        kyPushQtObject(state, value.value<QObject*>());
}

struct Push {
    int type;
    void (*push)(lua_State* state, const QVariant& value);
};

constexpr std::array cPushes{
    Push{QMetaType::Bool, &pushBoolean},
    Push{QMetaType::Int, &pushNumber<int>},
    Push{QMetaType::UInt, &pushNumber<uint>},
    Push{QMetaType::LongLong, &pushNumber<qlonglong>},
    Push{QMetaType::ULongLong, &pushNumber<qulonglong>},
    Push{QMetaType::Long, &pushNumber<long>},
    Push{QMetaType::ULong, &pushNumber<ulong>},
    Push{QMetaType::Short, &pushNumber<short>},
    Push{QMetaType::UShort, &pushNumber<ushort>},
    Push{QMetaType::Double, &pushNumber<double>},
    Push{QMetaType::Float, &pushNumber<float>},
    Push{QMetaType::QString, &pushText},
    Push{QMetaType::QByteArray, &pushBytes},
    Push{QMetaType::QUrl, &pushUrl},
    Push{QMetaType::QStringList, &pushList},
    Push{QMetaType::QVariantList, &pushList},
    Push{QMetaType::QVariantMap, &pushMap},
    Push{QMetaType::QVariantHash, &pushMap},
    Push{QMetaType::QColor, &pushField},
    Push{QMetaType::QDate, &pushField},
    Push{QMetaType::QTime, &pushField},
    Push{QMetaType::QDateTime, &pushField},
    Push{QMetaType::QPoint, &pushPoint},
    Push{QMetaType::QPointF, &pushPoint},
    Push{QMetaType::QSize, &pushSize},
    Push{QMetaType::QSizeF, &pushSize},
    Push{QMetaType::QRect, &pushRect},
    Push{QMetaType::QRectF, &pushRect},
};

/// Types without a form of their own, by their text.
void pushOther(lua_State* state, const QVariant& value) {
    const QString text = value.toString();
    if (text.isEmpty())
        lua_pushnil(state);
    else
        kyPushQtText(state, text);
}

int pushTextOf(lua_State* state) {
    if (luaL_callmeta(state, 1, "__tostring") == 0)
        lua_pushfstring(state, "%s: %p", luaL_typename(state, 1), lua_topointer(state, 1));
    return 1;
}

QString translate(const char* text) {
    return QCoreApplication::translate("KyQtLuaBinding", text);
}

} // namespace

QVariant luaToQVariant(lua_State* state, int index, bool* isTooLong) {
    Progress progress;
    QVariant value = read(state, index, progress);
    if (isTooLong)
        *isTooLong = progress.nbValues > cMaxQtValues;
    return value;
}

void pushQVariantToLuaStack(lua_State* state, const QVariant& value) {
    const int type = value.userType();
    if (lua_checkstack(state, LUA_MINSTACK) == 0 || !value.isValid())
        return lua_pushnil(state);
    if (QMetaType::typeFlags(type).testFlag(QMetaType::PointerToQObject))
        return pushQObject(state, value);
    if (type == qMetaTypeId<QTreeWidgetItem*>())
        return kyPushQtTreeItem(state, value.value<QTreeWidgetItem*>());
    const auto isOfType = [type](const Push& push) { return push.type == type; };
    const auto found = std::find_if(cPushes.begin(), cPushes.end(), isOfType);
    (found == cPushes.end() ? &pushOther : found->push)(state, value);
}

QString kyDescribeLuaValue(lua_State* state, int index) {
    const QString type = QString::fromUtf8(luaL_typename(state, index));
    if (lua_isnil(state, index))
        return type + QStringLiteral(": nil");
    lua_pushcfunction(state, &pushTextOf);
    lua_pushvalue(state, index);
    QString text;
    if (lua_pcall(state, 1, 1, 0) == 0)
        kyReadQtText(state, -1, &text);
    lua_pop(state, 1);
    return type + QStringLiteral(": ") + text;
}

void kyReportQt(const char* text, const QString& end) {
    KyScriptEngine::output((translate(text) + end).toStdString());
}

void kyReportQtNumber(const char* text, int number) {
    KyScriptEngine::output(translate(text).arg(number).toStdString());
}

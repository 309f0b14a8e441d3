// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyQtLuaClass_p.h"
#include "KyQtLuaVariant_p.h"
#include "KyQtTypes_p.h"

#include <QDir>
#include <QFile>
#include <QSettings>

#include <algorithm>
#include <memory>

namespace {

/// A settings file of scripts; written when its last Lua object is collected, at the latest.
struct Settings {
    std::shared_ptr<QSettings> file;
};

} // namespace

template <>
inline constexpr bool cIsLuaValue<Settings> = true;

namespace {

using luabind::argument;
using luabind::value;

Settings openSettings(const QString& fileName) {
    if (fileName.isEmpty())
        throw KyScriptError("QSettings: the file name is empty");
    auto file = std::make_shared<QSettings>(fileName, QSettings::IniFormat);
    file->setIniCodec("UTF-8");
    return {std::move(file)};
}

void setFileName(Settings& settings, const QString& fileName) {
    Settings opened = openSettings(fileName);
    settings.file->sync();
    settings.file = std::move(opened.file);
}

/// Qt drops the slashes around a key.
const QString& checkKey(const QString& key) {
    if (std::all_of(key.begin(), key.end(), [](QChar letter) { return letter == QLatin1Char('/'); }))
        throw KyScriptError("QSettings: the key is empty");
    return key;
}

/// Pointers have no form in a file.
bool isStorable(const QVariant& stored) {
    if (stored.userType() == QMetaType::QVariantList) {
        const QVariantList list = stored.toList();
        return std::all_of(list.begin(), list.end(), &isStorable);
    }
    if (stored.userType() == QMetaType::QVariantMap) {
        const QVariantMap map = stored.toMap();
        return std::all_of(map.begin(), map.end(), &isStorable);
    }
    return stored.isValid() && !QMetaType::typeFlags(stored.userType()).testFlag(QMetaType::PointerToQObject);
}

void setValue(Settings& settings, const QString& key, const argument& given) {
    checkKey(key);
    lua_State* state = given.interpreter();
    given.push(state);
    const luabind::detail::stack_pop pop(state, 1);
    const QVariant variant = luaToQVariant(state, lua_gettop(state));
    if (isStorable(variant))
        settings.file->setValue(key, variant);
    else
        kyReportQt("QSettings::setValue : unknown type of value ", kyDescribeLuaValue(state, lua_gettop(state)));
}

/// Files hold texts only, and forget about lists of one entry or none.
QVariant toKindOf(const QVariant& wanted, const QVariant& stored) {
    switch (wanted.userType()) {
    case QMetaType::Bool:
        return stored.toBool();
    case QMetaType::Int:
    case QMetaType::LongLong:
    case QMetaType::Double: {
        bool isNumber = false;
        const double number = stored.toDouble(&isNumber);
        return isNumber ? QVariant(number) : wanted;
    }
    case QMetaType::QVariantList:
        if (!stored.isValid())
            return QVariantList();
        return stored.canConvert<QVariantList>() ? QVariant(stored.toList()) : QVariant(QVariantList{stored});
    default:
        return stored;
    }
}

QVariant getValue(Settings& settings, const QString& key) {
    return settings.file->value(checkKey(key));
}

QVariant getValueOr(Settings& settings, const QString& key, const argument& fallback) {
    checkKey(key);
    lua_State* state = fallback.interpreter();
    fallback.push(state);
    const luabind::detail::stack_pop pop(state, 1);
    const QVariant wanted = luaToQVariant(state, lua_gettop(state));
    return settings.file->contains(key) ? toKindOf(wanted, settings.file->value(key)) : wanted;
}

luabind::scope makeSettings() {
    luabind::class_<Settings> settingsClass("QSettings");
    settingsClass.def("__init", kyLuaConstructor(&openSettings))
        .def(
            "beginGroup", +[](Settings& settings, const QString& prefix) { settings.file->beginGroup(prefix); })
        .def(
            "endGroup", +[](Settings& settings) { settings.file->endGroup(); })
        .def("setValue", &setValue)
        .def("value", &getValue)
        .def("value", &getValueOr)
        .def(
            "clear", +[](Settings& settings) { settings.file->clear(); })
        .def(
            "remove", +[](Settings& settings, const QString& key) { settings.file->remove(checkKey(key)); })
        .def(
            "contains", +[](Settings& settings, const QString& key) { return settings.file->contains(checkKey(key)); })
        .def("setFileName", &setFileName)
        .def(
            "fileName", +[](Settings& settings) { return settings.file->fileName(); });
    return settingsClass;
}

template <bool (*Function)(const QString&, const QString&)>
bool fromTo(const QString& from, const QString& to) {
    return Function(from, to);
}

template <bool (*Function)(const QString&)>
bool at(const QString& file) {
    return !file.isEmpty() && Function(file);
}

luabind::scope makeFile() {
    using luabind::def;
    return luabind::namespace_("QFile")[(def("copy", &fromTo<&QFile::copy>), def("exists", &at<&QFile::exists>),
                                         def("link", &fromTo<&QFile::link>), def("remove", &at<&QFile::remove>),
                                         def("rename", &fromTo<&QFile::rename>))];
}

QStringList listNames(const QDir& directory, const QString& filter) {
    return directory.entryList(filter.isEmpty() ? QStringList() : QStringList(filter));
}

QStringList listEntries(const QDir& directory, const QString& filter, double flags) {
    const auto filters = static_cast<QDir::Filters>(kyToLuaElement<int>(flags));
    return directory.entryList(filter.isEmpty() ? QStringList() : QStringList(filter), filters);
}

luabind::scope makeDirectory() {
    luabind::class_<QDir> directoryClass("QDir");
    kyDefineLuaEquality(directoryClass);
    directoryClass.enum_("Filter")[(
        value("Dirs", QDir::Dirs), value("AllDirs", QDir::AllDirs), value("Files", QDir::Files),
        value("Drives", QDir::Drives), value("NoSymLinks", QDir::NoSymLinks),
        value("NoDotAndDotDot", QDir::NoDotAndDotDot), value("NoDot", QDir::NoDot),
        value("AllEntries", QDir::AllEntries), value("Readable", QDir::Readable), value("Writable", QDir::Writable),
        value("Executable", QDir::Executable), value("Modified", QDir::Modified), value("Hidden", QDir::Hidden),
        value("System", QDir::System), value("CaseSensitive", QDir::CaseSensitive))];
    directoryClass.def("__init", kyLuaConstructor(+[](const QString& path) { return QDir(path); }))
        .def(
            "__tostring", +[](const QDir& directory) { return directory.path(); })
        .def(
            "entryList", +[](const QDir& directory) { return directory.entryList(); })
        .def("entryList", &listNames)
        .def("entryList", &listEntries);
    return directoryClass;
}

} // namespace

luabind::scope kyMakeQtStorageTypes() {
    return makeSettings(), makeFile(), makeDirectory();
}

// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyQtArgument_p.h"
#include "KyQtTypes_p.h"

#include "KyCallSignatures.h"

#include <QDir>
#include <QFile>
#include <QSettings>

#include <algorithm>
#include <memory>

namespace {

/// A settings file of scripts, or none yet; written when its last Lua object is collected, at the latest.
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
    if (settings.file)
        settings.file->sync();
    settings.file = std::move(opened.file);
}

QSettings& edit(const Settings& settings) {
    if (!settings.file)
        throw KyScriptError("QSettings: there is no file");
    return *settings.file;
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
    const KyQtArgument read(given);
    if (isStorable(read.getValue()))
        edit(settings).setValue(key, read.getValue());
    else
        read.refuse(QT_TRANSLATE_NOOP("KyQtLuaBinding", "QSettings::setValue : unknown type of value "));
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
        // An empty default may be meant as a map.
        if (stored.userType() == QMetaType::QVariantMap)
            return stored;
        return stored.canConvert<QVariantList>() ? QVariant(stored.toList()) : QVariant(QVariantList{stored});
    case QMetaType::QVariantMap:
        return stored.userType() == QMetaType::QVariantMap ? stored : wanted;
    default:
        return stored;
    }
}

QVariant getValue(Settings& settings, const QString& key) {
    return edit(settings).value(checkKey(key));
}

QVariant getValueOr(Settings& settings, const QString& key, const argument& fallback) {
    checkKey(key);
    const QVariant wanted = KyQtArgument(fallback).getValue();
    return edit(settings).contains(key) ? toKindOf(wanted, edit(settings).value(key)) : wanted;
}

luabind::scope makeSettings() {
    luabind::class_<Settings> settingsClass("QSettings");
    KyCallSignatures::add("QSettings", {"__init(fileName)", "beginGroup(prefix)", "setValue(key, value)",
                                        "value(key, fallback?)", "remove(key)", "contains(key)"});
    settingsClass.def("__init", kyLuaConstructor(+[] { return Settings(); }))
        .def("__init", kyLuaConstructor(&openSettings))
        .def(
            "beginGroup", +[](Settings& settings, const QString& prefix) { edit(settings).beginGroup(prefix); })
        .def(
            "endGroup", +[](Settings& settings) { edit(settings).endGroup(); })
        .def("setValue", &setValue)
        .def("value", &getValue)
        .def("value", &getValueOr)
        .def(
            "clear", +[](Settings& settings) { edit(settings).clear(); })
        .def(
            "remove", +[](Settings& settings, const QString& key) { edit(settings).remove(checkKey(key)); })
        .def(
            "contains", +[](Settings& settings, const QString& key) { return edit(settings).contains(checkKey(key)); })
        .def("setFileName", &setFileName)
        .def(
            "fileName", +[](Settings& settings) { return settings.file ? settings.file->fileName() : QString(); });
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
    KyCallSignatures::add("QFile",
                          {"copy(from, to)", "exists(file)", "link(from, to)", "remove(file)", "rename(from, to)"});
    return luabind::namespace_("QFile")[(def("copy", &fromTo<&QFile::copy>), def("exists", &at<&QFile::exists>),
                                         def("link", &fromTo<&QFile::link>), def("remove", &at<&QFile::remove>),
                                         def("rename", &fromTo<&QFile::rename>))];
}

template <class Flags>
Flags toFlags(double flags) {
    return static_cast<Flags>(kyToLuaElement<int>(flags));
}

/// An empty name filter stands for none.
QStringList listSorted(const QDir& directory, const QString& filter, double flags, double sort) {
    return directory.entryList(filter.isEmpty() ? QStringList() : QStringList(filter), toFlags<QDir::Filters>(flags),
                               toFlags<QDir::SortFlags>(sort));
}

QStringList listEntries(const QDir& directory, const QString& filter, double flags) {
    return listSorted(directory, filter, flags, QDir::NoSort);
}

QStringList listNames(const QDir& directory, const QString& filter) {
    return listEntries(directory, filter, QDir::NoFilter);
}

QStringList listKinds(const QDir& directory, double flags) {
    return listEntries(directory, {}, flags);
}

QStringList listKindsSorted(const QDir& directory, double flags, double sort) {
    return listSorted(directory, {}, flags, sort);
}

luabind::scope makeDirectory() {
    luabind::class_<QDir> directoryClass("QDir");
    KyCallSignatures::add("QDir", {"__init(path)", "entryList(filter, flags?: integer, sort?: integer)",
                                   "entryList(flags: integer, sort?: integer)"});
    kyDefineLuaEquality(directoryClass);
    directoryClass.enum_("Filter")[(
        value("Dirs", QDir::Dirs), value("AllDirs", QDir::AllDirs), value("Files", QDir::Files),
        value("Drives", QDir::Drives), value("NoSymLinks", QDir::NoSymLinks),
        value("NoDotAndDotDot", QDir::NoDotAndDotDot), value("NoDot", QDir::NoDot),
        value("AllEntries", QDir::AllEntries), value("Readable", QDir::Readable), value("Writable", QDir::Writable),
        value("Executable", QDir::Executable), value("Modified", QDir::Modified), value("Hidden", QDir::Hidden),
        value("System", QDir::System), value("CaseSensitive", QDir::CaseSensitive))];
    directoryClass.def("__init", kyLuaConstructor(+[] { return QDir(); }))
        .def("__init", kyLuaConstructor(+[](const QString& path) { return QDir(path); }))
        .def(
            "__tostring", +[](const QDir& directory) { return directory.path(); })
        .def(
            "entryList", +[](const QDir& directory) { return directory.entryList(); })
        .def("entryList", &listNames)
        .def("entryList", &listEntries)
        .def("entryList", &listSorted)
        .def("entryList", &listKinds)
        .def("entryList", &listKindsSorted);
    return directoryClass;
}

} // namespace

luabind::scope kyMakeQtStorageTypes() {
    return makeSettings(), makeFile(), makeDirectory();
}

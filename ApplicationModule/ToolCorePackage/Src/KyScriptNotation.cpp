// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyScriptNotation_p.h"

#include <QDir>
#include <QFileInfo>
#include <QSaveFile>

#include <algorithm>
#include <cctype>
#include <memory>

namespace {

constexpr std::string_view cKeywords[] = {"and", "break",    "do",     "else", "elseif", "end",   "false",
                                          "for", "function", "if",     "in",   "local",  "nil",   "not",
                                          "or",  "repeat",   "return", "then", "true",   "until", "while"};

bool isNameLetter(char letter) {
    return letter == '_' || (static_cast<unsigned char>(letter) < 128 && std::isalnum(letter));
}

bool fail(std::string& error, const QString& path, const QString& reason) {
    error = "cannot write '" + std::string(path.toLocal8Bit().constData()) + "': " + reason.toStdString();
    return false;
}

using Files = std::vector<std::unique_ptr<QSaveFile>>;

/// A full disk shows at the flush only.
bool writeText(QFileDevice& file, const std::string& text, std::string& error) {
    const auto size = static_cast<qint64>(text.size());
    if (file.open(QIODevice::WriteOnly) && file.write(text.data(), size) == size && file.flush())
        return true;
    return fail(error, file.fileName(), file.errorString());
}

/// Devices and pipes are written to as they are.
bool prepare(const std::string& name, const std::string& text, Files& files, std::string& error) {
    const QFileInfo place(QString::fromLocal8Bit(name.c_str()));
    const QString folder = place.absolutePath();
    if (!QDir().mkpath(folder))
        return fail(error, folder, QStringLiteral("it is no folder and cannot be made one"));
    if (!place.exists() || place.isFile() || place.isDir())
        return writeText(*files.emplace_back(std::make_unique<QSaveFile>(place.filePath())), text, error);
    QFile device(place.filePath());
    return writeText(device, text, error);
}

} // namespace

bool kyIsScriptName(std::string_view name) {
    if (name.empty() || std::isdigit(static_cast<unsigned char>(name.front())))
        return false;
    return std::ranges::all_of(name, &isNameLetter) && std::ranges::find(cKeywords, name) == std::end(cKeywords);
}

std::string kyQuoteScriptText(std::string_view text) {
    std::string result = "\"";
    for (const char letter : text) {
        const auto code = static_cast<unsigned char>(letter);
        if (letter == '"' || letter == '\\')
            result += '\\';
        if (code >= 32 && code != 127) {
            result += letter;
            continue;
        }
        const std::string digits = std::to_string(code);
        result += '\\' + std::string(3 - digits.size(), '0') + digits;
    }
    return result + '"';
}

std::string kyAccessScriptName(std::string_view object, std::string_view name) {
    const std::string prefix(object);
    return kyIsScriptName(name) ? prefix + '.' + std::string(name) : prefix + '[' + kyQuoteScriptText(name) + ']';
}

std::string kyListScriptParameters(const std::vector<KyScriptParameter>& parameters) {
    std::string list;
    for (const KyScriptParameter& parameter : parameters)
        list += (list.empty() ? "" : ", ") + kyGetScriptParameterName(parameter) + ": " +
                kyGetScriptParameterType(parameter);
    return list;
}

std::string kyGetScriptParameterName(const KyScriptParameter& parameter) {
    return parameter.name + (parameter.isOptional ? "?" : "");
}

std::string kyGetScriptParameterType(const KyScriptParameter& parameter) {
    const bool saysItTwice = parameter.isOptional && parameter.type.ends_with('?');
    return parameter.type.substr(0, parameter.type.size() - (saysItTwice ? 1 : 0));
}

std::string kyMakeScriptFunctionType(const KyScriptCall& call, std::string_view self) {
    std::vector<KyScriptParameter> parameters = call.parameters;
    if (!self.empty())
        parameters.insert(parameters.begin(), {"self", std::string(self)});
    const std::string type = "fun(" + kyListScriptParameters(parameters) + ')';
    return call.result.empty() ? type : type + ": " + call.result;
}

std::string kyGetScriptContainer(std::string_view elementType) {
    std::string name = "Container." + std::string(elementType);
    std::ranges::replace_if(
        name, [](char letter) { return letter == '[' || letter == ']'; }, '_');
    return name;
}

std::map<std::string, bool> kyFindScriptContainers(const KyScriptCatalogue& catalogue) {
    std::map<std::string, bool> containers;
    for (const KyScriptClass& scriptClass : catalogue.classes)
        for (const KyScriptMember& member : scriptClass.members)
            if (member.kind == KyScriptMember::eContainer)
                containers[member.type] |= !member.isReadOnly;
    return containers;
}

bool kyWriteScriptFiles(const std::map<std::string, std::string>& textsByPath, std::string& error) {
    Files files;
    for (const auto& [path, text] : textsByPath)
        if (!prepare(path, text, files, error))
            return false;
    for (const auto& file : files)
        if (!file->commit())
            return fail(error, file->fileName(), file->errorString());
    return true;
}

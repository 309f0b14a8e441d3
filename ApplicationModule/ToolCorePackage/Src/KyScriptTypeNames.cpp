// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyScriptTypeNames_p.h"

#include "KyScriptNotation_p.h"

#include "KyAttributeInterface.h"
#include "KyType.h"

#include <algorithm>
#include <cctype>
#include <map>

#include <boost/core/demangle.hpp>

namespace {

struct Name {
    std::string_view from;
    std::string_view to;
};

template <std::size_t cSize>
const Name* findName(const Name (&names)[cSize], std::string_view from) {
    const Name* const found = std::ranges::find(names, from, &Name::from);
    return found == std::end(names) ? nullptr : found;
}

constexpr Name cFieldTypes[] = {
    {"Bool", "boolean"},        {"Int", "integer"},         {"UInt", "integer"},       {"Int64", "integer"},
    {"UInt64", "integer"},      {"Float", "number"},        {"Double", "number"},      {"String", "string"},
    {"KyObject", "KyObject"},   {"FieldList", "any[]"},     {"Vec3dList", "Vec3d[]"},  {"IntList", "integer[]"},
    {"UIntList", "integer[]"},  {"StringList", "string[]"}, {"BoolList", "boolean[]"}, {"FloatList", "number[]"},
    {"DoubleList", "number[]"},
};

/// Types of bound functions, without constness and reference.
constexpr Name cBoundTypes[] = {
    {"void", ""},
    {"bool", "boolean"},
    {"double", "number"},
    {"float", "number"},
    {"short", "integer"},
    {"unsigned short", "integer"},
    {"int", "integer"},
    {"unsigned int", "integer"},
    {"long", "integer"},
    {"unsigned long", "integer"},
    {"long long", "integer"},
    {"unsigned long long", "integer"},
    {"char", "string"},
    {"std::string", "string"},
    {"text", "string|QString"},
    {"text or URL", "string|URL"},
    {"object", "KyObject"},
    {"luabind::object", "any"},
    {"luabind::argument", "any"},
    {"table", "table"},
};

/// Types that cross by converters and have no class.
constexpr Name cConvertedTypes[] = {
    {"QString", "string"},
    {"QStringList", "string[]"},
    {"QList<QString>", "string[]"},
    {"QList<QObject*>", "QObject[]"},
    {"QVariant", "any"},
};

/// What parameters of a type are called.
constexpr Name cParameterNames[] = {
    {"number", "number"}, {"integer", "number"}, {"string", "text"},         {"boolean", "isOn"},
    {"table", "values"},  {"any", "value"},      {"string|QString", "text"}, {"string|URL", "place"},
};

bool takeEnd(std::string_view& text, std::string_view end) {
    if (!text.ends_with(end))
        return false;
    text.remove_suffix(end.size());
    return true;
}

std::string_view trim(std::string_view text) {
    while (text.starts_with(' '))
        text.remove_prefix(1);
    while (takeEnd(text, " ")) {
    }
    return text;
}

std::string findBoundType(std::string_view type) {
    constexpr std::string_view cCustom = "custom [";
    if (const Name* const known = findName(cBoundTypes, type))
        return std::string(known->to);
    if (!type.starts_with(cCustom))
        return kyMakeScriptTypeName(type);
    type.remove_prefix(cCustom.size());
    takeEnd(type, "]");
    const std::string plain = boost::core::demangle(std::string(type).c_str());
    if (const Name* const known = findName(cBoundTypes, plain))
        return std::string(known->to);
    const Name* const converted = findName(cConvertedTypes, plain);
    return converted ? std::string(converted->to) : "any";
}

std::string readBoundType(std::string_view type) {
    type = trim(type);
    bool mayBeNil = takeEnd(type, " or nil");
    for (bool goesOn = true; goesOn; type = trim(type)) {
        const bool isPointer = takeEnd(type, "*");
        mayBeNil = mayBeNil || isPointer;
        goesOn = isPointer || takeEnd(type, "&") || takeEnd(type, " const");
    }
    const std::string name = findBoundType(type);
    return mayBeNil && !name.empty() && name != "string" ? name + '?' : name;
}

std::vector<std::string_view> split(std::string_view list) {
    std::vector<std::string_view> parts;
    while (!trim(list).empty()) {
        const std::size_t comma = std::min(list.find(','), list.size());
        parts.push_back(trim(list.substr(0, comma)));
        list.remove_prefix(std::min(comma + 1, list.size()));
    }
    return parts;
}

std::string beginSmall(std::string_view name) {
    std::string result(name);
    const auto isBig = [](char letter) { return std::isupper(static_cast<unsigned char>(letter)) != 0; };
    for (std::size_t i = 0; i < result.size() && isBig(result[i]); ++i) {
        const bool beginsWord = i > 0 && i + 1 < result.size() && !isBig(result[i + 1]);
        if (beginsWord)
            break;
        result[i] = static_cast<char>(std::tolower(static_cast<unsigned char>(result[i])));
    }
    return result;
}

constexpr std::string_view cPrefixes[] = {"Ky2D", "Ky", "Q"};

/// Only before a capital letter: "Quatd" is no "uatd".
bool isPrefix(std::string_view type, std::string_view prefix) {
    return type.starts_with(prefix) && type.size() > prefix.size() &&
           std::isupper(static_cast<unsigned char>(type[prefix.size()]));
}

/// "KyScenePass?" is "scenePass".
std::string getParameterName(std::string_view type) {
    takeEnd(type, "?");
    if (const Name* const known = findName(cParameterNames, type))
        return std::string(known->to);
    if (takeEnd(type, "[]"))
        return "values";
    const auto* const prefix =
        std::ranges::find_if(cPrefixes, [type](std::string_view known) { return isPrefix(type, known); });
    if (prefix != std::end(cPrefixes))
        type.remove_prefix(prefix->size());
    const std::string name = beginSmall(type.substr(0, type.find('|')));
    return kyIsScriptName(name) ? name : "value";
}

} // namespace

std::string kyMakeScriptTypeName(std::string_view name) {
    std::string result(name);
    std::ranges::replace_if(
        result,
        [](char letter) { return !std::isalnum(static_cast<unsigned char>(letter)) && letter != '_' && letter != '.'; },
        '_');
    return result;
}

std::string kyGetScriptType(KyFieldKind kind) {
    const KyFieldType& type = KyFieldManager::getFieldType(kind);
    if (!type.isValue())
        return "any";
    if (const Name* const known = findName(cFieldTypes, type.getName()))
        return std::string(known->to);
    return type.isList() ? "any[]" : kyMakeScriptTypeName(type.getName());
}

std::string kyGetScriptType(const KyAttributeInterface& attribute) {
    if (const KyFieldType* const enumeration = attribute.getEnumeration())
        return kyMakeScriptTypeName(enumeration->getName());
    if (const KyType* const type = attribute.getObjectType())
        return kyMakeScriptTypeName(type->getName());
    return kyGetScriptType(attribute.getValueKind());
}

std::string kyGetScriptType(const KyParameter& parameter) {
    if (parameter.isAny)
        return "any";
    if (parameter.kind == cFieldKindInvalid)
        return {};
    const KyType* const type = parameter.objectType ? parameter.objectType() : nullptr;
    if (!type)
        return kyGetScriptType(parameter.kind);
    const bool isList = parameter.kind != cFieldKindOf<KyObjectReference>;
    return kyMakeScriptTypeName(type->getName()) + (isList ? "[]" : "");
}

KyScriptCall kyParseScriptCall(std::string_view signature, std::string_view name, bool isMethod) {
    KyScriptCall call;
    const std::size_t place = signature.find(name);
    if (place == std::string_view::npos)
        return call;
    call.result = readBoundType(signature.substr(0, place));
    std::string_view list = signature.substr(place + name.size());
    list.remove_prefix(std::min<std::size_t>(1, list.size()));
    takeEnd(list, ")");
    for (const std::string_view part : split(list))
        if (!part.starts_with("lua_State"))
            call.parameters.push_back({{}, readBoundType(part)});
    if (isMethod && !call.parameters.empty())
        call.parameters.erase(call.parameters.begin());
    return call;
}

bool kyNameScriptParameters(std::string_view functionName, std::vector<KyScriptParameter>& parameters) {
    constexpr std::string_view cSetter = "set";
    const bool isSetter =
        functionName.starts_with(cSetter) && functionName.size() > cSetter.size() && parameters.size() == 1;
    const std::string property = isSetter ? beginSmall(functionName.substr(cSetter.size())) : std::string();
    std::map<std::string, int> uses;
    for (KyScriptParameter& parameter : parameters) {
        parameter.name = kyIsScriptName(property) ? property : getParameterName(parameter.type);
        ++uses[parameter.name];
    }
    if (parameters.empty() || kyIsScriptName(property))
        return true;
    std::map<std::string, int> numbers;
    for (KyScriptParameter& parameter : parameters)
        if (uses[parameter.name] > 1) {
            const std::string name = parameter.name;
            parameter.name += std::to_string(++numbers[name]);
        }
    return false;
}

// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyScriptStubs.h"

#include "KyScriptNotation_p.h"

#include <algorithm>
#include <string_view>
#include <vector>

namespace {

constexpr const char* cHeader = "---@meta\n"
                                "-- Written by kyhost --write-stubs for Lua editors; it is not to be run, and changes "
                                "are lost when it is written again.\n";

using Lines = std::vector<std::string>;

void addText(std::string& stub, std::string_view text) {
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        stub.append("---").append(text.substr(0, end)).append("\n");
        text.remove_prefix(std::min(end + 1, text.size()));
    }
}

void addTag(std::string& stub, std::string_view tag, std::string_view text) {
    stub.append("---@").append(tag).append(" ").append(text).append("\n");
}

void addField(std::string& stub, const std::string& name, const std::string& type, std::string_view text = {}) {
    const std::string key = kyIsScriptName(name) ? name : '[' + kyQuoteScriptText(name) + ']';
    const std::string line =
        key + ' ' + type + (text.empty() ? "" : " ") + std::string(text.substr(0, text.find('\n')));
    addTag(stub, "field", line);
}

std::string listNames(const std::vector<KyScriptParameter>& parameters) {
    std::string list;
    for (const KyScriptParameter& parameter : parameters)
        list += (list.empty() ? "" : ", ") + parameter.name;
    return list;
}

constexpr const char* cGeneric = "T";

void addParameters(std::string& stub, const KyScriptFunction& function, const KyScriptCall& call) {
    for (const KyScriptParameter& parameter : call.parameters) {
        const bool isName = function.namesItsResult && &parameter == &call.parameters.front();
        addTag(stub, "param",
               kyGetScriptParameterName(parameter) + ' ' +
                   (isName ? '`' + std::string(cGeneric) + '`' : kyGetScriptParameterType(parameter)));
    }
    if (call.result.empty())
        return;
    const bool mayBeNil = call.result.ends_with('?');
    addTag(stub, "return", function.namesItsResult ? cGeneric + std::string(mayBeNil ? "?" : "") : call.result);
}

/// The first call as it stands, the others as overloads. `owner` is empty for a global.
void addFunction(std::string& stub, const KyScriptFunction& function, const std::string& owner, const std::string& type,
                 const Lines& overloads = {}) {
    static const KyScriptCall cNone;
    const KyScriptCall& first = function.calls.empty() ? cNone : function.calls.front();
    const std::string self = function.isMethod ? type : std::string();
    stub += '\n';
    addText(stub, function.text);
    if (function.namesItsResult)
        addTag(stub, "generic", cGeneric + (" : " + first.result.substr(0, first.result.find('?'))));
    addParameters(stub, function, first);
    for (std::size_t i = 1; i < function.calls.size(); ++i)
        addTag(stub, "overload", kyMakeScriptFunctionType(function.calls[i], self));
    for (const std::string& overload : overloads)
        addTag(stub, "overload", overload);
    const std::string names = listNames(first.parameters);
    if (owner.empty() && kyIsScriptName(function.name))
        stub += "function " + function.name + '(' + names + ") end\n";
    else if (kyIsScriptName(function.name) && !owner.ends_with(']'))
        stub += "function " + owner + (function.isMethod ? ':' : '.') + function.name + '(' + names + ") end\n";
    else
        stub += kyAccessScriptName(owner.empty() ? "_G" : owner, function.name) + " = function(" +
                (self.empty()    ? ""
                 : names.empty() ? "self"
                                 : "self, ") +
                names + ") end\n";
}

std::string describeSignal(const KyScriptSignal& entry) {
    return '`' + entry.name + '(' + kyListScriptParameters(entry.parameters) + ")`";
}

template <class Entries, class Describe>
std::string join(const Entries& entries, Describe describe) {
    std::string list;
    for (const auto& entry : entries)
        list += (list.empty() ? "" : ", ") + describe(entry);
    return list;
}

void addNotes(std::string& stub, const KyScriptClass& scriptClass) {
    addText(stub, scriptClass.text);
    if (!scriptClass.emitted.empty())
        addText(stub, "Signals: " + join(scriptClass.emitted, &describeSignal) + '.');
    if (!scriptClass.metamethods.empty())
        addText(stub, "Metamethods: " + join(scriptClass.metamethods, [](const std::string& name) {
                          return '`' + name + '`';
                      }) + '.');
}

void addOperators(std::string& stub, const KyScriptClass& scriptClass) {
    for (const KyScriptOperator& entry : scriptClass.operators) {
        const std::string operand = entry.operand.empty() ? std::string() : '(' + entry.operand + ')';
        addTag(stub, "operator", entry.name.substr(2) + operand + ": " + entry.result);
    }
}

void addMembers(std::string& stub, const std::vector<KyScriptMember>& members) {
    for (const KyScriptMember& member : members) {
        if (member.kind == KyScriptMember::eContainer)
            addField(stub, member.name, kyGetScriptContainer(member.type), member.text);
        else if (member.isReadOnly)
            addField(stub, member.name, member.type, "(read-only)" + (member.text.empty() ? "" : ' ' + member.text));
        else
            addField(stub, member.name, member.type, member.text);
    }
}

/// A class that is no global has its functions in a table that nobody sees.
std::string getOwner(const KyScriptClass& scriptClass) {
    if (!scriptClass.isGlobal)
        return "class";
    return kyIsScriptName(scriptClass.name) ? scriptClass.name : kyAccessScriptName("_G", scriptClass.name);
}

void addClass(std::string& stub, const KyScriptClass& scriptClass) {
    const std::string owner = getOwner(scriptClass);
    stub += '\n';
    if (!scriptClass.isGlobal)
        stub += "do\n";
    addNotes(stub, scriptClass);
    addTag(stub, "class", scriptClass.name + (scriptClass.parent.empty() ? "" : ": " + scriptClass.parent));
    addOperators(stub, scriptClass);
    addMembers(stub, scriptClass.members);
    for (const KyScriptCall& call : scriptClass.constructors)
        addTag(stub, "overload", kyMakeScriptFunctionType({call.parameters, scriptClass.name}));
    stub += (scriptClass.isGlobal ? "" : "local ") + owner + " = {}\n";
    for (const KyScriptConstant& constant : scriptClass.constants)
        stub += kyAccessScriptName(owner, constant.name) + " = " + std::to_string(constant.value) + '\n';
    for (const KyScriptFunction& function : scriptClass.functions)
        addFunction(stub, function, owner, scriptClass.name);
    if (!scriptClass.isGlobal)
        stub += "end\n";
}

void addAliases(const KyScriptCatalogue& catalogue, const KyScriptClass& target, std::string& stub) {
    for (const KyScriptAlias& alias : catalogue.aliases) {
        if (alias.target != target.name)
            continue;
        stub += '\n';
        if (kyIsScriptName(alias.name))
            addTag(stub, "alias", alias.name + ' ' + alias.target);
        if (!target.isGlobal)
            addTag(stub, "type", alias.target);
        stub += (kyIsScriptName(alias.name) ? alias.name : kyAccessScriptName("_G", alias.name)) + " = " +
                (target.isGlobal ? getOwner(target) : "{}") + '\n';
    }
}

std::string makeClasses(const KyScriptCatalogue& catalogue, KyScriptClass::Group group) {
    std::string stub = cHeader;
    for (const KyScriptClass& scriptClass : catalogue.classes)
        if (scriptClass.group == group) {
            addClass(stub, scriptClass);
            addAliases(catalogue, scriptClass, stub);
        }
    return stub;
}

void addContainer(std::string& stub, const std::string& element, bool isWritable) {
    const std::string name = kyGetScriptContainer(element);
    const std::string self = "fun(self: " + name;
    stub += '\n';
    addText(stub, isWritable ? "Counts from 0." : "Counts from 0; elements are read-only.");
    addTag(stub, "class", name);
    addTag(stub, "operator", "len: integer");
    addTag(stub, "field", "[integer] " + element);
    addTag(stub, "field", "size " + self + "): integer");
    addTag(stub, "field", "insert " + self + ", index: integer, value: " + element + ") before that element");
    addTag(stub, "field", "remove " + self + ", index: integer)");
}

std::string makeObjects(const KyScriptCatalogue& catalogue) {
    std::string stub = makeClasses(catalogue, KyScriptClass::eObjects);
    for (const auto& [element, isWritable] : kyFindScriptContainers(catalogue))
        addContainer(stub, element, isWritable);
    return stub;
}

/// What a connected function gets depends on the signal's name.
Lines makeConnectOverloads(const KyScriptCatalogue& catalogue) {
    Lines overloads;
    for (const KyScriptClass& scriptClass : catalogue.classes)
        for (const KyScriptSignal& entry : scriptClass.emitted)
            overloads.push_back("fun(sender: " + scriptClass.name + ", signal: " + kyQuoteScriptText(entry.name) +
                                ", callback: " + kyMakeScriptFunctionType({entry.parameters, {}}) + ')');
    return overloads;
}

std::string makeFunctions(const KyScriptCatalogue& catalogue) {
    std::string stub = makeClasses(catalogue, KyScriptClass::eTables);
    for (const KyScriptFunction& function : catalogue.functions)
        addFunction(stub, function, {}, {}, function.name == "connect" ? makeConnectOverloads(catalogue) : Lines());
    return stub;
}

/// The type of the variable: a class of its own when it holds more than its class tells.
std::string addGlobalClass(std::string& stub, const KyScriptGlobal& global) {
    if (global.members.empty())
        return global.type;
    const bool mayBeNil = global.type.ends_with('?');
    const std::string name = "Global." + global.name;
    stub += '\n';
    addTag(stub, "class", name + ": " + global.type.substr(0, global.type.size() - (mayBeNil ? 1 : 0)));
    addMembers(stub, global.members);
    return mayBeNil ? name + '?' : name;
}

std::string makeGlobals(const KyScriptCatalogue& catalogue) {
    std::string stub = cHeader;
    for (const KyScriptGlobal& global : catalogue.globals) {
        const std::string type = addGlobalClass(stub, global);
        stub += '\n';
        addText(stub, global.text);
        addTag(stub, "type", type);
        stub += (kyIsScriptName(global.name) ? global.name : kyAccessScriptName("_G", global.name)) + " = nil\n";
    }
    return stub;
}

std::string makeEnumerations(const KyScriptCatalogue& catalogue) {
    std::string stub = cHeader;
    for (const KyScriptEnumeration& enumeration : catalogue.enumerations) {
        stub += '\n';
        addText(stub, "Read as a number, written as a number or a name.");
        addTag(stub, "alias", enumeration.name);
        stub += "---| integer\n";
        for (std::size_t i = 0; i < enumeration.values.size(); ++i)
            stub += "---| '" + kyQuoteScriptText(enumeration.values[i]) + "' # " + std::to_string(i) + '\n';
    }
    return stub;
}

} // namespace

std::map<std::string, std::string> KyScriptStubs::make(const KyScriptCatalogue& catalogue) {
    return {{"enumerations.lua", makeEnumerations(catalogue)},
            {"functions.lua", makeFunctions(catalogue)},
            {"globals.lua", makeGlobals(catalogue)},
            {"objects.lua", makeObjects(catalogue)},
            {"qt.lua", makeClasses(catalogue, KyScriptClass::eQt)},
            {"values.lua", makeClasses(catalogue, KyScriptClass::eValues)}};
}

bool KyScriptStubs::write(const KyScriptCatalogue& catalogue, const std::string& folder, std::string& error) {
    std::map<std::string, std::string> files;
    for (auto& [name, text] : make(catalogue))
        files.emplace(folder + '/' + name, text);
    return kyWriteScriptFiles(files, error);
}

// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyScriptReference.h"

#include "KyScriptNotation_p.h"

#include <algorithm>

namespace {

constexpr const char* cHeader =
    "<!-- SPDX-FileCopyrightText: 2026 The KyApplication authors -->\n"
    "<!-- SPDX-License-Identifier: MIT -->\n"
    "# Scripting reference\n"
    "\n"
    "Everything that scripts find besides Lua's own libraries, as `kyhost --write-reference` writes it from the "
    "program\n"
    "itself. [scripting.md](scripting.md) tells how it is used.\n"
    "\n"
    "A type with `?` may be nil, a parameter with `?` may be left out, `T[]` is a table of T from 1. A container "
    "counts\n"
    "from 0 and has `size()`, `insert(index, value)` and `remove(index)` where its object allows them. What a class "
    "has\n"
    "from the one it derives from is not repeated.\n";

struct Section {
    KyScriptClass::Group group;
    const char* title;
    const char* text;
};

constexpr Section cSections[] = {
    {KyScriptClass::eTables, "Tables of functions", "Called with a dot: `Resource.existFile(\"a.txt\")`."},
    {KyScriptClass::eObjects, "Objects", "Classes of the object model. Their constants are fields of the class."},
    {KyScriptClass::eValues, "Values", "Copies: changing one that an attribute gave does not change the attribute."},
    {KyScriptClass::eQt, "Qt", "Classes of forms and their widgets."},
};

std::string quote(const std::string& code) {
    return '`' + code + '`';
}

void addHeading(std::string& text, const char* marks, const std::string& title) {
    text.append("\n").append(marks).append(" ").append(title).append("\n");
}

void addParagraph(std::string& text, const std::string& paragraph) {
    if (!paragraph.empty())
        text.append("\n").append(paragraph).append("\n");
}

void addItem(std::string& text, const std::string& code, const std::string& remark = {}) {
    text += "- " + quote(code) + (remark.empty() ? "" : ": " + remark) + '\n';
}

/// A list begins after an empty line.
void beginList(std::string& text, const char* title) {
    text.append("\n").append(title).append(":\n\n");
}

std::string describeCall(const std::string& name, const KyScriptCall& call) {
    const std::string code = name + '(' + kyListScriptParameters(call.parameters) + ')';
    return call.result.empty() ? code : code + ": " + call.result;
}

void addFunction(std::string& text, const KyScriptFunction& function, const std::string& prefix) {
    for (const KyScriptCall& call : function.calls)
        addItem(text, describeCall(prefix + function.name, call),
                &call == &function.calls.front() ? function.text : "");
}

std::string describeMember(const KyScriptMember& member) {
    constexpr const char* cKinds[] = {"", "container", "component", ""};
    static_assert(std::size(cKinds) == KyScriptMember::eNbKinds);
    std::string remark = cKinds[member.kind];
    const bool isReadOnly = member.isReadOnly && member.kind != KyScriptMember::eComponent;
    if (isReadOnly)
        remark += (remark.empty() ? "" : ", ") + std::string("read-only");
    if (!member.text.empty())
        remark += (remark.empty() ? "" : "; ") + member.text;
    return remark;
}

void addMembers(std::string& text, const KyScriptClass& scriptClass) {
    if (scriptClass.members.empty())
        return;
    beginList(text, scriptClass.group == KyScriptClass::eObjects ? "Attributes" : "Properties");
    for (const KyScriptMember& member : scriptClass.members)
        addItem(text, member.name + ": " + member.type, describeMember(member));
}

void addFunctions(std::string& text, const KyScriptClass& scriptClass) {
    const bool isTable = scriptClass.group == KyScriptClass::eTables;
    if (isTable)
        text += '\n';
    else if (!scriptClass.functions.empty())
        beginList(text, "Functions");
    for (const KyScriptFunction& function : scriptClass.functions)
        addFunction(text, function, function.isMethod ? ":" : isTable ? scriptClass.name + '.' : ".");
}

std::string describeOperator(const std::string& className, const KyScriptOperator& entry) {
    static const std::pair<const char*, const char*> cSigns[] = {{"__add", "+"},    {"__sub", "-"}, {"__mul", "*"},
                                                                 {"__div", "/"},    {"__mod", "%"}, {"__pow", "^"},
                                                                 {"__concat", ".."}};
    const auto* const sign = std::ranges::find_if(cSigns, [&](const auto& known) { return entry.name == known.first; });
    const std::string code =
        sign == std::end(cSigns) ? "-" + className : className + ' ' + sign->second + ' ' + entry.operand;
    return code + ": " + entry.result;
}

void addOperators(std::string& text, const KyScriptClass& scriptClass) {
    if (!scriptClass.operators.empty())
        beginList(text, "Operators");
    for (const KyScriptOperator& entry : scriptClass.operators)
        addItem(text, describeOperator(scriptClass.name, entry));
    if (scriptClass.metamethods.empty())
        return;
    std::string list;
    for (const std::string& name : scriptClass.metamethods)
        list += (list.empty() ? "" : ", ") + quote(name);
    addParagraph(text, "Metamethods: " + list + '.');
}

void addConstants(std::string& text, const KyScriptClass& scriptClass) {
    std::string list;
    for (const KyScriptConstant& constant : scriptClass.constants)
        list += (list.empty() ? "" : ", ") + quote(constant.name) + ' ' + std::to_string(constant.value);
    if (!list.empty())
        addParagraph(text, "Constants: " + list + '.');
}

void addSignals(std::string& text, const KyScriptClass& scriptClass) {
    if (!scriptClass.emitted.empty())
        beginList(text, "Signals");
    for (const KyScriptSignal& entry : scriptClass.emitted)
        addItem(text, describeCall(entry.name, {entry.parameters, {}}));
}

void addConstructors(std::string& text, const KyScriptClass& scriptClass) {
    if (!scriptClass.constructors.empty())
        beginList(text, "Made by");
    for (const KyScriptCall& call : scriptClass.constructors)
        addItem(text, describeCall(scriptClass.name, {call.parameters, {}}));
}

std::string listAliases(const KyScriptCatalogue& catalogue, const KyScriptClass& scriptClass) {
    std::string names;
    for (const KyScriptAlias& alias : catalogue.aliases)
        if (alias.target == scriptClass.name)
            names += (names.empty() ? "Also called " : ", ") + quote(alias.name);
    return names.empty() ? names : names + '.';
}

void addClass(std::string& text, const KyScriptCatalogue& catalogue, const KyScriptClass& scriptClass) {
    addHeading(text, "###", scriptClass.name);
    addParagraph(text, scriptClass.text);
    if (!scriptClass.parent.empty())
        addParagraph(text, "Derives from " + quote(scriptClass.parent) + '.');
    addParagraph(text, listAliases(catalogue, scriptClass));
    addConstructors(text, scriptClass);
    addMembers(text, scriptClass);
    addFunctions(text, scriptClass);
    addOperators(text, scriptClass);
    addConstants(text, scriptClass);
    addSignals(text, scriptClass);
}

void addGlobals(std::string& text, const KyScriptCatalogue& catalogue) {
    addHeading(text, "##", "Globals");
    addParagraph(
        text, "Below a variable stand those of its attributes that hold an object of a narrower class than declared.");
    text += '\n';
    for (const KyScriptGlobal& global : catalogue.globals) {
        addItem(text, global.name + ": " + global.type, global.text);
        for (const KyScriptMember& member : global.members)
            text += "  - " + quote(global.name + '.' + member.name + ": " + member.type) + '\n';
    }
}

void addEnumerations(std::string& text, const KyScriptCatalogue& catalogue) {
    addHeading(text, "##", "Enumerations");
    addParagraph(text, "Attributes of these types read as numbers from 0, and are written as numbers or names.");
    text += '\n';
    for (const KyScriptEnumeration& enumeration : catalogue.enumerations) {
        std::string names;
        for (const std::string& value : enumeration.values)
            names += (names.empty() ? "" : ", ") + quote(value);
        addItem(text, enumeration.name, names);
    }
}

} // namespace

std::string KyScriptReference::make(const KyScriptCatalogue& catalogue) {
    std::string text = cHeader;
    addGlobals(text, catalogue);
    addHeading(text, "##", "Functions");
    text += '\n';
    for (const KyScriptFunction& function : catalogue.functions)
        addFunction(text, function, {});
    for (const Section& section : cSections) {
        addHeading(text, "##", section.title);
        addParagraph(text, section.text);
        for (const KyScriptClass& scriptClass : catalogue.classes)
            if (scriptClass.group == section.group)
                addClass(text, catalogue, scriptClass);
    }
    addEnumerations(text, catalogue);
    return text;
}

bool KyScriptReference::write(const KyScriptCatalogue& catalogue, const std::string& path, std::string& error) {
    return kyWriteScriptFiles({{path, make(catalogue)}}, error);
}

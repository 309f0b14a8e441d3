// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyScriptCatalogue.h"

#include "KyScriptCatalogue_p.h"
#include "KyScriptEngine.h"
#include "KyScriptRunner_p.h"
#include "KyScriptSignatures_p.h"
#include "KyScriptTypeNames_p.h"

#include <algorithm>
#include <set>

namespace {

/// Types that every reader of annotations knows.
constexpr std::string_view cPlainTypes[] = {"any",    "nil",   "boolean",  "integer", "number",
                                            "string", "table", "function", "unknown"};

using Types = std::set<std::string, std::less<>>;

Types collectTypes(const KyScriptCatalogue& catalogue) {
    Types types(std::begin(cPlainTypes), std::end(cPlainTypes));
    for (const KyScriptClass& scriptClass : catalogue.classes)
        types.insert(scriptClass.name);
    for (const KyScriptEnumeration& enumeration : catalogue.enumerations)
        types.insert(enumeration.name);
    return types;
}

/// A type that nothing describes is any: "Vec3d?", "string|URL" and "KyNode[]" stand for what they are made of.
/// Functions and fields, "fun(node: KyNode)" and "{ Lamp: KyLight }", are taken as they are said.
void checkType(const Types& types, std::string& type) {
    std::string_view rest = type;
    while (!rest.empty()) {
        const std::size_t bar = std::min(rest.find('|'), rest.size());
        std::string_view part = rest.substr(0, bar);
        part = part.substr(0, part.find_first_of("?["));
        if (!types.contains(part) && !part.starts_with("fun(") && !part.starts_with('{')) {
            type = "any";
            return;
        }
        rest.remove_prefix(std::min(bar + 1, rest.size()));
    }
}

void checkCalls(const Types& types, std::vector<KyScriptCall>& calls) {
    for (KyScriptCall& call : calls) {
        checkType(types, call.result);
        for (KyScriptParameter& parameter : call.parameters)
            checkType(types, parameter.type);
    }
}

void checkClass(const Types& types, KyScriptClass& scriptClass) {
    checkCalls(types, scriptClass.constructors);
    for (KyScriptMember& member : scriptClass.members)
        checkType(types, member.type);
    for (KyScriptFunction& function : scriptClass.functions)
        checkCalls(types, function.calls);
    for (KyScriptSignal& entry : scriptClass.emitted)
        for (KyScriptParameter& parameter : entry.parameters)
            checkType(types, parameter.type);
    for (KyScriptOperator& entry : scriptClass.operators) {
        checkType(types, entry.operand);
        checkType(types, entry.result);
    }
}

template <class Entries>
void sortByName(Entries& entries) {
    std::ranges::stable_sort(entries, {}, [](const auto& entry) -> const std::string& { return entry.name; });
}

void complete(KyScriptCatalogue& catalogue) {
    kyNameScriptCatalogue(catalogue);
    const Types types = collectTypes(catalogue);
    for (KyScriptClass& scriptClass : catalogue.classes) {
        checkClass(types, scriptClass);
        sortByName(scriptClass.members);
        sortByName(scriptClass.functions);
        sortByName(scriptClass.operators);
    }
    for (KyScriptFunction& function : catalogue.functions)
        checkCalls(types, function.calls);
    for (KyScriptGlobal& global : catalogue.globals) {
        checkType(types, global.type);
        sortByName(global.members);
    }
    sortByName(catalogue.classes);
    sortByName(catalogue.enumerations);
    sortByName(catalogue.aliases);
    sortByName(catalogue.functions);
    sortByName(catalogue.globals);
}

} // namespace

KyScriptCatalogue KyScriptCatalogue::make(KyScriptEngine& engine) {
    KyScriptCatalogue catalogue;
    engine.bindAllClasses();
    kyCatalogueObjects(catalogue);
    engine.bindAllClasses();
    KyScriptRunner runner(engine);
    const bool isRead = runner.run([&](lua_State* state) {
        kyCatalogueBindings(state, catalogue);
        kyCatalogueGlobals(state, engine, catalogue);
    });
    if (!isRead && runner.isOpen())
        runner.reportInternal();
    complete(catalogue);
    return catalogue;
}

const KyScriptClass* KyScriptCatalogue::findClass(std::string_view name) const {
    const auto found = std::ranges::find(classes, name, &KyScriptClass::name);
    return found == classes.end() ? nullptr : &*found;
}

void KyScriptCatalogue::addGlobal(KyScriptGlobal global) {
    if (std::ranges::find(globals, global.name, &KyScriptGlobal::name) != globals.end())
        return;
    globals.push_back(std::move(global));
    sortByName(globals);
}

// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyScriptCatalogue_p.h"

#include "KyScriptTypeNames_p.h"

#include "KyDoxygenXmlDocMgr.h"

#include "KyType.h"

#include <algorithm>

namespace {

std::string getClassText(const KyType& type) {
    const KyDoxygenXmlDocMgr* const documentation = KyDoxygenXmlDocMgr::find();
    const KyDoxygenClass* const found = documentation ? documentation->findClass(type.getName()) : nullptr;
    return found ? found->brief : std::string();
}

std::string getMemberText(const KyType& type, const std::string& name) {
    const KyDoxygenXmlDocMgr* const documentation = KyDoxygenXmlDocMgr::find();
    if (!documentation)
        return {};
    const auto members = documentation->findMembers(type.getName(), name);
    return members.empty() ? std::string() : members.front()->brief;
}

std::string getUnitText(const KyAttributeInterface& attribute) {
    const std::string& unit = attribute.getMetadata("unit");
    return unit.empty() ? std::string() : "In " + unit + '.';
}

std::vector<KyScriptParameter> makeParameters(const std::vector<KyParameter>& records) {
    std::vector<KyScriptParameter> parameters;
    for (const KyParameter& record : records) {
        const bool isObject = record.objectType && record.kind == cFieldKindOf<KyObjectReference>;
        parameters.push_back({{}, kyGetScriptType(record) + (isObject ? "?" : "")});
    }
    return parameters;
}

/// Records do not tell which references are never null.
std::string getMemberType(const KyAttributeInterface& attribute) {
    const bool mayBeNil = attribute.getKind() != KyAttributeInterface::eContainer &&
                          attribute.getValueKind() == cFieldKindOf<KyObjectReference>;
    return kyGetScriptType(attribute) + (mayBeNil ? "?" : "");
}

void addEntries(const KyType& type, KyScriptClass& described) {
    const KyType* const parent = type.getParent();
    for (unsigned i = 0; i < type.getNbAttributes(); ++i) {
        const KyAttributeInterface& attribute = *type.getAttribute(i);
        if (parent && parent->getAttribute(attribute.getName()) == &attribute)
            continue;
        const bool isContainer = attribute.getKind() == KyAttributeInterface::eContainer;
        std::string text = getMemberText(type, attribute.getName());
        if (text.empty())
            text = getUnitText(attribute);
        described.members.push_back({attribute.getName(),
                                     isContainer ? KyScriptMember::eContainer : KyScriptMember::eAttribute,
                                     getMemberType(attribute), attribute.isReadOnly(), std::move(text)});
    }
    const auto& components = type.getComponents();
    for (std::size_t i = parent ? parent->getComponents().size() : 0; i < components.size(); ++i)
        described.members.push_back({components[i].name, KyScriptMember::eComponent,
                                     kyMakeScriptTypeName(components[i].objectType()->getName()) + '?', true,
                                     getMemberText(type, components[i].name)});
}

KyScriptCall makeCall(const KyFunction& function) {
    std::vector<KyParameter> parameters;
    for (unsigned i = 0; i < function.getNbParameters(); ++i)
        parameters.push_back(function.getParameter(i));
    KyScriptCall call{makeParameters(parameters), kyGetScriptType(function.getResult())};
    const bool isObject =
        function.getResult().objectType && function.getResult().kind == cFieldKindOf<KyObjectReference>;
    if (isObject)
        call.result += '?';
    return call;
}

void addFunctions(const KyType& type, const KyType::Functions& functions, KyScriptClass& described) {
    for (const auto& function : functions) {
        const std::string& name = function->getName();
        auto known = std::ranges::find(described.functions, name, &KyScriptFunction::name);
        if (known == described.functions.end())
            known = described.functions.insert(known, {name, getMemberText(type, name), !function->isStatic(), {}});
        known->calls.push_back(makeCall(*function));
    }
}

void addSignals(const KyType& type, KyScriptClass& described) {
    const auto& entries = type.getSignals();
    for (std::size_t i = type.getParent() ? type.getParent()->getSignals().size() : 0; i < entries.size(); ++i) {
        KyScriptSignal& entry = described.emitted.emplace_back();
        entry.name = entries[i].name;
        entry.parameters = makeParameters(entries[i].parameters);
    }
}

KyScriptClass describe(const KyType& type) {
    KyScriptClass described;
    described.name = kyMakeScriptTypeName(type.getName());
    described.parent = type.getParent() ? kyMakeScriptTypeName(type.getParent()->getName()) : std::string();
    described.text = getClassText(type);
    if (type.hasFactory())
        described.constructors.emplace_back();
    for (const auto& constructor : type.getConstructors())
        described.constructors.push_back({makeCall(*constructor).parameters, {}});
    addEntries(type, described);
    addFunctions(type, type.getAllMethods(), described);
    addFunctions(type, type.getAllStaticMethods(), described);
    addSignals(type, described);
    for (const KyEnum& value : type.getAllEnumValues())
        described.constants.push_back({value.name, value.value});
    if (!type.getParent())
        described.functions.push_back({"destroy", "Ends the object now.", true, {KyScriptCall()}});
    return described;
}

void addEnumerations(KyScriptCatalogue& catalogue) {
    const KyFieldManager& manager = KyFieldManager::get();
    for (unsigned i = 0; i < manager.getNbFieldTypes(); ++i) {
        const KyFieldType& type = KyFieldManager::getFieldType(i);
        if (!type.isEnumerated())
            continue;
        KyScriptEnumeration& enumeration = catalogue.enumerations.emplace_back();
        enumeration.name = kyMakeScriptTypeName(type.getName());
        for (unsigned value = 0; value < type.getNbValueNames(); ++value)
            enumeration.values.push_back(type.getValueName(value));
    }
}

} // namespace

void kyCatalogueObjects(KyScriptCatalogue& catalogue) {
    // A class that is described may name one whose record is made then.
    for (unsigned i = 0; i < KyType::getNbTypes(); ++i)
        catalogue.classes.push_back(describe(*KyType::getType(i)));
    addEnumerations(catalogue);
}

// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyQmlCall_p.h"

#include "KyObjectQmlBinding.h"
#include "KyQmlFailure_p.h"
#include "KyQmlValues_p.h"

#include "KyObject.h"
#include "KyType.h"

#include <QPointer>

#include <vector>

namespace {

using Overloads = std::vector<const KyFunction*>;

void collect(const KyType::Functions& functions, const std::string& name, Overloads& overloads) {
    for (const auto& function : functions)
        if (function->getName() == name)
            overloads.push_back(function.get());
}

Overloads findOverloads(const KyType* type, const std::string& name) {
    Overloads overloads;
    for (; type && overloads.empty(); type = type->getParent()) {
        collect(type->getAllMethods(), name, overloads);
        collect(type->getAllStaticMethods(), name, overloads);
    }
    return overloads;
}

std::string describe(const Overloads& overloads) {
    std::string text;
    for (const KyFunction* function : overloads)
        text += (text.empty() ? "" : " or ") + function->getSignature();
    return text;
}

/// A function without overloads says what it wants; otherwise the arguments choose.
KyFieldKind getWantedKind(const Overloads& overloads, std::size_t index) {
    const bool isOnly = overloads.size() == 1 && index < overloads.front()->getNbParameters();
    return isOnly ? overloads.front()->getParameter(static_cast<unsigned>(index)).kind : cFieldKindInvalid;
}

bool toFields(const Overloads& overloads, std::span<const QVariant> values, std::vector<KyField>& fields) {
    fields.resize(values.size());
    for (std::size_t i = 0; i < values.size(); ++i)
        if (!KyQmlValues::toField(values[i], getWantedKind(overloads, i), fields[i]))
            return false;
    return true;
}

} // namespace

QVariant kyQmlCall(KyObjectQmlBinding& binding, const std::string& name, std::span<const QVariant> arguments) {
    const QPointer<QObject> self(&binding);
    KyObject* object = binding.getObject();
    if (!object) {
        kyQmlFail(self.data(), name + ": the object is gone.");
        return {};
    }
    QVariant value;
    const KyType& type = *object->getObjectType();
    kyQmlGuard(binding, type.getName(), name, [&] {
        const Overloads overloads = findOverloads(&type, name);
        std::vector<KyField> fields;
        KyField result;
        const KyFunction* function =
            toFields(overloads, arguments, fields) ? kySelectFunction(overloads, fields) : nullptr;
        object = self ? binding.getObject() : nullptr;
        if (object && function && function->invoke(object, fields, result))
            value = KyQmlValues::toQml(result);
        else
            kyQmlFail(self.data(),
                      type.getName() + "." + name + ": the arguments do not fit " + describe(overloads) + ".");
    });
    return value;
}

// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyFunction.h"

#include "KyObject.h"
#include "KyType.h"

#include <limits>

namespace {

constexpr int cExact = 0;
constexpr int cSimilar = 1;
constexpr int cConverted = 4;
constexpr int cUnfit = -1;

int matchObject(const KyParameter& parameter, const KyField& argument) {
    if (argument.isEmpty())
        return cSimilar;
    if (argument.getKind() != cFieldKindOf<KyObjectReference>)
        return cUnfit;
    const KyType* wanted = parameter.objectType();
    const KyType* given = argument.getKyType();
    if (!given || !wanted)
        return cSimilar;
    if (given == wanted)
        return cExact;
    return given->isA(*wanted) ? cSimilar : cUnfit;
}

bool isFloating(KyFieldKind kind) {
    return kind == cFieldKindOf<double> || kind == cFieldKindOf<float>;
}

int matchValue(const KyParameter& parameter, const KyField& argument) {
    if (parameter.kind == argument.getKind())
        return cExact;
    KyField converted;
    if (!argument.convert(parameter.kind, converted))
        return cUnfit;
    // A number of a script is always a double: it means an integer when it is whole, a number otherwise, never a
    // boolean.
    if (parameter.kind == cFieldKindOf<bool> || argument.getKind() == cFieldKindOf<bool>)
        return cConverted * 2;
    if (argument.getKind() == cFieldKindOf<double> && !isFloating(parameter.kind)) {
        double back = 0;
        return converted.to(back) && back == argument.unchecked<double>() ? cSimilar : cConverted;
    }
    return argument.isNumber() ? cSimilar : cConverted;
}

std::string getParameterName(const KyParameter& parameter) {
    if (parameter.isAny)
        return "any";
    if (parameter.objectType && parameter.objectType())
        return parameter.objectType()->getName();
    return KyFieldManager::getFieldType(parameter.kind).getName();
}

} // namespace

KyFunction::KyFunction(std::string name, Role role, std::vector<KyParameter> parameters)
    : mName(std::move(name))
    , mRole(role)
    , mParameters(std::move(parameters)) {}

KyFunction::~KyFunction() = default;

const std::type_info& KyFunction::getParameterType(unsigned index) const {
    return KyFieldManager::getFieldType(mParameters[index].kind).getTypeInfo();
}

std::string KyFunction::getSignature() const {
    std::string text = mName + "(";
    for (const KyParameter& parameter : mParameters) {
        if (&parameter != mParameters.data())
            text += ", ";
        text += getParameterName(parameter);
    }
    return text + ")";
}

int KyFunction::match(std::span<const KyField> arguments) const {
    if (arguments.size() != mParameters.size())
        return cUnfit;
    int cost = 0;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const KyParameter& parameter = mParameters[i];
        const int fit = parameter.isAny        ? cConverted
                        : parameter.objectType ? matchObject(parameter, arguments[i])
                                               : matchValue(parameter, arguments[i]);
        if (fit == cUnfit)
            return cUnfit;
        cost += fit;
    }
    return cost;
}

const KyFunction* kySelectFunction(std::span<const KyFunction* const> overloads, std::span<const KyField> arguments) {
    const KyFunction* best = nullptr;
    int bestCost = std::numeric_limits<int>::max();
    for (const KyFunction* function : overloads) {
        const int cost = function->match(arguments);
        if (cost != cUnfit && cost < bestCost) {
            best = function;
            bestCost = cost;
        }
    }
    return best;
}

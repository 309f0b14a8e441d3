// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyField.h"
#include "KyFoundationExport.h"

#include <memory>
#include <span>
#include <string>
#include <vector>

class KyObject;
class KyType;

/// One parameter of a reflected function, or its result.
struct KyParameter {
    /// What the field of it holds; cFieldKindInvalid for nothing.
    KyFieldKind kind = cFieldKindInvalid;
    /// For parameters that are objects: gives the class's type record, null for values.
    const KyType* (*objectType)() = nullptr;
    /// The parameter takes any field as it is.
    bool isAny = false;
};

/// A function described for callers that have fields: methods, static methods, constructors, and functions that a host
/// publishes. Made by kyMakeFunction or by the type builder.
class KYFOUNDATION_EXPORT KyFunction {
public:
    /// What a caller has to give: an object, nothing, or arguments for a new object.
    enum class Role { eMethod, eStatic, eConstructor };

    /// Functions are made by kyMakeFunction or the type builder.
    KyFunction(std::string name, Role role, std::vector<KyParameter> parameters);
    KyFunction(const KyFunction&) = delete;
    KyFunction& operator=(const KyFunction&) = delete;
    virtual ~KyFunction();

    /// As scripts call it.
    const std::string& getName() const { return mName; }
    /// True when no object is needed, for constructors too.
    bool isStatic() const { return mRole != Role::eMethod; }
    /// Without the object.
    unsigned getNbParameters() const { return static_cast<unsigned>(mParameters.size()); }
    /// The index must be below the number of parameters.
    const KyParameter& getParameter(unsigned index) const { return mParameters[index]; }
    /// What it gives: of no kind for nothing; for a list of objects `objectType` is that of its elements.
    const KyParameter& getResult() const { return mResult; }
    /// The parameter's C++ type.
    const std::type_info& getParameterType(unsigned index) const;
    /// "name(double, text)", for messages.
    std::string getSignature() const;

    /// How well the arguments fit: 0 exactly, more for each that has to be converted, -1 when they do not fit.
    int match(std::span<const KyField> arguments) const;

    /// A short cut past fields, for functions that take floating-point numbers only and return a number or nothing:
    /// gives the number of results, -1 and nothing called when the object is not of the method's class.
    using NumberCall = int (*)(const KyFunction& function, KyObject* object, const double* arguments, double& result);
    /// Functions with more have no short cut.
    static constexpr unsigned cMaxNumberParameters = 8;
    /// Null for all other functions. What the function itself throws passes through.
    NumberCall getNumberCall() const { return mNumberCall; }

    /// Calls it. False, and nothing called, when the arguments do not convert or a method has no object of its class.
    /// What the function itself throws passes through.
    virtual bool invoke(KyObject* object, std::span<const KyField> arguments, KyField& result) const = 0;

protected:
    /// Set by derived classes that offer the short cut.
    NumberCall mNumberCall = nullptr;
    /// See getResult; set by derived classes.
    KyParameter mResult;

private:
    std::string mName;
    Role mRole;
    std::vector<KyParameter> mParameters;
};

/// The best fitting of several functions of one name, the earlier of equals; null when none fits.
KYFOUNDATION_EXPORT const KyFunction* kySelectFunction(std::span<const KyFunction* const> overloads,
                                                       std::span<const KyField> arguments);

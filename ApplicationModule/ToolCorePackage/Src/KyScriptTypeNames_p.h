// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyScriptCatalogue.h"

#include "KyFunction.h"

#include <span>
#include <string>
#include <string_view>
#include <vector>

class KyAttributeInterface;

/// What things of the C++ side are called in annotations.

/// A name as a type: other characters than letters, digits, "_" and "." become "_".
std::string kyMakeScriptTypeName(std::string_view name);
/// A value of that kind.
std::string kyGetScriptType(KyFieldKind kind);
/// A value, or an element of a container.
std::string kyGetScriptType(const KyAttributeInterface& attribute);
/// A parameter or a result, objects without the nil that may stand for them; empty for a result that is nothing.
std::string kyGetScriptType(const KyParameter& parameter);

/// A call as a bound function writes it, with `name` where its name stands: "Vec3d name(Vec3d const&,double)". The
/// first parameter is left out when it is the object that a method is called on.
KyScriptCall kyParseScriptCall(std::string_view signature, std::string_view name, bool isMethod);
/// Names a setter's parameter after the function: "setPower" sets "power". Otherwise false, with names made up from the
/// types, unless there are no parameters.
bool kyNameScriptParameters(std::string_view functionName, std::vector<KyScriptParameter>& parameters);

// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyScriptCatalogue.h"

#include <map>
#include <string>
#include <string_view>
#include <vector>

/// How calls and names are written for readers of Lua.

/// A name that Lua takes without quotes.
bool kyIsScriptName(std::string_view name);
/// A text in quotes, for Lua.
std::string kyQuoteScriptText(std::string_view text);
/// `object.name`, or `object["any name"]`.
std::string kyAccessScriptName(std::string_view object, std::string_view name);
/// "name?" for one that may be left out.
std::string kyGetScriptParameterName(const KyScriptParameter& parameter);
/// Without the "?" that its name has already.
std::string kyGetScriptParameterType(const KyScriptParameter& parameter);
/// "a: number, b?: string".
std::string kyListScriptParameters(const std::vector<KyScriptParameter>& parameters);
/// "fun(a: number): string", with the object first when there is one.
std::string kyMakeScriptFunctionType(const KyScriptCall& call, std::string_view self = {});
/// The class of a container of such elements.
std::string kyGetScriptContainer(std::string_view elementType);
/// The elements' types of all containers: true where scripts may set an element.
std::map<std::string, bool> kyFindScriptContainers(const KyScriptCatalogue& catalogue);
/// Replaces the files by those texts, all or none: a failure leaves what was there, and one line in `error`. The folder
/// is made when it is not there.
bool kyWriteScriptFiles(const std::map<std::string, std::string>& textsByPath, std::string& error);

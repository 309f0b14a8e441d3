// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyScriptCatalogue.h"

#include <lua.hpp>

class KyScriptEngine;

/// Adds the classes and enumerations of the object model.
void kyCatalogueObjects(KyScriptCatalogue& catalogue);
/// Adds the bound classes of values and of Qt, with their second names.
void kyCatalogueBindings(lua_State* state, KyScriptCatalogue& catalogue);
/// Adds functions, tables of functions and other globals; tells of the classes which of them are globals. Comes last.
void kyCatalogueGlobals(lua_State* state, const KyScriptEngine& engine, KyScriptCatalogue& catalogue);

/// The overloads of the function at `index`; nothing for one that no binding made.
std::vector<KyScriptCall> kyReadScriptCalls(lua_State* state, int index, bool isMethod);
/// The class of the bound value at `index`, or that it is: empty when it is neither.
std::string kyFindScriptClassOf(lua_State* state, int index);
std::string kyFindScriptClass(lua_State* state, int index);

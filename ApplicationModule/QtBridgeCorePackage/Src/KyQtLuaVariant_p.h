// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QVariant>

#include <lua.hpp>

/// Entries of tables that one value may have, in all.
inline constexpr int cMaxQtValues = 100000;

/// Values of scripts as Qt's: numbers become int where they are one, qlonglong where they are a larger integer, else
/// double; tables with the keys 1 to n lists, those with texts as keys maps. Invalid for what has no Qt form, also
/// within a table, for tables nested more than 32 deep, and for more than cMaxQtValues, told by `isTooLong`. Throws a
/// KyScriptError for a Qt object that is gone.
QVariant luaToQVariant(lua_State* state, int index, bool* isTooLong = nullptr);
/// The reverse; nil for what has no form in scripts. Needs four free slots.
void pushQVariantToLuaStack(lua_State* state, const QVariant& value);

/// What error texts say about the value at the index: its Lua type and its text. Never raises.
QString kyDescribeLuaValue(lua_State* state, int index);
/// Sends a text in the engine's output, translated in the context "KyQtLuaBinding".
void kyReportQt(const char* text, const QString& end = {});
/// As kyReportQt, with the number in place of "%1".
void kyReportQtNumber(const char* text, int number);

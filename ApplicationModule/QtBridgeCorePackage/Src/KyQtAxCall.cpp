// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyQtLuaClass_p.h"

#include "KyQtAxCall_p.h"
#include "KyQtLuaVariant_p.h"

std::optional<QVariantList> kyReadAxParameters(const luabind::argument& parameters) {
    lua_State* state = parameters.interpreter();
    parameters.push(state);
    const luabind::detail::stack_pop pop(state, 1);
    const int table = lua_gettop(state);
    if (!lua_istable(state, table)) {
        kyReportQt(QT_TRANSLATE_NOOP("KyQtLuaBinding",
                                     "QAxWidget::dynamicCall : parameters of the method must be in a table"));
        return {};
    }
    QVariantList list;
    const int size = static_cast<int>(lua_objlen(state, table));
    for (int i = 1; i <= size; ++i) {
        lua_rawgeti(state, table, i);
        bool isTooLong = false;
        list.append(luaToQVariant(state, lua_gettop(state), &isTooLong));
        lua_pop(state, 1);
        if (list.back().isValid())
            continue;
        kyReportQtNumber(
            isTooLong
                ? QT_TRANSLATE_NOOP("KyQtLuaBinding", "QAxWidget::dynamicCall : parameter %1 holds too many values")
                : QT_TRANSLATE_NOOP("KyQtLuaBinding", "QAxWidget::dynamicCall : unknown type of parameter %1"),
            i);
        return {};
    }
    return list;
}

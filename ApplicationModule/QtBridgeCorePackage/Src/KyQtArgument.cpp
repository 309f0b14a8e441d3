// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyQtArgument_p.h"

#include "KyQtLuaVariant_p.h"
#include "KyScriptEngine.h"

#include <QCoreApplication>

KyQtArgument::KyQtArgument(const luabind::argument& given)
    : mGiven(given) {
    lua_State* state = given.interpreter();
    given.push(state);
    const luabind::detail::stack_pop pop(state, 1);
    mIsNil = lua_isnil(state, -1);
    mValue = luaToQVariant(state, lua_gettop(state), &mIsTooLong);
}

void KyQtArgument::refuse(const char* text) const {
    lua_State* state = mGiven.interpreter();
    mGiven.push(state);
    const luabind::detail::stack_pop pop(state, 1);
    if (!mIsTooLong)
        return kyReportQt(text, kyDescribeLuaValue(state, lua_gettop(state)));
    const QString function = QString::fromUtf8(text).section(QStringLiteral(" : "), 0, 0);
    const QString tooLong = QCoreApplication::translate("KyQtLuaBinding", "%1 : the value holds more than %2 values");
    KyScriptEngine::output(tooLong.arg(function).arg(cMaxQtValues).toStdString());
}

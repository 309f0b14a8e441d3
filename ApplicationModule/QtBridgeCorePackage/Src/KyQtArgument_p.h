// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyQtLuaClass_p.h"

#include <QVariant>

/// A value of any kind that a script gives to a function, as Qt's. For the time of the call.
class KyQtArgument {
public:
    /// Reads it as luaToQVariant does, and throws as that does.
    explicit KyQtArgument(const luabind::argument& given);

    /// Invalid for what has no Qt form, and for nil.
    const QVariant& getValue() const { return mValue; }
    /// Whether it has a Qt form or is nil.
    bool isGood() const { return mValue.isValid() || mIsNil; }
    /// Reports in the engine's output why the value is not taken: `text`, "function : reason ", and behind it the
    /// value; where that is merely too long, so much.
    void refuse(const char* text) const;

private:
    const luabind::argument& mGiven;
    QVariant mValue;
    bool mIsNil = false;
    bool mIsTooLong = false;
};

// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include <stdexcept>

/// What a function that luabind calls throws to fail: its text becomes the Lua error, with nothing added. Raising a Lua
/// error instead would jump over the C++ objects of luabind and of the function.
class KyScriptError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// Makes luabind pass the text of a KyScriptError on; does nothing the second time. To be called before scripts run.
void kyRegisterScriptError();

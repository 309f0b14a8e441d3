// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QVariant>

#include <span>
#include <string>

class KyObjectQmlBinding;

/// Calls the reflected method of that name that fits the arguments best, looked for as scripts do: in the nearest class
/// that has the name, static ones after the others. Invalid, and a failure raised, when there is no object, no method
/// fits or it throws. The binding may end in it.
QVariant kyQmlCall(KyObjectQmlBinding& binding, const std::string& name, std::span<const QVariant> arguments);

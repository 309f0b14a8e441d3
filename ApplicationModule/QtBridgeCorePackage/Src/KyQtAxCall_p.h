// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QVariant>

#include <optional>

#include <luabind/luabind.hpp>

/// The parameters of a control's method out of a table of a script; nothing after a report when it is no table or has
/// an entry without a Qt form.
std::optional<QVariantList> kyReadAxParameters(const luabind::argument& parameters);

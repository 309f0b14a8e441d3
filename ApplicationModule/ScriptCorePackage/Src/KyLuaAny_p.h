// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyField.h"

#include <boost/any.hpp>

/// The value inside as a field: any built-in kind, C strings and objects, fields and lists of them. False for an empty
/// one and for other types.
bool kyAnyToField(const boost::any& value, KyField& field);

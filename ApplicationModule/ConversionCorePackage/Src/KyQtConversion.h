// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

/// Everything between the object model and Qt: `#include "KyQtConversion.h"` and call `KyApplication::toQ...` toward
/// Qt, `KyApplication::toKy...` back.
#include "KyFieldToQVariantConvertersRepository.h"
#include "KyPrimitiveTypesConverter.h"
#include "KyQtFont.h"
#include "KyQtInput.h"
#include "KyQtText.h"
#include "KyQtValues.h"
#include "KyQtVariant.h"

// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyDirectory_p.h"

#include <QString>

/// Between texts and names as the system has them: bytes on Linux, UTF-16 on Windows.
namespace KyFileName {
/// What the encoding lacks is lost.
KyDirectory::Name fromText(const QString& text);
/// With replacement characters for what is no text.
QString toText(const KyDirectory::Name& name);
} // namespace KyFileName

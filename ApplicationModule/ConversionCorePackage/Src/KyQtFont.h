// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyApplicationExport.h"

#include <QFont>

class KyFontFormat;

/// Fonts between the object model and Qt: family, style hint, size, weight, style, underline and strike-out.
namespace KyApplication {

/// Without a family, the application's own font in that look. The family is one name, never a description.
KYAPPLICATION_EXPORT QFont toQFont(const KyFontFormat& format);
/// A new object, owned by the caller. A size in pixels is converted to points of the screen.
KYAPPLICATION_EXPORT KyFontFormat* toKyFontFormat(const QFont& font);

} // namespace KyApplication

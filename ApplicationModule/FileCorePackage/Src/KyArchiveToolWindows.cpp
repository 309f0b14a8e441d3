// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyArchiveTool_p.h"

QString KyArchiveTool::find() {
    return QStringLiteral("7za.exe");
}

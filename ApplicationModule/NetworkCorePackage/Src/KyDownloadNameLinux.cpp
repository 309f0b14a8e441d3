// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyDownloadName_p.h"

// What follows a zero byte is lost on the way to the system.
QString KyDownloadName::makeValid(const QString& name) {
    return QString(name).replace(QChar('\0'), QChar('_'));
}

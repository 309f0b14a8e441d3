// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyFileName_p.h"

KyDirectory::Name KyFileName::fromText(const QString& text) {
    return text.toStdWString();
}

QString KyFileName::toText(const KyDirectory::Name& name) {
    return QString::fromStdWString(name);
}

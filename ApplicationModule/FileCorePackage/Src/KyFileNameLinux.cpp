// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyFileName_p.h"

#include <QFile>

KyDirectory::Name KyFileName::fromText(const QString& text) {
    return QFile::encodeName(text).toStdString();
}

QString KyFileName::toText(const KyDirectory::Name& name) {
    return QFile::decodeName(QByteArray::fromStdString(name));
}

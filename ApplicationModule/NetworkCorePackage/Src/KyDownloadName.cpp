// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyDownloadName_p.h"

#include <QUrl>

QString KyDownloadName::get(const QUrl& url) {
    const QString path = url.path(QUrl::FullyDecoded);
    // Encoded backslashes separate directories on some systems, and the file may be carried there.
    const QString last = path.mid(path.lastIndexOf('/') + 1);
    const QString name = makeValid(last.mid(last.lastIndexOf('\\') + 1));
    const bool isDirectory = name == QLatin1String(".") || name == QLatin1String("..");
    return name.isEmpty() || isDirectory ? QStringLiteral("index") : name;
}

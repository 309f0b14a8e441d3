// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyDownloadName_p.h"

#include <QStringList>

#include <algorithm>

namespace {

bool isForbidden(QChar character) {
    return character < QChar(' ') || QStringLiteral("<>:\"|?*").contains(character);
}

/// Names of devices in every directory, with any suffix; superscripts count as digits of theirs.
bool isDevice(const QString& name) {
    static const QStringList devices = {"CON", "PRN", "AUX", "NUL", "CONIN$", "CONOUT$"};
    const QString stem = name.section('.', 0, 0).trimmed().toUpper();
    const bool isPort = stem.size() == 4 && (stem.startsWith("COM") || stem.startsWith("LPT"));
    return devices.contains(stem) || (isPort && stem[3].isNumber());
}

} // namespace

QString KyDownloadName::makeValid(const QString& name) {
    QString valid = name;
    std::replace_if(valid.begin(), valid.end(), isForbidden, QChar('_'));
    // Windows drops these, so that ".. " would be the directory above.
    while (valid.endsWith('.') || valid.endsWith(' '))
        valid.chop(1);
    return isDevice(valid) ? '_' + valid : valid;
}

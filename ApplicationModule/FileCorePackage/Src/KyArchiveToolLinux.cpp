// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyArchiveTool_p.h"

#include <QStandardPaths>

#include <array>

namespace {
// The last one reads nothing but 7-Zip's own format.
constexpr std::array cPrograms = {"7za", "7zz", "7z", "7zr"};
} // namespace

QString KyArchiveTool::find() {
    for (const char* program : cPrograms)
        if (QString path = QStandardPaths::findExecutable(QLatin1String(program)); !path.isEmpty())
            return path;
    return {};
}

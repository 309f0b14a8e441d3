// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyRealDisplay.h"

#include <QFile>

namespace {

constexpr int cPatience = 60000;

} // namespace

KyRealDisplay::KyRealDisplay() {
    QFile errors(mFolder.filePath("errors"));
    mServer.setStandardErrorFile(errors.fileName());
    mServer.start("Xvfb", {"-displayfd", "1", "-nolisten", "tcp", "-noreset", "-screen", "0",
                           QString("%1x%2x24").arg(cWidth).arg(cHeight)});
    QByteArray number;
    while (!number.endsWith('\n') && mServer.waitForReadyRead(cPatience))
        number += mServer.readAllStandardOutput();
    if (number.endsWith('\n'))
        mName = ":" + QString::fromUtf8(number.trimmed());
    else
        mError = "no X server: " + mServer.errorString().toStdString() +
                 (errors.open(QIODevice::ReadOnly) ? errors.readAll().toStdString() : std::string());
}

KyRealDisplay::~KyRealDisplay() {
    mServer.terminate();
    mServer.waitForFinished(cPatience);
}

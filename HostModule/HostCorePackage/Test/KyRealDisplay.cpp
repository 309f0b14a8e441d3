// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyRealDisplay.h"

#include <QFile>

namespace {

constexpr int cPatience = 60000;

/// The screen of the dummy driver has 1024x768 pixels.
constexpr const char* cConfiguration = R"(
Section "ServerFlags"
    Option "AutoAddDevices" "false"
EndSection
Section "InputDevice"
    Identifier "touch"
    Driver "inputtest"
    Option "SocketPath" "%1"
    Option "DeviceType" "Touch"
    Option "TouchCount" "10"
EndSection
Section "Device"
    Identifier "card"
    Driver "dummy"
EndSection
Section "ServerLayout"
    Identifier "layout"
    InputDevice "touch" "SendCoreEvents"
EndSection
)";

} // namespace

KyRealDisplay::KyRealDisplay(Kind kind) {
    QFile errors(mFolder.filePath("errors"));
    mServer.setStandardErrorFile(errors.fileName());
    mServer.start(kind == eScreen ? "Xvfb" : "Xorg",
                  QStringList{"-displayfd", "1", "-nolisten", "tcp", "-noreset"} + getArguments(kind));
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

QStringList KyRealDisplay::getArguments(Kind kind) const {
    if (kind == eScreen)
        return {"-screen", "0", QString("%1x%2x24").arg(cWidth).arg(cHeight)};
    QFile file(mFolder.filePath("xorg.conf"));
    if (file.open(QIODevice::WriteOnly))
        file.write(QString(cConfiguration).arg(getTouchSocket()).toUtf8());
    return {"-config", file.fileName(), "-logfile", mFolder.filePath("log"), "-novtswitch", "-sharevts"};
}

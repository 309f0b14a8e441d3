// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyHostDisplay.h"

#include <QByteArray>
#include <QDir>
#include <QGuiApplication>

#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr const char* cPlatformVariable = "QT_QPA_PLATFORM";
constexpr const char* cNoDisplay = "offscreen";
constexpr const char* cDisplayVariable = "DISPLAY";

constexpr const char* cRuntimeVariable = "XDG_RUNTIME_DIR";

bool gKnowsDisplay = false;
QtMessageHandler gFormerHandler = nullptr;

/// Qt's platform without display complains about what widgets ask of every window, which nobody can help.
void dropComplaints(QtMsgType type, const QMessageLogContext& context, const QString& message) {
    if (!message.startsWith(QLatin1String("This plugin does not support ")))
        gFormerHandler(type, context, message);
}

QByteArray getDesktopPlatforms() {
    return qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY") ? "xcb" : "wayland;xcb";
}

/// Outside a desktop session there is no folder for sockets, which Qt complains about before it makes do with this one.
void prepareRuntimeFolder() {
    if (!qEnvironmentVariableIsEmpty(cRuntimeVariable))
        return;
    const QByteArray folder = QDir::tempPath().toLocal8Bit() + "/kyhost-" + QByteArray::number(geteuid());
    mkdir(folder.constData(), S_IRWXU);
    qputenv(cRuntimeVariable, folder);
}

} // namespace

/// A platform that cannot connect hands over to the next one of the list; the last one always works.
void KyHostDisplay::prepare() {
    prepareRuntimeFolder();
    const QByteArray chosen = qgetenv(cPlatformVariable);
    gKnowsDisplay = !chosen.contains(cNoDisplay);
    if (!gKnowsDisplay)
        return;
    qputenv(cPlatformVariable, (chosen.isEmpty() ? getDesktopPlatforms() : chosen) + ';' + cNoDisplay);
}

void KyHostDisplay::prepareWithout() {
    gFormerHandler = qInstallMessageHandler(&dropComplaints);
    prepareRuntimeFolder();
    // Qt would ask a display that is there for GL all the same, and give up the program where it has none.
    qunsetenv(cDisplayVariable);
    qputenv(cPlatformVariable, cNoDisplay);
}

bool KyHostDisplay::exists() {
    return !gKnowsDisplay || QGuiApplication::platformName() != QLatin1String(cNoDisplay);
}

// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyHostDrivers.h"

#include "KyHostErrors.h"

#include "KyDevice.h"
#include "KyDeviceDriver.h"
#include "KyDeviceManager.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QLibrary>

#include <fmt/format.h>

namespace {

constexpr const char* cTypeNames[] = {"joystick", "mouse", "keyboard", "other"};

QDir getInstalledFolder() {
    return QDir(QCoreApplication::applicationDirPath() + "/" + KY_DRIVER_DIR);
}

std::string_view getTypeName(int type) {
    const bool isKnown = type >= 0 && type < static_cast<int>(std::size(cTypeNames));
    return isKnown ? cTypeNames[type] : "other";
}

std::string describe(const KyDeviceManager::KyDeviceInfoStruct& info) {
    return fmt::format("  {:04x}:{:04x}  {:<8}  {}{}\n", info.vendorId, info.productId, getTypeName(info.deviceType),
                       info.name, info.path.empty() ? "" : "  (" + info.path + ")");
}

std::string describe(const KyDevice& device) {
    std::string text = "  " + device.getName() + "\n";
    for (unsigned i = 0; i < device.getNbAxis(); ++i) {
        const KyDeviceAxisChannel& axis = device.getAxis(i);
        text +=
            fmt::format("    axis {:<2}         {:<16} {:+.3f}, {:g} to {:g}{}\n", i, axis.getName(), axis.getValue(),
                        axis.getMinimum(), axis.getMaximum(), axis.isAbsolute() ? "" : ", relative");
    }
    for (unsigned i = 0; i < device.getNbButtons(); ++i) {
        const KyDeviceButtonChannel& button = device.getButton(i);
        text += fmt::format("    button {:<2}       {:<16} {} of {} values\n", i, button.getName(), button.getValue(),
                            button.getNbValues());
    }
    for (unsigned i = 0; i < device.getNbOrientations(); ++i) {
        const KyDeviceOrientationChannel& orientation = device.getOrientation(i);
        text += fmt::format("    orientation {:<2}  {:<16} {}\n", i, orientation.getName(),
                            orientation.isAbsolute() ? "absolute" : "relative");
    }
    return text;
}

} // namespace

void KyHostDrivers::loadInstalled() {
    const QDir folder = getInstalledFolder();
    for (const QString& name : folder.entryList(QDir::Files, QDir::Name))
        if (QLibrary::isLibrary(name))
            load(folder.filePath(name).toLocal8Bit().toStdString());
}

bool KyHostDrivers::load(const std::string& path) {
    // A name alone would be looked for among the system's libraries.
    QLibrary module(QFileInfo(QString::fromLocal8Bit(path.c_str())).absoluteFilePath());
    if (module.load())
        return true;
    KyHostErrors::write("cannot load the driver '" + path + "': " + module.errorString().toStdString());
    return false;
}

void KyHostDrivers::start() {
    if (KyDeviceManager* const manager = KyDeviceManager::get())
        manager->initialize();
}

std::string KyHostDrivers::describeDevices() {
    const KyDeviceManager* const manager = KyDeviceManager::get();
    if (!manager)
        return {};
    std::string text = "Plugged in (HID):\n";
    for (const KyDeviceManager::KyDeviceInfoStruct& info : manager->getDeviceInfoVector())
        text += describe(info);
    if (manager->getDeviceInfoVector().empty())
        text += "  nothing\n";
    text += "Drivers:\n";
    for (unsigned i = 0; i < manager->getNbDeviceDrivers(); ++i)
        text += "  " + KyDeviceManager::get()->editDeviceDriver(i)->getNameDeviceDriver() + "\n";
    if (manager->getNbDeviceDrivers() == 0)
        text += "  none\n";
    text += "Devices:\n";
    unsigned nbDevices = 0;
    for (unsigned i = 0; i < manager->getNbDevices(); ++i) {
        if (const KyDevice* const device = manager->getDevice(i)) {
            text += describe(*device);
            ++nbDevices;
        }
    }
    return nbDevices > 0 ? text : text + "  none\n";
}

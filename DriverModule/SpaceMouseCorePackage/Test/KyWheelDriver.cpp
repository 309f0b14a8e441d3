// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyDevice.h"
#include "KyDeviceDriver.h"
#include "KyDeviceManager.h"

#include "KyException.h"
#include "KyLibraryEntry.h"
#include "KyModuleManager.h"

#include <fstream>
#include <memory>

namespace {

/// A wheel whose position, -1 to 1, and horn another program keeps in a file.
class Wheel : public KyDevice {
public:
    explicit Wheel(const std::string& path)
        : mPath(path) {
        setName("Wheel");
        setNbAxis(1);
        setAxisName(0, "Turn");
        editAxis(0).setAbsolute(true);
        setNbButtons(1);
        setButtonName(0, "Horn");
        setEnabled(true); // with it the channels
    }

    bool execute() override {
        float turn = 0;
        int horn = 0;
        std::ifstream file(mPath);
        const bool isThere = file >> turn >> horn ? true : false;
        setAxisValue(0, isThere ? turn : 0.0F);
        setButtonValue(0, isThere && horn != 0 ? 1 : 0);
        return isThere;
    }

private:
    std::string mPath;
};

class WheelDriver : public KyDeviceDriver {
public:
    using KyDeviceDriver::getDevice;

    WheelDriver() {
        setNameDeviceDriver("Wheel");
        KyFieldSet fields;
        fields.set("Path", KyField("wheel.txt"));
        setCompatibleConfigurationFields(fields);
    }

    void start() override {}

    const KyDevice* getDevice(const std::string&, const Parameters&) override {
        KyDevice* wheel = editDevice(0);
        if (!wheel)
            wheel = new Wheel(getConfigurationFields().get("Path")->getText());
        registerDevice(wheel, false); // a reference for this client; a new wheel is whole by now
        return editDevice(0);
    }
};

std::unique_ptr<WheelDriver> gDriver;

void initialise() {
    gDriver = std::make_unique<WheelDriver>();
    if (KyDeviceManager* manager = KyDeviceManager::get())
        manager->registerDeviceDriver(gDriver.get());
}

void finalise() {
    gDriver.reset(); // ends its devices and leaves the manager
}

bool onLoad(std::intptr_t, unsigned reason, void* reserved) {
    static const char* const cNeeded[] = {"KyApplication/KyApplication"};
    static bool isRegistered = false;
    if (reason == KyLibraryEntry::eProcessAttach) {
        isRegistered = KyModuleManager::get().registerModule("Wheel/Wheel", cNeeded, 1, &initialise, &finalise);
        if (!isRegistered)
            KyException::create("The driver \"Wheel/Wheel\" is loaded already: this copy stays unused.");
    } else if (reason == KyLibraryEntry::eProcessDetach && !reserved && isRegistered) {
        KyModuleManager::get().unregisterModule("Wheel/Wheel"); // not the other copy's
    }
    return true;
}

constinit bool gExitBegun = false;
const KyExitMark gExitMark(gExitBegun);
constinit KyLibraryEntry gEntry(&onLoad);

[[gnu::constructor]] void attach() {
    gEntry.attach();
}
[[gnu::destructor]] void detach() {
    gEntry.detach(gExitBegun);
}

} // namespace

// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyDeviceDriver.h"

#include "KyTask.h"

#include <chrono>
#include <memory>
#include <string>
#include <vector>

class KySpaceMouseDevice;
class KySpaceMouseFinder;
struct KySpaceMouseUnit;

/// The driver of 3D mice, named "SpaceMouse": through the spacenav daemon where it runs, else from the units' own
/// reports. Whatever is attached appears as a device, also later; units are looked for every few seconds. A daemon too
/// old to tell what it has is used only while no unit is found otherwise. A unit that
/// is pulled out leaves a device at rest for as long as somebody else holds a reference, and the unit plugged in again
/// moves that device. Main thread.
///
/// A device has
/// - six absolute axes, "X", "Y", "Z" the displacement of the cap and "RX", "RY", "RZ" its turn about them, -1 to 1.
///   The frame is that of our cameras, x to the right, y up, z towards the user, and turns are right-handed: pushing
///   the cap away gives -Z, lifting it Y, turning it anticlockwise, seen from above, RY.
/// - buttons "Button 0" and on: 2 or, for the models with more, as many as the unit has numbers, up to 32.
/// - one relative orientation, "Rotation": the turn of this frame at "TurnSpeed".
///
/// Configuration fields: "TurnSpeed", radians a second with the cap fully turned (1), for devices made from now on.
///
///     const KyDevice* mouse = KyDeviceManager::get()->getDevice("SpaceMouse", "");
class KySpaceMouseDriver : public KyDeviceDriver {
public:
    using Finders = std::vector<std::unique_ptr<KySpaceMouseFinder>>;
    using KyDeviceDriver::getDevice;
    using KyDeviceDriver::releaseDevice;

    KySpaceMouseDriver();
    /// With other ways to reach units: the first that has any is used.
    explicit KySpaceMouseDriver(Finders finders);
    ~KySpaceMouseDriver() override;

    /// Opens what is attached, and looks again from then on. Waits for a daemon that does not answer, for a tenth of a
    /// second at most; later looks never wait.
    void start() override;
    /// The name is that of the device or empty; parameters as KyDeviceManager::applyDeviceFilter takes them, these
    /// units count as joysticks. A unit that no client holds goes first; null when none fits.
    const KyDevice* getDevice(const std::string& deviceName, const Parameters& parameters) override;
    /// Opens units that are new and drops devices whose unit is gone and that nobody holds.
    void lookAround();

protected:
    void destroyAllDevices() override;

private:
    using Clock = std::chrono::steady_clock;

    /// Runs the driver's own step of each frame.
    class Look : public KyTask {
    public:
        explicit Look(KySpaceMouseDriver& driver)
            : KyTask("KySpaceMouseDriver")
            , mDriver(driver) {}
        bool execute() override { return mDriver.look(); }

    private:
        KySpaceMouseDriver& mDriver;
    };

    bool look();
    void dropAbandoned();
    void claimEntries();
    void askFinder(KySpaceMouseFinder& finder);
    void tryGuesses();
    void giveGuessUp();
    void take(KySpaceMouseFinder& finder, const KySpaceMouseUnit& unit);
    KySpaceMouseDevice* editMouse(unsigned index);
    KySpaceMouseDevice* findOpen(const std::string& path);
    KySpaceMouseDevice* findAbandoned(const KySpaceMouseUnit& unit);
    KySpaceMouseDevice* findGuess();
    bool hasOpen();
    float getTurnSpeed() const;
    void reportUnopened(const KySpaceMouseUnit& unit);

    Finders mFinders;
    /// The one whose units are open.
    KySpaceMouseFinder* mUsedFinder = nullptr;
    std::vector<std::string> mUnopenedPaths;
    Look mLook{*this};
    /// To the manager's devicesChangedSignal().
    KyConnection mChanges;
    Clock::time_point mNextLook;
};

// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyJoystickDriver.h"
#include "KySdlSession_p.h"

#include "KyDevice.h"
#include "KyDeviceManager.h"
#include "KyHidDetection.h"

#include "KyMainTaskManager.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

inline void runFrame() {
    KyMainTaskManager::get().update();
}

/// A unit that exists in SDL only, plugged in while this lives.
class FakeUnit {
public:
    explicit FakeUnit(SDL_JoystickType type, const char* name = "Fake", Uint16 vendor = 0x1234,
                      Uint16 product = 0x5678) {
        SDL_VirtualJoystickDesc description{};
        description.version = SDL_VIRTUAL_JOYSTICK_DESC_VERSION;
        description.type = static_cast<Uint16>(type);
        description.naxes = 6;
        description.nbuttons = 15;
        description.nhats = 2;
        description.vendor_id = vendor;
        description.product_id = product;
        description.name = name;
        mInstance = SDL_JoystickGetDeviceInstanceID(SDL_JoystickAttachVirtualEx(&description));
    }
    FakeUnit(const FakeUnit&) = delete;
    ~FakeUnit() {
        for (int i = 0; i < SDL_NumJoysticks(); ++i)
            if (SDL_JoystickGetDeviceInstanceID(i) == mInstance)
                SDL_JoystickDetachVirtual(i);
    }

    /// Once the driver has opened it.
    SDL_Joystick* get() const { return SDL_JoystickFromInstanceID(mInstance); }

private:
    SDL_JoystickID mInstance;
};

/// A device manager with the driver.
class KyJoystickDriverTest : public testing::Test {
protected:
    void SetUp() override {
        KyDeviceManager::initializeSingleton();
        manager().editDeviceInfoVector().clear();
        mDriver = std::make_unique<KyJoystickDriver>();
        manager().registerDeviceDriver(mDriver.get());
        manager().initialize();
    }
    void TearDown() override {
        mDriver.reset();
        KyDeviceManager::finalizeSingleton();
        KyHidDetection::setSource(nullptr);
    }
    static KyDeviceManager& manager() { return *KyDeviceManager::get(); }
    const KyDevice* ask(const KyDeviceDriver::Parameters& parameters = {}, const std::string& name = {}) {
        return manager().getDevice("Joystick", name, parameters);
    }

    std::unique_ptr<KyJoystickDriver> mDriver;
};

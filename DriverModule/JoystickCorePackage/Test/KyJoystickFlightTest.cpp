// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyJoystickTesting.h"

#include "KyCompositeAxisObject.h"
#include "KyCompositeButtonObject.h"
#include "KyDeviceManagerObject.h"
#include "KyLuaBinder.h"
#include "KyScriptEngine.h"
#include "KyVirtualDevice.h"

#include "KyCamera.h"
#include "KyLight.h"
#include "KyMeshNode.h"
#include "KyScene.h"

#include "KyHolder.h"

#include <fstream>
#include <iterator>

namespace {

constexpr int cLeftY = 1, cButtonA = 0, cLeftTrigger = 4, cRightTrigger = 5;
constexpr int cNbFrames = 10;
constexpr double cSeconds = 0.1;

/// A pad at rest: its triggers rest at the end of their way.
std::unique_ptr<FakeUnit> plugPad() {
    auto pad = std::make_unique<FakeUnit>(SDL_JOYSTICK_TYPE_GAMECONTROLLER);
    runFrame();
    for (const int trigger : {cLeftTrigger, cRightTrigger})
        SDL_JoystickSetVirtualAxis(pad->get(), trigger, SDL_JOYSTICK_AXIS_MIN);
    return pad;
}

/// The example runs as the host runs it, with frames of one length.
class KyJoystickFlightTest : public KyJoystickDriverTest {
protected:
    void SetUp() override {
        KyJoystickDriverTest::SetUp();
        KyDeviceManagerObject::initializeClass();
        KyVirtualDevice::initializeType();
        KyCompositeAxisObject::initializeType();
        KyCompositeButtonObject::initializeType();
        for (const KyType* const type : {KyLight::getType(), KyMeshNode::getType()})
            EXPECT_TRUE(type);
        KyScriptEngine::initializeClass();
        KyLuaBinder::initializeClass();
        msOutput.clear();
        KyScriptEngine::setPrintCallback([](const std::string& text) { msOutput += text; });
        KyScriptEngine::get().bindInstance(mScene.get(), "scene");
        KyScriptEngine::get().bindInstance(mCamera.get(), "camera");
        KyScriptEngine::get().bindInstance(KyDeviceManagerObject::get(), "devices");
    }
    void TearDown() override {
        KyScriptEngine::setPrintCallback(nullptr);
        KyScriptEngine::finalizeClass();
        KyLuaBinder::finalizeClass();
        KyDeviceManagerObject::finalizeClass();
        KyJoystickDriverTest::TearDown();
    }

    static void run(const std::string& chunk) {
        KyScriptEngine::get().executeChunk(chunk);
        EXPECT_EQ(msOutput, "") << chunk;
    }
    static void start(const std::string& name) {
        std::ifstream file(std::string(KY_TEST_DATA_DIR) + "/../../../examples/" + name);
        const std::string text(std::istreambuf_iterator<char>(file), {});
        run("bindAllClasses() program = (function()\n" + text + "\nend)() assert(coroutine.resume(program))");
    }
    /// How far the camera comes in a second.
    KyVec3d flyOn() {
        const KyVec3d before = mCamera->getPosition();
        for (int i = 0; i < cNbFrames; ++i) {
            runFrame();
            run("assert(coroutine.resume(program, " + std::to_string(cSeconds) + "))");
        }
        return mCamera->getPosition() - before;
    }

    KyHolder<KyScene> mScene{new KyScene};
    KyHolder<KyCamera> mCamera{new KyCamera};
    static inline std::string msOutput;
};

TEST_F(KyJoystickFlightTest, TheFlyingExampleMovesTheCameraAsThePadSays) {
    // Without any device an autopilot would fly.
    const FakeUnit other(SDL_JOYSTICK_TYPE_FLIGHT_STICK, "Other");
    auto unit = plugPad();
    start("fly.lua");
    flyOn();
    struct Row {
        Sint16 reading;
        bool isBoosted;
        double speed;
    };
    // At first the camera looks along z.
    for (const auto& [reading, isBoosted, speed] : {Row{0, false, 0.0},
                                                    {SDL_JOYSTICK_AXIS_MIN, false, 14.0},
                                                    {SDL_JOYSTICK_AXIS_MIN, true, 40.0},
                                                    {SDL_JOYSTICK_AXIS_MAX, false, -14.0},
                                                    {-16384, false, 14.0 * (0.5 - 0.08) / (1.0 - 0.08)},
                                                    {-2000, false, 0.0},
                                                    {0, true, 0.0}}) {
        SDL_JoystickSetVirtualAxis(unit->get(), cLeftY, reading);
        SDL_JoystickSetVirtualButton(unit->get(), cButtonA, isBoosted ? 1 : 0);
        const KyVec3d way = flyOn();
        EXPECT_NEAR(way.z, speed, 1e-3) << reading << isBoosted;
        EXPECT_NEAR(way.x, 0.0, 1e-3);
        EXPECT_NEAR(way.y, 0.0, 1e-3);
    }
    SDL_JoystickSetVirtualAxis(unit->get(), cLeftY, SDL_JOYSTICK_AXIS_MIN);
    EXPECT_GT(flyOn().z, 10.0);
    unit.reset();
    EXPECT_EQ(flyOn(), KyVec3d(0.0, 0.0, 0.0)) << "unplugged";
    unit = plugPad();
    SDL_JoystickSetVirtualAxis(unit->get(), cLeftY, SDL_JOYSTICK_AXIS_MIN);
    EXPECT_NEAR(flyOn().z, 14.0, 1e-3) << "back again";
}

} // namespace

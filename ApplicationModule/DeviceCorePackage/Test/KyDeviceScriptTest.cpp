// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyCompositeAxisObject.h"
#include "KyCompositeButtonObject.h"
#include "KyCompositeOrientationObject.h"
#include "KyDevice.h"
#include "KyDeviceDriver.h"
#include "KyDeviceManagerObject.h"
#include "KyHidDetection.h"
#include "KyLuaBinder.h"
#include "KyScriptEngine.h"
#include "KyVirtualDevice.h"

#include "KyException.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace {

std::vector<KyHidRecord> gUnits;
std::vector<std::string> gReports;
unsigned gNbModified = 0;

class ScriptedDevice : public KyDevice {
public:
    explicit ScriptedDevice(const std::string& name) {
        setName(name);
        setNbAxis(2);
        setAxisName(1, "Throttle");
        setEnabled(true);
    }
    using KyDevice::setNbAxis;
};

/// Keeps what it was last asked with, and gives the same device at every call.
class ScriptedDriver : public KyDeviceDriver {
public:
    ScriptedDriver() { setNameDeviceDriver("Scripted"); }
    void start() override {}
    using KyDeviceDriver::getDevice;
    const KyDevice* getDevice(const std::string& name, const Parameters& parameters) override {
        asked.clear();
        for (const auto& [key, value] : parameters)
            asked += key + (value.isText() ? ":" : "=") + value.getText() + ";";
        if (name == "none")
            return nullptr;
        registerDevice(getNbDevices() > 0 ? editDevice(0) : new ScriptedDevice(name), true);
        return KyDeviceDriver::getDevice(0);
    }

    std::string asked;
};

struct Row {
    const char* chunk;
    const char* text;
};

/// A device manager with two units and a driver, seen by a script engine.
class KyDeviceScriptTest : public testing::Test {
protected:
    KyDeviceScriptTest() {
        gUnits = {{"Acme", "Stick", 0x1111, 0xC216, 1, 4, "/dev/a", "s1"}, {"Acme", "Keys", 1, 2, 1, 6, "/dev/b", ""}};
        gReports.clear();
        gNbModified = 0;
        mSource = KyHidDetection::setSource([] { return gUnits; });
        mHandler = KyException::setReportHandler([](const std::string& text) { gReports.push_back(text); });
        KyScriptEngine::setPrintCallback([](const std::string& text) { gReports.push_back(text); });
        KyDeviceManager::initializeClass();
        mDriver = std::make_unique<ScriptedDriver>();
        KyDeviceManager::get()->registerDeviceDriver(mDriver.get());
        KyDeviceManagerObject::initializeClass();
        KyVirtualDevice::initializeType();
        KyCompositeAxisObject::initializeType();
        KyCompositeButtonObject::initializeType();
        KyCompositeOrientationObject::initializeType();
        KyScriptEngine::initializeClass();
        KyLuaBinder::initializeClass();
        KyScriptEngine::get().bindInstance(KyDeviceManagerObject::get(), "devices");
        run("bindAllClasses() A, B, O, V = KyCompositeAxisObject, KyCompositeButtonObject, "
            "KyCompositeOrientationObject, KyVirtualDevice");
    }
    ~KyDeviceScriptTest() override {
        KyScriptEngine::finalizeClass();
        KyLuaBinder::finalizeClass();
        KyDeviceManagerObject::finalizeClass();
        mDriver.reset();
        KyDeviceManager::finalizeClass();
        KyScriptEngine::setPrintCallback(nullptr);
        KyException::setReportHandler(mHandler);
        KyHidDetection::setSource(mSource);
    }

    /// What the chunk returns, as texts with blanks between; the error when it fails.
    static std::string run(const std::string& chunk) {
        std::vector<KyField> results;
        const std::string body = "return (function(...) local t = {...} for i = 1, select('#', ...) do "
                                 "t[i] = tostring(t[i]) end return table.concat(t, ' ') end)((function() " +
                                 chunk + " end)())";
        if (!KyScriptEngine::get().executeChunktWithReturnValues(body, results))
            return "error: " + (gReports.empty() ? std::string() : gReports.back());
        return results.empty() ? "" : results.front().toString();
    }
    static void expectTexts(const std::string& prelude, const std::vector<Row>& rows) {
        for (const auto& [chunk, text] : rows) {
            EXPECT_EQ(text, run(prelude + chunk)) << chunk;
            collect();
        }
    }
    static void collect() { run("collectgarbage() collectgarbage()"); }

    std::unique_ptr<ScriptedDriver> mDriver;

private:
    KyHidDetection::Source mSource = nullptr;
    KyException::ReportHandler mHandler = nullptr;
};

constexpr const char* cPad = "local v = V.create('Pad', 2, 2, 1) v:setAxisName(0, 'X') v:setButtonName(1, 'Fire') "
                             "v:setOrientationName(0, 'Cap') v:setAxisMode(0, true) local d = v:getDevice() ";

} // namespace

TEST_F(KyDeviceScriptTest, AVirtualDeviceIsReadLikeAnyOther) {
    expectTexts(
        cPad,
        {
            {"return d.Name, d.Enabled, d.Valid, #d.Axes, #d.Buttons, #d.Orientations", "Pad true true 2 2 1"},
            {"return d.Axes[0].Name, d.Axes[1].Name, d.Axes[0].Absolute, d.Axes[1].Absolute", "X No name true false"},
            {"v:setAxisValue(0, 0.5) return d:findAxis('X').Value", "0.5"},
            {"v:setAxisValue(0, 7) return d.Axes[0].Value", "1"},
            {"d.Axes[0].ClampMode = KyAxisObject.eClampNone v:setAxisValue(0, 7) return d.Axes[0].Value", "7"},
            {"v:setAxisValue(1, 2) return d.Axes[1].Value", "2"},
            {"v:setAxisValue(1, 2) v:rest() return d.Axes[1].Value", "0"},
            {"local a = d.Axes[0] a.DeadZoneWidth = 0.5 v:setAxisValue(0, 0.75) return a.Value, a.DeadZoneWidth",
             "0.5 0.5"},
            {"local a = d.Axes[0] a.Minimum = -4 a.Maximum = 8 a.StepFactor = 2 a.DeadZoneValue = 0.25 "
             "v:setAxisValue(0, 9) "
             "return a.Minimum, a.Maximum, a.StepFactor, a.DeadZoneValue, a.ClampMode, a.Value",
             "-4 8 2 0.25 1 8"},
            {"v:setButtonValue(1, 3) local b = d:findButton('Fire') return b.Value, b.PreviousValue, b.NbValues",
             "3 0 2"},
            {"v:setButtonValue(1, 3) v:rest() local b = d.Buttons[1] b.NbValues = 9 return b.Value, b.PreviousValue, "
             "b.NbValues",
             "3 3 9"},
            {"v:setOrientationValue(0, Quatf(Vec3f(0, 0, 1), 0.5)) v:setOrientationValue(0, Quatf(Vec3f(0, 0, 1), "
             "0.25)) "
             "local o = d:findOrientation('Cap') return math.floor(o.Value:angle() * 1e4 + 0.5), "
             "math.floor(o.DeltaValue:angle() * 1e4 + 0.5), o.Absolute",
             "7500 2500 false"},
            {"v:setOrientationMode(0, true) v:setOrientationValue(0, Quatf(Vec3f(0, 0, 1), 0.5)) "
             "v:setOrientationValue(0, "
             "Quatf(Vec3f(0, 0, 1), 0.25)) return math.floor(d.Orientations[0].Value:angle() * 1e4 + 0.5)",
             "2500"},
            {"d.Enabled = false return d.Enabled, d.Axes[0].Enabled, d.Buttons[1].Enabled", "false false false"},
            {"d.Axes[0].Enabled = false return d.Axes[0].Enabled, d.Axes[1].Enabled", "false true"},
        });
}

TEST_F(KyDeviceScriptTest, ChannelsAreClosedToScriptsUntilTheirAccessModeOpensThem) {
    expectTexts(
        cPad, {
                  {"d.Axes[0].Value = 0.5 d.Buttons[0].Value = 1 return d.Axes[0].Value, d.Buttons[0].Value", "0 0"},
                  {"v:setAccessMode(2) d.Axes[0].Value = 0.5 d.Buttons[0].Value = 1 d.Orientations[0].Value = Quatf(0, "
                   "0, 1, 0) "
                   "return d.Axes[0].Value, d.Buttons[0].Value, d.Buttons[0].PreviousValue, d.Orientations[0].Value.z, "
                   "d.Axes[1].AccessMode",
                   "0.5 1 0 1 2"},
                  {"v:setAccessMode(2) return v:setAccessMode(0), d.Buttons[0].AccessMode", "true 0"},
                  {"return pcall(function() d.Axes[0].Name = 'Y' end), d.Axes[0].Name", "false X"},
              });
}

TEST_F(KyDeviceScriptTest, DevicesAndChannelsAreFoundAgain) {
    expectTexts(cPad, {
                          {"return d == v:getDevice(), d.Axes[0] == d:findAxis('X'), d.Axes[0] == d.Axes[1]",
                           "true true false"},
                          {"return devices:findDevice('Pad') == d, devices:getDevice(0) == d, devices.Devices[0] == d",
                           "true true true"},
                          {"return #devices.Devices, devices.NbDevices, devices.NbInfos", "1 1 2"},
                          {"local w = V.create('Other', 0, 0, 0) return devices.NbDevices, devices.Devices[1].Name, "
                           "#w:getDevice().Axes",
                           "2 Other 0"},
                      });
    run("v = V.create('Kept', 1, 0, 0) axis = v:getDevice().Axes[0]");
    collect();
    EXPECT_EQ("true", run("return axis == devices:findDevice('Kept').Axes[0]"));
}

TEST_F(KyDeviceScriptTest, AVirtualDeviceLeavesWithItsObject) {
    run("v = V.create('Gone', 1, 1, 1) d = v:getDevice() a, b, o = d.Axes[0], d.Buttons[0], d.Orientations[0]");
    EXPECT_EQ("true 1", run("v:setAxisMode(0, true) v:setAxisValue(0, 1) return a.Valid, a.Value"));
    EXPECT_EQ(1u, KyDeviceManager::get()->getNbDevices());
    run("v = nil");
    collect();
    EXPECT_EQ(0u, KyDeviceManager::get()->getNbDevices());
    expectTexts(
        "", {
                {"return d.Valid, d.Name, d.Enabled, #d.Axes, #d.Buttons, #d.Orientations", "false  false 0 0 0"},
                {"return tostring(d:findAxis('No name')), tostring(d:findButton('')), tostring(d:findOrientation(''))",
                 "nil nil nil"},
                {"return a.Valid, a.Name, a.Value, a.Minimum, a.Absolute, a.ClampMode, a.Enabled, a.AccessMode",
                 "false  0 0 false 0 false 0"},
                {"return b.Valid, b.Value, b.PreviousValue, b.NbValues, o.Valid, o.Value.w, o.DeltaValue.w, o.Absolute",
                 "false 0 0 0 false 1 1 false"},
                {"d.Enabled = true a.Value = 1 a.Maximum = 3 a.ClampMode = 2 a.Enabled = true b.Value = 1 o.Value = "
                 "Quatf() "
                 "return a.Value, a.Maximum, b.Value",
                 "0 0 0"},
                {"return devices:releaseDevice('Scripted', d), devices.NbDevices", "false 0"},
            });
}

TEST_F(KyDeviceScriptTest, ADeviceEndedByOthersLeavesItsOwnerEmpty) {
    run("v = V.create('Ended', 1, 1, 1) d = v:getDevice()");
    KyDeviceManager::get()->editDevice(0)->destroy();
    EXPECT_EQ("nil false false false false false",
              run("return v:getDevice(), v:setAxisValue(0, 1), v:setButtonName(0, 'x'), v:setAccessMode(1), v:rest(), "
                  "d.Valid"));
}

TEST_F(KyDeviceScriptTest, ChannelsFollowAnArrayThatChanges) {
    auto* device = new ScriptedDevice("Grows");
    device->addReference();
    KyDeviceManager::get()->insertTask(device);
    run("d = devices:findDevice('Grows') first, second = d.Axes[0], d.Axes[1] first.Maximum = 5");
    device->setNbAxis(100);
    EXPECT_EQ("5 true 100", run("return first.Maximum, first == d.Axes[0], #d.Axes"));
    device->setNbAxis(1);
    EXPECT_EQ("true false nil", run("return first.Valid, second.Valid, d:findAxis('Throttle')"));
    device->setNbAxis(2);
    EXPECT_EQ("false true false", run("return second.Valid, d.Axes[1].Valid, second == d.Axes[1]"));
    device->removeReference();
    EXPECT_EQ("false 0", run("return d.Valid, devices.NbDevices"));
}

TEST_F(KyDeviceScriptTest, DevicesAreAskedForWithParametersAsText) {
    const std::vector<std::pair<std::string, std::string>> rows{
        {"DeviceType=Joystick;VendorID=1133", "DeviceType:Joystick;VendorID=1133;"},
        {" VendorID = 0x046D ; ;ProductID=0XC216;", "VendorID=1133;ProductID=49686;"},
        {"Offset=-3;Name=a=b;Empty=", "Offset=-3;Name:a=b;Empty:;"},
        {"A=0x;B=12ab;C=99999999999999999999;D=0x-1", "A:0x;B:12ab;C:99999999999999999999;D:0x-1;"},
        {"", ""},
    };
    for (const auto& [text, asked] : rows) {
        run("devices:openDevice('Scripted', 'none', '" + text + "')");
        EXPECT_EQ(asked, mDriver->asked) << text;
    }
    EXPECT_TRUE(gReports.empty());
    mDriver->asked = "untouched";
    for (const char* text : {"VendorID", "=3", "VendorID=1;garbage", ";;= "})
        EXPECT_EQ("nil", run(std::string("return devices:openDevice('Scripted', 'd', '") + text + "')")) << text;
    EXPECT_EQ("untouched", mDriver->asked);
    EXPECT_EQ(4u, gReports.size());
}

TEST_F(KyDeviceScriptTest, ADriversDeviceIsOpenedAndGivenBack) {
    expectTexts("",
                {
                    {"return devices:openDevice('Nobody', 'd'), devices:openDevice('Scripted', 'none')", "nil nil"},
                    {"d = devices:openDevice('Scripted', 'Wheel') return d.Name, d:findAxis('Throttle') == d.Axes[1]",
                     "Wheel true"},
                    {"return devices:openDevice('Scripted', 'Wheel') == d, devices.NbDevices", "true 1"},
                    {"return devices:releaseDevice('Nobody', d), devices:releaseDevice('Scripted', devices), "
                     "devices:releaseDevice('Scripted', nil), d.Valid",
                     "false false false true"},
                    {"return devices:releaseDevice('Scripted', d), d.Valid", "true true"},
                    {"return devices:releaseDevice('Scripted', d), d.Valid, devices.NbDevices", "true false 0"},
                    {"return devices:releaseDevice('Scripted', d)", "false"},
                });
}

TEST_F(KyDeviceScriptTest, UnitsAreDescribedAndLookedForAgain) {
    expectTexts(
        "", {
                {"local u = devices:getInfo(0) return u.Name, u.VendorID, u.ProductID, u.DeviceType, u.Path, u.Serial, "
                 "u.Present, u.Used",
                 "Acme Stick 4369 49686 joystick /dev/a s1 true false"},
                {"local u = devices:getInfo(1) return u.DeviceType, u.Serial", "keyboard "},
                {"return devices:getInfo(2), devices:getInfo(-1), devices:getDevice(-1), devices:getDevice(99)",
                 "nil nil nil nil"},
                {"return devices:rescanDevices()", "false"},
            });
    run("old = devices:getInfo(0)");
    gUnits.erase(gUnits.begin());
    EXPECT_EQ("true 1 Acme Keys Acme Stick",
              run("return devices:rescanDevices(), devices.NbInfos, devices:getInfo(0).Name, old.Name"));
}

TEST_F(KyDeviceScriptTest, ListenersAreToldWhenDevicesComeAndGo) {
    const KyConnection connection = KyDeviceManagerObject::get()->modifiedSignal().connect(
        [](KyObject*, KyObjectModificationType, const std::string& name, int) { gNbModified += name == "Devices"; });
    const std::vector<std::pair<std::string, unsigned>> rows{
        {"v = V.create('v', 1, 0, 0)", 1}, {"d = v:getDevice() local _ = d.Axes[0].Value", 1},
        {"v = nil collectgarbage()", 2},   {"d = devices:openDevice('Scripted', 'w')", 3},
        {"devices:rescanDevices()", 3},    {"devices:releaseDevice('Scripted', d)", 4}};
    for (const auto& [chunk, number] : rows) {
        run(chunk);
        EXPECT_EQ(number, gNbModified) << chunk;
    }
}

TEST_F(KyDeviceScriptTest, CompositesAreBuiltByScripts) {
    expectTexts(
        cPad,
        {
            {"local a = A() a.Absolute = true a:insertConstant(a.eOperationSet, 0) a:insertMappedAxis(d.Axes[0], "
             "a.eOperationAdd) a:insertMappedButton(d.Buttons[0], a.eActionWhilePressed, 5, a.eOperationAdd) "
             "v:setAxisValue(0, 0.25) local u, x = a:update(), a.Value v:setButtonValue(0, 1) local w = a:update() "
             "return u, x, w, a.Value, a:update()",
             "true 0.25 true 0.75 false"},
            {"local a = A() a.Absolute = true a.Minimum = 0 a.Maximum = 10 a:insertConstant(A.eOperationSet + "
             "A.eOperationNormalized, 0.25) a:update() return a.Value, a:mapNormalizedValueToAxis(0.5)",
             "2.5 5"},
            {"local a = A() a.Absolute = true a:insertConstant(8, 1) a:insertCondition(d.Buttons[0], "
             "a.eConditionEqual, 1) "
             "local u = a:update() v:setButtonValue(0, 1) return u, a:update(), a.Value",
             "false true 1"},
            {"local a = A() a:insertConstant(8, 1) a.Absolute = true a:insertConstant(8, -1, 0) a:update() return "
             "a.Value",
             "1"},
            {"local b = B() b:insertConstant(b.eOperationSet, 0) b:insertMappedButton(d.Buttons[0], "
             "b.eActionWhilePressed, 7, "
             "b.eOperationSetValue) v:setButtonValue(0, 1) return b:update(), b.Value, b.PreviousValue, b:update()",
             "true 7 7 false"},
            {"local o = O() o:insertConstant(o.eOperationSet, Quatf()) o:insertMappedAxis(d.Axes[0], "
             "o.eComponentHeading, "
             "o.eOperationPostMultiply) o:insertMappedButton(d.Buttons[0], o.eActionOnPress, 0.25, "
             "o.eComponentHeading, "
             "o.eOperationPostMultiply) v:setAxisValue(0, 0.5) v:setButtonValue(0, 1) local u = o:update() "
             "return u, math.floor(o.DeltaValue:angle() * 1e4 + 0.5), math.floor(o.Value:axis().y + 0.5)",
             "true 7500 1"},
            {"local o = O() o.Absolute = true v:setOrientationMode(0, true) v:setOrientationValue(0, Quatf(0, 1, 0, "
             "0)) "
             "o:insertMappedOrientation(d.Orientations[0], o.eOperationReplace) o:update() "
             "return o.Value.y, math.floor(o:mapChannelValueToAngle(d.Axes[0]) * 1e4), o:mapChannelValueToAngle(nil)",
             "1 31415 0"},
        });
    EXPECT_TRUE(gReports.empty()) << gReports.front();
}

TEST_F(KyDeviceScriptTest, ACompositeKeepsTheCompositesThatItUses) {
    const std::string build = "outer = A() outer.Absolute = true inner = A() inner.Absolute = true "
                              "inner:insertConstant(8, 0.5) inner:update() outer:insertMappedAxis(inner, 8) ";
    run(build + "inner = nil");
    std::vector<KyField> results;
    KyScriptEngine::get().executeChunktWithReturnValues("return outer", results);
    const KyHolder<KyCompositeAxisObject> copy(KyCompositeAxisObject::cast(results.at(0).toKyObject()->clone()));
    collect();
    EXPECT_EQ("true 0.5", run("return outer:update(), outer.Value"));
    run("outer = nil");
    collect();
    EXPECT_TRUE(copy->update());
    EXPECT_EQ(0.5F, copy->editOwn()->getValue());
    run("v = V.create('v', 1, 0, 0) v:setAxisMode(0, true) outer = A() outer.Absolute = true "
        "outer:insertMappedAxis(v:getDevice().Axes[0], 8) v:setAxisValue(0, 0.5) outer:update() v = nil");
    collect();
    EXPECT_EQ("false 0.5", run("return outer:update(), outer.Value"));
}

TEST_F(KyDeviceScriptTest, ACompositeIsNeverComputedFromItself) {
    const std::vector<Row> rows{
        {"local a = A() return a:insertMappedAxis(a, 8)", "false"},
        {"local a, b = A(), A() return a:insertMappedAxis(b, 8), b:insertMappedAxis(a, 8)", "true false"},
        {"local a, b, o = A(), B(), O() return o:insertMappedAxis(a, 0, 0), a:insertMappedButton(b, 0, 1, 8), "
         "b:insertCondition(b, 0, 1), o:insertMappedOrientation(o, 0)",
         "true true false false"},
        {"local b, c, d = B(), B(), B() return d:insertMappedButton(c, 0, 1, 8), c:insertCondition(b, 0, 1), "
         "b:insertMappedButton(d, 0, 1, 8)",
         "true true false"},
    };
    expectTexts("", rows);
    EXPECT_EQ(5u, gReports.size());
    EXPECT_EQ("KyCompositeAxisObject: nothing inserted: the source is computed from this channel.", gReports.front());
    // Without care the number of ways through these layers is 2 to the 40.
    EXPECT_EQ("true", run("local a, b = A(), A() for i = 1, 40 do local c, d = A(), A() c:insertMappedAxis(a, 8) "
                          "c:insertMappedAxis(b, 8) d:insertMappedAxis(a, 8) d:insertMappedAxis(b, 8) a, b = c, d end "
                          "return A():insertMappedAxis(a, 8)"));
    run("local a = A() chain = a for i = 1, 3e4 do local b = A() a:insertMappedAxis(b, 8) a = b end a = nil");
    EXPECT_EQ("true", run("return A():insertMappedAxis(chain, 8)"));
    run("chain = nil");
    collect();
}

TEST_F(KyDeviceScriptTest, WhatMakesNoSenseIsRefusedAndReported) {
    const std::string prelude = std::string(cPad) +
                                "local nan, a, b, o, x, y = 0/0, A(), B(), O(), d.Axes[0], d.Buttons[0] "
                                "local dead = V.create('dead', 1, 1, 1) local gone = dead:getDevice().Axes[0] "
                                "dead:destroy() dead = nil ";
    for (const char* call : {"a:insertMappedAxis(nil, 8)",
                             "a:insertMappedAxis(y, 8)",
                             "a:insertMappedAxis(d, 8)",
                             "a:insertMappedAxis(gone, 8)",
                             "a:insertMappedAxis(x, 3)",
                             "a:insertMappedAxis(x, 0)",
                             "a:insertMappedAxis(x, -1)",
                             "a:insertMappedAxis(x, 32)",
                             "a:insertMappedButton(x, 0, 1, 8)",
                             "a:insertMappedButton(y, 4, 1, 8)",
                             "a:insertMappedButton(y, -1, 1, 8)",
                             "a:insertMappedButton(y, 0, nan, 8)",
                             "a:insertConstant(8, nan)",
                             "a:insertConstant(8, 1/0)",
                             "a:insertConstant(7, 1)",
                             "a:insertCondition(x, 0, 1)",
                             "a:insertCondition(y, 2, 1)",
                             "a:insertCondition(y, 0, 256)",
                             "a:insertCondition(nil, 0, 1)",
                             "b:insertMappedButton(y, 0, 256, 8)",
                             "b:insertMappedButton(y, 0, -1, 8)",
                             "b:insertMappedButton(nil, 0, 1, 8)",
                             "b:insertMappedButton(y, 0, 1, 32)",
                             "b:insertConstant(8, 300)",
                             "b:insertConstant(0, 3)",
                             "o:insertMappedAxis(x, 3, 8)",
                             "o:insertMappedAxis(y, 0, 8)",
                             "o:insertMappedAxis(x, 0, 16)",
                             "o:insertMappedButton(y, 0, nan, 0, 8)",
                             "o:insertMappedOrientation(x, 8)",
                             "o:insertConstant(8, Quatf(nan, 0, 0, 1))",
                             "V.create('v', -1, 0, 0) ~= nil",
                             "V.create('v', 0, 65, 0) ~= nil",
                             "V.create('v', 0, 0, 1e9) ~= nil"}) {
        gReports.clear();
        EXPECT_EQ("false false",
                  run(prelude + "local r = " + call + " return r, a:update() or b:update() or o:update()"))
            << call;
        EXPECT_EQ(1u, gReports.size()) << call;
    }
}

TEST_F(KyDeviceScriptTest, IndicesAndValuesOutOfRangeChangeNothing) {
    expectTexts(
        cPad,
        {
            {"return v:setAxisName(2, 'x'), v:setAxisName(-1, 'x'), v:setButtonName(2, 'x'), v:setOrientationName(1, "
             "'x')",
             "false false false false"},
            {"return v:setAxisValue(2, 1), v:setAxisValue(-1, 1), v:setButtonValue(5, 1), v:setOrientationValue(1, "
             "Quatf())",
             "false false false false"},
            {"return v:setAxisMode(9, true), v:setOrientationMode(-1, true), v:setAccessMode(3), v:setAccessMode(-1)",
             "false false false false"},
            {"v:setButtonValue(0, 9) return v:setButtonValue(0, 256), v:setButtonValue(0, -1), d.Buttons[0].Value",
             "false false 9"},
            {"v:setAxisValue(0, 0.5) v:setAxisValue(0, 0/0) v:setAxisValue(0, 1/0) return d.Axes[0].Value", "0.5"},
            {"v:setAccessMode(2) d.Axes[0].Value = 0/0 return d.Axes[0].Value", "0"},
            {"v:setAccessMode(2) return pcall(function() d.Buttons[0].Value = 256 end), d.Buttons[0].Value", "false 0"},
            {"return pcall(function() d.Axes[0].ClampMode = 3 end), d.Axes[0].ClampMode", "false 1"},
            {"return (pcall(function() return d.Axes[2] end)), (pcall(function() return d.Axes[-1] end)), #d.Axes",
             "false false 2"},
            {"d.Axes[0].StepFactor = 0 v:setAxisMode(0, false) v:setAxisValue(0, 1) return d.Axes[0].Value", "0"},
            {"return #V.create(string.rep('n', 1e5), 64, 64, 64):getDevice().Buttons", "64"},
        });
}

TEST_F(KyDeviceScriptTest, ObjectsThatScriptsHoldOutliveTheManager) {
    run("v = V.create('v', 1, 1, 1) v:setAxisMode(0, true) d = v:getDevice() a = d.Axes[0] c = A() "
        "c:insertMappedAxis(a, 8)");
    KyDeviceManager::finalizeClass();
    expectTexts(
        "", {
                {"return d.Valid, #d.Axes, a.Valid, v:setAxisValue(0, 0.5), a.Value", "false 0 true true 0.5"},
                {"return devices.NbDevices, devices.NbInfos, devices:getInfo(0), devices:findDevice('v'), "
                 "devices:openDevice('Scripted', 'w'), devices:releaseDevice('Scripted', d), devices:rescanDevices()",
                 "0 0 nil nil nil false false"},
                {"return V.create('w', 1, 1, 1), v:getDevice()", "nil nil"},
            });
    KyDeviceManager::initializeClass();
    EXPECT_EQ("false 0 2 1", run("local w = V.create('w', 1, 0, 0) return d.Valid, #d.Axes, devices.NbInfos, "
                                 "#devices.Devices"));
    collect();
    EXPECT_EQ("w", run("w = V.create('w', 1, 0, 0) dw = w:getDevice() return dw.Name"));
    KyDeviceManagerObject::finalizeClass();
    expectTexts("", {
                        {"return devices.NbDevices, (pcall(function() return devices:rescanDevices() end))", "0 false"},
                        {"return dw.Valid, dw.Name, a.Value, c:update(), w:setAxisValue(0, 1)", "false  0.5 true true"},
                        {"v, w, d, dw, a, c, devices = nil collectgarbage() collectgarbage()", ""},
                    });
    EXPECT_EQ(0u, KyDeviceManager::get()->getNbDevices());
}

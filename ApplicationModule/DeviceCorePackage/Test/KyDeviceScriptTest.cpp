// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyDeviceScriptTesting.h"

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
        {"VendorID=9223372036854775807;ProductID=-1", "VendorID=9223372036854775807;ProductID=-1;"},
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
    for (const char* text :
         {"VendorID", "=3", "VendorID=1;garbage", ";;= ", "VendorID=99999999999999999999",
          "A=1;ProductID=0x10000000000000000", "VendorID=-9223372036854775809", "ProductID=1133d", "VendorID="}) {
        gReports.clear();
        EXPECT_EQ("nil", run(std::string("return devices:openDevice('Scripted', 'd', '") + text + "')")) << text;
        ASSERT_EQ(1u, gReports.size()) << text;
        EXPECT_EQ(std::string("KyDeviceManagerObject::openDevice(): malformed parameters: ") + text, gReports[0]);
    }
    EXPECT_EQ("untouched", mDriver->asked);
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

TEST_F(KyDeviceScriptTest, ScriptsGiveBackWhatTheyOpenedAndNoMore) {
    auto* const device = const_cast<KyDevice*>(mDriver->getDevice("Wheel", {}));
    expectTexts("", {
                        {"return devices:releaseDevice('Scripted', devices.Devices[0]), devices.NbDevices", "false 1"},
                        {"for i = 1, 3 do devices:openDevice('Scripted', 'Wheel') end", ""},
                    });
    EXPECT_EQ(4u, device->getNbReferences());
    KyDeviceManagerObject::get()->releaseAllDevices();
    EXPECT_EQ(1u, device->getNbReferences());
    expectTexts("", {{"devices:openDevice('Scripted', 'Wheel') return devices.NbDevices", "1"}});
    KyDeviceManagerObject::finalizeClass();
    EXPECT_EQ(1u, device->getNbReferences());
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
    KyHolder<KyDeviceObject> last;
    std::string seen;
    const KyConnection connection = KyDeviceManagerObject::get()->modifiedSignal().connect(
        [&](KyObject*, KyObjectModificationType, const std::string& name, int) {
            if (name != "Devices")
                return;
            ++gNbModified;
            if (KyDeviceObject* device = KyDeviceManagerObject::get()->getDevice(0))
                last.reset(device);
            seen = last->getName() + " " + std::to_string(last->getNbAxes());
        });
    const std::vector<std::tuple<std::string, unsigned, std::string>> rows{
        {"v = V.create('v', 3, 0, 0)", 1, "v 3"}, {"d = v:getDevice() local _ = d.Axes[0].Value", 1, "v 3"},
        {"v = nil collectgarbage()", 2, " 0"},    {"d = devices:openDevice('Scripted', 'w')", 3, "w 2"},
        {"devices:rescanDevices()", 3, "w 2"},    {"devices:releaseDevice('Scripted', d)", 4, " 0"}};
    for (const auto& [chunk, number, view] : rows) {
        run(chunk);
        EXPECT_EQ(number, gNbModified) << chunk;
        EXPECT_EQ(view, seen) << chunk;
    }
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

// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

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
#include <tuple>
#include <utility>
#include <vector>

inline std::vector<KyHidRecord> gUnits;
inline std::vector<std::string> gReports;
inline unsigned gNbModified = 0;

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

inline constexpr const char* cPad =
    "local v = V.create('Pad', 2, 2, 1) v:setAxisName(0, 'X') v:setButtonName(1, 'Fire') "
    "v:setOrientationName(0, 'Cap') v:setAxisMode(0, true) local d = v:getDevice() ";

// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyDeviceScriptTesting.h"

namespace {

class KyCompositeScriptTest : public KyDeviceScriptTest {};

TEST_F(KyCompositeScriptTest, CompositesAreBuiltByScripts) {
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

TEST_F(KyCompositeScriptTest, ACompositeKeepsTheCompositesThatItUses) {
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

TEST_F(KyCompositeScriptTest, ACompositeIsNeverComputedFromItself) {
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
    run("bottom = A() chain = bottom for i = 1, 2e4 do local a = A() a:insertMappedAxis(chain, 8) chain = a end");
    EXPECT_EQ("true false", run("return A():insertMappedAxis(chain, 8), bottom:insertMappedAxis(chain, 8)"));
    run("bottom, chain = nil");
    collect();
}

} // namespace

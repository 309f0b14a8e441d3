// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyLuaBinder.h"
#include "KyScriptEngine.h"

#include "KyField.h"
#include "KyFieldType.h"
#include "KyType.h"

#include <gtest/gtest.h>

#include <string>
#include <tuple>
#include <vector>

namespace {

/// What scripts see of the 2D scene.
class Ky2DScriptTest : public testing::Test {
protected:
    ~Ky2DScriptTest() override {
        KyScriptEngine::get().resetLuaState();
        KyLuaBinder::bind();
    }

    /// The text of what the chunk returns; the error when it fails.
    static std::string run(const std::string& chunk) {
        std::vector<KyField> results;
        if (!KyScriptEngine::get().executeChunktWithReturnValues(chunk, results))
            return "failed";
        std::string text;
        for (const KyField& result : results)
            text += (text.empty() ? "" : " ") + result.toString();
        return text;
    }

    static void bindClasses() {
        std::vector<KyField> none;
        KyScriptEngine::get().callLuaFunction("bindAllClasses", {}, none);
    }
};

constexpr const char* cNodeAttributes = "Name Enabled Translation Scale TransformOriginPoint Rotation Shear Style "
                                        "ZValue Bound LocalBound Children";

/// A table of the class, the attributes beside those of a node, the methods.
using Row = std::tuple<const char*, const char*, const char*>;
constexpr Row cClasses[] = {
    {"Ky2DNode", "",
     "rotate scale translate shear editStyle getStyle setStyle getTranslation setTranslation getScale setScale "
     "getShear "
     "setShear getRotation setRotation getTransformOriginPoint setTransformOriginPoint isVisible setVisible getZValue "
     "setZValue getQtOffset setQtOffset getParent setParent getIndex getBound getLocalBound getNbChildren getChild "
     "editChild setChild getChildByName editChildByName insertChild removeChildByIndex removeChild removeAllChildren "
     "find"},
    {"Ky2DGroup", "", "insertChild"},
    {"Ky2DProxy", "", ""},
    {"Ky2DScene", "", "insertChild"},
    {"Ky2DRect", "X Y Width Height RX RY",
     "getX setX getY setY getWidth setWidth getHeight setHeight getRX setRX getRY setRY"},
    {"Ky2DEllipse", "X Y RX RY StartAngle SpanAngle",
     "getX setX getY setY getRX setRX getRY setRY getStartAngle setStartAngle getSpanAngle setSpanAngle"},
    {"Ky2DLine", "P1 P2", "getP1 setP1 getP2 setP2"},
    {"Ky2DPath", "Command PathData", "getNbCommands getCommandString addCommand removeCommand"},
    {"Ky2DText", "X Y Text WhiteSpaceHandling",
     "getText setText getWhiteSpaceHandling setWhiteSpaceHandling getWhiteSpaceHandledText"},
    {"Ky2DImage", "X Y Width Height ImageURL FileLocalPath Opacity PreserveAspectRatio",
     "getImageURL setImageURL getFileLocalPath setFileLocalPath imageModified isImageModified"},
    {"Ky2DSvgImage", "ImageURL Color", "getColor setColor"},
};

constexpr Row cStyle{"Ky2DStyle",
                     "StrokeConstantWidth StrokeMode StrokeDashOffset StrokeJoin StrokeCap StrokeColor StrokeWidth "
                     "StrokeMiterLimit FillMode FillRule FillColor FontFamily FontSize FontWeight FontStyle TextAnchor "
                     "TextVerticalAnchor",
                     "getDashElement setDashElement insertDashElement removeDashElement getNbDashElements getFillRule "
                     "setFillRule"};

/// Names of the list that a new object of the class reads as nil.
std::string getMissing(const Row& row) {
    const auto& [name, attributes, methods] = row;
    return std::string("local o, missing = createKyObject('") + name + "'), '' if not o then return 'no class' end" +
           " for n in ('" + attributes + " " + methods + "'):gmatch('%S+') do if o[n] == nil then" +
           " missing = missing .. n .. ' ' end end o:destroy() return missing";
}

} // namespace

TEST_F(Ky2DScriptTest, EveryClassIsMadeByItsNameAndShowsItsAttributesAndMethods) {
    for (const Row& row : cClasses) {
        EXPECT_EQ("", run(getMissing(row))) << std::get<0>(row);
        EXPECT_EQ("", run(getMissing({std::get<0>(row), cNodeAttributes, ""}))) << std::get<0>(row);
    }
    EXPECT_EQ("", run(getMissing(cStyle)));
}

TEST_F(Ky2DScriptTest, AttributesReadBackWhatWasWritten) {
    const std::tuple<const char*, const char*, const char*, const char*> rows[] = {
        {"Ky2DRect", "Translation", "Vec2d(3, 4.5)", "3 4.5"},
        {"Ky2DRect", "Enabled", "false", "false"},
        {"Ky2DGroup", "ZValue", "-7", "-7"},
        {"Ky2DEllipse", "SpanAngle", "22.5", "22.5"},
        {"Ky2DLine", "P2", "Vec2d(-1, 2)", "-1 2"},
        {"Ky2DText", "Text", "'a\\nb'", "a\nb"},
        {"Ky2DPath", "PathData", "'m1 2 3 4h5z'", "m1 2l3 4h5Z"},
    };
    bindClasses();
    for (const auto& [type, attribute, value, expected] : rows)
        EXPECT_EQ(expected, run(std::string("local o = ") + type + "() o." + attribute + " = " + value +
                                " local read = tostring(o." + attribute + ") o:destroy() return read"))
            << type << "." << attribute;
}

TEST_F(Ky2DScriptTest, ModesAreConstantsOrNamesAndOthersAreRefused) {
    const std::tuple<const char*, const char*> rows[] = {
        {"s.StrokeMode = Ky2DStyle.eDashDotLine return s.StrokeMode == Ky2DStyle.eDashDotLine", "true"},
        {"s.StrokeMode = 'DotLine' return s.StrokeMode == Ky2DStyle.eDotLine", "true"},
        {"s.FillMode = 'NoFilled' return s.FillMode == Ky2DStyle.eNoBrush", "true"},
        {"s.StrokeCap = Ky2DStyle.eRoundCap s.StrokeJoin = 'SvgMiter' return s.StrokeCap, s.StrokeJoin", "2 3"},
        {"return pcall(function() s.StrokeMode = 7 end)", "false"},
        {"return pcall(function() s.FillMode = 'Plaid' end)", "false"},
        {"return Ky2DStyle.eBlack, Ky2DStyle.eTop, Ky2DStyle.eStyleOblique, Ky2DStyle.eNonZero", "87 3 2 1"},
    };
    bindClasses();
    for (const auto& [chunk, expected] : rows) {
        const std::string read = run(std::string("local s = Ky2DStyle() ") + chunk);
        EXPECT_EQ(expected, read.substr(0, std::string(expected).size())) << chunk;
    }
}

TEST_F(Ky2DScriptTest, FourEnumeratedFieldTypesHaveTheirNames) {
    const std::tuple<const char*, unsigned, const char*> rows[] = {{"KyStrokeModeField", 7, "NoLine"},
                                                                   {"KyFillModeField", 15, "NoFilled"},
                                                                   {"KyStrokeJoinField", 4, "Miter"},
                                                                   {"KyStrokeCapField", 3, "Flat"}};
    for (const auto& [name, count, first] : rows) {
        const KyFieldType* const type = KyFieldManager::get().findFieldType(name);
        ASSERT_NE(nullptr, type) << name;
        EXPECT_EQ(count, type->getNbValueNames());
        EXPECT_EQ(first, type->getValueName(0));
    }
    EXPECT_EQ(nullptr, KyFieldManager::get().findFieldType("KyFillRuleField"));
}

TEST_F(Ky2DScriptTest, ChildrenAreReachedThroughTheProxyAndByMethods) {
    bindClasses();
    constexpr const char* cTree = "s = Ky2DScene() g = Ky2DGroup() a, b, c = Ky2DRect(), Ky2DLine(), Ky2DText() "
                                  "a.Name, b.Name, c.Name, g.Name = 'a', 'b', 'c', 'g' "
                                  "function names(n) local t = '' for i = 0, #n.Children - 1 do "
                                  "t = t .. n.Children[i].Name end return t end ";
    const std::tuple<const char*, const char*> rows[] = {
        {"return s:insertChild(g, -1), g:insertChild(a, -1), g:insertChild(b, 0), g:insertChild(c, 2), names(g)",
         "true true true false ba"},
        {"g.Children:insert(0, a) g.Children:insert(1, b) g.Children:insert(0, c) return names(g)", "cab"},
        {"g:insertChild(a, -1) g:insertChild(b, -1) g.Children:remove(0) return names(g)", "b"},
        {"g:insertChild(a, -1) g.Children[0] = b return names(g), tostring(a.Name)", "b nil"},
        {"s:insertChild(g, -1) g:insertChild(a, -1) s:insertChild(a, -1) return names(g), names(s)", "ga"},
        {"g:insertChild(a, -1) return g:insertChild(g, -1), a:insertChild(g, -1), g:insertChild(s, -1)",
         "false false false"},
        {"s:insertChild(g, -1) g:insertChild(a, -1) return s:find('a').Name, s:getChildByName('a')", "a"},
        {"for _, n in ipairs{a, b, c} do g:insertChild(n, -1) end "
         "while #g.Children > 0 do g.Children[0]:destroy() end return #g.Children, tostring(c.Name)",
         "0 nil"},
    };
    for (const auto& [chunk, expected] : rows) {
        const std::string read = run(std::string(cTree) + chunk);
        EXPECT_EQ(expected, read.substr(0, std::string(expected).size())) << chunk;
    }
}

TEST_F(Ky2DScriptTest, AScriptMayRemoveWhatItWalks) {
    bindClasses();
    constexpr const char* cWalk = "local s = Ky2DScene() for i = 1, 50 do local g = Ky2DGroup() s:insertChild(g, -1) "
                                  "g:insertChild(Ky2DRect(), -1) end "
                                  "local children, steps = s.Children, 0 for i = 0, 200 do "
                                  "local ok, n = pcall(function() return children[i] end) "
                                  "if ok and n then n:setZValue(i) local _ = n.Bound n:destroy() steps = steps + 1 end "
                                  "end return steps, #children ";
    EXPECT_EQ("25 25", run(cWalk));
    EXPECT_EQ("0", run("local s = Ky2DScene() local g = Ky2DGroup() s:insertChild(g, -1) local list = s.Children "
                       "s:destroy() local ok = pcall(function() return #list end) return ok and 'alive' or 0"));
}

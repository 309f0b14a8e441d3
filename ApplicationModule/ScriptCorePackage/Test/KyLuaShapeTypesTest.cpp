// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyLuaTestFixture.h"

#include "KyBox.h"
#include "KyColor.h"
#include "KyDateTime.h"
#include "KyDynamicObject.h"
#include "KyIntersectionPoint.h"
#include "KyMat4.h"
#include "KyPlane.h"
#include "KyRect.h"
#include "KyURL.h"
#include "KyVolume.h"
#include "KyWayPoint.h"

namespace {

class KyLuaShapeTypesTest : public KyLuaTestFixture {
protected:
    void SetUp() override {
        KyLuaTestFixture::SetUp();
        // Calls change on a value and shows its results and what has become of it.
        run("function after(value, change) local result = {change(value)} for i = 1, #result do "
            "result[i] = tostring(result[i]) end result[#result + 1] = tostring(value) "
            "return table.concat(result, ', ') end");
        run("level, upright = Plane(Vec3(0, 1, 0), 2), Plane(Vec3(1, 0, 0), 3) "
            "down, up = Ray(Vec3(1, 5, 1), Vec3(0, -1, 0)), Ray(Vec3(1, 5, 1), Vec3(0, 1, 0)) "
            "square, offset, far = Rect(0, 0, 2, 2), Rect(1, 1, 5, 5), Rect(7, 7, 1, 1) "
            "box = Box(Vec3(1, 0, 0), Quat(), Vec3(2, 2, 2)) "
            "cube, other = Volume(Vec3(), Vec3(2, 2, 2)), Volume(Vec3(1, 1, 1), Vec3(3, 3, 3))");
    }
};

TEST_F(KyLuaShapeTypesTest, PlanesMeasureAndMeet) {
    expectTexts({
        {"Plane(), level, Planed(Vec3d(5, 2, 5), Vec3d(0, 1, 0))", "0 0 1 0, 0 1 0 2, 0 1 0 2"},
        {"Planei(Vec3i(0, 1, 0), 2.9), Planei(Vec3i(0, 1, 0), 0/0)", "0 1 0 2, 0 1 0 0"},
        {"Plane(Vec3(0, 2, 0), 4):getDistanceTo(Vec3(5, 3, 5))", "1"},
        {"level:projectPoint(Vec3(5, 3, 5)), Plane(Vec3(), 2):projectPoint(Vec3(5, 3, 5))", "5 2 5, 5 3 5"},
        {"after(Vec3(), function(p) return Planei(Vec3i(0, 1, 0), 2):intersectsRay(down, p) end)", "true, 1 2 1"},
        {"after(Vec3(), function(p) return level:intersectsRay(up, p) end)", "false, 0 0 0"},
        {"after(Vec3(), function() local line = Ray() return level:intersectsPlane(upright, line), line.origin end)",
         "true, 3 2 0, 0 0 0"},
        {"level:intersectsPlane(Plane(Vec3(0, 1, 0), 3), Ray())", "false"},
        {"Planef(Vec3f(0, 1, 0), 2):intersectsRay(Rayf(Vec3f(1, 5, 1), Vec3f(0, -1, 0))), level:intersectsRay(up)",
         "1 2 1, nil"},
        {"Planei(Vec3i(0, 1, 0), 2):intersectsPlane(Planei(Vec3i(1, 0, 0), 3)).origin", "3 2 0"},
        {"Plane():intersectsPlane(Plane()), Plane() == Plane(), Plane() == Planef()", "nil, true, false"},
        {"after(Plane(), function(p) p.normal.x = 7 p.distance = 3 end)", "7 0 1 3"},
    });
}

TEST_F(KyLuaShapeTypesTest, RectanglesSpanTheirSize) {
    expectTexts({
        {"Rect(), Rect(1, 2, 3.5, 4), Rect(Vec2(1, 2), Vec2(3, 4))", "0 0 0 0, 1 2 3.5 4, 1 2 3 4"},
        {"Recti(1.9, -1.9, 3, 4), Recti(Vec2i(1, 2), Vec2i(3, 4)):getSize()", "1 -1 3 4, 3 4"},
        {"Recti(0/0, 1e300, -1e300, 1/0)", "0 2147483647 -2147483648 2147483647"},
        {"Rect(0/0, 0, 1, 1) == Rect(0/0, 0, 1, 1), Rect(1, 2, 3, 4) == Recti(1, 2, 3, 4)", "false, false"},
        {"Rect(1, 2, 3, 4).width, Rect(1, 2, 3, 4).height, Rect().worldToLocal", "3, 4, nil"},
        {"after(Rect(), function(r) r.width = 2 r.height = 3 r.origin = Vec2(4, 5) r.origin.x = 6 end)", "6 5 2 3"},
        {"after(Recti(), function(r) r.width = 2.9 r.height = 0/0 r.origin.x = -1e300 end)", "-2147483648 0 2 0"},
        {"after(Rect(1, 2, 3, 4), function(r) r:setWidth(5) r:setHeight(6) return r:getWidth(), r:getHeight() end)",
         "5, 6, 1 2 5 6"},
        {"after(Rect(), function(r) r:setSize(Vec2(2, 3)) return r:getCenter(), r:getRadius()^2, r:getArea() end)",
         "1 1.5, 3.25, 6, 0 0 2 3"},
        {"after(Rect(), function(r) r:setMinMax(Vec2(3, 4), Vec2(1, 2)) end)", "1 2 2 2"},
        {"after(Rect(0, 0, 2, 2), function(r) r:translate(Vec2(1, 1)) r:scale(2) end)", "0 0 4 4"},
        {"after(Rect(0, 0, 2, 2), function(r) r:merge(Rect(4, 4, 1, 1)) r:merge(Rect()) end)", "0 0 5 5"},
        {"after(Rect(), function(r) return square:getIntersects(offset, r) end)", "true, 1 1 1 1"},
        {"after(Rect(), function(r) return square:getIntersects(far, r) end)", "false, 0 0 0 0"},
        {"square:getIntersects(offset), Recti(0, 0, 2, 2):getIntersects(Recti(7, 7, 1, 1))", "1 1 1 1, nil"},
        {"square:contains(Vec2(1, 1)), square:intersects(Rect(2, 2, 1, 1)), square:intersects(far)",
         "true, true, false"},
    });
}

TEST_F(KyLuaShapeTypesTest, BoxesHaveTheirOwnFrame) {
    expectTexts({
        {"Box(), Box(Vec3(0, 0, 0), Vec3(2, 4, 6))", "null, 1 2 3 0 0 0 1 2 4 6"},
        {"Box() == Box(), Box() == Volume(), box:getAxis(Box.eZ)", "true, false, 0 0 1"},
        {"Box.eX .. Box.eY .. Box.eZ, box:worldToLocal(Vec3(1, 0, 0)), box:localToWorld(Vec3(1, 0, 0))",
         "012, 0 0 0, 2 0 0"},
        {"box:frameToFrame(Box(Vec3(0, 1, 0), Quat(), Vec3(2, 2, 2)), Vec3())", "1 -1 0"},
        {"after(Box(), function(b) b:setPoint(Vec3(1, 2, 3)) return b:isPoint(), b:isFinite(), b:getCenter() end)",
         "true, true, 1 2 3, 1 2 3 0 0 0 1 0 0 0"},
        {"after(Box(), function(b) b:setCenter(Vec3(1, 2, 3)) b:setWidth(4) b:setHeight(5) b:setLength(6) return "
         "b:getWidth(), b:getHeight(), b:getLength(), b:getVolume(), b:getArea() end)",
         "4, 5, 6, 120, 148, 1 2 3 0 0 0 1 4 5 6"},
        {"after(Box(), function(b) b:setMinMax(Vec3(2, 2, 2), Vec3()) b:translate(Vec3(1, 0, 0)) b:scale(3) return "
         "b:getSize(), b:getRect() end)",
         "6 6 6, -1 -2 6 6, 2 1 1 0 0 0 1 6 6 6"},
        {"after(Box(Vec3(), Vec3(2, 2, 2)), function(b) b:merge(Box(Vec3(), Vec3(4, 2, 2))) end)",
         "2 1 1 0 0 0 1 4 2 2"},
        {"after(Box(), function(b) return Box(Vec3(), Vec3(2, 2, 2)):getIntersects(Box(Vec3(1, 1, 1), Vec3(3, 3, 3)), "
         "b) end)",
         "true, 1.5 1.5 1.5 0 0 0 1 1 1 1"},
        {"Box(Vec3(), Vec3(2, 2, 2)):contains(Box(Vec3(), Vec3(1, 1, 1)))", "true"},
        {"after(Box(), function(b) b:setOrientation(Quat(0, 0, 1, 0)) return b:getOrientation() end)",
         "0 0 1 0, 0 0 0 0 0 1 0 0 0 0"},
    });
}

TEST_F(KyLuaShapeTypesTest, VolumesAreAlignedToTheAxes) {
    expectTexts({
        {"Volume(), Volume(Vec3(2, 2, 2), Vec3(0, 0, 0)), Volume().localToWorld", "null, 0 0 0 2 2 2, nil"},
        {"Volumei(Vec3i(), Vec3i(2, 4, 6)):getSize(), Volumef(Vec3f(), Vec3f(2, 4, 6)):getCenter()", "2 4 6, 1 2 3"},
        {"Volume(Vec3(), Vec3(2, 4, 6)):getRect(), Volumei(Vec3i(), Vec3i(2, 4, 6)):getVolume()", "0 0 2 4, 48"},
        {"cube:contains(Vec3(1, 1, 3)), cube:contains(Volume()), cube:intersects(other)", "false, true, true"},
        {"after(Volume(Vec3(), Vec3(2, 2, 2)), function(v) v:setCenter(Vec3(5, 5, 5)) v:setLength(4) end)",
         "4 4 3 6 6 7"},
        {"after(Volumei(Vec3i(), Vec3i(2, 2, 2)), function(v) v:setWidth(4.9) v:scale(0/0) end)", "1 1 1 1 1 1"},
        {"after(Volume(), function(v) return cube:getIntersects(other, v) end)", "true, 1 1 1 2 2 2"},
        {"after(Volume(), function(v) v:merge(other) end), cube == Volumef(Vec3f(), Vec3f(2, 2, 2))",
         "1 1 1 3 3 3, false"},
        {"after(Volume(Vec3(), Vec3(1, 1, 1)), function(v) local s = v.state v.state = Volume.eInfinite return s end)",
         "1, infinite"},
    });
}

TEST_F(KyLuaShapeTypesTest, BoundsAreNullFiniteOrInfinite) {
    for (const std::string name : {"Rectd", "Rectf", "Boxd", "Boxf", "Volumed", "Volumef", "Recti", "Volumei"}) {
        const std::string size = name.starts_with("Rect") ? "Vec2" : "Vec3";
        run("Bound = " + name + " bound = Bound() Size = " + size + name.back());
        expectTrue({"bound:isNull() and bound:getType() == Bound.eNull",
                    "after(bound, function(b) b:translate(Size()) b:scale(2) end) == tostring(bound)", "bound:isNull()",
                    "(bound:setFinite() or bound):isFinite() and bound:isPoint()",
                    "(bound:setInfinite() or bound):isInfinite() and bound:getType() == Bound.eInfinite"});
        EXPECT_EQ(eval("bound, bound:getWidth() >= 2147483647 and bound:getRadius()"), "infinite, inf") << name;
        expectTrue({"(bound:merge(Bound()) or bound):isInfinite()",
                    "(bound:setNull() or bound):isNull() and bound == Bound()",
                    "bound:getWidth() + bound:getHeight() + bound:getRadius() + bound:getArea() == 0"});
    }
}

TEST_F(KyLuaShapeTypesTest, MisuseIsAnError) {
    expectErrors("No matching overload found",
                 {"Plane(nil, 2)", "Plane():intersectsRay(Ray(), nil)", "Rect('1', '2', '3', '4')",
                  "Rect():setWidth(nil)", "Rect().origin = Vec3()", "Rect():merge(Rectf())",
                  "Box().merge(nil, Box())"});
    expectErrors("axis out of range",
                 {"Box():getAxis(3)", "Box():getAxis(-1)", "Box():getAxis(0/0)", "Box():getAxis(0.5)"});
    expectErrors(
        {{"Volume().state = 3", "state out of range"}, {"return Plane() + Plane()", "no __add operator defined"}});
}

template <class... Types>
std::vector<KyField> toFields(const Types&... values) {
    return {KyField(values)...};
}

/// One value of every class that fields hold, none of them the class's first value.
std::vector<KyField> makeValues() {
    const KyURL url("http://user@host:8080/a%20b?q#f");
    const KyWayPointd station(KyVec3d(1, 2, 3), 4);
    KyIntersectionPointd meeting;
    meeting.distance = 0.1;
    KyVolumed everything;
    everything.setInfinite();
    return toFields(KyVec2i(1, -2), KyVec2f(0.1f, 2), KyVec2d(0.1, 2), KyVec3i(1, -2, 3), KyVec3f(0.1f, 2, 3),
                    KyVec3d(0.1, 2, 3), KyColor(0.1f, 2, 3, 4), KyQuatf(0.1f, 2, 3, 4), KyQuatd(0.1, 2, 3, 4),
                    KyMat4f::fromTranslation(KyVec3f(0.1f, 2, 3)), KyMat4d::fromTranslation(KyVec3d(0.1, 2, 3)),
                    KyRecti(1, -2, 3, 4), KyRectf(0.1f, 2, 3, 4), KyRectd(0.1, 2, 3, 4),
                    KyBoxf(KyVec3f(), KyVec3f(0.1f, 2, 3)), KyBoxd(KyVec3d(), KyQuatd(0, 0, 1, 0), KyVec3d(0.1, 2, 3)),
                    KyVolumei(KyVec3i(), KyVec3i(1, 2, 3)), KyVolumef(KyVec3f(), KyVec3f(0.1f, 2, 3)), everything,
                    KyDate(-44, 3, 15), KyTime(45015.123456), KyDateTime(KyDate(2024, 2, 29), KyTime(-0.1)), url,
                    KyRayf(KyVec3f(0.1f, 2, 3), KyVec3f(4, 5, 6)), KyRayd(KyVec3d(0.1, 2, 3), KyVec3d(4, 5, 6)),
                    KyWayPointf(station), station, KyIntersectionPointf(meeting), meeting,
                    KyPlanei(KyVec3i(0, 1, 0), 2), KyPlanef(KyVec3f(0, 1, 0), 0.1f), KyPlaned(KyVec3d(0, 1, 0), 0.1));
}

TEST_F(KyLuaShapeTypesTest, EveryValueCrossesUnchangedAsAFieldAndThroughAnAttribute) {
    KyDynamicObject object;
    object.addAttribute("Holder", KyField(0));
    engine().bindInstance(&object, "object");
    lua_State* state = engine().editLuaState();
    KyLuaBinder binder(state);
    for (const KyField& value : makeValues()) {
        const std::string& name = value.getFieldType().getName();
        binder.pushField(value);
        EXPECT_EQ(lua_type(state, 1), LUA_TUSERDATA) << name;
        engine().setLuaVariable("shown", value);
        EXPECT_EQ(eval("shown"), value.toString()) << name;
        EXPECT_EQ(binder.checkField(1), value) << name;
        EXPECT_EQ(binder.checkField(1, value.getTypeInfo()), value) << name;
        binder.cleanStack();
        const KyAttributeInterface* attribute = object.addAttribute("Value", value);
        EXPECT_EQ(run("copy = object.Value"), "") << name;
        attribute->setValue(object, KyField::makeDefault(value.getKind()));
        EXPECT_EQ(eval("object.Value == copy"), "false") << name;
        EXPECT_EQ(run("object.Value = copy"), "") << name;
        KyField kept;
        EXPECT_TRUE(attribute->getValue(object, kept)) << name;
        EXPECT_EQ(kept, value) << name;
        EXPECT_EQ(eval("object.Value == copy"), "true") << name;
        object.removeAttribute("Value");
    }
    engine().unbindInstance(&object);
}

TEST_F(KyLuaShapeTypesTest, ValuesArePushedByTheirCppType) {
    lua_State* state = engine().editLuaState();
    KyLuaBinder binder(state);
    const auto push = [&](const auto&... values) {
        (binder.cpp_to_lua(values), ...);
        (binder.cpp_to_lua(boost::any(values)), ...);
        int index = 0;
        for (int round = 0; round < 2; ++round)
            for (const KyField& value : toFields(values...))
                EXPECT_EQ(binder.checkField(++index), value) << index;
        EXPECT_EQ(lua_gettop(state), index);
    };
    push(KyRectd(1, 2, 3, 4), KyBoxf(), KyVolumei(), KyPlaned(), KyPlanei(), KyRayf(), KyDate(2024, 1, 2));
    binder.cleanStack();
}

} // namespace

// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyLuaTestFixture.h"

#include "KyEasing.h"
#include "KyVec3.h"

namespace {

class KyLuaVectorTypesTest : public KyLuaTestFixture {};

constexpr const char* cNoMatch = "No matching overload found";

TEST_F(KyLuaVectorTypesTest, VectorsAreMadeFromNothingNumbersAndOtherVectors) {
    expectTexts({{"Vec3(), Vec3d(1, 2.5, -3), Vec3f(0.1, 2, 3)", "0 0 0, 1 2.5 -3, 0.1 2 3"},
                 {"Vec3i(1.9, -1.9, 3), Vec3i(Vec3d(1.9, 2e10, -2e10))", "1 -1 3, 1 2147483647 -2147483648"},
                 {"Vec3d(Vec3i(1, 2, 3)), Vec3f(Vec3f(1, 2, 3))", "1 2 3, 1 2 3"},
                 {"Vec2(1234567, 1e-5), Vec2i(0/0, 1/0)", "1.23457e+06 1e-05, 0 2147483647"},
                 {"Vec2f(Vec2i(1, 2)), Vec2i(Vec2d(1.5, 2.5))", "1 2, 1 2"}});
    expectErrors(cNoMatch, {"Vec3(1, 2)", "Vec3().dot({}, Vec3())", "Vec3():dot()"});
    expectErrors("candidates:\nvoid __init(", {"return Vec3('1', '2', '3')"});
}

TEST_F(KyLuaVectorTypesTest, VectorsCalculate) {
    expectTexts({{"Vec3(1, 2, 3) + Vec3(1, 1, 1), Vec3(1, 2, 3) - Vec3(1, 1, 1)", "2 3 4, 0 1 2"},
                 {"Vec3(1, 2, 3) * 2, 2 * Vec3(1, 2, 3), Vec3(2, 4, 6) / 2", "2 4 6, 2 4 6, 1 2 3"},
                 {"-Vec3(1, 2, 3), Vec3(1, 2, 3) / 0", "-1 -2 -3, inf inf inf"},
                 {"Vec2f(1, 2) + Vec2f(1, 1) * 3 - Vec2f(1, 1) / 2", "3.5 4.5"},
                 {"Vec3(1, 0, 0):cross(Vec3(0, 1, 0)), Vec2(1, 0):cross(Vec2(0, 1))", "0 0 1, 1"},
                 {"Vec3(1, 2, 3):dot(Vec3(4, 5, 6)), Vec3(2, 3, 6):length(), Vec2i(3, 4):length()", "32, 7, 5"},
                 {"Vec3():isNull(), Vec2(0/0, -1/0):isNull()", "true, false"}});
    expectErrors(cNoMatch, {"return Vec3(1, 2, 3) + 1", "return Vec3(1, 2, 3) + nil", "return 1 + Vec3(1, 2, 3)",
                            "return 1 / Vec3(1, 2, 3)", "return Vec3(1, 2, 3) * Vec3(1, 2, 3)",
                            "return (Vec3(1, 2, 3) * 2) + Vec2(1, 2)", "return (Vec3(1, 2, 3) + Vec3()) * '2'"});
    expectErrors(
        {{"return Vec3(1, 2, 3) + Vec3f(1, 2, 3)", "Vec3d const&"}, {"return Vec3(1, 2, 3) < Vec3(1, 2, 4)", "__lt"}});
}

TEST_F(KyLuaVectorTypesTest, VectorsOfIntegersStayInTheirRange) {
    expectTexts({{"Vec3i(2147483647, -2147483648, 1) + Vec3i(1, -1, 1)", "2147483647 -2147483648 2"},
                 {"Vec3i(2147483647, 0, 0) - Vec3i(-1, 0, 0)", "2147483647 0 0"},
                 {"Vec3i(5, 6, 7) * 0.5, Vec3i(5, 6, 7) * (0/0)", "2 3 3, 0 0 0"},
                 {"Vec2i(5, 6) * 1e300, Vec2i(5, 6) / 0", "2147483647 2147483647, 0 0"},
                 {"-Vec2i(-2147483648, 1)", "2147483647 -1"},
                 {"Vec3i(2147483647, 2147483647, 0):cross(Vec3i(2147483647, -2147483647, 1))",
                  "2147483647 -2147483647 -2147483648"}});
}

TEST_F(KyLuaVectorTypesTest, ComponentsAreReadAndWrittenAndNormalizingLeavesANullVectorAlone) {
    expectRuns("v = Vec3(1, 2, 3) v.x, v.y, v.z = 7, v.z, v.y w = Vec2i(1, 2) w.x = 1e99 w.y = 0/0 "
               "a, b, c = Vec3(0, 3, 4), Vec3(), Vec2(1/0, 1)");
    expectTexts({{"v, w", "7 3 2, 2147483647 0"},
                 {"a:normalize(), b:normalize(), c:normalize()", "true, false, false"},
                 {"a, b, c", "0 0.6 0.8, 0 0 0, inf 1"}});
    expectErrors({{"v.x = 'a'", "property 'x'(Vec3d&"}, {"v.x = nil", cNoMatch}});
}

TEST_F(KyLuaVectorTypesTest, ClassesCompareEqualWithinThemselvesOnly) {
    expectTrue({"Vec3(1, 2, 3) == Vec3d(1, 2, 3)", "Vec3(1, 2, 3) ~= Vec3(1, 2, 4)", "Vec2(1, 2) == Vec2(1, 2)",
                "Ray(Vec3(1, 2, 3), Vec3()).origin == Vec3(0, 2, 2) + Vec3(1, 0, 1)", "Ray() == Ray()",
                "IntersectionPoint() == IntersectionPoint()", "Quat() == Quat(0, 0, 0, 1)",
                "IntVector({1, 2}) == IntVector({1, 2})"});
    expectFalse({"Vec3(1, 2, 3) == Vec3(1, 2, 4)", "Vec3d(1, 2, 3) == Vec3f(1, 2, 3)", "Color() == Vec3()",
                 "Vec3() == Color()", "Vec3() == nil", "Vec3() == 0", "Vec3(0/0, 0, 0) == Vec3(0/0, 0, 0)",
                 "WayPoint(Vec3(), 1) == WayPoint(Vec3(), 2)", "Matrix() == Matrixf()"});
}

TEST_F(KyLuaVectorTypesTest, OperatorsWhoseLeftSideIsNoValueAreErrorsToo) {
    expectErrors({{"return 2 * Plane()", "class Planed: no __mul operator defined."},
                  {"return {} + Plane()", "class Planed: no __add operator defined."},
                  {"return nil - URL()", "class URL: no __sub operator defined."},
                  {"return 2 ^ Vec3()", "class Vec3d: no __pow operator defined."},
                  {"return 2 % Vec3()", "class Vec3d: no __mod operator defined."},
                  {"return 2 / Type.find('KyObject')", "const class Type: no __div operator defined."},
                  {"return createKyObject('LuaTestCounted') + Plane()", "class Planed: no __add operator defined."},
                  {"return {} .. URL()", "class URL: no __concat operator defined."},
                  {"return 'a' .. Timer()", "class Timer: no __concat operator defined."},
                  {"return Vec3() .. nil", "class Vec3d: no __concat operator defined."}});
}

TEST_F(KyLuaVectorTypesTest, ValuesJoinTextsAndAnOperatorOfTheObjectItselfGoesFirst) {
    expectTexts({{"'at ' .. Vec3(1, 2, 3) .. ' of ' .. URL('a') .. 5", "at 1 2 3 of a5"},
                 {"Vec3(1, 2, 3) .. Date(2024, 2, 29), 4 .. Vec2(1, 2)", "1 2 32024-02-29, 41 2"},
                 {"'type ' .. Type.find('KyObject')", "type KyObject"}});
    expectRuns("v = Vec3(1, 2, 3) + Vec3() v.__add = function() return 'own' end v.__div = v.__add");
    expectTexts({{"v + Vec3(), v / 2, Vec3() + v, v - Vec3()", "own, own, 1 2 3, 1 2 3"}});
}

TEST_F(KyLuaVectorTypesTest, ScriptsDeriveClassesAndConstructorsRefuseWhatTheyDidNotMake) {
    expectRuns("class 'Point' (Vec3) function Point:__init(x) Vec3.__init(self, x, 0, 0) self.label = 'p' end "
               "p = Point(4) bare = Vec3() class 'Bare' (Vec3) function Bare:__init() end b = Bare()");
    expectTexts({{"p.x, p.label, p:length(), p + Vec3(1, 1, 1), Vec3(1, 1, 1) * 2 + p", "4, p, 4, 5 1 1, 6 2 2"}});
    expectErrors(cNoMatch, {"return b.x", "return b + b"});
    expectErrors("constructor called without an object",
                 {"Vec3.__init({}, 1, 2, 3)", "Vec3.__init(io.stdout, 1, 2, 3)", "Vec3.__init(Color(1, 0, 0), 1, 2, 3)",
                  "class 'Tint' (Color) function Tint:__init() Vec3.__init(self) end Tint()"});
    expectErrors("constructor called twice",
                 {"local v = Vec3(1, 2, 3) v:__init(4, 5, 6)", "local v = Vec3(1, 2, 3) + Vec3() v:__init()"});
}

TEST_F(KyLuaVectorTypesTest, PartsThatAreValuesAreLiveAndOutliveTheirWhole) {
    expectRuns("ray = Ray(Vec3(1, 2, 3), Vec3(0, 0, 1)) ray.origin.x = 7");
    EXPECT_EQ(eval("ray.origin"), "7 2 3");
    expectRuns("origin = ray.origin ray.origin = Vec3(4, 5, 6)");
    EXPECT_EQ(eval("origin"), "4 5 6");
    expectRuns("ray = nil collectgarbage() collectgarbage() "
               "local junk = {} for i = 1, 1000 do junk[i] = Ray() end origin.y = 8");
    EXPECT_EQ(eval("origin"), "4 8 6");
    expectRuns("origins = {} for i = 1, 500 do origins[i] = Ray(Vec3(i, 0, 0), Vec3()).origin end collectgarbage() "
               "for i = 1, 500 do assert(origins[i].x == i and origins[i] == Vec3(i, 0, 0)) end");
    expectRuns("p = WayPoint(Vec3(1, 2, 3), 4) p.cubicVelocity.z = 5 p.time = p.time + 1 "
               "h = IntersectionPointf() h.origin.x, h.position.y, h.normal.z, h.distance = 1, 2, 3, 4");
    EXPECT_EQ(eval("p, h"), "1 2 3 5 0 0 5, 1 0 0 0 2 0 0 0 3 4");
    expectErrors(cNoMatch, {"Ray().origin = Vec3f()", "Rayf().origin = Vec3d()", "return Ray(Vec3f(), Vec3f())"});
}

TEST_F(KyLuaVectorTypesTest, EasingHasItsKindsInOrderAndRefusesOthers) {
    for (int i = 0; i < KyEasing::eNbKinds; ++i)
        EXPECT_EQ(eval(std::string("Easing.") + KyEasing::getName(static_cast<KyEasing::Kind>(i))), std::to_string(i));
    expectTexts({{"Easing.compute(Easing.QuadIn, 0.5), Easing.compute(Easing.LinearOut, 0.5)", "0.25, 0.5"},
                 {"Easing.compute(Easing.SineInOut, 2), Easing.compute(Easing.CubicIn, 0/0)", "1, 0"}});
    expectErrors("easing out of range", {"Easing.compute(-1, 0.5)", "Easing.compute(1.5, 0.5)",
                                         "Easing.compute(0/0, 0.5)", "Easing.compute(4294967296, 0.5)"});
    expectErrors({{"Easing.compute(33, 0.5)", "easing out of range, 33 given, valid is [0,32]"},
                  {"Easing.compute('0', 0.5)", cNoMatch},
                  {"Easing()", "Easing cannot be constructed"}});
}

TEST_F(KyLuaVectorTypesTest, IntVectorsCheckTheirIndicesAndBecomeListsOfIntegers) {
    expectRuns("v = IntVector({3, 4.7}) v:push_back(5) v:push_back(1e99) v:set(0, -1)");
    expectTexts({{"v, v:size(), v:get(1), IntVector(v) == v", "-1 4 5 2147483647, 4, 4, true"},
                 {"IntVector(), IntVector({}):size()", ", 0"}});
    expectErrors("index out of range", {"v:get(-1)", "v:set(4, 1)", "v:set(0.5, 1)", "v:get(0/0)", "v:get(1/0)"});
    expectErrors({{"v:get(4)", "index out of range, 4 given, valid is [0,3]"},
                  {"IntVector():get(0)", "index out of range, 0 given, it is empty"},
                  {"v:set(0, 'a')", cNoMatch},
                  {"IntVector({1, 'a'})", "table of numbers expected"},
                  {"IntVector(3)", cNoMatch}});
    expectRuns("v:clear()");
    EXPECT_EQ(eval("v:size()"), "0");
    EXPECT_EQ(evalField("IntVector({1, 2})"), KyField(std::vector<int>{1, 2}));
    engine().setLuaVariable("list", KyField(std::vector<int>{1, 2, 3}));
    EXPECT_EQ(eval("IntVector(list)"), "1 2 3");
}

TEST_F(KyLuaVectorTypesTest, QuaternionsRotate) {
    expectRuns("q = Quat(Vec3(0, 0, 2), math.pi) e = Quat() e:setEulerAngles(Vec3(0, 0, 1)) "
               "f = Quat() f:setFrontDirectionAndTwist(Vec3(0, 0, -1), 0) a = Quat() a:setAxisAngle(Vec3(1, 0, 0), 1) "
               "g = Quat() g:setEulerAngles(0, 0, 1)");
    expectTexts({{"Quat(), f, Quat():frontDirection()", "0 0 0 1, 0 0 0 1, 0 0 -1"},
                 {"q.z, q:axis(), Quat(0, 3, 0, 4):length(), Quatf(q):length()", "1, 0 0 1, 5, 1"},
                 {"Quat(1, 2, 3, 4) + Quat(1, 1, 1, 1) - Quat(0, 0, 0, 5)", "2 3 4 0"},
                 {"a:angle(), Quat():slerp(a, 0.5):angle()", "1, 0.5"},
                 {"Quat(0, 0, 0, 0):getInverse(), Quat(0, 0, 0, 0):rotate(Vec3(1, 2, 3))", "0 0 0 1, 1 2 3"}});
    expectTrue({"q:angle() == math.pi", "(q:rotate(Vec3(1, 0, 0)) - Vec3(-1, 0, 0)):length() < 1e-12",
                "(q * q:getInverse()):angle() < 1e-6", "Quat():getMatrix() == Matrix()", "g == e",
                "(e:getEulerAngles() - Vec3(0, 0, 1)):length() < 1e-12"});
    expectErrors(cNoMatch, {"return q * 2", "return q:rotate(Vec3f())", "return Quat(1, 2, 3)"});
}

TEST_F(KyLuaVectorTypesTest, MatricesAreReadRowByRowAndCheckIndicesAndTables) {
    expectRuns(
        "m = Matrix({1, 0, 0, 5, 0, 2, 0, 6, 0, 0, 4, 7, 0, 0, 0, 1}) t = Matrix(m) t:transpose() "
        "i = Matrix(m) s = Matrix({0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0}) c = Matrixf(m) c:identity()");
    expectTexts({{"m, i:invert(), i * m == Matrix()", "1 0 0 5 0 2 0 6 0 0 4 7 0 0 0 1, true, true"},
                 {"m:get(0, 3), t:get(3, 0), m:determinant(), m:translation()", "5, 5, 8, 5 6 7"},
                 {"s:invert(), s:get(3, 3), c == Matrixf()", "false, 0, true"},
                 {"m * Vec3(1, 1, 1), Matrix(Quat(), Vec3(1, 2, 3)):translation()", "6 8 11, 1 2 3"},
                 {"Matrix(Quat(Vec3(0, 0, 1), 1), Vec3()):rotation():angle()", "1"}});
    expectRuns("m:set(1, 2, 9)");
    EXPECT_EQ(eval("m:get(1, 2)"), "9");
    expectErrors({{"Matrix():get(4, 0)", "row out of range, 4 given, valid is [0,3]"},
                  {"Matrix():get(0, -1)", "column out of range"},
                  {"Matrix():set(0/0, 0, 1)", "row out of range"},
                  {"Matrix():set(0, 0.5, 1)", "column out of range"},
                  {"Matrix({1, 2, 3})", "table of 16 numbers expected"},
                  {"Matrix({1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, true})", "table of numbers expected"}});
    expectErrors(cNoMatch, {"return Matrix() * Matrixf()", "return Matrix() * 2"});
}

TEST_F(KyLuaVectorTypesTest, AliasesAreTheClassesOfDoubles) {
    for (const std::string name :
         {"Vec2", "Vec3", "Ray", "WayPoint", "IntersectionPoint", "Matrix", "Quat", "Plane", "Rect", "Box", "Volume"})
        expectTrue({name + " == " + name + "d and " + name + " ~= " + name + "f"});
}

TEST_F(KyLuaVectorTypesTest, ManyValuesComeAndGoAndFinalizersMayMeetFinishedOnes) {
    expectRuns("collectgarbage() local before = collectgarbage('count') "
               "for i = 1, 20000 do local v = Vec3(i, 0, 0) * 2 + Vec3(1, 1, 1) assert(v.x == 2 * i + 1) "
               "local u = URL('http://host/' .. i):getDirectory() end "
               "collectgarbage() collectgarbage() assert(collectgarbage('count') < before + 200)");
    expectRuns("met = 0 local function make(v) local p = newproxy(true) getmetatable(p).__gc = function() "
               "met = met + 1 pcall(function() return v.x + (v + v).x end) end end "
               "for i = 1, 100 do make(Vec3(i, 0, 0)) local v = Vec3(i, 0, 0) make(v) make(URL('a')) end "
               "collectgarbage() collectgarbage()");
    EXPECT_EQ(eval("met"), "300");
}

} // namespace

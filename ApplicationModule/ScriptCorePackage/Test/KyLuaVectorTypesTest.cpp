// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyLuaTestFixture.h"

#include "KyEasing.h"
#include "KyMat4.h"
#include "KyQuat.h"
#include "KyVec3.h"

class KyLuaVectorTypesTest : public KyLuaTestFixture {};

TEST_F(KyLuaVectorTypesTest, VectorsAreMadeFromNothingNumbersAndOtherVectors) {
    expectTexts({{"Vec3()", "0 0 0"},
                 {"Vec3d(1, 2.5, -3)", "1 2.5 -3"},
                 {"Vec3f(0.1, 2, 3)", "0.1 2 3"},
                 {"Vec3i(1.9, -1.9, 3)", "1 -1 3"},
                 {"Vec3i(Vec3d(1.9, 2e10, -2e10))", "1 2147483647 -2147483648"},
                 {"Vec3d(Vec3i(1, 2, 3))", "1 2 3"},
                 {"Vec3f(Vec3f(1, 2, 3))", "1 2 3"},
                 {"Vec2(1, 2)", "1 2"},
                 {"Vec2i(0/0, 1/0)", "0 2147483647"},
                 {"Vec2f(Vec2i(1, 2))", "1 2"},
                 {"Vec2i(Vec2d(1.5, 2.5))", "1 2"},
                 {"Vec2(1234567, 1e-5)", "1.23457e+06 1e-05"},
                 {"Vec2(0/0, -1/0):isNull()", "false"}});
}

TEST_F(KyLuaVectorTypesTest, VectorsCalculate) {
    expectTexts({{"Vec3(1, 2, 3) + Vec3(1, 1, 1)", "2 3 4"},
                 {"Vec3(1, 2, 3) - Vec3(1, 1, 1)", "0 1 2"},
                 {"Vec3(1, 2, 3) * 2", "2 4 6"},
                 {"2 * Vec3(1, 2, 3)", "2 4 6"},
                 {"Vec3(2, 4, 6) / 2", "1 2 3"},
                 {"-Vec3(1, 2, 3)", "-1 -2 -3"},
                 {"Vec2f(1, 2) + Vec2f(1, 1) * 3 - Vec2f(1, 1) / 2", "3.5 4.5"},
                 {"Vec3(1, 0, 0):cross(Vec3(0, 1, 0))", "0 0 1"},
                 {"Vec2(1, 0):cross(Vec2(0, 1))", "1"},
                 {"Vec3(1, 2, 3):dot(Vec3(4, 5, 6))", "32"},
                 {"Vec3(2, 3, 6):length()", "7"},
                 {"Vec2i(3, 4):length()", "5"},
                 {"Vec3():isNull()", "true"},
                 {"Vec3(1, 2, 3) / 0", "inf inf inf"}});
}

TEST_F(KyLuaVectorTypesTest, VectorsOfIntegersStayInTheirRange) {
    expectTexts({{"Vec3i(2147483647, -2147483648, 1) + Vec3i(1, -1, 1)", "2147483647 -2147483648 2"},
                 {"Vec3i(2147483647, 0, 0) - Vec3i(-1, 0, 0)", "2147483647 0 0"},
                 {"Vec3i(5, 6, 7) * 0.5", "2 3 3"},
                 {"Vec3i(5, 6, 7) * (0/0)", "0 0 0"},
                 {"Vec2i(5, 6) * 1e300", "2147483647 2147483647"},
                 {"Vec2i(5, 6) / 0", "0 0"},
                 {"-Vec2i(-2147483648, 1)", "2147483647 -1"},
                 {"Vec3i(2147483647, 2147483647, 0):cross(Vec3i(2147483647, -2147483647, 1))",
                  "2147483647 -2147483647 -2147483648"}});
}

TEST_F(KyLuaVectorTypesTest, NormalizingChangesTheVectorAndLeavesANullOneAlone) {
    expectTexts({{"(function() v = Vec3(0, 3, 4) return v:normalize() end)()", "true"},
                 {"v", "0 0.6 0.8"},
                 {"(function() v = Vec3() return v:normalize() end)()", "false"},
                 {"v", "0 0 0"},
                 {"(function() v = Vec2(1/0, 1) return v:normalize() end)()", "false"},
                 {"v", "inf 1"}});
}

TEST_F(KyLuaVectorTypesTest, ComponentsAreReadAndWritten) {
    EXPECT_EQ(run("v = Vec3(1, 2, 3) v.x, v.y, v.z = 7, v.z, v.y"), "");
    EXPECT_EQ(eval("v"), "7 3 2");
    EXPECT_EQ(run("w = Vec2i(1, 2) w.x = 1e99 w.y = 0/0"), "");
    EXPECT_EQ(eval("w"), "2147483647 0");
    expectErrors({{"v.x = 'a'", "property 'x'(Vec3d&"}, {"v.x = nil", "No matching overload found"}});
}

TEST_F(KyLuaVectorTypesTest, ClassesCompareEqualWithinThemselvesOnly) {
    expectTexts({{"Vec3(1, 2, 3) == Vec3d(1, 2, 3)", "true"},
                 {"Vec3(1, 2, 3) == Vec3(1, 2, 4)", "false"},
                 {"Vec3(1, 2, 3) ~= Vec3(1, 2, 4)", "true"},
                 {"Vec3d(1, 2, 3) == Vec3f(1, 2, 3)", "false"},
                 {"Color() == Vec3()", "false"},
                 {"Vec3() == Color()", "false"},
                 {"Vec2(1, 2) == Vec2(1, 2)", "true"},
                 {"Vec3() == nil", "false"},
                 {"Vec3() == 0", "false"},
                 {"Vec3(0/0, 0, 0) == Vec3(0/0, 0, 0)", "false"},
                 {"Ray(Vec3(1, 2, 3), Vec3()).origin == Vec3(0, 2, 2) + Vec3(1, 0, 1)", "true"},
                 {"Ray() == Ray()", "true"},
                 {"WayPoint(Vec3(), 1) == WayPoint(Vec3(), 2)", "false"},
                 {"IntersectionPoint() == IntersectionPoint()", "true"},
                 {"Quat() == Quat(0, 0, 0, 1)", "true"},
                 {"Matrix() == Matrixf()", "false"},
                 {"IntVector({1, 2}) == IntVector({1, 2})", "true"}});
}

TEST_F(KyLuaVectorTypesTest, WrongArgumentsAreErrorsThatNameTheCandidates) {
    expectErrors({{"return Vec3(1, 2)", "No matching overload found, candidates:"},
                  {"return Vec3('1', '2', '3')", "candidates:\nvoid __init("},
                  {"return Vec3(1, 2, 3) + 1", "No matching overload found"},
                  {"return Vec3(1, 2, 3) + nil", "No matching overload found"},
                  {"return 1 + Vec3(1, 2, 3)", "No matching overload found"},
                  {"return Vec3(1, 2, 3) + Vec3f(1, 2, 3)", "Vec3d const&"},
                  {"return (Vec3(1, 2, 3) * 2) + Vec2(1, 2)", "No matching overload found"},
                  {"return Vec3(1, 2, 3) * Vec3(1, 2, 3)", "No matching overload found"},
                  {"return (Vec3(1, 2, 3) + Vec3()) * '2'", "No matching overload found"},
                  {"return 1 / Vec3(1, 2, 3)", "No matching overload found"},
                  {"return Vec3(1, 2, 3) < Vec3(1, 2, 4)", "__lt"},
                  {"return Vec3(1, 2, 3):dot()", "No matching overload found"},
                  {"return Vec3().dot({}, Vec3())", "No matching overload found"}});
}

TEST_F(KyLuaVectorTypesTest, OperatorsWhoseLeftSideIsNoValueAreErrorsToo) {
    expectErrors({{"return 2 * Plane()", "class Planed: no __mul operator defined."},
                  {"return -1 * Date()", "class Date: no __mul operator defined."},
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

TEST_F(KyLuaVectorTypesTest, ValuesJoinTexts) {
    expectTexts({{"'at ' .. Vec3(1, 2, 3) .. ' of ' .. URL('a') .. 5", "at 1 2 3 of a5"},
                 {"Vec3(1, 2, 3) .. Date(2024, 2, 29)", "1 2 32024-02-29"},
                 {"4 .. Vec2(1, 2)", "41 2"},
                 {"'type ' .. Type.find('KyObject')", "type KyObject"}});
}

TEST_F(KyLuaVectorTypesTest, AnOperatorOfTheObjectItselfGoesFirst) {
    EXPECT_EQ(run("v = Vec3(1, 2, 3) + Vec3() v.__add = function() return 'own' end v.__div = v.__add"), "");
    expectTexts({{"v + Vec3()", "own"}, {"v / 2", "own"}, {"Vec3() + v", "1 2 3"}, {"v - Vec3()", "1 2 3"}});
}

TEST_F(KyLuaVectorTypesTest, ConstructorsRefuseWhatTheyDidNotMake) {
    expectErrors({{"Vec3.__init({}, 1, 2, 3)", "constructor called without an object"},
                  {"Vec3.__init(io.stdout, 1, 2, 3)", "constructor called without an object"},
                  {"Vec3.__init(Color(1, 0, 0), 1, 2, 3)", "constructor called without an object"},
                  {"class 'Tint' (Color) function Tint:__init() Vec3.__init(self) end Tint()", "without an object"},
                  {"local v = Vec3(1, 2, 3) v:__init(4, 5, 6)", "constructor called twice"},
                  {"local v = Vec3(1, 2, 3) + Vec3() v:__init()", "constructor called twice"}});
}

TEST_F(KyLuaVectorTypesTest, ScriptsDeriveClasses) {
    EXPECT_EQ(run("class 'Point' (Vec3) function Point:__init(x) Vec3.__init(self, x, 0, 0) self.label = 'p' end "
                  "p = Point(4) bare = Vec3() class 'Bare' (Vec3) function Bare:__init() end b = Bare()"),
              "");
    expectTexts({{"p.x", "4"},
                 {"p.label", "p"},
                 {"p:length()", "4"},
                 {"p + Vec3(1, 1, 1)", "5 1 1"},
                 {"(Vec3(1, 1, 1) * 2) + p", "6 2 2"}});
    expectErrors({{"return b.x", "No matching overload found"}, {"return b + b", "No matching overload found"}});
}

TEST_F(KyLuaVectorTypesTest, PartsThatAreValuesAreLiveAndOutliveTheirWhole) {
    EXPECT_EQ(run("ray = Ray(Vec3(1, 2, 3), Vec3(0, 0, 1)) ray.origin.x = 7"), "");
    EXPECT_EQ(eval("ray.origin"), "7 2 3");
    EXPECT_EQ(run("origin = ray.origin ray.origin = Vec3(4, 5, 6)"), "");
    EXPECT_EQ(eval("origin"), "4 5 6");
    EXPECT_EQ(run("ray = nil collectgarbage() collectgarbage() "
                  "local junk = {} for i = 1, 1000 do junk[i] = Ray() end origin.y = 8"),
              "");
    EXPECT_EQ(eval("origin"), "4 8 6");
    EXPECT_EQ(run("origins = {} for i = 1, 500 do origins[i] = Ray(Vec3(i, 0, 0), Vec3()).origin end collectgarbage() "
                  "for i = 1, 500 do assert(origins[i].x == i and origins[i] == Vec3(i, 0, 0)) end"),
              "");
    EXPECT_EQ(run("p = WayPoint(Vec3(1, 2, 3), 4) p.cubicVelocity.z = 5 p.time = p.time + 1"), "");
    EXPECT_EQ(eval("p"), "1 2 3 5 0 0 5");
    EXPECT_EQ(run("h = IntersectionPointf() h.origin.x, h.position.y, h.normal.z, h.distance = 1, 2, 3, 4"), "");
    EXPECT_EQ(eval("h"), "1 0 0 0 2 0 0 0 3 4");
    expectErrors({{"Ray().origin = Vec3f()", "No matching overload found"},
                  {"Rayf().origin = Vec3d()", "No matching overload found"},
                  {"return Ray(Vec3f(), Vec3f())", "No matching overload found"}});
}

TEST_F(KyLuaVectorTypesTest, EasingHasItsKindsInOrderAndRefusesOthers) {
    for (int i = 0; i < KyEasing::eNbKinds; ++i)
        EXPECT_EQ(eval(std::string("Easing.") + KyEasing::getName(static_cast<KyEasing::Kind>(i))), std::to_string(i));
    expectTexts({{"Easing.compute(Easing.QuadIn, 0.5)", "0.25"},
                 {"Easing.compute(Easing.LinearOut, 0.5)", "0.5"},
                 {"Easing.compute(Easing.SineInOut, 2)", "1"},
                 {"Easing.compute(Easing.BackIn, 0.5) < 0", "true"},
                 {"Easing.compute(Easing.CubicIn, 0/0)", "0"}});
    expectErrors({{"Easing.compute(33, 0.5)", "easing out of range, 33 given, valid is [0,32]"},
                  {"Easing.compute(-1, 0.5)", "easing out of range"},
                  {"Easing.compute(1.5, 0.5)", "easing out of range"},
                  {"Easing.compute(0/0, 0.5)", "easing out of range"},
                  {"Easing.compute(4294967296, 0.5)", "easing out of range"},
                  {"Easing.compute('0', 0.5)", "No matching overload found"},
                  {"Easing()", "Easing cannot be constructed"}});
}

TEST_F(KyLuaVectorTypesTest, IntVectorsCheckTheirIndices) {
    EXPECT_EQ(run("v = IntVector({3, 4.7}) v:push_back(5) v:push_back(1e99) v:set(0, -1)"), "");
    expectTexts({{"v", "-1 4 5 2147483647"},
                 {"v:size()", "4"},
                 {"v:get(1)", "4"},
                 {"IntVector()", ""},
                 {"IntVector({}):size()", "0"},
                 {"IntVector(v) == v", "true"}});
    expectErrors({{"v:get(4)", "index out of range, 4 given, valid is [0,3]"},
                  {"IntVector():get(0)", "index out of range, 0 given, it is empty"},
                  {"v:get(-1)", "index out of range"},
                  {"v:set(4, 1)", "index out of range"},
                  {"v:set(0.5, 1)", "index out of range"},
                  {"v:get(0/0)", "index out of range"},
                  {"v:get(1/0)", "index out of range"},
                  {"v:set(0, 'a')", "No matching overload found"},
                  {"IntVector({1, 'a'})", "table of numbers expected"},
                  {"IntVector(3)", "No matching overload found"}});
    EXPECT_EQ(run("v:clear()"), "");
    EXPECT_EQ(eval("v:size()"), "0");
}

TEST_F(KyLuaVectorTypesTest, IntVectorsBecomeListsOfIntegers) {
    EXPECT_EQ(evalField("IntVector({1, 2})"), KyField(std::vector<int>{1, 2}));
    engine().setLuaVariable("list", KyField(std::vector<int>{1, 2, 3}));
    EXPECT_EQ(eval("IntVector(list)"), "1 2 3");
}

TEST_F(KyLuaVectorTypesTest, VectorsOfThreeIntegersCrossUnchanged) {
    engine().setLuaVariable("v", KyField(KyVec3i(1, -2, 3)));
    EXPECT_EQ(eval("v"), "1 -2 3");
    EXPECT_EQ(evalField("v + Vec3i(1, 1, 1)"), KyField(KyVec3i(2, -1, 4)));
}

TEST_F(KyLuaVectorTypesTest, QuaternionsRotate) {
    EXPECT_EQ(
        run("q = Quat(Vec3(0, 0, 2), math.pi) r = Quatf(q) e = Quat() e:setEulerAngles(Vec3(0, 0, 1)) "
            "f = Quat() f:setFrontDirectionAndTwist(Vec3(0, 0, -1), 0) a = Quat() a:setAxisAngle(Vec3(1, 0, 0), 1) "
            "g = Quat() g:setEulerAngles(0, 0, 1)"),
        "");
    expectTexts({{"Quat()", "0 0 0 1"},
                 {"q.z", "1"},
                 {"q:angle() == math.pi", "true"},
                 {"q:axis()", "0 0 1"},
                 {"(q:rotate(Vec3(1, 0, 0)) - Vec3(-1, 0, 0)):length() < 1e-12", "true"},
                 {"Quat(1, 2, 3, 4) + Quat(1, 1, 1, 1) - Quat(0, 0, 0, 5)", "2 3 4 0"},
                 {"(q * q:getInverse()):angle() < 1e-6", "true"},
                 {"Quat(0, 3, 0, 4):length()", "5"},
                 {"Quat():frontDirection()", "0 0 -1"},
                 {"Quat():getMatrix() == Matrix()", "true"},
                 {"(e:getEulerAngles() - Vec3(0, 0, 1)):length() < 1e-12", "true"},
                 {"g == e", "true"},
                 {"f", "0 0 0 1"},
                 {"a:angle()", "1"},
                 {"Quat():slerp(a, 0.5):angle()", "0.5"},
                 {"r:length()", "1"},
                 {"Quat(0, 0, 0, 0):getInverse()", "0 0 0 1"},
                 {"Quat(0, 0, 0, 0):rotate(Vec3(1, 2, 3))", "1 2 3"}});
    expectErrors({{"return q * 2", "No matching overload found"},
                  {"return q:rotate(Vec3f())", "No matching overload found"},
                  {"return Quat(1, 2, 3)", "No matching overload found"}});
}

TEST_F(KyLuaVectorTypesTest, MatricesAreReadRowByRow) {
    EXPECT_EQ(run("m = Matrix({1, 0, 0, 5, 0, 2, 0, 6, 0, 0, 4, 7, 0, 0, 0, 1}) t = Matrix(m) t:transpose() "
                  "i = Matrix(m) ok = i:invert() s = Matrix({0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0}) "
                  "bad = s:invert() c = Matrixf(m) c:identity()"),
              "");
    expectTexts({{"m", "1 0 0 5 0 2 0 6 0 0 4 7 0 0 0 1"},
                 {"m:get(0, 3)", "5"},
                 {"t:get(3, 0)", "5"},
                 {"m:determinant()", "8"},
                 {"m:translation()", "5 6 7"},
                 {"m * Vec3(1, 1, 1)", "6 8 11"},
                 {"ok", "true"},
                 {"i * m == Matrix()", "true"},
                 {"bad", "false"},
                 {"s:get(3, 3)", "0"},
                 {"c == Matrixf()", "true"},
                 {"Matrix(Quat(), Vec3(1, 2, 3)):translation()", "1 2 3"},
                 {"Matrix(Quat(Vec3(0, 0, 1), 1), Vec3()):rotation():angle()", "1"}});
    EXPECT_EQ(run("m:set(1, 2, 9)"), "");
    EXPECT_EQ(eval("m:get(1, 2)"), "9");
}

TEST_F(KyLuaVectorTypesTest, MatricesCheckIndicesAndTables) {
    expectErrors({{"Matrix():get(4, 0)", "row out of range, 4 given, valid is [0,3]"},
                  {"Matrix():get(0, -1)", "column out of range"},
                  {"Matrix():set(0/0, 0, 1)", "row out of range"},
                  {"Matrix():set(0, 0.5, 1)", "column out of range"},
                  {"Matrix({1, 2, 3})", "table of 16 numbers expected"},
                  {"Matrix({1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, true})", "table of numbers expected"},
                  {"return Matrix() * Matrixf()", "No matching overload found"},
                  {"return Matrix() * 2", "No matching overload found"}});
}

TEST_F(KyLuaVectorTypesTest, AliasesAreTheClassesOfDoubles) {
    for (const char* name : {"Vec2", "Vec3", "Ray", "WayPoint", "IntersectionPoint", "Matrix", "Quat"})
        EXPECT_EQ(eval(std::string(name) + " == " + name + "d"), "true") << name;
}

TEST_F(KyLuaVectorTypesTest, ManyValuesComeAndGo) {
    EXPECT_EQ(run("collectgarbage() local before = collectgarbage('count') "
                  "for i = 1, 20000 do local v = Vec3(i, 0, 0) * 2 + Vec3(1, 1, 1) assert(v.x == 2 * i + 1) "
                  "local u = URL('http://host/' .. i):getDirectory() end "
                  "collectgarbage() collectgarbage() assert(collectgarbage('count') < before + 200)"),
              "");
}

TEST_F(KyLuaVectorTypesTest, FinalizersMayMeetValuesThatAreFinishedAlready) {
    EXPECT_EQ(
        run("met = 0 local function make(v) local p = newproxy(true) "
            "getmetatable(p).__gc = function() met = met + 1 pcall(function() return v.x + (v + v).x end) end end "
            "for i = 1, 100 do make(Vec3(i, 0, 0)) local v = Vec3(i, 0, 0) make(v) make(URL('a')) end "
            "collectgarbage() collectgarbage()"),
        "");
    EXPECT_EQ(eval("met"), "300");
}

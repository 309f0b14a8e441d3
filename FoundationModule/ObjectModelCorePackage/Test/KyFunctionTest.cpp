// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyTestClasses.h"

namespace {

class KyFunctionTest : public KyShapeTest {
protected:
    static std::vector<const KyFunction*> find(const std::string& name) {
        std::vector<const KyFunction*> found;
        for (const auto& method : Shape::getType()->getAllMethods())
            if (method->getName() == name)
                found.push_back(method.get());
        return found;
    }
    static std::string callDescribe(Shape& shape, const KyField& argument) {
        const KyField arguments[] = {argument};
        const KyFunction* chosen = kySelectFunction(find("describe"), arguments);
        KyField result;
        return chosen && chosen->invoke(&shape, arguments, result) ? result.toString() : "none";
    }
};

TEST_F(KyFunctionTest, ChoosesTheOverloadThatFitsBest) {
    Shape shape;
    const auto circle = std::make_unique<Circle>();
    KyObject plain;
    EXPECT_EQ(callDescribe(shape, 3), "int");
    EXPECT_EQ(callDescribe(shape, 3.5), "double");
    EXPECT_EQ(callDescribe(shape, "x"), "text");
    EXPECT_EQ(callDescribe(shape, KyField(circle.get())), "shape");
    EXPECT_EQ(callDescribe(shape, KyField(&plain)), "none");
}

TEST_F(KyFunctionTest, RefusesWrongArgumentsAndWrongObjects) {
    Shape shape;
    KyObject plain;
    const KyFunction* grow = find("grow").front();
    KyField result;
    EXPECT_FALSE(grow->invoke(&shape, {}, result));
    const KyField text[] = {KyField("x")};
    EXPECT_FALSE(grow->invoke(&shape, text, result));
    const KyField two[] = {KyField(2.0)};
    EXPECT_FALSE(grow->invoke(&plain, two, result));
    EXPECT_EQ(shape.getSize(), 1);
    EXPECT_TRUE(grow->invoke(&shape, two, result));
    EXPECT_TRUE(find("shrink").front()->invoke(&shape, two, result));
    EXPECT_EQ(shape.getSize(), 1);
    EXPECT_TRUE(result.isEmpty());
}

TEST_F(KyFunctionTest, MakesObjectsFromConstructorArguments) {
    const auto& constructors = Shape::getType()->getConstructors();
    ASSERT_EQ(constructors.size(), 1u);
    const KyField size[] = {KyField(8)};
    KyField result;
    ASSERT_TRUE(constructors.front()->invoke(nullptr, size, result));
    auto* shape = kyCast<Shape>(result.toKyObject());
    ASSERT_NE(shape, nullptr);
    EXPECT_EQ(shape->getSize(), 8);
    shape->destroy();
}

TEST(KyMakeFunction, CarriesEveryKindOfArgumentAndResult) {
    const auto join = kyMakeFunction("join", [](std::string_view a, const char* b, const KyField& c, bool d) {
        return std::string(a) + b + c.toString() + (d ? "!" : "?");
    });
    EXPECT_EQ(join->getNbParameters(), 4u);
    const KyField arguments[] = {"a", "b", KyVec3<double>(1, 2, 3), true};
    KyField result;
    ASSERT_TRUE(join->invoke(nullptr, arguments, result));
    EXPECT_EQ(result.toString(), "ab1 2 3!");
    const auto list = kyMakeFunction(
        "list", [](const std::vector<int>& values) { return std::vector<double>(values.begin(), values.end()); });
    const KyField fields[] = {KyField(std::vector<KyField>{1, 2.0})};
    ASSERT_TRUE(list->invoke(nullptr, fields, result));
    EXPECT_EQ(*result.get<std::vector<double>>(), (std::vector<double>{1, 2}));
    EXPECT_EQ(list->getSignature().substr(0, 5), "list(");
    const auto thrower = kyMakeFunction("thrower", []() -> int { throw std::runtime_error("inside"); });
    EXPECT_THROW(thrower->invoke(nullptr, {}, result), std::runtime_error);
}

TEST_F(KyFunctionTest, CallsFunctionsOfNumbersWithoutFields) {
    Shape shape;
    KyObject plain;
    const KyFunction& grow = *find("grow").front();
    const double factor[] = {3};
    double result = 0;
    EXPECT_EQ(grow.getNumberCall()(grow, &shape, factor, result), 0);
    EXPECT_EQ(shape.getSize(), 3);
    EXPECT_EQ(grow.getNumberCall()(grow, &plain, factor, result), -1);
    EXPECT_EQ(find("describe").front()->getNumberCall(), nullptr) << "an integer has to be checked";
    const auto sum = kyMakeFunction("sum", [](double a, float b) { return a + static_cast<double>(b); });
    const double terms[] = {1, 2};
    EXPECT_EQ(sum->getNumberCall()(*sum, nullptr, terms, result), 1);
    EXPECT_EQ(result, 3);
}

} // namespace

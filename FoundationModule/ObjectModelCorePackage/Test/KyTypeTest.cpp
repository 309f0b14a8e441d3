// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyTestClasses.h"

namespace {

using KyTypeTest = KyShapeTest;

TEST_F(KyTypeTest, FindsTypesByNameIndexAndCppType) {
    const KyType* shape = KyType::getType("Shape");
    ASSERT_EQ(shape, Shape::getType());
    EXPECT_EQ(KyType::getType(typeid(Circle)), Circle::getType());
    bool isListed = false;
    for (unsigned i = 0; i < KyType::getNbTypes(); ++i)
        isListed = isListed || KyType::getType(i) == shape;
    EXPECT_TRUE(isListed);
    EXPECT_EQ(KyType::getType(KyType::getNbTypes()), nullptr);
    EXPECT_TRUE(Circle::getType()->isA(*shape));
    EXPECT_FALSE(shape->isA(*Circle::getType()));
    const auto circle = std::make_unique<Circle>();
    EXPECT_EQ(kyCast<Shape>(static_cast<KyObject*>(circle.get())), circle.get());
    EXPECT_EQ(kyCast<Circle>(static_cast<KyObject*>(std::make_unique<Shape>().get())), nullptr);
}

TEST_F(KyTypeTest, InheritsAttributesAndLetsAClassDescribeOneAnew) {
    const auto circle = std::make_unique<Circle>();
    KyField size;
    ASSERT_TRUE(circle->getAttribute("Size")->getValue(*circle, size));
    EXPECT_EQ(size.toDouble(), 7);
    EXPECT_TRUE(circle->getAttribute("Size")->isReadOnly());
    EXPECT_NE(circle->getAttribute("Tags"), nullptr);
    EXPECT_EQ(circle->getNbAttributes(), Shape::getType()->getNbAttributes() + 1);
    EXPECT_EQ(circle->getAttribute("Size"), circle->getAttribute(0u)) << "it keeps its place";
    EXPECT_EQ(Shape::getType()->getAttribute("Size")->getMetadata("unit"), "metre");
}

TEST_F(KyTypeTest, TellsWhatMembersHoldAndFunctionsGive) {
    const KyType& shape = *Shape::getType();
    EXPECT_EQ(shape.getAttribute("Partner")->getObjectType(), &shape);
    EXPECT_EQ(shape.getAttribute("Size")->getObjectType(), nullptr);
    EXPECT_EQ(shape.getComponent("Part")->objectType(), KyObject::getType());
    const std::vector<KyParameter>& sent = shape.getSignals().back().parameters;
    ASSERT_EQ(sent.size(), 1u);
    EXPECT_EQ(sent[0].kind, cFieldKindOf<std::int32_t>);
    const std::vector<KyParameter>& ofRoot = KyObject::getType()->getSignals().front().parameters;
    ASSERT_EQ(ofRoot.size(), 4u);
    EXPECT_EQ(ofRoot[0].objectType(), KyObject::getType());

    const auto getResult = [](auto callable) { return kyMakeFunction("f", callable)->getResult(); };
    EXPECT_EQ(getResult([] {}).kind, cFieldKindInvalid);
    EXPECT_FALSE(getResult([] {}).isAny);
    EXPECT_TRUE(getResult([] { return KyField(); }).isAny);
    EXPECT_EQ(getResult([] { return "text"; }).kind, cFieldKindOf<std::string>);
    EXPECT_EQ(getResult([]() -> Shape* { return nullptr; }).objectType(), &shape);
    const KyParameter list = getResult([] { return std::vector<Shape*>(); });
    EXPECT_EQ(list.objectType(), &shape);
    EXPECT_TRUE(KyFieldManager::getFieldType(list.kind).isList());
}

TEST_F(KyTypeTest, RecordsGoInAnyOrderAndComeBack) {
    const KyType* circleRecord = Circle::getType();
    const KyType* shapeRecord = Shape::getType();
    int nbRemoved = 0;
    KyConnection connection = KyType::removedSignal().connect([&](const KyType*) { ++nbRemoved; });
    const auto circle = std::make_unique<Circle>();
    Shape::finalizeType();
    EXPECT_EQ(KyType::getType("Shape"), nullptr);
    EXPECT_EQ(KyObject::create("Shape"), nullptr);
    EXPECT_EQ(circleRecord->getParent(), shapeRecord) << "children keep a parent that went first";
    EXPECT_TRUE(circleRecord->isA(*shapeRecord));
    Circle::finalizeType();
    Circle::finalizeType();
    EXPECT_EQ(nbRemoved, 2);
    Circle::initializeType();
    EXPECT_EQ(Circle::getType(), circleRecord) << "a record of the same name takes the memory over";
    EXPECT_EQ(KyType::getType("Circle"), circleRecord);
    connection.disconnect();
}

TEST_F(KyTypeTest, RepeatedRoundsRegisterNothingTwice) {
    const unsigned nbTypes = KyType::getNbTypes();
    for (int round = 0; round < 1000; ++round) {
        Shape::finalizeType();
        Circle::finalizeType();
        Circle::initializeType();
    }
    EXPECT_EQ(KyType::getNbTypes(), nbTypes);
    EXPECT_EQ(Shape::getType()->getAllMethods().size(), 6u);
}

} // namespace

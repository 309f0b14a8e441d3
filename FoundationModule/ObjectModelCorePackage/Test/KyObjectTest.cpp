// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyTestClasses.h"

#include <functional>
#include <limits>

namespace {

struct Log : KyHasSlots {
    void onModified(KyObject*, KyObjectModificationType kind, const std::string& name, int index) {
        text += std::to_string(kind) + name + (index >= 0 ? std::to_string(index) : "") + " ";
    }
    std::string text;
};

class KyObjectTest : public KyShapeTest {
protected:
    static bool set(KyObject& object, std::string_view name, const KyField& value, unsigned index = 0) {
        return object.getAttribute(name)->setValue(object, value, index);
    }
    static KyField get(const KyObject& object, std::string_view name, unsigned index = 0) {
        KyField value;
        EXPECT_TRUE(object.getAttribute(name)->getValue(object, value, index));
        return value;
    }
};

TEST_F(KyObjectTest, SettingConvertsAndTellsExactlyOnce) {
    Shape shape;
    Log log;
    shape.connectModified(&log, &Log::onModified);
    EXPECT_TRUE(set(shape, "Size", 3));
    EXPECT_TRUE(set(shape, "Count", 4.9)) << "its setter tells by itself";
    EXPECT_TRUE(set(shape, "Position", KyVec3<float>(1, 2, 3)));
    EXPECT_EQ(log.text, "2Size 2Count 2Position ");
    EXPECT_EQ(shape.getCount(), 4);
    EXPECT_EQ(shape.getPosition(), KyVec3<double>(1, 2, 3));
}

TEST_F(KyObjectTest, RefusedSettingChangesAndTellsNothing) {
    Shape shape;
    Circle* circle = new Circle;
    Log log;
    shape.connectModified(&log, &Log::onModified);
    const double cNaN = std::numeric_limits<double>::quiet_NaN();
    EXPECT_FALSE(set(shape, "Size", "big"));
    EXPECT_FALSE(set(shape, "Size", -1));
    EXPECT_FALSE(set(shape, "Size", 2, 1)) << "a single value has one index";
    EXPECT_FALSE(set(shape, "Count", cNaN));
    EXPECT_FALSE(set(shape, "Fixed", 1));
    KyObject plain;
    EXPECT_FALSE(set(shape, "Partner", KyField(&plain))) << "an object of another class";
    EXPECT_TRUE(log.text.empty());
    EXPECT_EQ(shape.getSize(), 1);
    EXPECT_TRUE(set(shape, "Partner", KyField(circle)));
    EXPECT_EQ(get(shape, "Partner").toKyObject(), circle);
    EXPECT_TRUE(set(shape, "Partner", KyField())) << "no object";
    EXPECT_EQ(shape.getPartner(), nullptr);
    circle->destroy();
}

TEST_F(KyObjectTest, ContainersCheckIndicesAndTellTheirKind) {
    Shape shape;
    Log log;
    shape.connectModified(&log, &Log::onModified);
    const KyAttributeInterface& tags = *shape.getAttribute("Tags");
    EXPECT_TRUE(tags.addValue(shape, 0, "b"));
    EXPECT_TRUE(tags.addValue(shape, 0, "a"));
    EXPECT_FALSE(tags.addValue(shape, 3, "beyond"));
    EXPECT_FALSE(tags.addValue(shape, 0, 5)) << "a number is no text";
    EXPECT_FALSE(tags.addValue(shape, 0, "refused"));
    EXPECT_TRUE(tags.setValue(shape, "c", 1));
    EXPECT_FALSE(tags.setValue(shape, "c", 2));
    EXPECT_TRUE(tags.removeValue(shape, 0));
    EXPECT_FALSE(tags.removeValue(shape, 1));
    EXPECT_EQ(get(shape, "Tags").toString(), "c");
    EXPECT_EQ(log.text, "4Tags0 4Tags0 3Tags1 5Tags0 ");
}

TEST_F(KyObjectTest, AnnouncesItsEndOnceHoweverItEnds) {
    const std::function<void(Shape*)> cEnds[] = {[](Shape* shape) { shape->destroy(); },
                                                 [](Shape* shape) { delete shape; }};
    for (const auto& end : cEnds) {
        Log log;
        auto* shape = new Shape;
        shape->connectModified(&log, &Log::onModified);
        end(shape);
        EXPECT_EQ(log.text, "0 1 ");
    }
    Log log;
    auto* counted = new Circle;
    counted->connectModified(&log, &Log::onModified);
    counted->addReference();
    counted->addReference();
    counted->removeReference();
    EXPECT_EQ(log.text, "");
    counted->removeReference();
    EXPECT_EQ(log.text, "0 1 ");
}

TEST_F(KyObjectTest, ReferencesReadAsNullWhenTheObjectIsGone) {
    auto* shape = new Shape;
    const KyField field(shape);
    const KyField copy = field;
    EXPECT_EQ(copy.toKyObject(), shape);
    EXPECT_EQ(copy.getKyType(), Shape::getType());
    shape->destroy();
    EXPECT_EQ(field.toKyObject(), nullptr);
    EXPECT_EQ(copy.getKyType(), nullptr);
}

TEST_F(KyObjectTest, SurvivesListenersThatDestroyItWhileItIsSet) {
    auto* shape = new Shape;
    KyObjectReference reference(shape);
    KyConnection connection =
        shape->modifiedSignal().connect([](KyObject* object, KyObjectModificationType kind, const std::string&, int) {
            // The end is told too, and asked for again then.
            if (kind != eObjectEnded)
                object->destroy();
        });
    Log log;
    shape->connectModified(&log, &Log::onModified);
    EXPECT_TRUE(set(*shape, "Count", 5));
    EXPECT_EQ(reference.get(), nullptr);
    EXPECT_EQ(log.text, "0 1 ") << "the end stops the change's own telling";
}

TEST_F(KyObjectTest, ClonesCarryTheValuesAndNotTheListeners) {
    Shape shape;
    set(shape, "Count", 12);
    Log log;
    shape.connectModified(&log, &Log::onModified);
    const std::unique_ptr<KyObject> copy(shape.clone());
    EXPECT_EQ(get(*copy, "Count").toInt(), 12);
    set(*copy, "Count", 13);
    EXPECT_TRUE(log.text.empty());
}

TEST_F(KyObjectTest, ShowsComponentsAndSignalsByName) {
    Shape shape;
    EXPECT_EQ(shape.getComponentByName("Part"), shape.getPart());
    EXPECT_EQ(shape.getComponentByName("Nothing"), nullptr);
    EXPECT_EQ(shape.getSignalName(1), "grown");
    EXPECT_EQ(shape.editSignal("grown"), &shape.grown);
    EXPECT_EQ(shape.editSignal(2u), nullptr);
}

} // namespace

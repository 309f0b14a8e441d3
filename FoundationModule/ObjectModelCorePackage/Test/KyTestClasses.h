// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyTypeBuilder.h"
#include "KyVec3.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

class Shape : public KyObject {
public:
    ~Shape() override { notifyEnd(); }
    static const KyType* getType() { return msType; }
    const KyType* getObjectType() const override { return msType; }
    static KyObject* factory() { return new Shape; }
    static void initializeType();
    static void finalizeType() { KyType::remove(msType); }

    double getSize() const { return mSize; }
    bool setSize(double size) {
        if (size < 0)
            return false;
        mSize = size;
        return true;
    }
    int getCount() const { return mCount; }
    void setCount(int count) {
        mCount = count;
        notifyModified("Count");
    }
    const KyVec3<double>& getPosition() const { return mPosition; }
    void setPosition(const KyVec3<double>& position) { mPosition = position; }
    unsigned getNbTags() const { return static_cast<unsigned>(mTags.size()); }
    const std::string& getTag(unsigned index) const { return mTags[index]; }
    void setTag(unsigned index, const std::string& tag) { mTags[index] = tag; }
    bool insertTag(unsigned index, const std::string& tag) {
        if (tag == "refused")
            return false;
        mTags.insert(mTags.begin() + index, tag);
        return true;
    }
    void removeTag(unsigned index) { mTags.erase(mTags.begin() + index); }
    Shape* getPartner() const { return mPartner; }
    void setPartner(Shape* partner) { mPartner = partner; }
    KyObject* getPart() { return &mPart; }

    std::string describe(int) { return "int"; }
    std::string describe(double) { return "double"; }
    std::string describe(const std::string&) { return "text"; }
    std::string describe(Shape*) { return "shape"; }
    void grow(double factor) { mSize *= factor; }

    KySignal<int> grown{"grown"};

private:
    double mSize = 1;
    int mCount = 0;
    KyVec3<double> mPosition;
    std::vector<std::string> mTags;
    Shape* mPartner = nullptr;
    KyObject mPart;

    static inline const KyType* msType = nullptr;
};

class Circle : public Shape, public KyReferenceCounted {
public:
    ~Circle() override { notifyEnd(); }
    static const KyType* getType() { return msType; }
    const KyType* getObjectType() const override { return msType; }
    static KyObject* factory() { return new Circle; }
    static void initializeType() {
        if (msType)
            return;
        Shape::initializeType();
        msType = KyTypeBuilder<Circle>("Circle", Shape::getType())
                     .factory()
                     .attribute("Size", [](Circle&) { return 7.0; })
                     .attribute("Radius", [](Circle& circle) { return circle.getSize() / 2; })
                     .build();
    }
    static void finalizeType() { KyType::remove(msType); }

private:
    static inline const KyType* msType = nullptr;
};

inline void Shape::initializeType() {
    if (msType)
        return;
    msType =
        KyTypeBuilder<Shape>("Shape", KyObject::getType())
            .factory()
            .attribute("Size", &Shape::getSize, &Shape::setSize)
            .attributeMetadata("unit", "metre")
            .attribute("Count", &Shape::getCount, &Shape::setCount)
            .attribute("Position", &Shape::getPosition, &Shape::setPosition)
            .attribute("Partner", &Shape::getPartner, &Shape::setPartner)
            .attribute("Fixed", [](Shape&) { return 3; })
            .container("Tags", &Shape::getNbTags, &Shape::getTag, &Shape::setTag, &Shape::insertTag, &Shape::removeTag)
            .component<&Shape::getPart>("Part")
            .signal<&Shape::grown>("grown")
            .method("describe", static_cast<std::string (Shape::*)(int)>(&Shape::describe))
            .method("describe", static_cast<std::string (Shape::*)(double)>(&Shape::describe))
            .method("describe", static_cast<std::string (Shape::*)(const std::string&)>(&Shape::describe))
            .method("describe", static_cast<std::string (Shape::*)(Shape*)>(&Shape::describe))
            .method("grow", &Shape::grow)
            .method("shrink", [](Shape& shape, double factor) { shape.grow(1 / factor); })
            .staticMethod("sum", [](double a, double b) { return a + b; })
            .constructor([](double size) {
                auto* shape = new Shape;
                shape->setSize(size);
                return shape;
            })
            .enumeration({{"eSmall", 3}, {"eLarge", 25}})
            .metadata("qmlBinding", "true")
            .build();
}

/// With the types registered.
class KyShapeTest : public testing::Test {
protected:
    void SetUp() override { Circle::initializeType(); }
    void TearDown() override {
        Circle::finalizeType();
        Shape::finalizeType();
    }
};

// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyAttributeInterface.h"
#include "KyObject.h"
#include "KyGraphicsObject.h"
#include "KyReferenceCounted.h"
#include "KyType.h"
#include "KyVec3.h"

#include <functional>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

/// What every class with a type record has; its `describe` builds the record.
template <class T, class Parent>
class LuaTestClass : public Parent {
public:
    LuaTestClass() { ++msNbAlive; }
    ~LuaTestClass() override { --msNbAlive; }

    static const KyType* getType() {
        if (!msType)
            msType = T::describe();
        return msType;
    }
    static KyObject* factory() { return new T; }
    static void finalizeType() { KyType::remove(msType); }
    const KyType* getObjectType() const override { return getType(); }

    static inline int msNbAlive = 0;

private:
    static inline const KyType* msType = nullptr;
};

/// A class with one of everything that scripts can reach.
class LuaTestLamp : public LuaTestClass<LuaTestLamp, KyObject> {
public:
    LuaTestLamp() = default;
    explicit LuaTestLamp(double power)
        : mPower(power) {}
    explicit LuaTestLamp(std::string label)
        : mLabel(std::move(label)) {}

    static const KyType* describe();

    bool refuse(double) { return false; }
    double fail() const { throw std::runtime_error("lamp is broken"); }
    unsigned getNbTargets() const { return static_cast<unsigned>(mTargets.size()); }
    double getTarget(unsigned index) const { return mTargets[index]; }
    void setTarget(unsigned index, double target) { mTargets[index] = target; }
    void insertTarget(unsigned index, double target) { mTargets.insert(mTargets.begin() + index, target); }
    void removeTarget(unsigned index) { mTargets.erase(mTargets.begin() + index); }
    KyObject* getBulb() const { return mBulb; }

    double add(double a, double b) const { return a + b + mPower; }
    std::vector<double> getPowers() const { return {mPower, mPower * 2}; }
    void touch() { ++mNbTouches; }
    void breakDown() { throw std::runtime_error("no light"); }
    /// Calls what the test has put in.
    double callHook() {
        if (mHook)
            mHook();
        return mPower;
    }

    double mPower = 1;
    int mCount = 0;
    std::string mLabel;
    bool mIsOn = false;
    KyVec3d mPosition;
    KyObject* mPartner = nullptr;
    KyObject* mBulb = nullptr;
    std::vector<double> mTargets{10, 20, 30};
    int mNbTouches = 0;
    std::function<void()> mHook;
};

class LuaTestSpot : public LuaTestClass<LuaTestSpot, LuaTestLamp> {
public:
    static const KyType* describe();

    double widen() { return mAngle *= 2; }

    double mAngle = 30;
};

class LuaTestCounted : public LuaTestClass<LuaTestCounted, KyObject>, public KyReferenceCounted {
public:
    static const KyType* describe();

    double callHook() {
        if (mHook)
            mHook();
        return mValue;
    }

    double mValue = 5;
    std::function<void()> mHook;
};

class LuaTestTexture : public LuaTestClass<LuaTestTexture, KyGraphicsObject> {
public:
    static const KyType* describe();
};

/// A container whose accessors fail on demand; an attribute of the object itself, which may be taken away.
class LuaTestFailing : public LuaTestClass<LuaTestFailing, KyObject> {
public:
    class Container : public KyAttributeInterface {
    public:
        Container()
            : KyAttributeInterface("Values", eContainer, 0) {}
        bool isReadOnly() const override { return false; }
        bool getNbValues(const KyObject&, unsigned& count) const override {
            count = 2;
            return mCountWorks;
        }
        bool getValue(const KyObject&, KyField& value, unsigned index) const override {
            value = KyField(index);
            return mReadWorks;
        }
        bool setValue(KyObject&, const KyField&, unsigned) const override { return false; }

        bool mCountWorks = true;
        bool mReadWorks = true;
    };

    LuaTestFailing() { mHasOwnAttributes = true; }

    static const KyType* describe();

    std::unique_ptr<Container> mContainer = std::make_unique<Container>();

protected:
    const KyAttributeInterface* getOwnAttribute(std::string_view name) const override {
        return mContainer && name == "Values" ? mContainer.get() : nullptr;
    }
    unsigned getNbOwnAttributes() const override { return mContainer ? 1 : 0; }
    const KyAttributeInterface* getOwnAttribute(unsigned index) const override {
        return index == 0 ? mContainer.get() : nullptr;
    }
};

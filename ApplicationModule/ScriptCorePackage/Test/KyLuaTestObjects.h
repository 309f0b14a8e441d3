// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyAttributeInterface.h"
#include "KyObject.h"
#include "KyGraphicsObject.h"
#include "KyReferenceCounted.h"
#include "KyVec3.h"

#include <functional>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

/// A class with one of everything that scripts can reach.
class LuaTestLamp : public KyObject {
public:
    LuaTestLamp() { ++msNbAlive; }
    explicit LuaTestLamp(double power)
        : LuaTestLamp() {
        mPower = power;
    }
    explicit LuaTestLamp(std::string label)
        : LuaTestLamp() {
        mLabel = std::move(label);
    }
    ~LuaTestLamp() override { --msNbAlive; }

    static const KyType* getType();
    static KyObject* factory() { return new LuaTestLamp; }
    static void initializeType();
    static void finalizeType();
    const KyType* getObjectType() const override { return getType(); }

    double getPower() const { return mPower; }
    void setPower(double power) { mPower = power; }
    int getCount() const { return mCount; }
    void setCount(int count) { mCount = count; }
    const std::string& getLabel() const { return mLabel; }
    void setLabel(const std::string& label) { mLabel = label; }
    bool isOn() const { return mIsOn; }
    void setOn(bool on) { mIsOn = on; }
    const KyVec3d& getPosition() const { return mPosition; }
    void setPosition(const KyVec3d& position) { mPosition = position; }
    KyObject* getPartner() const { return mPartner; }
    void setPartner(KyObject* partner) { mPartner = partner; }
    bool refuse(double) { return false; }
    double fail() const { throw std::runtime_error("lamp is broken"); }
    double getFixed() const { return 42; }
    unsigned getNbTargets() const { return static_cast<unsigned>(mTargets.size()); }
    double getTarget(unsigned index) const { return mTargets[index]; }
    void setTarget(unsigned index, double target) { mTargets[index] = target; }
    void insertTarget(unsigned index, double target) { mTargets.insert(mTargets.begin() + index, target); }
    void removeTarget(unsigned index) { mTargets.erase(mTargets.begin() + index); }
    KyObject* getBulb() const { return mBulb; }
    void setBulb(KyObject* bulb) { mBulb = bulb; }

    double add(double a, double b) const { return a + b + mPower; }
    std::string describeNumber(double) const { return "number"; }
    std::string describeText(const std::string&) const { return "text"; }
    std::string describeLamp(LuaTestLamp*) const { return "lamp"; }
    std::string describeBoth(double, const std::string&) const { return "both"; }
    std::string join(const std::vector<std::string>& texts) const;
    std::vector<double> getPowers() const { return {mPower, mPower * 2}; }
    KyObject* getNothing() const { return nullptr; }
    void touch() { ++mNbTouches; }
    void breakDown() { throw std::runtime_error("no light"); }
    /// Calls what the test has put in.
    double callHook();

    static double sum(double a, double b) { return a + b; }

    static int msNbAlive;

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

private:
    static const KyType* msType;
};

class LuaTestSpot : public LuaTestLamp {
public:
    static const KyType* getType();
    static KyObject* factory() { return new LuaTestSpot; }
    static void initializeType();
    static void finalizeType();
    const KyType* getObjectType() const override { return getType(); }

    double getAngle() const { return mAngle; }
    void setAngle(double angle) { mAngle = angle; }
    double widen() { return mAngle *= 2; }

    double mAngle = 30;

private:
    static const KyType* msType;
};

class LuaTestCounted : public KyObject, public KyReferenceCounted {
public:
    LuaTestCounted() { ++msNbAlive; }
    ~LuaTestCounted() override { --msNbAlive; }

    static const KyType* getType();
    static KyObject* factory() { return new LuaTestCounted; }
    static void initializeType();
    static void finalizeType();
    const KyType* getObjectType() const override { return getType(); }

    double getValue() const { return mValue; }
    void setValue(double value) { mValue = value; }
    double callHook();

    static int msNbAlive;

    double mValue = 5;
    std::function<void()> mHook;

private:
    static const KyType* msType;
};

class LuaTestTexture : public KyGraphicsObject {
public:
    LuaTestTexture() { ++msNbAlive; }
    ~LuaTestTexture() override { --msNbAlive; }

    static const KyType* getType();
    static KyObject* factory() { return new LuaTestTexture; }
    static void initializeType();
    static void finalizeType();
    const KyType* getObjectType() const override { return getType(); }

    static int msNbAlive;

private:
    static const KyType* msType;
};

/// A container whose accessors fail on demand; an attribute of the object itself, which may be taken away.
class LuaTestFailing : public KyObject {
public:
    class Container : public KyAttributeInterface {
    public:
        Container()
            : KyAttributeInterface("Values", eContainer, 0) {}
        bool isReadOnly() const override { return false; }
        bool getNbValues(const KyObject&, unsigned& count) const override;
        bool getValue(const KyObject&, KyField& value, unsigned index) const override;
        bool setValue(KyObject&, const KyField&, unsigned) const override { return false; }

        bool mCountWorks = true;
        bool mReadWorks = true;
        unsigned mCount = 2;
    };

    LuaTestFailing() { mHasOwnAttributes = true; }

    static const KyType* getType();
    static void initializeType();
    static void finalizeType();
    const KyType* getObjectType() const override { return getType(); }

    std::unique_ptr<Container> mContainer = std::make_unique<Container>();

protected:
    const KyAttributeInterface* getOwnAttribute(std::string_view name) const override {
        return mContainer && name == "Values" ? mContainer.get() : nullptr;
    }
    unsigned getNbOwnAttributes() const override { return mContainer ? 1 : 0; }
    const KyAttributeInterface* getOwnAttribute(unsigned index) const override {
        return index == 0 ? mContainer.get() : nullptr;
    }

private:
    static const KyType* msType;
};

// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyObject.h"
#include "KyTypeBuilder.h"

#include <cstdint>
#include <string>
#include <vector>

/// The lamp that several documents speak of; one of them describes it.
class KyLamp : public KyObject {
public:
    static const KyType* getType();
    static void initializeType();
    static void finalizeType();
    const KyType* getObjectType() const override { return getType(); }
    static KyObject* factory() { return new KyLamp; }

    double getPower() const { return mPower; }
    void setPower(double power) {
        mPower = power;
        notifyModified("Power");
    }
    const std::string& getLabel() const { return mLabel; }
    void setLabel(const std::string& label) {
        mLabel = label;
        notifyModified("Label");
    }
    unsigned getNbTags() const { return static_cast<unsigned>(mTags.size()); }
    const std::string& getTag(unsigned index) const { return mTags[index]; }
    bool insertTag(unsigned index, const std::string& tag) {
        mTags.insert(mTags.begin() + static_cast<std::ptrdiff_t>(index), tag);
        return true;
    }
    bool removeTag(unsigned index) {
        mTags.erase(mTags.begin() + static_cast<std::ptrdiff_t>(index));
        return true;
    }
    KyObject* getSwitch() { return &mSwitch; }
    int add(int a, int b) const { return a + b; }
    static int count() { return 1; }

    KySignal<bool> switched{"switched"};

private:
    double mPower = 0.0;
    std::string mLabel;
    std::vector<std::string> mTags;
    KyObject mSwitch;

    inline static const KyType* msType = nullptr;
};

// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyColor.h"
#include "KyDate.h"
#include "KyDynamicObject.h"
#include "KyTypeBuilder.h"
#include "KyURL.h"
#include "KyVec2.h"
#include "KyVec3.h"

#include <functional>
#include <stdexcept>
#include <string>
#include <vector>

/// A class with one of everything that QML can reach.
class QmlTestLamp : public KyObject {
public:
    ~QmlTestLamp() override { notifyEnd(); }
    static const KyType* getType() {
        initializeType();
        return msType;
    }
    const KyType* getObjectType() const override { return getType(); }
    static void initializeType();
    static void finalizeType() { KyType::remove(msType); }

    double add(double a, double b) const { return a + b + mPower; }
    std::string describeNumber(int) const { return "number"; }
    std::string describeText(const std::string&) const { return "text"; }
    std::string describeLamp(QmlTestLamp* lamp) const { return lamp ? "lamp" : "no lamp"; }
    std::string join(const std::vector<std::string>& texts) const {
        std::string joined;
        for (const std::string& text : texts)
            joined += text + ";";
        return joined;
    }
    void breakDown() { throw std::runtime_error("no light"); }
    void callHook() { mHook(); }
    bool insertTag(unsigned index, const std::string& tag) {
        if (tag == "refused" || (tag == "last" && index == 0))
            return false;
        mTags.insert(mTags.begin() + index, tag);
        return true;
    }

    double mPower = 1;
    int mCount = 0;
    std::int64_t mBig = 5000000000;
    std::string mLabel = "lamp";
    bool mIsOn = false;
    int mMode = 1;
    KyColor mTint{1, 0, 0, 1};
    KyURL mSource{"a/b.png"};
    KyVec2d mCenter{1, 2};
    KyVec3d mPosition{1, 2, 3};
    KyDate mBorn{2020, 2, 29};
    QmlTestLamp* mPartner = nullptr;
    KyObject* mBulb = nullptr;
    std::vector<KyField> mFriends;
    std::vector<std::string> mTags{"a", "b", "c"};
    std::vector<QmlTestLamp*> mTargets;
    std::function<void()> mHook = [] {};

private:
    static inline const KyType* msType = nullptr;
};

inline void QmlTestLamp::initializeType() {
    if (msType)
        return;
    static constexpr const char* cModes[] = {"Off", "Dim", "Bright"};
    KyFieldManager::get().registerEnumFieldType("QmlTestModeField", 3, cModes);
    using L = QmlTestLamp;
    msType = KyTypeBuilder<L>("QmlTestLamp", KyObject::getType())
                 .attribute(
                     "Power", [](L& l) { return l.mPower; }, [](L& l, double power) { l.mPower = power; })
                 .attribute(
                     "Count", [](L& l) { return l.mCount; }, [](L& l, int count) { l.mCount = count; })
                 .attribute(
                     "Big", [](L& l) { return l.mBig; }, [](L& l, std::int64_t big) { l.mBig = big; })
                 .attribute(
                     "Label", [](L& l) { return l.mLabel; }, [](L& l, const std::string& label) { l.mLabel = label; })
                 .attribute(
                     "On", [](L& l) { return l.mIsOn; }, [](L& l, bool on) { l.mIsOn = on; })
                 .enumAttribute(
                     "Mode", "QmlTestModeField", [](L& l) { return l.mMode; }, [](L& l, int mode) { l.mMode = mode; })
                 .attribute(
                     "Tint", [](L& l) { return l.mTint; }, [](L& l, const KyColor& tint) { l.mTint = tint; })
                 .attribute(
                     "Source", [](L& l) { return l.mSource; }, [](L& l, const KyURL& source) { l.mSource = source; })
                 .attribute(
                     "Center", [](L& l) { return l.mCenter; }, [](L& l, const KyVec2d& center) { l.mCenter = center; })
                 .attribute(
                     "Position", [](L& l) { return l.mPosition; },
                     [](L& l, const KyVec3d& position) { l.mPosition = position; })
                 .attribute(
                     "Born", [](L& l) { return l.mBorn; }, [](L& l, const KyDate& born) { l.mBorn = born; })
                 .attribute(
                     "Partner", [](L& l) { return l.mPartner; }, [](L& l, L* partner) { l.mPartner = partner; })
                 .attribute(
                     "Friends", [](L& l) { return l.mFriends; },
                     [](L& l, const std::vector<KyField>& friends) { l.mFriends = friends; })
                 .attribute("Fixed", [](L&) { return 42.0; })
                 .attribute(
                     "Refusing", [](L& l) { return l.mCount; }, [](L&, int) { return false; })
                 .attribute("Failing", [](L&) -> double { throw std::runtime_error("lamp is broken"); })
                 .attribute("Shade", [](L&) { return 1; })
                 .attribute("shade", [](L&) { return 2; })
                 .attribute("odd name", [](L&) { return 3; })
                 .container(
                     "Tags", [](L& l) { return l.mTags.size(); }, [](L& l, unsigned i) { return l.mTags[i]; },
                     [](L& l, unsigned i, const std::string& tag) { l.mTags[i] = tag; }, &L::insertTag,
                     [](L& l, unsigned i) { l.mTags.erase(l.mTags.begin() + i); })
                 .container(
                     "Targets", [](L& l) { return l.mTargets.size(); }, [](L& l, unsigned i) { return l.mTargets[i]; },
                     nullptr, [](L& l, unsigned i, L* target) { l.mTargets.insert(l.mTargets.begin() + i, target); })
                 .component<&L::mBulb>("bulb")
                 .method("add", &L::add)
                 .method("describe", &L::describeNumber)
                 .method("describe", &L::describeText)
                 .method("describe", &L::describeLamp)
                 .method("join", &L::join)
                 .method("getPowers",
                         [](L& l) {
                             return std::vector<double>{l.mPower, 2 * l.mPower};
                         })
                 .method("getPartner", [](L& l) { return l.mPartner; })
                 .method("place", [](L& l, const KyVec3d& position) { return l.mPosition = position; })
                 .method("breakDown", &L::breakDown)
                 .method("callHook", &L::callHook)
                 .staticMethod("sum", [](double a, double b) { return a + b; })
                 .metadata("qmlBinding", "true")
                 .build();
}

class QmlTestSpot : public QmlTestLamp {
public:
    ~QmlTestSpot() override { notifyEnd(); }
    static const KyType* getType() {
        initializeType();
        return msType;
    }
    const KyType* getObjectType() const override { return getType(); }
    static void initializeType() {
        if (!msType)
            msType = KyTypeBuilder<QmlTestSpot>("QmlTestSpot", QmlTestLamp::getType())
                         .attribute("Angle", [](QmlTestSpot&) { return 30.0; })
                         .attribute("Sum", [](QmlTestSpot&) { return 8; })
                         .method("add", [](QmlTestSpot&, double a) { return a; })
                         .build();
    }
    static void finalizeType() { KyType::remove(msType); }

private:
    static inline const KyType* msType = nullptr;
};

/// Attributes of its own beside reflected ones and methods.
class QmlTestKit : public KyDynamicObject {
public:
    ~QmlTestKit() override { notifyEnd(); }
    static const KyType* getType() {
        initializeType();
        return msType;
    }
    const KyType* getObjectType() const override { return getType(); }
    static void initializeType() {
        if (!msType)
            msType = KyTypeBuilder<QmlTestKit>("QmlTestKit", KyDynamicObject::getType())
                         .attribute("Kind", [](QmlTestKit&) { return std::string("kit"); })
                         .method("twice", [](QmlTestKit&, double a) { return 2 * a; })
                         .build();
    }
    static void finalizeType() { KyType::remove(msType); }

private:
    static inline const KyType* msType = nullptr;
};

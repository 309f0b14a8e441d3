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
#include <numeric>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

/// What the test classes have in common; each makes its own type record.
template <class T, class Base>
class QmlTestClass : public Base {
public:
    static const KyType* getType() {
        if (!msType)
            msType = T::makeType();
        return msType;
    }
    const KyType* getObjectType() const override { return getType(); }
    static void finalizeType() { KyType::remove(msType); }

private:
    static inline const KyType* msType = nullptr;
};

/// A class with one of everything that QML can reach.
class QmlTestLamp : public QmlTestClass<QmlTestLamp, KyObject> {
public:
    ~QmlTestLamp() override { notifyEnd(); }
    static const KyType* makeType();

    bool insertTag(unsigned index, const std::string& tag) {
        if (tag == "refused" || (tag == "last" && index == 0))
            return false;
        mTags.insert(mTags.begin() + index, tag);
        return true;
    }

    double mPower = 1;
    float mShare = 0;
    int mCount = 0;
    std::int64_t mBig = 5000000000;
    std::string mLabel = "lamp";
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
};

template <auto... Members>
void addPlainAttributes(KyTypeBuilder<QmlTestLamp>& builder, std::initializer_list<const char*> names) {
    auto name = names.begin();
    (builder.attribute(
         *name++, [](QmlTestLamp& l) { return l.*Members; },
         [](QmlTestLamp& l, const std::decay_t<decltype(l.*Members)>& value) { l.*Members = value; }),
     ...);
}

inline const KyType* QmlTestLamp::makeType() {
    static constexpr const char* cModes[] = {"Off", "Dim", "Bright"};
    KyFieldManager::get().registerEnumFieldType("QmlTestModeField", 3, cModes);
    using L = QmlTestLamp;
    using Texts = std::vector<std::string>;
    KyTypeBuilder<L> builder("QmlTestLamp", KyObject::getType());
    addPlainAttributes<&L::mPower, &L::mShare, &L::mCount, &L::mBig, &L::mLabel, &L::mTint, &L::mSource, &L::mCenter,
                       &L::mPosition, &L::mBorn, &L::mPartner, &L::mFriends>(
        builder, {"Power", "Share", "Count", "Big", "Label", "Tint", "Source", "Center", "Position", "Born", "Partner",
                  "Friends"});
    const auto setMode = [](L& l, int mode) { l.mMode = mode; };
    builder.enumAttribute(
        "Mode", "QmlTestModeField", [](L& l) { return l.mMode; }, setMode);
    builder.attribute("Fixed", [](L&) { return 42.0; });
    builder.attribute(
        "Refusing", [](L& l) { return l.mCount; }, [](L&, int) { return false; });
    builder.attribute("Failing", [](L&) -> double { throw std::runtime_error("lamp is broken"); });
    builder.attribute("Shade", [](L&) { return 1; });
    builder.attribute("shade", [](L&) { return 2; });
    builder.attribute("odd name", [](L&) { return 3; });
    const auto setTag = [](L& l, unsigned i, const std::string& tag) { l.mTags[i] = tag; };
    const auto removeTag = [](L& l, unsigned i) { l.mTags.erase(l.mTags.begin() + i); };
    const auto addTarget = [](L& l, unsigned i, L* target) { l.mTargets.insert(l.mTargets.begin() + i, target); };
    builder.container(
        "Tags", [](L& l) { return l.mTags.size(); }, [](L& l, unsigned i) { return l.mTags[i]; }, setTag, &L::insertTag,
        removeTag);
    builder.container(
        "Targets", [](L& l) { return l.mTargets.size(); }, [](L& l, unsigned i) { return l.mTargets[i]; }, nullptr,
        addTarget);
    builder.component<&L::mBulb>("bulb");
    builder.method("add", [](L& l, double a, double b) { return a + b + l.mPower; });
    builder.method("describe", [](L&, int) { return std::string("number"); });
    builder.method("describe", [](L&, const std::string&) { return std::string("text"); });
    builder.method("describe", [](L&, L* lamp) { return std::string(lamp ? "lamp" : "no lamp"); });
    builder.method("join", [](L&, const Texts& texts) {
        return std::accumulate(texts.begin(), texts.end(), std::string(),
                               [](std::string joined, const std::string& text) { return joined + text + ";"; });
    });
    builder.method("getPowers", [](L& l) { return std::vector<double>{l.mPower, 2 * l.mPower}; });
    builder.method("setBorn", [](L& l, const KyDate& born) { l.mBorn = born; });
    builder.method("place", [](L& l, const KyVec3d& position) { return l.mPosition = position; });
    builder.method("breakDown", [](L&) { throw std::runtime_error("no light"); });
    builder.method("callHook", [](L& l) { std::function<void()>(l.mHook)(); });
    builder.staticMethod("sum", [](double a, double b) { return a + b; });
    return builder.metadata("qmlBinding", "true").build();
}

class QmlTestSpot : public QmlTestClass<QmlTestSpot, QmlTestLamp> {
public:
    ~QmlTestSpot() override { notifyEnd(); }
    static const KyType* makeType() {
        return KyTypeBuilder<QmlTestSpot>("QmlTestSpot", QmlTestLamp::getType())
            .attribute("Sum", [](QmlTestSpot&) { return 8; })
            .method("add", [](QmlTestSpot&, double a) { return a; })
            .build();
    }
};

/// Attributes of its own beside reflected ones and methods.
class QmlTestKit : public QmlTestClass<QmlTestKit, KyDynamicObject> {
public:
    ~QmlTestKit() override { notifyEnd(); }
    static const KyType* makeType() {
        return KyTypeBuilder<QmlTestKit>("QmlTestKit", KyDynamicObject::getType())
            .attribute("Kind", [](QmlTestKit&) { return std::string("kit"); })
            .method("twice", [](QmlTestKit&, double a) { return 2 * a; })
            .build();
    }
};

// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyMemberAttribute.h"
#include "KyReferenceCounted.h"
#include "KyType.h"

#include <initializer_list>
#include <memory>
#include <string>
#include <type_traits>
#include <utility>

namespace KySignalDetail {

/// Signals may be sent with pointers to classes that are only declared here, or that are no objects.
template <class Arg>
KyParameter makeParameter() {
    using Target = std::remove_const_t<std::remove_pointer_t<std::remove_cvref_t<Arg>>>;
    [[maybe_unused]] constexpr bool cIsDescribed = requires {
        static_cast<const KyType* (*)()>(&Target::getType);
    };
    if constexpr (!std::is_class_v<Target> || !std::is_pointer_v<std::remove_cvref_t<Arg>>)
        return kyMakeParameter<Arg>();
    else if constexpr (cIsDescribed)
        return {cFieldKindOf<KyObjectReference>, &Target::getType, false};
    else
        return {cFieldKindInvalid, nullptr, true};
}

template <class... Args>
std::vector<KyParameter> makeParameters(const KySignal<Args...>*) {
    return {makeParameter<Args>()...};
}

} // namespace KySignalDetail

/// Describes class T once, for everybody. Used in T::initializeType; the parent's initializeType comes first.
///
/// ```
/// void KyLamp::initializeType() {
///     if (msType)
///         return;
///     KyNode::initializeType();
///     msType = KyTypeBuilder<KyLamp>("KyLamp", KyNode::getType())
///                  .factory()
///                  .attribute("Power", &KyLamp::getPower, &KyLamp::setPower)
///                  .container("Targets", &KyLamp::getNbTargets, &KyLamp::getTarget, nullptr, &KyLamp::insertTarget,
///                             &KyLamp::removeTarget)
///                  .method("blink", &KyLamp::blink)
///                  .enumeration({{"eSpot", 0}, {"ePoint", 1}})
///                  .build();
/// }
/// ```
template <class T>
class KyTypeBuilder {
public:
    /// A null parent makes a root.
    KyTypeBuilder(std::string name, const KyType* parent)
        : mType(KyType::enter(std::move(name), parent, typeid(T))) {
        if constexpr (std::is_base_of_v<KyReferenceCounted, T>)
            mType->mToReferenceCounted = [](KyObject* object) -> KyReferenceCounted* {
                return static_cast<T*>(object);
            };
    }

    /// Lets KyObject::create make objects of this class.
    KyTypeBuilder& factory() {
        mType->mFactory = []() -> KyObject* { return T::factory(); };
        return *this;
    }

    /// A single value; without a setter it is read-only. See KyMemberAttribute.
    template <class Getter, class Setter = std::nullptr_t>
    KyTypeBuilder& attribute(std::string name, Getter getter, Setter setter = nullptr) {
        return add(std::make_shared<KyMemberAttribute<T, Getter, Setter>>(std::move(name), getter, setter));
    }

    /// An enumerated value of the field type of that name; without a setter it is read-only.
    template <class Getter, class Setter = std::nullptr_t>
    KyTypeBuilder& enumAttribute(std::string name, std::string fieldType, Getter getter, Setter setter = nullptr) {
        return add(std::make_shared<KyEnumAttribute<T, Getter, Setter>>(std::move(name), std::move(fieldType), getter,
                                                                        setter));
    }

    /// Several values. See KyContainerAttribute; null for what the class does not offer.
    template <class Count, class Get, class Set = std::nullptr_t, class Insert = std::nullptr_t,
              class Remove = std::nullptr_t>
    KyTypeBuilder& container(std::string name, Count count, Get get, Set set = nullptr, Insert insert = nullptr,
                             Remove remove = nullptr) {
        return add(std::make_shared<KyContainerAttribute<T, Count, Get, Set, Insert, Remove>>(
            std::move(name), count, get, set, insert, remove));
    }

    /// An object that this one holds; `Getter` is a member function that returns its pointer.
    template <auto Getter>
    KyTypeBuilder& component(std::string name) {
        using Held = std::remove_pointer_t<std::decay_t<std::invoke_result_t<decltype(Getter), T&>>>;
        const auto get = [](const KyObject& object) -> KyObject* {
            return std::invoke(Getter, static_cast<T&>(const_cast<KyObject&>(object)));
        };
        mType->mComponents.push_back({std::move(name), get, &Held::getType});
        return *this;
    }

    /// A signal that is a data member or is returned by a member function.
    template <auto Member>
    KyTypeBuilder& signal(std::string name) {
        using Signal = std::remove_reference_t<std::invoke_result_t<decltype(Member), T&>>;
        const auto edit = [](KyObject& object) -> KySignalBase& {
            return std::invoke(Member, static_cast<T&>(object));
        };
        mType->mSignals.push_back(
            {std::move(name), edit, KySignalDetail::makeParameters(static_cast<const Signal*>(nullptr))});
        return *this;
    }

    /// A method; several of one name are overloads, chosen by their arguments.
    template <class Callable>
    KyTypeBuilder& method(std::string name, Callable callable) {
        mType->mMethods.push_back(kyMakeMethod<T>(std::move(name), callable));
        return *this;
    }

    /// A function of the class that needs no object.
    template <class Callable>
    KyTypeBuilder& staticMethod(std::string name, Callable callable) {
        mType->mStaticMethods.push_back(kyMakeFunction(std::move(name), callable));
        return *this;
    }

    /// A way to make an object from arguments; the callable returns a T*.
    template <class Callable>
    KyTypeBuilder& constructor(Callable callable) {
        mType->mConstructors.push_back(kyMakeFunction(mType->getName(), callable));
        return *this;
    }

    /// Constants, with any numbers.
    KyTypeBuilder& enumeration(std::initializer_list<KyEnum> values) {
        mType->mEnumValues.insert(mType->mEnumValues.end(), values);
        return *this;
    }

    /// Of the class; "true" and "false" for switches.
    KyTypeBuilder& metadata(std::string key, std::string value) {
        mType->mMetadata.insert_or_assign(std::move(key), std::move(value));
        return *this;
    }

    /// Of the attribute described last.
    KyTypeBuilder& attributeMetadata(std::string key, std::string value) {
        if (mLastAttribute)
            mLastAttribute->setMetadata(std::move(key), std::move(value));
        return *this;
    }

    /// See KyType::getVersion.
    KyTypeBuilder& version(int number) {
        mType->mVersion = number;
        return *this;
    }

    /// The record, which the registry owns.
    const KyType* build() { return mType; }

private:
    KyTypeBuilder& add(std::shared_ptr<KyAttributeInterface> attribute) {
        mLastAttribute = attribute.get();
        mType->addAttribute(std::move(attribute));
        return *this;
    }

    KyType* mType;
    KyAttributeInterface* mLastAttribute = nullptr;
};

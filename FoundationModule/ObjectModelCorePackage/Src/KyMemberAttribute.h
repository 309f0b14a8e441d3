// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyAttributeInterface.h"
#include "KyBoundFunction.h"
#include "KyModificationScope.h"

#include <cstddef>
#include <functional>
#include <type_traits>

namespace KyAttributeDetail {

template <class Callable>
inline constexpr bool cIsGiven = !std::is_same_v<Callable, std::nullptr_t>;

/// Calls an accessor; one that returns nothing has succeeded.
template <class Callable, class... A>
bool call(const Callable& callable, A&&... arguments) {
    if constexpr (std::is_same_v<std::invoke_result_t<const Callable&, A...>, bool>) {
        return std::invoke(callable, std::forward<A>(arguments)...);
    } else {
        std::invoke(callable, std::forward<A>(arguments)...);
        return true;
    }
}

template <class T, class Getter>
T& self(const KyObject& object) {
    return static_cast<T&>(const_cast<KyObject&>(object));
}

/// The class of the objects that a value of that type is, null when it is none.
template <class Value>
const KyType* getObjectType() {
    using Argument = KyFieldArgument<Value>;
    if constexpr (Argument::cIsObject)
        return Argument::Target::getType();
    else
        return nullptr;
}

template <class T, class Callable>
struct LastArgument {
    using Arguments = typename KyCallableTraits<Callable>::Arguments;
    using type = std::tuple_element_t<std::tuple_size_v<Arguments> - 1, Arguments>;
};

} // namespace KyAttributeDetail

/// A single value over a getter and a setter of T (member functions or callables that take a T&). A setter that returns
/// bool refuses with false; a null setter makes the attribute read-only.
template <class T, class Getter, class Setter>
class KyMemberAttribute final : public KyAttributeInterface {
public:
    /// What the getter gives.
    using Value = std::remove_cvref_t<std::invoke_result_t<const Getter&, T&>>;

    /// Made by KyTypeBuilder::attribute.
    KyMemberAttribute(std::string name, Getter getter, Setter setter)
        : KyAttributeInterface(std::move(name), eSingle, KyFieldArgument<Value>::getKind())
        , mGetter(getter)
        , mSetter(setter) {}

    const KyType* getObjectType() const override { return KyAttributeDetail::getObjectType<Value>(); }
    bool isReadOnly() const override { return !KyAttributeDetail::cIsGiven<Setter>; }

    bool getValue(const KyObject& object, KyField& value, unsigned index) const override {
        if (index != 0)
            return false;
        value = kyToField(std::invoke(mGetter, KyAttributeDetail::self<T, Getter>(object)));
        return true;
    }

    bool setValue(KyObject& object, const KyField& value, unsigned index) const override {
        if constexpr (KyAttributeDetail::cIsGiven<Setter>) {
            using Argument = KyFieldArgument<typename KyAttributeDetail::LastArgument<T, Setter>::type>;
            typename Argument::Storage storage{};
            if (index != 0 || !Argument::read(value, storage))
                return false;
            KyModificationScope scope(object);
            if (!KyAttributeDetail::call(mSetter, static_cast<T&>(object), Argument::pass(storage)))
                return false;
            scope.finish(eAttributeChanged, getName(), -1);
            return true;
        } else {
            return false;
        }
    }

private:
    Getter mGetter;
    Setter mSetter;
};

/// An enumerated value: kept as an enumeration or int by the class, seen as a field of a registered enumerated type.
/// Numbers and texts that are none of its values are refused.
template <class T, class Getter, class Setter>
class KyEnumAttribute final : public KyAttributeInterface {
public:
    /// What the getter gives.
    using Value = std::remove_cvref_t<std::invoke_result_t<const Getter&, T&>>;

    /// Made by KyTypeBuilder; `fieldType` names a registered enumerated type.
    KyEnumAttribute(std::string name, std::string fieldType, Getter getter, Setter setter)
        : KyAttributeInterface(std::move(name), eSingle, cFieldKindOf<std::int32_t>)
        , mFieldType(std::move(fieldType))
        , mGetter(getter)
        , mSetter(setter) {}

    const KyFieldType* getEnumeration() const override { return KyFieldManager::get().findFieldType(mFieldType); }
    bool isReadOnly() const override { return !KyAttributeDetail::cIsGiven<Setter>; }

    bool getValue(const KyObject& object, KyField& value, unsigned index) const override {
        if (index != 0)
            return false;
        const auto number = static_cast<std::int32_t>(std::invoke(mGetter, KyAttributeDetail::self<T, Getter>(object)));
        const KyFieldType* type = getEnumeration();
        value = type ? KyField::makeEnumerated(type->getKind(), number) : KyField(number);
        return true;
    }

    bool setValue(KyObject& object, const KyField& value, unsigned index) const override {
        if constexpr (KyAttributeDetail::cIsGiven<Setter>) {
            std::int32_t number = 0;
            if (index != 0 || !readNumber(value, number))
                return false;
            KyModificationScope scope(object);
            if (!KyAttributeDetail::call(mSetter, static_cast<T&>(object), static_cast<Value>(number)))
                return false;
            scope.finish(eAttributeChanged, getName(), -1);
            return true;
        } else {
            return false;
        }
    }

private:
    bool readNumber(const KyField& value, std::int32_t& number) const {
        const KyFieldType* type = getEnumeration();
        if (!type)
            return value.to(number);
        if (value.isText())
            number = type->findValue(value.unchecked<std::string>());
        else if (!value.to(number))
            return false;
        return number >= 0 && static_cast<unsigned>(number) < type->getNbValueNames();
    }

    std::string mFieldType;
    Getter mGetter;
    Setter mSetter;
};

/// A container over accessors of T: count(), get(index), and where given set(index, value), insert(index, value) and
/// remove(index). Indices are checked here; accessors that return bool refuse with false.
template <class T, class Count, class Get, class Set, class Insert, class Remove>
class KyContainerAttribute final : public KyAttributeInterface {
public:
    /// What the getter gives for an index.
    using Value = std::remove_cvref_t<std::invoke_result_t<const Get&, T&, unsigned>>;

    /// Made by KyTypeBuilder; what is null is not offered.
    KyContainerAttribute(std::string name, Count count, Get get, Set set, Insert insert, Remove remove)
        : KyAttributeInterface(std::move(name), eContainer, KyFieldArgument<Value>::getKind())
        , mCount(count)
        , mGet(get)
        , mSet(set)
        , mInsert(insert)
        , mRemove(remove) {}

    const KyType* getObjectType() const override { return KyAttributeDetail::getObjectType<Value>(); }
    bool isReadOnly() const override { return !KyAttributeDetail::cIsGiven<Set>; }

    bool getNbValues(const KyObject& object, unsigned& count) const override {
        count = size(object);
        return true;
    }

    bool getValue(const KyObject& object, KyField& value, unsigned index) const override {
        if (index >= size(object))
            return false;
        value = kyToField(std::invoke(mGet, self(object), index));
        return true;
    }

    bool setValue(KyObject& object, const KyField& value, unsigned index) const override {
        if constexpr (KyAttributeDetail::cIsGiven<Set>)
            return index < size(object) && put(mSet, object, value, index, eElementChanged);
        else
            return false;
    }

    bool addValue(KyObject& object, unsigned index, const KyField& value) const override {
        if constexpr (KyAttributeDetail::cIsGiven<Insert>)
            return index <= size(object) && put(mInsert, object, value, index, eElementInserted);
        else
            return false;
    }

    bool removeValue(KyObject& object, unsigned index) const override {
        if constexpr (KyAttributeDetail::cIsGiven<Remove>) {
            if (index >= size(object))
                return false;
            KyModificationScope scope(object);
            if (!KyAttributeDetail::call(mRemove, self(object), index))
                return false;
            scope.finish(eElementRemoved, getName(), static_cast<int>(index));
            return true;
        } else {
            return false;
        }
    }

private:
    static T& self(const KyObject& object) { return KyAttributeDetail::self<T, Get>(object); }
    unsigned size(const KyObject& object) const { return static_cast<unsigned>(std::invoke(mCount, self(object))); }

    template <class Put>
    bool put(const Put& accessor, KyObject& object, const KyField& value, unsigned index,
             KyObjectModificationType kind) const {
        using Argument = KyFieldArgument<typename KyAttributeDetail::LastArgument<T, Put>::type>;
        typename Argument::Storage storage{};
        if (!Argument::read(value, storage))
            return false;
        KyModificationScope scope(object);
        if (!KyAttributeDetail::call(accessor, self(object), index, Argument::pass(storage)))
            return false;
        scope.finish(kind, getName(), static_cast<int>(index));
        return true;
    }

    Count mCount;
    Get mGet;
    Set mSet;
    Insert mInsert;
    Remove mRemove;
};

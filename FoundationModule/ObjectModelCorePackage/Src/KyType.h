// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyAttributeInterface.h"
#include "KyEnum.h"
#include "KyFoundationExport.h"
#include "KyFunction.h"

#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <typeinfo>
#include <unordered_map>
#include <vector>

class KyObject;
class KyReferenceCounted;
template <class T>
class KyTypeBuilder;
class KySignalBase;
template <class... Args>
class KySignal;

/// A component of a class: an object that it holds and shows under a name.
struct KyComponent {
    /// As scripts and editors show it.
    std::string name;
    /// The object held; null when there is none.
    KyObject* (*get)(const KyObject& object) = nullptr;
    /// The class that the component is declared as.
    const KyType* (*objectType)() = nullptr;
};

/// A signal of a class: a named member that objects of the class show.
struct KySignalEntry {
    /// As scripts and editors show it.
    std::string name;
    /// The signal of one object.
    KySignalBase& (*edit)(KyObject& object) = nullptr;
    /// What it is sent with; any for what no field holds.
    std::vector<KyParameter> parameters = {};
};

/// The record of one class: parent, attributes, components, methods, constants, factory. Scripts, editors, QML and
/// settings all work from it. Made by KyTypeBuilder, listed in a registry by index and name.
///
/// A record that is removed leaves the registry but its memory stays valid (a record of the same name takes it over),
/// so that pointers kept by children or by late objects never dangle, in whatever order classes go.
class KYFOUNDATION_EXPORT KyType {
public:
    /// Shared with the records of derived classes.
    using Attributes = std::vector<std::shared_ptr<const KyAttributeInterface>>;
    /// Owned by the record.
    using Functions = std::vector<std::unique_ptr<const KyFunction>>;

    /// The class's name.
    const std::string& getName() const { return mName; }
    /// Null at the root.
    const KyType* getParent() const { return mParent; }
    /// Counts the changes of a class's attributes, for files; 0 unless the builder says otherwise.
    int getVersion() const { return mVersion; }
    /// Same or derived. Constant time.
    bool isA(const KyType& other) const {
        return other.mDepth < mAncestors.size() && mAncestors[other.mDepth] == &other;
    }
    /// The same record.
    bool operator==(const KyType& other) const { return this == &other; }
    /// The C++ class.
    const std::type_info& getTypeInfo() const { return *mTypeInfo; }
    /// False between removal and the next registration.
    bool isRegistered() const { return mIsRegistered; }

    /// Records that are registered now.
    static unsigned getNbTypes();
    /// Null when out of range.
    static const KyType* getType(unsigned index);
    static const KyType* getType(std::string_view name);
    static const KyType* getType(const std::type_info& type);
    /// Takes the record out of the registry, after the removal signal, and sets the pointer to null. Null is ignored.
    static void remove(const KyType*& type);
    /// Sent with a record that is about to leave the registry.
    static KySignal<const KyType*>& removedSignal();

    /// Attributes, the parent's first.
    unsigned getNbAttributes() const { return static_cast<unsigned>(mAttributes.size()); }
    /// @{
    /// Inherited ones included; null when there is none.
    const KyAttributeInterface* getAttribute(unsigned index) const;
    const KyAttributeInterface* getAttribute(std::string_view name) const {
        const auto found = mAttributesByName.find(name);
        return found == mAttributesByName.end() ? nullptr : found->second;
    }
    /// @}
    /// Inherited ones included; null when there is none.
    const KyComponent* getComponent(std::string_view name) const;
    /// Inherited ones included.
    bool hasComponents() const { return !mComponents.empty(); }
    /// The parent's first; of two of one name the later holds.
    const std::vector<KyComponent>& getComponents() const { return mComponents; }

    /// Signals, the parent's first.
    const std::vector<KySignalEntry>& getSignals() const { return mSignals; }

    /// This class's own ones: inherited methods are found through the parent.
    const Functions& getAllMethods() const { return mMethods; }
    /// @{
    /// See getAllMethods.
    const Functions& getAllStaticMethods() const { return mStaticMethods; }
    const Functions& getConstructors() const { return mConstructors; }
    const std::vector<KyEnum>& getAllEnumValues() const { return mEnumValues; }
    /// @}

    /// False for abstract classes and those that are not to be made by name.
    bool hasFactory() const { return mFactory != nullptr; }
    /// Null without a factory.
    KyObject* createObject() const { return mFactory ? mFactory() : nullptr; }
    /// The counted part of an object of this class, null when the class is not counted.
    KyReferenceCounted* getReferenceCounted(KyObject* object) const {
        return mToReferenceCounted ? mToReferenceCounted(object) : nullptr;
    }

    /// True for "true" and "1", false for every other text; the default when nothing is said.
    bool getMetadata(std::string_view name, bool defaultValue) const;
    /// Empty when absent.
    const std::string& getMetadata(std::string_view name) const;

private:
    template <class T>
    friend class KyTypeBuilder;
    struct Registry;

    KyType() = default;
    static KyType* enter(std::string name, const KyType* parent, const std::type_info& typeInfo);
    void reset();
    void addAttribute(std::shared_ptr<const KyAttributeInterface> attribute);

    std::string mName;
    const KyType* mParent = nullptr;
    const std::type_info* mTypeInfo = nullptr;
    int mVersion = 0;
    bool mIsRegistered = false;
    std::size_t mDepth = 0;
    std::vector<const KyType*> mAncestors;
    Attributes mAttributes;
    std::unordered_map<std::string_view, const KyAttributeInterface*> mAttributesByName;
    std::vector<KyComponent> mComponents;
    std::vector<KySignalEntry> mSignals;
    Functions mMethods;
    Functions mStaticMethods;
    Functions mConstructors;
    std::vector<KyEnum> mEnumValues;
    std::map<std::string, std::string, std::less<>> mMetadata;
    KyObject* (*mFactory)() = nullptr;
    KyReferenceCounted* (*mToReferenceCounted)(KyObject*) = nullptr;
};

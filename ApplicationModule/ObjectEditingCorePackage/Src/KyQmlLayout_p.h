// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyAttributeInterface.h"

#include <QByteArray>

#include <cstdlib>
#include <functional>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <vector>

class KyObject;
class KyType;
struct QMetaObject;

/// What QML sees under one attribute or component.
struct KyQmlMember {
    enum class Role { eValue, eContainer, eComponent };

    std::string name;
    Role role = Role::eValue;
    int metaType = 0;
    bool isReadOnly = true;
    /// The notifier, counted within the meta-object.
    int signal = 0;

    bool operator==(const KyQmlMember&) const = default;
};

struct KyQmlMetaObjectDeleter {
    void operator()(QMetaObject* metaObject) const { std::free(metaObject); }
};
using KyQmlMetaObjectPtr = std::unique_ptr<QMetaObject, KyQmlMetaObjectDeleter>;

/// The plan of a meta-object: attributes and components of a class as properties with notifiers, reflected methods as
/// invokable ones. Names are found in the order attributes, components, methods; what begins with an upper-case letter
/// has a second name with a lower-case one where that is free.
///
/// An object's own attributes show no type, since they may go and come back with another.
/// Properties added later only append, so that indices which QML has kept stay right; they share one notifier.
class KyQmlLayout {
public:
    explicit KyQmlLayout(const KyType& type);
    /// With the object's own attributes.
    explicit KyQmlLayout(const KyObject& object);

    /// Adds own attributes that the object has got since; false when there are none.
    bool addNewAttributes(const KyObject& object);
    /// `isDynamic`: for a meta-object that is asked for properties it has not.
    KyQmlMetaObjectPtr makeMetaObject(bool isDynamic) const;

    /// Null when there is none.
    const KyQmlMember* findMember(std::string_view name) const;
    const KyQmlMember& getMember(int property) const {
        return mMembers[static_cast<std::size_t>(mProperties[static_cast<std::size_t>(property)].second)];
    }
    /// Index of the property, -1 when there is none.
    int findProperty(std::string_view name) const;
    /// Name of the reflected method behind an invokable one.
    const std::string& getMethod(int method) const { return mMethods[static_cast<std::size_t>(method)].first; }
    int getNbArguments(int method) const { return mMethods[static_cast<std::size_t>(method)].second; }
    int getNbProperties() const { return static_cast<int>(mProperties.size()); }
    int getNbSignals() const { return static_cast<int>(mSignals.size()); }
    int getNbMethods() const { return static_cast<int>(mMethods.size()); }

    bool operator==(const KyQmlLayout&) const = default;

private:
    void addMember(const KyAttributeInterface& attribute);
    void addAttributes(const KyObject& object);
    void addMember(KyQmlMember member);
    void addComponents(const KyType& type);
    void addMethods(const KyType& type);
    void addAliases(std::size_t firstMember);
    bool isFree(std::string_view name) const;
    std::string makeSignalName(std::string_view name) const;
    void addSignals();

    std::string mClassName;
    std::vector<KyQmlMember> mMembers;
    std::map<std::string, int, std::less<>> mMembersByName;
    /// Names of properties with their members, attributes' own names and aliases alike.
    std::vector<std::pair<std::string, int>> mProperties;
    std::map<std::string, int, std::less<>> mPropertiesByName;
    std::vector<std::string> mSignals;
    /// Reflected names with a number of arguments.
    std::vector<std::pair<std::string, int>> mMethods;
    std::set<std::string, std::less<>> mMethodNames;
};

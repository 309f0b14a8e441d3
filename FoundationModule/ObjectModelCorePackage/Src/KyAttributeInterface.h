// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyField.h"
#include "KyFoundationExport.h"

#include <map>
#include <string>
#include <string_view>

class KyObject;
class KyType;

/// One attribute of an object type (or of one dynamic object): a single value or a container of values, read and
/// written as fields. Owned by the type record.
class KYFOUNDATION_EXPORT KyAttributeInterface {
public:
    /// Whether it has one value, a list of values, or is read by its own class alone.
    enum Kind { eSingle, eContainer, eOther, eNbKinds };

    /// What derived classes know of themselves; the name is the attribute's for good.
    KyAttributeInterface(std::string name, Kind kind, KyFieldKind valueKind)
        : mName(std::move(name))
        , mKind(kind)
        , mValueKind(valueKind) {}
    KyAttributeInterface(const KyAttributeInterface&) = delete;
    KyAttributeInterface& operator=(const KyAttributeInterface&) = delete;
    virtual ~KyAttributeInterface();

    /// As editors and scripts name it.
    const std::string& getName() const { return mName; }
    /// What getValue and setValue work on.
    Kind getKind() const { return mKind; }
    /// Kind of the value, or of a container's elements.
    KyFieldKind getValueKind() const { return mValueKind; }
    /// Of an enumerated value, whose kind is Int: its field type. Null for others, and until that is registered.
    virtual const KyFieldType* getEnumeration() const;
    /// The class of the objects that it holds; null for values.
    virtual const KyType* getObjectType() const;
    /// True when there is no way to set it.
    virtual bool isReadOnly() const = 0;
    /// Free text such as "category" or "unit"; empty when absent.
    const std::string& getMetadata(std::string_view key) const;
    void setMetadata(std::string key, std::string value);

    /// False, and `value` unchanged, when there is no such element.
    virtual bool getValue(const KyObject& object, KyField& value, unsigned index = 0) const = 0;
    /// Converts to the attribute's type (see KyField::convert) and tells the object's listeners. False, and nothing
    /// changed, when it does not convert, is read-only or there is no such element.
    virtual bool setValue(KyObject& object, const KyField& value, unsigned index = 0) const = 0;
    /// 1 for a single value.
    virtual bool getNbValues(const KyObject& object, unsigned& count) const;
    /// Containers: inserts before `index` (count appends).
    virtual bool addValue(KyObject& object, unsigned index, const KyField& value) const;
    /// Containers only: takes the element out; false when out of range or not offered.
    virtual bool removeValue(KyObject& object, unsigned index) const;

private:
    std::string mName;
    Kind mKind;
    KyFieldKind mValueKind;
    std::map<std::string, std::string, std::less<>> mMetadata;
};

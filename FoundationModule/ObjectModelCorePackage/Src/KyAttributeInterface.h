// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyField.h"
#include "KyFoundationExport.h"

#include <map>
#include <string>
#include <string_view>

class KyObject;

/// One attribute of an object type (or of one dynamic object): a single value or a container of values, read and
/// written as fields. Owned by the type record.
class KYFOUNDATION_EXPORT KyAttributeInterface {
public:
    enum Kind { eSingle, eContainer, eOther, eNbKinds };

    KyAttributeInterface(std::string name, Kind kind, KyFieldKind valueKind)
        : mName(std::move(name))
        , mKind(kind)
        , mValueKind(valueKind) {}
    KyAttributeInterface(const KyAttributeInterface&) = delete;
    KyAttributeInterface& operator=(const KyAttributeInterface&) = delete;
    virtual ~KyAttributeInterface();

    const std::string& getName() const { return mName; }
    Kind getKind() const { return mKind; }
    /// Kind of the value, or of a container's elements.
    KyFieldKind getValueKind() const { return mValueKind; }
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
    virtual bool removeValue(KyObject& object, unsigned index) const;

private:
    std::string mName;
    Kind mKind;
    KyFieldKind mValueKind;
    std::map<std::string, std::string, std::less<>> mMetadata;
};

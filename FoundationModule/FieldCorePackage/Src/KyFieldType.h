// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyFieldKind.h"
#include "KyFieldOperations.h"
#include "KyFoundationExport.h"

#include <string>
#include <string_view>
#include <typeinfo>
#include <vector>

/// The record of one field type: name, C++ type, operations on its values, and for enumerated types the value names.
/// Records live as long as the process.
class KYFOUNDATION_EXPORT KyFieldType {
public:
    /// The registered name, or that of the C++ type where none was given.
    const std::string& getName() const { return mName; }
    /// The number that fields of this type carry.
    KyFieldKind getKind() const { return mKind; }
    /// The C++ type.
    const std::type_info& getTypeInfo() const { return *mOperations.typeInfo; }
    /// False for "no value" and for KyInvalidField.
    bool isValue() const { return mIsValue; }

    /// True for a type of named values 0 to n - 1.
    bool isEnumerated() const { return mIsEnumerated; }
    /// 0 for types that are not enumerated.
    unsigned getNbValueNames() const { return static_cast<unsigned>(mValueNames.size()); }
    /// Name of an enumerated value, empty when out of range.
    const std::string& getValueName(unsigned value) const;
    /// Number of the name, -1 when there is none.
    int findValue(std::string_view name) const;

    /// True when the value has elements.
    bool isList() const { return mOperations.size != nullptr; }
    /// What a field does with a value of this type.
    const KyFieldOperations& getOperations() const { return mOperations; }

private:
    friend class KyFieldManager;

    std::string mName;
    KyFieldKind mKind = cFieldKindInvalid;
    KyFieldOperations mOperations;
    std::vector<std::string> mValueNames;
    bool mIsEnumerated = false;
    bool mIsValue = true;
    bool mIsNamed = true;
};

/// The field type of a value that could not be converted.
struct KyInvalidField {
    /// All are the same.
    bool operator==(const KyInvalidField&) const { return true; }
};

/// The registry of field types. Types are never removed: registering a name again gives the existing type.
class KYFOUNDATION_EXPORT KyFieldManager {
public:
    /// The one registry of the process.
    static KyFieldManager& get();

    /// Registers T under a name; the existing type when the name or T is there already. The first name given holds, and
    /// replaces the run-time name of a type that was entered without one.
    template <class T>
    const KyFieldType& registerFieldType(const char* name) {
        return registerOperations(name, kyMakeFieldOperations<T>(), cFieldManagedBit<T>);
    }
    /// Registers an enumerated type: values 0 to count - 1. The same name again replaces the value names.
    const KyFieldType& registerEnumFieldType(const char* name, unsigned count, const char* const* names);

    /// Those registered, fixed ones included.
    unsigned getNbFieldTypes() const;
    /// Null when there is no type of that name.
    const KyFieldType* findFieldType(std::string_view name) const;
    const KyFieldType* findFieldType(const std::type_info& type) const;
    /// The type of that kind; that of KyInvalidField for a kind that is none.
    static const KyFieldType& getFieldType(KyFieldKind kind);

    /// The kind that holds a T; a type nobody registered is entered under its run-time name.
    template <class T>
    static KyFieldKind getKind() {
        if constexpr (KyBuiltInFieldValue<T>) {
            return cFieldKindOf<T>;
        } else {
            static const KyFieldKind kind = get().registerFieldType<T>(nullptr).getKind();
            return kind;
        }
    }

private:
    KyFieldManager();
    const KyFieldType& registerOperations(const char* name, const KyFieldOperations& operations,
                                          KyFieldKind managedBit);
    template <class... Ts>
    void registerBuiltIn(KyTypeList<Ts...>);
};

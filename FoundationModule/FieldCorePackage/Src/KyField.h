// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyFieldKind.h"
#include "KyFieldType.h"
#include "KyFoundationExport.h"

#include <cstring>
#include <iterator>
#include <memory>
#include <new>
#include <string>
#include <typeinfo>

class KyType;

/// A tagged value of any field type: what attributes, methods, scripts and settings exchange.
///
/// Small values (numbers, 2- and 3-vectors, colours, quaternions, object references, texts of up to 15 bytes) stand in
/// the field itself; the rest is held by pointer and copied with the field. Objects are held weakly: a field never
/// keeps one alive and reads as null once it is gone. Moving never throws.
///
/// ```
/// KyField field(KyVec3d(1, 2, 3));
/// if (const KyVec3d* v = field.get<KyVec3d>())
///     use(*v);
/// double x = 0;
/// KyField(7).to(x); // true, x is 7
/// ```
class KYFOUNDATION_EXPORT KyField {
public:
    /// No value.
    KyField() noexcept = default;
    KyField(const KyField& other) { copyFrom(other); }
    KyField(KyField&& other) noexcept { moveFrom(other); }
    /// Holds the value under its canonical type, see KyFieldValue.
    template <class T>
    requires(!std::is_same_v<std::decay_t<T>, KyField>) KyField(T&& value) { store(std::forward<T>(value)); }
    /// Kind and value become those of the other field.
    KyField& operator=(const KyField& other) {
        if (this != &other)
            *this = KyField(other);
        return *this;
    }
    KyField& operator=(KyField&& other) noexcept {
        if (this != &other) {
            clear();
            moveFrom(other);
        }
        return *this;
    }
    ~KyField() { clear(); }

    /// The default value of a kind, such as 0, an empty text or the identity; empty for no kind.
    static KyField makeDefault(KyFieldKind kind);
    /// An enumerated value: `kind` must be that of a type registered by KyFieldManager::registerEnumFieldType.
    static KyField makeEnumerated(KyFieldKind kind, std::int32_t value);

    /// cFieldKindInvalid when it holds nothing.
    KyFieldKind getKind() const { return mKind; }
    /// False for no value and for a value that could not be converted (KyInvalidField).
    bool isValid() const { return mKind != cFieldKindInvalid && getFieldType().isValue(); }
    /// True when it holds nothing.
    bool isEmpty() const { return mKind == cFieldKindInvalid; }
    /// The type of the value held; that of KyInvalidField when there is none.
    const KyFieldType& getFieldType() const { return KyFieldManager::getFieldType(mKind); }
    /// As getFieldType().getTypeInfo().
    const std::type_info& getTypeInfo() const { return getFieldType().getTypeInfo(); }
    /// Another name of getTypeInfo.
    const std::type_info& getRTTIType() const { return getTypeInfo(); }
    /// The dynamic type of the object held, null when none is held.
    const KyType* getKyType() const;

    /// The value when it is of exactly that type, else null.
    template <class T>
    const T* get() const {
        if (mKind != KyFieldManager::getKind<T>())
            return nullptr;
        return &unchecked<T>();
    }
    /// The value without a test: only after a look at getKind().
    template <class T>
    const T& unchecked() const {
        if constexpr (cFieldIsInline<T>)
            return *std::launder(reinterpret_cast<const T*>(mStorage));
        else
            return **std::launder(reinterpret_cast<T* const*>(mStorage));
    }
    /// The value's address, whatever its type. For field types' own operations.
    const void* data() const;

    /// Converts to another kind: between all numbers (integers toward zero, out of range and NaN fail), between vectors
    /// and the like of one size, texts to URLs and back, enumerated values from their names, lists element by element.
    /// False, and the result unchanged, when there is no conversion.
    bool convert(KyFieldKind kind, KyField& result) const;
    bool convert(const std::type_info& type, KyField& result) const;
    /// As convert, into a C++ value (not for object pointers: see kyFromField).
    template <class T>
    bool to(T& value) const {
        using Value = KyFieldValue<T>;
        if (mKind == KyFieldManager::getKind<Value>()) {
            value = static_cast<T>(unchecked<Value>());
            return true;
        }
        KyField converted;
        if (!convert(KyFieldManager::getKind<Value>(), converted))
            return false;
        value = static_cast<T>(converted.unchecked<Value>());
        return true;
    }

    /// True for numbers, booleans, enumerated values and texts that hold a number.
    bool canConvertToInt() const;
    /// Numbers as they convert, texts parsed; 0 when that fails.
    int toInt() const;
    /// @{
    /// As toInt.
    std::int64_t toInt64() const;
    std::uint64_t toUInt64() const;
    double toDouble() const;
    bool toBool() const { return toInt64() != 0; }
    /// @}
    /// Text form, numbers with `precision` significant digits: vectors with blanks, lists with ";".
    std::string toString(int precision = 6) const;
    /// Parses into the field's own type; a field without type becomes a text. False, unchanged, on bad text.
    bool fromString(const std::string& text, int precision = 6);
    /// The object held, null when none is held or it is gone.
    KyObject* toKyObject() const;

    /// True for texts.
    bool isText() const { return mKind == cFieldKindOf<std::string>; }
    /// True for numbers and booleans.
    bool isNumber() const;
    /// As toString().
    std::string getText() const { return toString(); }
    /// As toInt64().
    std::int64_t getInteger() const { return toInt64(); }

    /// Same kind and same value.
    bool operator==(const KyField& other) const;

    /// Makes the field empty.
    void clear() noexcept {
        if (mKind & cFieldKindManaged)
            destroyManaged();
        mKind = cFieldKindInvalid;
    }

private:
    static const char* textOrEmpty(const char* text) { return text ? text : ""; }

    template <class T>
    void store(T&& value) {
        using Value = KyFieldValue<T>;
        if constexpr (std::is_same_v<Value, std::string> && std::is_pointer_v<std::decay_t<T>>)
            construct<Value>(textOrEmpty(value));
        else if constexpr (std::is_arithmetic_v<Value>)
            construct<Value>(static_cast<Value>(value));
        else if constexpr (std::is_same_v<Value, KyObjectReference> &&
                           !std::is_same_v<std::decay_t<T>, KyObjectReference>)
            construct<Value>(
                KyObjectReference(const_cast<std::remove_const_t<std::remove_pointer_t<std::decay_t<T>>>*>(value)));
        else
            construct<Value>(std::forward<T>(value));
    }
    template <class T, class... Args>
    void construct(Args&&... args) {
        if constexpr (cFieldIsInline<T>)
            new (mStorage) T(std::forward<Args>(args)...);
        else
            new (mStorage) T*(new T(std::forward<Args>(args)...));
        mKind = KyFieldManager::getKind<T>();
    }
    void copyFrom(const KyField& other) {
        if (other.mKind & cFieldKindManaged)
            copyManaged(other);
        else
            std::memcpy(mStorage, other.mStorage, sizeof(mStorage));
        mKind = other.mKind;
    }
    void moveFrom(KyField& other) noexcept {
        if (other.mKind & cFieldKindManaged)
            moveManaged(other);
        else
            std::memcpy(mStorage, other.mStorage, sizeof(mStorage));
        mKind = other.mKind;
        other.mKind = cFieldKindInvalid;
    }
    void copyManaged(const KyField& other);
    void moveManaged(KyField& other) noexcept;
    void destroyManaged() noexcept;

    alignas(double) std::byte mStorage[cFieldInlineSize];
    KyFieldKind mKind = cFieldKindInvalid;
};

namespace KyFieldDetail {

template <class T>
void addListOperations(KyFieldOperations& operations) {
    using Element = typename T::value_type;
    operations.size = [](const void* value) { return static_cast<const T*>(value)->size(); };
    operations.element = [](const void* value, std::size_t index) {
        auto at = static_cast<const T*>(value)->begin();
        std::advance(at, static_cast<std::ptrdiff_t>(index));
        return KyField(static_cast<Element>(*at));
    };
    operations.append = [](void* value, const KyField& field) {
        if constexpr (std::is_same_v<Element, KyField>) {
            static_cast<T*>(value)->push_back(field);
            return true;
        } else {
            Element element{};
            if (!field.to(element))
                return false;
            static_cast<T*>(value)->push_back(std::move(element));
            return true;
        }
    };
}

} // namespace KyFieldDetail

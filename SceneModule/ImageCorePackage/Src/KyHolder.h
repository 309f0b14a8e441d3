// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include <utility>

/// Holds one reference of a counted object, of either kind (KyReferenceCounted, KyGraphicsObject), and gives it back
/// when it ends. Null is allowed.
///
/// ```
/// KyHolder<KyImage> image(KyImage::create(url));
/// if (image)
///     use(*image);
/// ```
template <class T>
class KyHolder {
public:
    KyHolder() = default;
    /// Takes a reference; null is allowed.
    explicit KyHolder(T* object)
        : mObject(object) {
        acquire(mObject);
    }
    /// Takes a reference of its own.
    KyHolder(const KyHolder& other)
        : KyHolder(other.mObject) {}
    /// Takes the other one's reference over.
    KyHolder(KyHolder&& other) noexcept
        : mObject(std::exchange(other.mObject, nullptr)) {}
    /// Gives its reference back after it took the other one's.
    KyHolder& operator=(KyHolder other) noexcept {
        std::swap(mObject, other.mObject);
        return *this;
    }
    ~KyHolder() { release(mObject); }

    /// @{
    /// Null, or not to be used, when nothing is held.
    T* get() const { return mObject; }
    T* operator->() const { return mObject; }
    T& operator*() const { return *mObject; }
    /// @}
    /// True when something is held.
    explicit operator bool() const { return mObject != nullptr; }
    /// The same object, or both null.
    bool operator==(const T* other) const { return mObject == other; }

    /// Takes a reference of the new object before the old one is given back.
    void reset(T* object = nullptr) { *this = KyHolder(object); }

private:
    static void acquire(T* object) {
        if (!object)
            return;
        if constexpr (requires { object->addReference(); })
            object->addReference();
        else
            object->incrementReference();
    }
    static void release(T* object) {
        if (!object)
            return;
        if constexpr (requires { object->removeReference(); }) {
            object->removeReference();
        } else {
            object->decrementReference();
            object->deleteIfUnused();
        }
    }

    T* mObject = nullptr;
};

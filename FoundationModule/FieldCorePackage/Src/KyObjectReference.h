// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <utility>

class KyObject;

/// Shared record of one object's life. The object makes it on first use and clears `object` when it ends; the record
/// itself lives as long as anybody holds a reference to it. One thread: the counts are not atomic.
struct KyLiveness {
    /// The object, null once it is gone.
    KyObject* object = nullptr;
    /// References to this record: the object's own and those of every KyObjectReference.
    std::uint32_t nbHolders = 0;
    /// References of a counted object that are held by script instances.
    std::uint32_t nbScriptReferences = 0;
    /// Methods of the object that scripts are running now.
    std::uint32_t nbRunningMethods = 0;
    /// A script destroyed the object while one of its methods ran; it ends with the outermost of them.
    bool destroyPending = false;
};

/// A weak reference to an object: it reads as null once the object is gone and never keeps it alive.
///
/// ```
/// KyObjectReference camera(view->getCamera());
/// if (KyObject* object = camera.get())
///     object->setName("main");
/// ```
class KyObjectReference {
public:
    KyObjectReference() = default;
    /// Refers to any class derived from KyObject; a null pointer gives a null reference.
    template <class T>
    explicit KyObjectReference(T* object)
        : mLiveness(object ? object->getLiveness() : nullptr) {
        hold();
    }
    /// Refers to the object of a record; null refers to none.
    explicit KyObjectReference(KyLiveness* liveness)
        : mLiveness(liveness) {
        hold();
    }
    KyObjectReference(const KyObjectReference& other)
        : mLiveness(other.mLiveness) {
        hold();
    }
    KyObjectReference(KyObjectReference&& other) noexcept
        : mLiveness(std::exchange(other.mLiveness, nullptr)) {}
    /// Refers to what the other one refers to.
    KyObjectReference& operator=(KyObjectReference other) noexcept {
        std::swap(mLiveness, other.mLiveness);
        return *this;
    }
    ~KyObjectReference() { release(mLiveness); }

    /// The object, null when it is gone or none was given.
    KyObject* get() const { return mLiveness ? mLiveness->object : nullptr; }
    /// The record; null for a null reference.
    KyLiveness* getLiveness() const { return mLiveness; }
    /// False when the object is gone or none was given.
    explicit operator bool() const { return get() != nullptr; }
    /// The same living object, or both without one.
    bool operator==(const KyObjectReference& other) const { return get() == other.get(); }

    /// Gives one reference to the record back, deleting it with the last. For holders that keep the raw pointer.
    static void release(KyLiveness* liveness) {
        if (liveness && --liveness->nbHolders == 0)
            delete liveness;
    }

private:
    void hold() {
        if (mLiveness)
            ++mLiveness->nbHolders;
    }

    KyLiveness* mLiveness = nullptr;
};

// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyFoundationExport.h"

/// Objects that live as long as somebody holds a reference. The count starts at 0, so the first holder's reference is
/// the first; a copy starts at 0 and assignment leaves the count. One thread: the count is not atomic.
class KYFOUNDATION_EXPORT KyReferenceCounted {
public:
    KyReferenceCounted() = default;
    /// Starts at 0.
    KyReferenceCounted(const KyReferenceCounted&) {}
    /// The count stays.
    KyReferenceCounted& operator=(const KyReferenceCounted&) { return *this; }
    virtual ~KyReferenceCounted();

    /// Adds one; give it back with removeReference.
    void addReference() const { ++mNbReferences; }
    /// Gives a reference back; with the last one onLastReference() ends the object.
    void removeReference() const;
    /// References that are held now.
    unsigned getNbReferences() const { return mNbReferences; }

protected:
    /// Ends the object: announces the end when it is a KyObject, then deletes it.
    virtual void onLastReference();

private:
    mutable unsigned mNbReferences = 0;
};

// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyFoundationExport.h"
#include "KyObjectModificationType.h"

#include <string>

class KyObject;

/// Makes one setting through an attribute tell listeners exactly once: it sees whether the setter told them itself, and
/// whether the object ended meanwhile. Lives on the stack around the setter.
class KYFOUNDATION_EXPORT KyModificationScope {
public:
    /// The object may end while the scope lives.
    explicit KyModificationScope(KyObject& object);
    ~KyModificationScope();
    KyModificationScope(const KyModificationScope&) = delete;
    KyModificationScope& operator=(const KyModificationScope&) = delete;

    /// Tells the listeners unless the setter has done so or the object is gone.
    void finish(KyObjectModificationType kind, const std::string& attribute, int index);

    /// To be called by whatever tells a change of the object.
    static void onNotified(const KyObject* object);
    /// To be called when the object ends.
    static void onEnded(const KyObject* object);

private:
    KyObject* mObject;
    bool mIsNotified = false;
    KyModificationScope* mOuter;

    static KyModificationScope* msInnermost;
};

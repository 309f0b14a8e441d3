// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KySignal.h"

#include <memory>
#include <string>

class KyObject;
class KyQAttributeEditor;

/// A window with the attributes of whatever object is published under a name, from when it is published on. The window
/// opens with the first; it is empty while there is none, such as between two runs of the scripts.
class KyHostInspector : public KyHasSlots {
public:
    explicit KyHostInspector(const std::string& name);
    ~KyHostInspector() override;
    KyHostInspector(const KyHostInspector&) = delete;
    KyHostInspector& operator=(const KyHostInspector&) = delete;

    /// Whether there has been an object of the name.
    bool hasFound() const { return mHasFound; }

private:
    void onBound(KyObject* object, const std::string& name);
    void onUnbound(KyObject* object, const std::string& name);

    const std::string mName;
    std::unique_ptr<KyQAttributeEditor> mEditor;
    bool mHasFound = false;
};

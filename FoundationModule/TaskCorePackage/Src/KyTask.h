// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyUpdatable.h"

#include <string>

class KyCompositeTask;

/// One step of the host's frame. Tasks stand in an ordered tree under the main task manager; parents do not own their
/// children, and a task that ends leaves its parent. Tasks may enter, leave and end while the tree runs.
///
/// Derived classes do their work in execute(), which runs once a frame while the task is enabled.
class KYFOUNDATION_EXPORT KyTask : public KyUpdatable {
public:
    KyTask() = default;
    /// The name is for messages and editors.
    explicit KyTask(std::string name)
        : mName(std::move(name)) {}
    /// A copy has the same name and state and no parent.
    KyTask(const KyTask& other)
        : mName(other.mName)
        , mIsEnabled(other.mIsEnabled) {}
    /// Takes over name and switch; the place in a parent stays.
    KyTask& operator=(const KyTask& other);
    ~KyTask() override;

    /// @{
    /// For messages and editors.
    void setName(const std::string& name) { mName = name; }
    const std::string& getName() const { return mName; }
    /// @}
    /// Enabled tasks run. Every call tells setEnabledVirtual, changed or not.
    void setEnabled(bool enabled);
    bool isEnabled() const { return mIsEnabled; }
    /// Null while it stands in no tree.
    KyCompositeTask* getParent() const { return mParent; }

    /// One run per frame; false reports that there was nothing to do.
    virtual bool execute();
    /// Runs execute() when enabled.
    void update() override;

private:
    friend class KyCompositeTask;
    virtual void setEnabledVirtual(bool enabled);

    std::string mName;
    KyCompositeTask* mParent = nullptr;
    bool mIsEnabled = true;
};

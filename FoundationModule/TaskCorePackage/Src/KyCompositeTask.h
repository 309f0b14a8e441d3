// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyTask.h"

#include <list>

/// A task that runs its children: those of phase 0 first, then 1, then 2, each phase in list order. A child removed
/// during a run is not run any more; one inserted during a run takes part from the next. Children of the unscheduled
/// phase are in the list and are run by somebody else. Children are not owned.
class KYFOUNDATION_EXPORT KyCompositeTask : public KyTask {
public:
    /// Phases are run in the order of their numbers.
    static constexpr int cNbPhases = 3;
    /// The middle one.
    static constexpr int cDefaultPhase = 1;
    /// Children of this phase are run by somebody else.
    static constexpr int cUnscheduledPhase = -1;

    /// What becomes of a removed child.
    enum RemoveMode { eDetach, eDelete, eNbRemoveModes };

    /// With a name.
    using KyTask::KyTask;
    /// A copy has no children.
    KyCompositeTask(const KyCompositeTask& other)
        : KyTask(other) {}
    /// Takes over name and switch; the children stay.
    KyCompositeTask& operator=(const KyCompositeTask& other);
    ~KyCompositeTask() override;

    /// Position -1 is the end. False, and nothing changed, for null, itself, an ancestor, a child already here, or a
    /// phase that is neither 0 to 2 nor cUnscheduledPhase. A child of another parent leaves it.
    bool insertTask(KyTask* task, int position = -1, int phase = cDefaultPhase);
    /// False when it is no child.
    bool removeTask(KyTask* task, RemoveMode mode = eDetach);
    /// Of all phases.
    unsigned getNbTasks() const;
    /// By position in the list, whatever the phase; null when out of range.
    const KyTask* getTask(unsigned index) const;
    KyTask* editTask(unsigned index);

    bool execute() override;

private:
    struct Child {
        KyTask* task;
        int phase;
        /// Run number in which the child entered; it first runs in a later one.
        unsigned long long enteredInRun;
    };

    void compact();

    /// A list, so that children may enter and leave under a running walk.
    std::list<Child> mChildren;
    unsigned long long mRun = 0;
    unsigned mRunDepth = 0;
    bool* mEndedFlag = nullptr;
};

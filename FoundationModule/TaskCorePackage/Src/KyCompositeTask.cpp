// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyCompositeTask.h"

#include <algorithm>
#include <utility>

KyCompositeTask& KyCompositeTask::operator=(const KyCompositeTask& other) {
    if (this != &other)
        KyTask::operator=(other);
    return *this;
}

KyCompositeTask::~KyCompositeTask() {
    if (mEndedFlag)
        *mEndedFlag = true;
    for (const Child& child : mChildren)
        if (child.task)
            child.task->mParent = nullptr;
}

bool KyCompositeTask::insertTask(KyTask* task, int position, int phase) {
    if (!task || phase < cUnscheduledPhase || phase >= cNbPhases || task->mParent == this)
        return false;
    for (const KyTask* ancestor = this; ancestor; ancestor = ancestor->mParent)
        if (ancestor == task)
            return false;
    if (task->mParent)
        task->mParent->removeTask(task);
    // Removed children leave holes until the run ends; positions count those that are left.
    auto place = mChildren.begin();
    for (int skipped = 0; place != mChildren.end() && (position < 0 || skipped < position); ++place)
        skipped += place->task != nullptr;
    task->mParent = this;
    const unsigned long long enteredInRun = mRunDepth > 0 ? mRun : 0;
    mChildren.insert(place, Child{task, phase, enteredInRun});
    return true;
}

bool KyCompositeTask::removeTask(KyTask* task, RemoveMode mode) {
    const auto found =
        std::find_if(mChildren.begin(), mChildren.end(), [task](const Child& child) { return child.task == task; });
    if (!task || found == mChildren.end())
        return false;
    found->task = nullptr;
    task->mParent = nullptr;
    if (mRunDepth == 0)
        compact();
    if (mode == eDelete)
        delete task;
    return true;
}

unsigned KyCompositeTask::getNbTasks() const {
    return static_cast<unsigned>(
        std::count_if(mChildren.begin(), mChildren.end(), [](const Child& child) { return child.task != nullptr; }));
}

const KyTask* KyCompositeTask::getTask(unsigned index) const {
    for (const Child& child : mChildren)
        if (child.task && index-- == 0)
            return child.task;
    return nullptr;
}

KyTask* KyCompositeTask::editTask(unsigned index) {
    return const_cast<KyTask*>(getTask(index));
}

bool KyCompositeTask::execute() {
    bool hasEnded = false;
    bool* const outerFlag = std::exchange(mEndedFlag, &hasEnded);
    const unsigned long long run = ++mRun;
    ++mRunDepth;
    for (int phase = 0; phase < cNbPhases; ++phase) {
        for (Child& child : mChildren) {
            if (!child.task || child.phase != phase || child.enteredInRun >= run)
                continue;
            child.task->update();
            if (hasEnded) {
                if (outerFlag)
                    *outerFlag = true;
                return true;
            }
        }
    }
    mEndedFlag = outerFlag;
    if (--mRunDepth == 0)
        compact();
    return true;
}

void KyCompositeTask::compact() {
    std::erase_if(mChildren, [](const Child& child) { return child.task == nullptr; });
}

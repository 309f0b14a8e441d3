// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyAttributeCommand_p.h"

#include "KyFieldText_p.h"
#include "KyQtText.h"

namespace {

constexpr int cCommandId = 0x4b79;

} // namespace

KyAttributeCommand::KyAttributeCommand(std::shared_ptr<const KyAttributeTarget> target, KyField before, KyField after,
                                       int session)
    : mTarget(std::move(target))
    , mBefore(std::move(before))
    , mAfter(std::move(after))
    , mSession(session) {
    setText(KyApplication::toQString(mTarget->name));
}

void KyAttributeCommand::redo() {
    if (!std::exchange(mIsDone, false))
        write(mBefore, mAfter);
}

void KyAttributeCommand::undo() {
    write(mAfter, mBefore);
}

void KyAttributeCommand::write(const KyField& present, const KyField& value) {
    ++msNbRunning;
    if (!mTarget->isStill(present) || !mTarget->write(value))
        setObsolete(true);
    --msNbRunning;
}

int KyAttributeCommand::id() const {
    return mSession == 0 ? -1 : cCommandId;
}

bool KyAttributeCommand::mergeWith(const QUndoCommand* other) {
    const auto& next = static_cast<const KyAttributeCommand&>(*other);
    if (next.mSession != mSession || !(*next.mTarget == *mTarget))
        return false;
    mAfter = next.mAfter;
    setObsolete(KyFieldText::areSame(mAfter, mBefore));
    return true;
}

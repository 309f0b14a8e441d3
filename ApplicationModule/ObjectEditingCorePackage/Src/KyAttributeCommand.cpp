// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyAttributeCommand_p.h"

#include "KyQtText.h"

#include <QCoreApplication>

namespace {

constexpr int cCommandId = 0x4b79;

} // namespace

KyAttributeCommand::KyAttributeCommand(KyAttributeTarget target, KyField before, KyField after, int session)
    : mTarget(std::move(target))
    , mBefore(std::move(before))
    , mAfter(std::move(after))
    , mSession(session) {
    setText(
        QCoreApplication::translate("KyQAttributeModel", "change of %1").arg(KyApplication::toQString(mTarget.name)));
}

void KyAttributeCommand::redo() {
    if (!std::exchange(mIsDone, false))
        write(mAfter);
}

void KyAttributeCommand::undo() {
    write(mBefore);
}

void KyAttributeCommand::write(const KyField& value) {
    if (!mTarget.write(value))
        setObsolete(true);
}

int KyAttributeCommand::id() const {
    return mSession == 0 ? -1 : cCommandId;
}

bool KyAttributeCommand::mergeWith(const QUndoCommand* other) {
    const auto& next = static_cast<const KyAttributeCommand&>(*other);
    if (next.mSession != mSession || !(next.mTarget == mTarget))
        return false;
    mAfter = next.mAfter;
    setObsolete(mAfter == mBefore);
    return true;
}

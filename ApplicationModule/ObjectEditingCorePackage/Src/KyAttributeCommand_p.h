// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyAttributeTarget_p.h"

#include <QUndoCommand>

/// One change of a value, made already when the command is pushed. Changes of one editing session merge into one; when
/// they end where they began, nothing is left. A command whose object has ended goes from the stack.
class KyAttributeCommand : public QUndoCommand {
public:
    /// Session 0 never merges.
    KyAttributeCommand(KyAttributeTarget target, KyField before, KyField after, int session);

    void redo() override;
    void undo() override;
    int id() const override;
    bool mergeWith(const QUndoCommand* other) override;

private:
    void write(const KyField& value);

    KyAttributeTarget mTarget;
    KyField mBefore;
    KyField mAfter;
    int mSession;
    bool mIsDone = true;
};

// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyAttributeTarget_p.h"

#include <QUndoCommand>

#include <memory>

/// One change of a value, made already when the command is pushed. Changes of one editing session merge into one; when
/// they end where they began, nothing is left. A command goes from the stack when its object has ended or its element
/// is not what the command left.
class KyAttributeCommand : public QUndoCommand {
public:
    /// Session 0 never merges. The target may move while the command lives.
    KyAttributeCommand(std::shared_ptr<const KyAttributeTarget> target, KyField before, KyField after, int session);

    /// Whether some command is being done or undone: its stack must not lose it meanwhile.
    static bool isRunning() { return msNbRunning > 0; }

    void redo() override;
    void undo() override;
    int id() const override;
    bool mergeWith(const QUndoCommand* other) override;

private:
    void write(const KyField& present, const KyField& value);

    static inline int msNbRunning = 0;

    std::shared_ptr<const KyAttributeTarget> mTarget;
    KyField mBefore;
    KyField mAfter;
    int mSession;
    bool mIsDone = true;
};

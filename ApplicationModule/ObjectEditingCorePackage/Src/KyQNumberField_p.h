// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyField.h"

#include <QAbstractSpinBox>

/// A number of any size and precision with its steps: whole numbers by 1, others by a tenth of their magnitude. Keeps
/// the kind of field that it was made for and refuses what that cannot hold.
class KyQNumberField : public QAbstractSpinBox {
    Q_OBJECT

public:
    explicit KyQNumberField(KyFieldKind kind, QWidget* parent = nullptr);

    void setText(const QString& text);
    /// False, and `number` unchanged, when what stands there is none.
    bool getNumber(KyField& number) const;

    void stepBy(int steps) override;
    QValidator::State validate(QString& text, int& position) const override;

Q_SIGNALS:
    void typed();
    void stepped();

protected:
    void focusInEvent(QFocusEvent* event) override;
    StepEnabled stepEnabled() const override { return StepUpEnabled | StepDownEnabled; }

private:
    bool isWhole() const;
    KyField step(const KyField& number, int steps) const;

    KyField mLike;
};

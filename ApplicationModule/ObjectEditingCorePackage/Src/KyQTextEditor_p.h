// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyQFieldEditor.h"

class QLineEdit;

/// The text of a field: texts themselves, lists, and whatever has no editor of its own.
class KyQTextEditor : public KyQFieldEditor {
    Q_OBJECT

public:
    explicit KyQTextEditor(QWidget* parent);

    bool getField(KyField& field) const override;

protected:
    void showField(const KyField& field) override;
    QLineEdit& editLine() { return *mLine; }

private:
    QLineEdit* mLine;
    KyField mField;
};

// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyQFieldEditor.h"

class QCheckBox;

/// A flag.
class KyQCheckEditor : public KyQFieldEditor {
    Q_OBJECT

public:
    explicit KyQCheckEditor(QWidget* parent);

    bool getField(KyField& field) const override;

protected:
    void showField(const KyField& field) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QCheckBox* mCheck;
};

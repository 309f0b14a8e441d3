// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyQFieldEditor.h"

class QComboBox;

/// An enumerated value, chosen among the names of its field type.
class KyQEnumEditor : public KyQFieldEditor {
    Q_OBJECT

public:
    explicit KyQEnumEditor(QWidget* parent);

    bool getField(KyField& field) const override;

protected:
    void showField(const KyField& field) override;

private:
    QComboBox* mNames;
    KyFieldKind mKind = cFieldKindInvalid;
};

// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyQFieldEditor.h"

class QDateTimeEdit;

/// A date with a calendar, a time of day to the millisecond, or both. Dates before the year 1, invalid ones and times
/// of more than a day are for the text editor.
class KyQDateTimeEditor : public KyQFieldEditor {
    Q_OBJECT

public:
    explicit KyQDateTimeEditor(QWidget* parent);

    bool canShow(const KyField& field) const override;
    bool getField(KyField& field) const override;

protected:
    void showField(const KyField& field) override;

private:
    QDateTimeEdit* mEdit;
    KyFieldKind mKind = cFieldKindInvalid;
};

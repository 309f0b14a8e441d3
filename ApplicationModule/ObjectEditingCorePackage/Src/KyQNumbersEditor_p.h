// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyQFieldEditor.h"

#include <vector>

class KyQNumberField;

/// Numbers, alone or side by side: vectors, quaternions, rectangles.
class KyQNumbersEditor : public KyQFieldEditor {
    Q_OBJECT

public:
    KyQNumbersEditor(KyFieldKind numberKind, int count, QWidget* parent);

    bool canShow(const KyField& field) const override;
    bool getField(KyField& field) const override;

protected:
    void showField(const KyField& field) override;

private:
    std::vector<KyQNumberField*> mNumbers;
    KyField mField;
};

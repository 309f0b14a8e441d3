// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyQCheckEditor_p.h"

#include <QCheckBox>

KyQCheckEditor::KyQCheckEditor(QWidget* parent)
    : KyQFieldEditor(parent)
    , mCheck(new QCheckBox) {
    connect(mCheck, &QCheckBox::clicked, this, [this] { commitNow(); });
    addPart(mCheck);
}

bool KyQCheckEditor::getField(KyField& field) const {
    field = KyField(mCheck->isChecked());
    return true;
}

void KyQCheckEditor::showField(const KyField& field) {
    mCheck->setChecked(field.toBool());
}

// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyQEnumEditor_p.h"

#include "KyQtText.h"

#include <QComboBox>

KyQEnumEditor::KyQEnumEditor(QWidget* parent)
    : KyQFieldEditor(parent)
    , mNames(new QComboBox) {
    mNames->setFrame(false);
    connect(mNames, QOverload<int>::of(&QComboBox::activated), this, [this] { commitNow(); });
    addPart(mNames);
}

bool KyQEnumEditor::getField(KyField& field) const {
    if (mNames->currentIndex() < 0)
        return false;
    field = KyField::makeEnumerated(mKind, mNames->currentIndex());
    return true;
}

void KyQEnumEditor::showField(const KyField& field) {
    if (field.getKind() != mKind) {
        mKind = field.getKind();
        mNames->clear();
        for (unsigned i = 0; i < field.getFieldType().getNbValueNames(); ++i)
            mNames->addItem(KyApplication::toQString(field.getFieldType().getValueName(i)));
    }
    const int value = field.toInt();
    mNames->setCurrentIndex(value >= 0 && value < mNames->count() ? value : -1);
}

// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyQTextEditor_p.h"

#include "KyFieldText_p.h"
#include "KyQtText.h"

#include <QLineEdit>

KyQTextEditor::KyQTextEditor(QWidget* parent)
    : KyQFieldEditor(parent)
    , mLine(new QLineEdit) {
    mLine->setFrame(false);
    connect(mLine, &QLineEdit::textEdited, this, [this] { noteModified(); });
    addPart(mLine);
}

bool KyQTextEditor::getField(KyField& field) const {
    return KyFieldText::parse(KyApplication::toKyString(mLine->text()), mField, field);
}

void KyQTextEditor::showField(const KyField& field) {
    mField = field;
    mLine->setText(KyApplication::toQString(KyFieldText::format(field)));
}

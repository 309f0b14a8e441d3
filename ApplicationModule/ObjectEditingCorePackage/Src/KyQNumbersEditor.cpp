// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyQNumbersEditor_p.h"

#include "KyFieldText_p.h"
#include "KyQNumberField_p.h"

#include <QStringList>

KyQNumbersEditor::KyQNumbersEditor(KyFieldKind numberKind, int count, QWidget* parent)
    : KyQFieldEditor(parent) {
    for (int i = 0; i < count; ++i) {
        auto* number = new KyQNumberField(numberKind);
        connect(number, &KyQNumberField::typed, this, [this] { noteModified(); });
        connect(number, &KyQNumberField::stepped, this, [this] { commitNow(); });
        addPart(number);
        mNumbers.push_back(number);
    }
}

bool KyQNumbersEditor::canShow(const KyField& field) const {
    const QStringList texts = QString::fromStdString(KyFieldText::format(field)).split(QLatin1Char(' '));
    return texts.size() == static_cast<int>(mNumbers.size());
}

void KyQNumbersEditor::showField(const KyField& field) {
    mField = field;
    const QStringList texts = QString::fromStdString(KyFieldText::format(field)).split(QLatin1Char(' '));
    for (int i = 0; i < texts.size() && i < static_cast<int>(mNumbers.size()); ++i)
        mNumbers[static_cast<std::size_t>(i)]->setText(texts[i]);
}

bool KyQNumbersEditor::getField(KyField& field) const {
    std::string text;
    for (const KyQNumberField* number : mNumbers) {
        KyField value;
        if (!number->getNumber(value))
            return false;
        text += (text.empty() ? "" : " ") + KyFieldText::format(value);
    }
    return KyFieldText::parse(text, mField, field);
}

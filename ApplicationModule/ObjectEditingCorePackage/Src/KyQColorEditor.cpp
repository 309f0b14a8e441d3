// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyQColorEditor_p.h"

#include "KyColor.h"
#include "KyQtValues.h"

#include <QColorDialog>
#include <QIcon>
#include <QLineEdit>
#include <QPixmap>
#include <QToolButton>

KyQColorEditor::KyQColorEditor(QWidget* parent)
    : KyQTextEditor(parent)
    , mSwatch(new QToolButton) {
    mSwatch->setObjectName(QStringLiteral("mSwatch"));
    connect(mSwatch, &QToolButton::clicked, this, &KyQColorEditor::openDialog);
    connect(&editLine(), &QLineEdit::textEdited, this, [this] { mChosen.clear(); });
    addButton(mSwatch);
}

bool KyQColorEditor::getField(KyField& field) const {
    if (mChosen.isEmpty())
        return KyQTextEditor::getField(field);
    field = mChosen;
    return true;
}

void KyQColorEditor::showField(const KyField& field) {
    KyQTextEditor::showField(field);
    mChosen.clear();
    QPixmap pixmap(mSwatch->iconSize());
    if (const KyColor* color = field.get<KyColor>())
        pixmap.fill(KyApplication::toQColor(*color));
    mSwatch->setIcon(QIcon(pixmap));
}

void KyQColorEditor::updateTranslations() {
    mSwatch->setToolTip(tr("Choose a colour"));
    KyQTextEditor::updateTranslations();
}

void KyQColorEditor::openDialog() {
    KyField before;
    if (mDialog || !getField(before) || !before.get<KyColor>())
        return;
    mDialog = new QColorDialog(KyApplication::toQColor(*before.get<KyColor>()), this);
    mDialog->setAttribute(Qt::WA_DeleteOnClose);
    mDialog->setOption(QColorDialog::ShowAlphaChannel);
    connect(mDialog, &QColorDialog::currentColorChanged, this,
            [this](const QColor& color) { take(KyField(KyApplication::toKyColor(color))); });
    connect(mDialog, &QColorDialog::rejected, this, [this, before] { take(before); });
    mDialog->open();
}

void KyQColorEditor::take(const KyField& color) {
    mChosen = color;
    commitNow();
}

// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyQUrlEditor_p.h"

#include "KyURL.h"

#include <QFileDialog>
#include <QFileInfo>
#include <QLineEdit>
#include <QToolButton>

KyQUrlEditor::KyQUrlEditor(QWidget* parent)
    : KyQTextEditor(parent)
    , mButton(new QToolButton) {
    mButton->setObjectName(QStringLiteral("mFileButton"));
    mButton->setText(QStringLiteral("..."));
    connect(mButton, &QToolButton::clicked, this, &KyQUrlEditor::chooseFile);
    addButton(mButton);
}

void KyQUrlEditor::updateTranslations() {
    mButton->setToolTip(tr("Choose a file"));
    if (mDialog)
        mDialog->setWindowTitle(tr("Choose a file"));
    KyQTextEditor::updateTranslations();
}

// The dialog is a child, so that the editor stays while it has the focus.
void KyQUrlEditor::chooseFile() {
    if (mDialog)
        return;
    KyField field;
    const KyURL url = getField(field) && field.get<KyURL>() ? *field.get<KyURL>() : KyURL();
    const QString path = QString::fromUtf8(url.getLocalPath().c_str());
    mDialog = new QFileDialog(this, tr("Choose a file"), QFileInfo(path).path());
    mDialog->setAttribute(Qt::WA_DeleteOnClose);
    mDialog->setFileMode(QFileDialog::ExistingFile);
    connect(mDialog, &QFileDialog::fileSelected, this, &KyQUrlEditor::takeFile);
    mDialog->open();
}

void KyQUrlEditor::takeFile(const QString& path) {
    KyURL url;
    url.setLocalPath(path.toUtf8().toStdString());
    editLine().setText(QString::fromStdString(url.toString()));
    commitNow();
}

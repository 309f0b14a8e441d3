// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyQTextEditor_p.h"

class QColorDialog;
class QToolButton;

/// A colour as four numbers or as HTML writes it, with a swatch that opens a dialog with alpha. What is tried there is
/// seen at once and taken back when the dialog is left without OK; a colour that nobody changes stays exactly as it is.
class KyQColorEditor : public KyQTextEditor {
    Q_OBJECT

public:
    explicit KyQColorEditor(QWidget* parent);

    bool getField(KyField& field) const override;

protected:
    void showField(const KyField& field) override;
    void updateTranslations() override;

private:
    void openDialog();
    void take(const KyField& color);

    QToolButton* mSwatch;
    QPointer<QColorDialog> mDialog;
    /// What the dialog chose, empty when the text holds.
    KyField mChosen;
};

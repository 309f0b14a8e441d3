// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyQTextEditor_p.h"

class QFileDialog;
class QToolButton;

/// A URL as text, with a button that chooses a file.
class KyQUrlEditor : public KyQTextEditor {
    Q_OBJECT

public:
    explicit KyQUrlEditor(QWidget* parent);

protected:
    void updateTranslations() override;

private:
    void chooseFile();
    void takeFile(const QString& path);

    QToolButton* mButton;
    QPointer<QFileDialog> mDialog;
};

// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyQTextEditor_p.h"

class QFileDialog;

/// A URL as text, with a button that chooses a file.
class KyQUrlEditor : public KyQTextEditor {
    Q_OBJECT

public:
    explicit KyQUrlEditor(QWidget* parent);

private:
    void chooseFile();
    void takeFile(const QString& path);

    QPointer<QFileDialog> mDialog;
};

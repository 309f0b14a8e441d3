// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QLabel>

class QWindow;

/// A panel over the program's window that lists the keys and gestures. A click on it closes it.
class KyHostHelp : public QLabel {
public:
    KyHostHelp();

    /// Shows it in the upper left of the window, which it stays above; hides it when it is shown.
    void toggle(QWindow& over);

protected:
    void changeEvent(QEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;

private:
    void updateTranslations();
};

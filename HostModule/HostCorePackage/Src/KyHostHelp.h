// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QLabel>
#include <QPointer>
#include <QWindow>

/// A panel over the program's window that lists the keys and gestures. A click on it closes it, and so does what takes
/// the focus from the window, moves it or hides it.
class KyHostHelp : public QLabel {
public:
    KyHostHelp();

    /// Shows it in the upper left of the window, which it stays above, as far as the screen has room; hides it when it
    /// is shown.
    void toggle(QWindow& over);

protected:
    void changeEvent(QEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void fit();
    void setFontSize(int pixels);
    void updateTranslations();

    QPointer<QWindow> mOver;
};

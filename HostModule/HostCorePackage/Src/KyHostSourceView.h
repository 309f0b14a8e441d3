// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QCoreApplication>
#include <QPlainTextEdit>

#include <functional>
#include <memory>
#include <set>

/// Shows the text of a script with numbers of lines from 1, marks of breakpoints and the line that is next. A click on
/// a number tells that somebody wants a breakpoint there, or no longer.
class KyHostSourceView : public QPlainTextEdit {
    Q_DECLARE_TR_FUNCTIONS(KyHostSourceView)

public:
    using Listener = std::function<void(int line)>;

    explicit KyHostSourceView(Listener toggled);
    ~KyHostSourceView() override;

    void setBreakpoints(std::set<int> lines);
    /// 0 for none; the line is brought into sight.
    void setCurrentLine(int line);
    /// What the numbers tell of themselves.
    void setMarginToolTip(const QString& text);
    /// What screen readers hear of it, after what they hear of the line of the text cursor.
    void setHint(const QString& text);
    /// That of the text cursor.
    int getCursorLine() const { return textCursor().blockNumber() + 1; }

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    class Margin;

    int getMarginWidth() const;
    void layOutMargin();
    void describeLine();
    void paintMargin(QPaintEvent& event);
    void onMarginPressed(int y);
    /// Calls with each line in sight and its upper edge and height.
    void forEachLine(const std::function<void(int line, int top, int height)>& callable) const;

    Listener mToggled;
    std::unique_ptr<Margin> mMargin;
    std::set<int> mBreakpoints;
    QString mHint;
    int mCurrentLine = 0;
};

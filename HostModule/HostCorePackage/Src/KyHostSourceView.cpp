// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyHostSourceView.h"

#include <QFontDatabase>
#include <QMouseEvent>
#include <QPainter>
#include <QTextBlock>

#include <algorithm>

namespace {

constexpr int cTabWidth = 4;
constexpr int cFewestDigits = 3;
constexpr int cGap = 6;
/// Legible, but behind the text.
constexpr int cNumberAlpha = 170;
constexpr QColor cBreakpointColor(200, 50, 50);
constexpr QColor cCurrentColor(255, 214, 90, 110);

} // namespace

class KyHostSourceView::Margin : public QWidget {
public:
    explicit Margin(KyHostSourceView& view)
        : QWidget(&view)
        , mView(view) {
        setObjectName("margin");
        setCursor(Qt::PointingHandCursor);
    }

protected:
    void paintEvent(QPaintEvent* event) override { mView.paintMargin(*event); }
    void mousePressEvent(QMouseEvent* event) override { mView.onMarginPressed(event->y()); }
    void wheelEvent(QWheelEvent* event) override { mView.wheelEvent(event); }

private:
    KyHostSourceView& mView;
};

KyHostSourceView::KyHostSourceView(Listener toggled)
    : mToggled(std::move(toggled))
    , mMargin(std::make_unique<Margin>(*this)) {
    setObjectName("source");
    setReadOnly(true);
    setLineWrapMode(NoWrap);
    setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    setTabStopDistance(cTabWidth * fontMetrics().horizontalAdvance(' '));
    connect(this, &QPlainTextEdit::blockCountChanged, [this] { layOutMargin(); });
    connect(this, &QPlainTextEdit::cursorPositionChanged, [this] { describeLine(); });
    connect(this, &QPlainTextEdit::updateRequest, [this] { mMargin->update(); });
    layOutMargin();
}

KyHostSourceView::~KyHostSourceView() {
    disconnect(this, nullptr, nullptr, nullptr);
}

void KyHostSourceView::setMarginToolTip(const QString& text) {
    mMargin->setToolTip(text);
}

void KyHostSourceView::setHint(const QString& text) {
    mHint = text;
    describeLine();
}

void KyHostSourceView::setBreakpoints(std::set<int> lines) {
    mBreakpoints = std::move(lines);
    mMargin->update();
    describeLine();
}

/// The mark in the margin, for those who do not see it.
void KyHostSourceView::describeLine() {
    const int line = getCursorLine();
    const QString text =
        mBreakpoints.contains(line) ? tr("Line %1 has a breakpoint.") : tr("Line %1 has no breakpoint.");
    setAccessibleDescription(text.arg(line) + ' ' + mHint);
}

void KyHostSourceView::setCurrentLine(int line) {
    mCurrentLine = line;
    QTextEdit::ExtraSelection selection;
    selection.cursor = QTextCursor(document()->findBlockByNumber(line - 1));
    selection.format.setBackground(cCurrentColor);
    selection.format.setProperty(QTextFormat::FullWidthSelection, true);
    const bool isThere = line > 0 && line <= blockCount();
    setExtraSelections(isThere ? QList{selection} : QList<QTextEdit::ExtraSelection>());
    if (isThere) {
        setTextCursor(selection.cursor);
        ensureCursorVisible();
    }
    mMargin->update();
}

void KyHostSourceView::resizeEvent(QResizeEvent* event) {
    QPlainTextEdit::resizeEvent(event);
    layOutMargin();
}

int KyHostSourceView::getMarginWidth() const {
    const int nbDigits = std::max(cFewestDigits, static_cast<int>(QString::number(blockCount()).size()));
    return fontMetrics().height() + nbDigits * fontMetrics().horizontalAdvance('9') + 2 * cGap;
}

void KyHostSourceView::layOutMargin() {
    setViewportMargins(getMarginWidth(), 0, 0, 0);
    const QRect area = contentsRect();
    mMargin->setGeometry(area.left(), area.top(), getMarginWidth(), area.height());
}

void KyHostSourceView::forEachLine(const std::function<void(int, int, int)>& callable) const {
    for (QTextBlock block = firstVisibleBlock(); block.isValid(); block = block.next()) {
        const QRectF area = blockBoundingGeometry(block).translated(contentOffset());
        if (area.top() > viewport()->height())
            return;
        callable(block.blockNumber() + 1, qRound(area.top()), qRound(area.height()));
    }
}

void KyHostSourceView::paintMargin(QPaintEvent& event) {
    QPainter painter(mMargin.get());
    painter.setRenderHint(QPainter::Antialiasing);
    painter.fillRect(event.rect(), palette().color(QPalette::Window));
    painter.setFont(font());
    QColor number = palette().color(QPalette::WindowText);
    number.setAlpha(cNumberAlpha);
    forEachLine([&](int line, int top, int height) {
        const int dot = height - cGap;
        painter.setPen(line == mCurrentLine ? palette().color(QPalette::WindowText) : number);
        painter.drawText(0, top, mMargin->width() - cGap, height, Qt::AlignRight, QString::number(line));
        painter.setPen(Qt::NoPen);
        if (mBreakpoints.contains(line)) {
            painter.setBrush(cBreakpointColor);
            painter.drawEllipse(cGap / 2, top + (height - dot) / 2, dot, dot);
        }
    });
}

void KyHostSourceView::onMarginPressed(int y) {
    forEachLine([this, y](int line, int top, int height) {
        if (y >= top && y < top + height)
            mToggled(line);
    });
}

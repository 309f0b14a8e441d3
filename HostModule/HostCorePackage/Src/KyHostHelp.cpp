// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyHostHelp.h"

#include "KyHostKeys.h"

#include <QAccessible>
#include <QCoreApplication>
#include <QEvent>
#include <QScreen>

#include <algorithm>
#include <array>

namespace {

constexpr int cDistance = 16;
constexpr int cFontSize = 13;
constexpr int cSmallestFontSize = 8;
constexpr const char* cStyle = "QLabel { background: #1d232c; color: #e6eaf0; padding: 14px; font-size: %1px; }";

/// What makes the panel useless where it is.
constexpr std::array cEnds{QEvent::FocusOut, QEvent::Move, QEvent::Hide, QEvent::Close};

QString makeRows(std::span<const KyHostKeys::Row> rows) {
    const auto translate = [](const char* text) {
        return QCoreApplication::translate("KyHostKeys", text).toHtmlEscaped();
    };
    QString text;
    for (const KyHostKeys::Row& row : rows)
        text += QStringLiteral("<tr><td style='padding: 2px 22px 2px 0; color: #8fc1ff; white-space: nowrap'>%1</td>"
                               "<td style='padding: 2px 0'>%2</td></tr>")
                    .arg(translate(row.name), translate(row.help));
    return text;
}

} // namespace

KyHostHelp::KyHostHelp()
    : QLabel(nullptr, Qt::ToolTip) {
    setTextFormat(Qt::RichText);
    setFontSize(cFontSize);
    updateTranslations();
}

/// A name would keep its rows from screen readers.
void KyHostHelp::updateTranslations() {
    setText("<table>" + makeRows(KyHostKeys::getGestures()) + "<tr><td>&nbsp;</td></tr>" +
            makeRows(KyHostKeys::getKeys()) + "</table>");
    setAccessibleDescription(QCoreApplication::translate("KyHostKeys", "Keys and gestures"));
    if (isVisible() && mOver)
        fit();
}

void KyHostHelp::changeEvent(QEvent* event) {
    if (event->type() == QEvent::LanguageChange)
        updateTranslations();
    QLabel::changeEvent(event);
}

void KyHostHelp::setFontSize(int pixels) {
    setStyleSheet(QString::fromLatin1(cStyle).arg(pixels));
    ensurePolished();
}

/// As wide as its lines where the screen has that room; else the second column wraps, and letters get smaller.
void KyHostHelp::fit() {
    const QRect room = mOver->screen()->availableGeometry();
    int width = 0, height = 0;
    for (int pixels = cFontSize; pixels >= cSmallestFontSize && (height == 0 || height > room.height()); --pixels) {
        setFontSize(pixels);
        setWordWrap(false);
        width = std::min(sizeHint().width() + 1, room.width());
        setWordWrap(true);
        height = heightForWidth(width);
    }
    const QPoint corner = mOver->mapToGlobal(QPoint(cDistance, cDistance));
    setGeometry(std::max(std::min(corner.x(), room.right() + 1 - width), room.left()),
                std::max(std::min(corner.y(), room.bottom() + 1 - height), room.top()), width, height);
}

void KyHostHelp::toggle(QWindow& over) {
    if (isVisible()) {
        hide();
        return;
    }
    if (mOver)
        mOver->removeEventFilter(this);
    mOver = &over;
    over.installEventFilter(this);
    winId();
    windowHandle()->setTransientParent(&over);
    fit();
    show();
    QAccessibleEvent event(this, QAccessible::Alert);
    QAccessible::updateAccessibility(&event);
}

bool KyHostHelp::eventFilter(QObject* watched, QEvent* event) {
    if (watched == mOver && std::ranges::find(cEnds, event->type()) != cEnds.end())
        hide();
    return QLabel::eventFilter(watched, event);
}

void KyHostHelp::mousePressEvent(QMouseEvent*) {
    hide();
}

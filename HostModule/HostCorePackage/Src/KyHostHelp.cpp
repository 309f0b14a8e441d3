// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyHostHelp.h"

#include "KyHostKeys.h"

#include <QCoreApplication>
#include <QEvent>
#include <QWindow>

namespace {

constexpr int cDistance = 16;
constexpr const char* cStyle = "QLabel { background: #1d232c; color: #e6eaf0; padding: 14px; font-size: 13px; }";

QString makeRows(std::span<const KyHostKeys::Row> rows) {
    const auto translate = [](const char* text) {
        return QCoreApplication::translate("KyHostKeys", text).toHtmlEscaped();
    };
    QString text;
    for (const KyHostKeys::Row& row : rows)
        text += QStringLiteral("<tr><td style='padding: 2px 22px 2px 0; color: #8fc1ff'>%1</td><td style='padding: 2px "
                               "0'>%2</td></tr>")
                    .arg(translate(row.name), translate(row.help));
    return text;
}

} // namespace

KyHostHelp::KyHostHelp()
    : QLabel(nullptr, Qt::ToolTip) {
    setStyleSheet(QLatin1String(cStyle));
    setTextFormat(Qt::RichText);
    updateTranslations();
}

void KyHostHelp::updateTranslations() {
    setText("<table>" + makeRows(KyHostKeys::getGestures()) + "<tr><td>&nbsp;</td></tr>" +
            makeRows(KyHostKeys::getKeys()) + "</table>");
    setAccessibleName(QCoreApplication::translate("KyHostKeys", "Keys and gestures"));
    if (isVisible())
        resize(sizeHint());
}

void KyHostHelp::changeEvent(QEvent* event) {
    if (event->type() == QEvent::LanguageChange)
        updateTranslations();
    QLabel::changeEvent(event);
}

void KyHostHelp::toggle(QWindow& over) {
    if (isVisible()) {
        hide();
        return;
    }
    winId();
    windowHandle()->setTransientParent(&over);
    move(over.mapToGlobal(QPoint(cDistance, cDistance)));
    // Qt would limit it to two thirds of the screen.
    resize(sizeHint());
    show();
}

void KyHostHelp::mousePressEvent(QMouseEvent*) {
    hide();
}

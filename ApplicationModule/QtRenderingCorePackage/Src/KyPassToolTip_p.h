// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QGraphicsProxyWidget>
#include <QGraphicsView>
#include <QPointer>
#include <QString>
#include <QTimer>

/// The tool tip of a pass, an item of its Qt scene: Qt's own would open on the desktop, beside the picture. Its size is
/// that of the picture's pixels, however the view is scaled.
class KyPassToolTip {
public:
    KyPassToolTip();
    ~KyPassToolTip() { hide(); }
    KyPassToolTip(const KyPassToolTip&) = delete;
    KyPassToolTip& operator=(const KyPassToolTip&) = delete;

    /// Shows the tip of what is under a position of the viewport; false when that has none. A widget without a text of
    /// its own is asked.
    bool show(QGraphicsView& view, const QPointF& position);
    /// The pointer came to a position: ends the tip of what it left, and shows another when it rests there.
    void follow(QGraphicsView& view, const QPointF& position);
    void hide();
    /// Ends it when what it belongs to is not there any more.
    void check();

private:
    QString findText(QGraphicsView& view, const QPointF& position) const;
    void open(QGraphicsView& view, const QPointF& position);

    QPointer<QGraphicsView> mView;
    QPointF mPosition;
    QPointer<QGraphicsProxyWidget> mItem;
    QString mText;
    QTimer mRest;
    QTimer mEnd;
};

// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyPassToolTip_p.h"

#include <QAbstractItemView>
#include <QCoreApplication>
#include <QHelpEvent>
#include <QLabel>
#include <QStyle>
#include <QTabBar>
#include <QTextDocument>
#include <QToolTip>

#include <algorithm>

namespace {

// As Qt's own tips.
constexpr QPointF cOffset(2.0, 16.0);
constexpr double cGapAbove = 4.0;
constexpr int cShortestTime = 10000;
constexpr int cTimePerLetter = 40;
constexpr int cShortText = 100;
/// Above all that is not made to be.
constexpr double cZValue = 1e9;

/// Of an entry in the widget; empty when it has no entries with tips.
QString findEntryText(const QWidget& widget, const QPoint& position) {
    if (const auto* bar = qobject_cast<const QTabBar*>(&widget))
        return bar->tabToolTip(bar->tabAt(position));
    const auto* list = qobject_cast<const QAbstractItemView*>(widget.parentWidget());
    if (list && list->viewport() == &widget)
        return list->indexAt(position).data(Qt::ToolTipRole).toString();
    return {};
}

QString findWidgetText(const QWidget& top, const QPoint& position) {
    const QWidget* child = top.childAt(position);
    for (const QWidget* widget = child ? child : &top; widget; widget = widget->parentWidget()) {
        const QString entry = findEntryText(*widget, widget->mapFrom(&top, position));
        if (!entry.isEmpty() || !widget->toolTip().isEmpty())
            return entry.isEmpty() ? widget->toolTip() : entry;
        if (widget == &top)
            break;
    }
    return {};
}

QLabel* createLabel(const QString& text, int widest) {
    auto* const label = new QLabel(text);
    label->setFont(QToolTip::font());
    label->setPalette(QToolTip::palette());
    label->setBackgroundRole(QPalette::ToolTipBase);
    label->setForegroundRole(QPalette::ToolTipText);
    label->setAutoFillBackground(true);
    label->setFrameShape(QFrame::Box);
    label->setMargin(1 + label->style()->pixelMetric(QStyle::PM_ToolTipLabelFrameWidth, nullptr, label));
    label->setWordWrap(Qt::mightBeRichText(text));
    label->adjustSize();
    if (label->sizeHint().width() > widest) {
        label->setWordWrap(true);
        label->resize(widest, label->heightForWidth(widest));
    }
    return label;
}

/// Under the pointer, or above it where there is no room; all of it in the view where that is large enough.
QPointF getCorner(const QPointF& pointer, const QSizeF& size, const QSizeF& view) {
    QPointF corner = pointer + cOffset;
    if (corner.y() + size.height() > view.height())
        corner.setY(pointer.y() - cGapAbove - size.height());
    corner.setX(std::max(0.0, std::min(corner.x(), view.width() - size.width())));
    corner.setY(std::max(0.0, corner.y()));
    return corner;
}

QPointF toScene(const QGraphicsView& view, const QPointF& position) {
    return view.viewportTransform().inverted().map(position);
}

/// Some widgets make their tips when they are asked.
bool askWidget(const QGraphicsView& view, const QPointF& position) {
    const QPointF place = toScene(view, position);
    const auto* proxy = qgraphicsitem_cast<QGraphicsProxyWidget*>(
        view.scene() ? view.scene()->itemAt(place, view.viewportTransform()) : nullptr);
    QWidget* const top = proxy ? proxy->widget() : nullptr;
    if (!top)
        return false;
    const QPoint inTop = proxy->mapFromScene(place).toPoint();
    QWidget* const child = top->childAt(inTop);
    QWidget* const widget = child ? child : top;
    const QPoint inWidget = widget->mapFrom(top, inTop);
    QHelpEvent event(QEvent::ToolTip, inWidget, widget->mapToGlobal(inWidget));
    return QCoreApplication::sendEvent(widget, &event) && event.isAccepted();
}

} // namespace

KyPassToolTip::KyPassToolTip() {
    mRest.setSingleShot(true);
    mEnd.setSingleShot(true);
    QObject::connect(&mRest, &QTimer::timeout, &mRest, [this] {
        if (mView)
            show(*mView, mPosition);
    });
    QObject::connect(&mEnd, &QTimer::timeout, &mEnd, [this] { hide(); });
}

bool KyPassToolTip::show(QGraphicsView& view, const QPointF& position) {
    const QString text = findText(view, position);
    if (mItem && text == mText)
        return true;
    if (text.isEmpty() && askWidget(view, position))
        return true;
    hide();
    if (text.isEmpty())
        return false;
    mText = text;
    open(view, position);
    return true;
}

void KyPassToolTip::follow(QGraphicsView& view, const QPointF& position) {
    mPosition = position;
    check();
    if (mItem)
        return;
    hide();
    mView = &view;
    mRest.start(view.style()->styleHint(QStyle::SH_ToolTip_WakeUpDelay, nullptr, &view));
}

void KyPassToolTip::check() {
    if (mItem && (!mView || mItem->scene() != mView->scene() || findText(*mView, mPosition) != mText))
        hide();
}

void KyPassToolTip::hide() {
    mRest.stop();
    mEnd.stop();
    if (!mItem)
        return;
    // The scene may be in the middle of an event that this one came out of.
    mItem->hide();
    mItem->deleteLater();
    mItem = nullptr;
}

QString KyPassToolTip::findText(QGraphicsView& view, const QPointF& position) const {
    if (!view.scene())
        return {};
    const QPointF place = toScene(view, position);
    for (const QGraphicsItem* item :
         view.scene()->items(place, Qt::IntersectsItemShape, Qt::DescendingOrder, view.viewportTransform())) {
        if (item == mItem)
            continue;
        const auto* proxy = qgraphicsitem_cast<const QGraphicsProxyWidget*>(item);
        // A widget hides what is below it.
        if (proxy && proxy->widget())
            return findWidgetText(*proxy->widget(), proxy->mapFromScene(place).toPoint());
        if (!item->toolTip().isEmpty())
            return item->toolTip();
    }
    return {};
}

void KyPassToolTip::open(QGraphicsView& view, const QPointF& position) {
    mView = &view;
    mPosition = position;
    mItem = view.scene()->addWidget(createLabel(mText, view.width()));
    QObject::connect(view.scene(), &QGraphicsScene::changed, mItem, [this] { check(); });
    mItem->setAcceptedMouseButtons(Qt::NoButton);
    mItem->setAcceptHoverEvents(false);
    mItem->setZValue(cZValue);
    const QTransform toItems = view.viewportTransform().inverted();
    mItem->setTransform(QTransform(toItems.m11(), toItems.m12(), toItems.m21(), toItems.m22(), 0.0, 0.0));
    mItem->setPos(toItems.map(getCorner(position, mItem->size(), view.size())));
    mEnd.start(cShortestTime + cTimePerLetter * std::max(0, mText.size() - cShortText));
}

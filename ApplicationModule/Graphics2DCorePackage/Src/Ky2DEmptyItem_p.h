// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QGraphicsItem>

/// Shows nothing and is never under a pointer; what hangs below it gets all events.
class Ky2DEmptyItem : public QGraphicsItem {
public:
    Ky2DEmptyItem() { setFlag(ItemHasNoContents); }

    QRectF boundingRect() const override { return QRectF(); }
    void paint(QPainter*, const QStyleOptionGraphicsItem*, QWidget*) override {}
};

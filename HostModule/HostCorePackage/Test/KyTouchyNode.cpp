// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyTouchyNode.h"

#include "KyTypeBuilder.h"

#include <QBrush>
#include <QGraphicsRectItem>
#include <QGraphicsSceneMouseEvent>
#include <QGraphicsSceneWheelEvent>
#include <QKeyEvent>
#include <QPen>

#include <algorithm>

class KyTouchyNode::Plate : public QGraphicsRectItem {
public:
    explicit Plate(KyTouchyNode& node)
        : QGraphicsRectItem(0, 0, 100, 30)
        , mNode(node) {
        setPen(Qt::NoPen);
        setBrush(Qt::gray);
        setFlag(ItemIsFocusable);
    }

private:
    void mousePressEvent(QGraphicsSceneMouseEvent*) override { ++mNode.mClicks; }
    void mouseMoveEvent(QGraphicsSceneMouseEvent* event) override {
        mNode.mDragged = std::clamp(static_cast<int>(event->pos().x()), 0, 100);
    }
    void wheelEvent(QGraphicsSceneWheelEvent* event) override { mNode.mTurns += event->delta() / 120; }
    void keyPressEvent(QKeyEvent* event) override {
        mNode.mText += event->text().toStdString();
        event->setAccepted(!event->text().isEmpty());
    }

    KyTouchyNode& mNode;
};

const KyType* KyTouchyNode::msType = nullptr;

void KyTouchyNode::initializeType() {
    msType = KyTypeBuilder<KyTouchyNode>("KyTouchyNode", Ky2DProxy::getType())
                 .factory()
                 .attribute("Clicks", &KyTouchyNode::getClicks)
                 .attribute("Dragged", &KyTouchyNode::getDragged)
                 .attribute("Text", &KyTouchyNode::getText)
                 .attribute("Turns", &KyTouchyNode::getTurns)
                 .method("makeTransparent", &KyTouchyNode::makeTransparent)
                 .build();
}

void KyTouchyNode::finalizeType() {
    KyType::remove(msType);
}

/// The 2D scene ends the plate.
KyTouchyNode::KyTouchyNode()
    : Ky2DProxy(new Plate(*this)) {}

void KyTouchyNode::makeTransparent() {
    static_cast<Plate*>(getQGraphicsItem())->setBrush(Qt::NoBrush);
}

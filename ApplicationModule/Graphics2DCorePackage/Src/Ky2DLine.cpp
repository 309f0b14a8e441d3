// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "Ky2DLine.h"

#include "Ky2DStyle.h"

#include "KyCallSignatures.h"
#include "KyCast.h"
#include "KyTypeBuilder.h"

#include <QGraphicsLineItem>
#include <QPainterPath>
#include <QPen>

namespace {

/// A line that may be none: Qt draws the caps even of an empty one.
class KyLineItem : public QGraphicsLineItem {
public:
    /// False for nothing to draw.
    void setDrawn(bool isDrawn) {
        prepareGeometryChange();
        mIsDrawn = isDrawn;
    }

    QRectF boundingRect() const override { return mIsDrawn ? QGraphicsLineItem::boundingRect() : QRectF(); }
    QPainterPath shape() const override { return mIsDrawn ? QGraphicsLineItem::shape() : QPainterPath(); }
    void paint(QPainter* painter, const QStyleOptionGraphicsItem* option, QWidget* widget) override {
        if (mIsDrawn)
            QGraphicsLineItem::paint(painter, option, widget);
    }

private:
    bool mIsDrawn = true;
};

} // namespace

const KyType* Ky2DLine::msType = nullptr;

const KyType* Ky2DLine::getType() {
    if (!msType)
        initializeType();
    return msType;
}

Ky2DLine* Ky2DLine::cast(KyObject* object) {
    return kyCast<Ky2DLine>(object);
}

Ky2DLine* Ky2DLine::create() {
    return new Ky2DLine;
}

KyObject* Ky2DLine::factory() {
    return create();
}

void Ky2DLine::finalizeType() {
    KyType::remove(msType);
}

const KyType* Ky2DLine::getObjectType() const {
    return getType();
}

Ky2DLine* Ky2DLine::clone() const {
    return new Ky2DLine(*this);
}

void Ky2DLine::initializeType() {
    if (msType)
        return;
    Ky2DNode::initializeType();
    msType = KyTypeBuilder<Ky2DLine>("Ky2DLine", Ky2DNode::getType())
                 .factory()
                 .attribute("P1", &Ky2DLine::getP1, &Ky2DLine::setP1)
                 .attribute("P2", &Ky2DLine::getP2, &Ky2DLine::setP2)
                 .method("getP1", &Ky2DLine::getP1)
                 .method("setP1", &Ky2DLine::setP1)
                 .method("setP1", [](Ky2DLine& line, double x, double y) { line.setP1(KyVec2d(x, y)); })
                 .method("getP2", &Ky2DLine::getP2)
                 .method("setP2", &Ky2DLine::setP2)
                 .method("setP2", [](Ky2DLine& line, double x, double y) { line.setP2(KyVec2d(x, y)); })
                 .build();
    KyCallSignatures::add("Ky2DLine", {"setP1(point)", "setP1(x, y)", "setP2(point)", "setP2(x, y)"});
}

Ky2DLine::Ky2DLine() {
    createItem<KyLineItem>();
}

Ky2DLine::Ky2DLine(const Ky2DLine& other)
    : Ky2DNode(other)
    , mP1(other.mP1)
    , mP2(other.mP2) {
    createItem<KyLineItem>();
}

void Ky2DLine::setP1(const KyVec2d& point) {
    setGeometry(mP1, point, "P1");
}

void Ky2DLine::setP2(const KyVec2d& point) {
    setGeometry(mP2, point, "P2");
}

void Ky2DLine::updateQGraphicsItemGeometry() {
    auto* item = editItem<KyLineItem>();
    if (!item)
        return;
    const KyVec2d from = mP1 + getQtOffset(), to = mP2 + getQtOffset();
    const bool isFinite = from.isFinite() && to.isFinite();
    item->setDrawn(isFinite);
    item->setLine(isFinite ? QLineF(from.x, from.y, to.x, to.y) : QLineF());
}

void Ky2DLine::updateQGraphicsItemStyle() {
    auto* item = editItem<QGraphicsLineItem>();
    if (!item || !getStyle())
        return;
    QPen pen;
    getStyle()->configureLineStyle(&pen);
    item->setPen(pen);
}

// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "Ky2DLine.h"

#include "Ky2DStyle.h"

#include "KyCast.h"
#include "KyTypeBuilder.h"

#include <QGraphicsLineItem>
#include <QPen>

const KyType* Ky2DLine::msType = nullptr;

const KyType* Ky2DLine::getType() {
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
    return msType;
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
}

Ky2DLine::Ky2DLine() {
    createItem<QGraphicsLineItem>();
}

Ky2DLine::Ky2DLine(const Ky2DLine& other)
    : Ky2DNode(other)
    , mP1(other.mP1)
    , mP2(other.mP2) {
    createItem<QGraphicsLineItem>();
}

void Ky2DLine::setP1(const KyVec2d& point) {
    setGeometry(mP1, point, "P1");
}

void Ky2DLine::setP2(const KyVec2d& point) {
    setGeometry(mP2, point, "P2");
}

void Ky2DLine::updateQGraphicsItemGeometry() {
    auto* item = editItem<QGraphicsLineItem>();
    if (!item)
        return;
    const KyVec2d from = mP1 + getQtOffset(), to = mP2 + getQtOffset();
    item->setLine(from.isFinite() && to.isFinite() ? QLineF(from.x, from.y, to.x, to.y) : QLineF());
}

void Ky2DLine::updateQGraphicsItemStyle() {
    auto* item = editItem<QGraphicsLineItem>();
    if (!item || !getStyle())
        return;
    QPen pen;
    getStyle()->configureLineStyle(&pen);
    item->setPen(pen);
}

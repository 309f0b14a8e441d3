// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "Ky2DEllipse.h"

#include "Ky2DStyle.h"
#include "Ky2DUtil.h"

#include "KyCast.h"
#include "KyTypeBuilder.h"

#include <QBrush>
#include <QGraphicsEllipseItem>
#include <QPen>

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

/// Qt's sixteenths of a degree, truncated.
int toSixteenths(double degrees) {
    using Limits = std::numeric_limits<int>;
    if (std::isnan(degrees))
        return 0;
    return static_cast<int>(
        std::clamp(degrees * 16, static_cast<double>(Limits::min()), static_cast<double>(Limits::max())));
}

} // namespace

const KyType* Ky2DEllipse::msType = nullptr;

const KyType* Ky2DEllipse::getType() {
    if (!msType)
        initializeType();
    return msType;
}

Ky2DEllipse* Ky2DEllipse::cast(KyObject* object) {
    return kyCast<Ky2DEllipse>(object);
}

Ky2DEllipse* Ky2DEllipse::create() {
    return new Ky2DEllipse;
}

KyObject* Ky2DEllipse::factory() {
    return create();
}

void Ky2DEllipse::finalizeType() {
    KyType::remove(msType);
}

const KyType* Ky2DEllipse::getObjectType() const {
    return getType();
}

Ky2DEllipse* Ky2DEllipse::clone() const {
    return new Ky2DEllipse(*this);
}

void Ky2DEllipse::initializeType() {
    if (msType)
        return;
    Ky2DNode::initializeType();
    msType = KyTypeBuilder<Ky2DEllipse>("Ky2DEllipse", Ky2DNode::getType())
                 .factory()
                 .attribute("X", &Ky2DEllipse::getX, &Ky2DEllipse::setX)
                 .attribute("Y", &Ky2DEllipse::getY, &Ky2DEllipse::setY)
                 .attribute("RX", &Ky2DEllipse::getRX, &Ky2DEllipse::setRX)
                 .attribute("RY", &Ky2DEllipse::getRY, &Ky2DEllipse::setRY)
                 .attribute("StartAngle", &Ky2DEllipse::getStartAngle, &Ky2DEllipse::setStartAngle)
                 .attribute("SpanAngle", &Ky2DEllipse::getSpanAngle, &Ky2DEllipse::setSpanAngle)
                 .method("getX", &Ky2DEllipse::getX)
                 .method("setX", &Ky2DEllipse::setX)
                 .method("getY", &Ky2DEllipse::getY)
                 .method("setY", &Ky2DEllipse::setY)
                 .method("getRX", &Ky2DEllipse::getRX)
                 .method("setRX", &Ky2DEllipse::setRX)
                 .method("getRY", &Ky2DEllipse::getRY)
                 .method("setRY", &Ky2DEllipse::setRY)
                 .method("getStartAngle", &Ky2DEllipse::getStartAngle)
                 .method("setStartAngle", &Ky2DEllipse::setStartAngle)
                 .method("getSpanAngle", &Ky2DEllipse::getSpanAngle)
                 .method("setSpanAngle", &Ky2DEllipse::setSpanAngle)
                 .build();
}

Ky2DEllipse::Ky2DEllipse() {
    createItem<QGraphicsEllipseItem>();
}

Ky2DEllipse::Ky2DEllipse(const Ky2DEllipse& other)
    : Ky2DNode(other)
    , mX(other.mX)
    , mY(other.mY)
    , mRX(other.mRX)
    , mRY(other.mRY)
    , mStartAngle(other.mStartAngle)
    , mSpanAngle(other.mSpanAngle) {
    createItem<QGraphicsEllipseItem>();
}

void Ky2DEllipse::setX(double x) {
    setGeometry(mX, x, "X");
}

void Ky2DEllipse::setY(double y) {
    setGeometry(mY, y, "Y");
}

void Ky2DEllipse::setRX(double radius) {
    setGeometry(mRX, radius, "RX");
}

void Ky2DEllipse::setRY(double radius) {
    setGeometry(mRY, radius, "RY");
}

void Ky2DEllipse::setStartAngle(double degrees) {
    setGeometry(mStartAngle, degrees, "StartAngle");
}

void Ky2DEllipse::setSpanAngle(double degrees) {
    setGeometry(mSpanAngle, degrees, "SpanAngle");
}

void Ky2DEllipse::updateQGraphicsItemGeometry() {
    auto* item = editItem<QGraphicsEllipseItem>();
    if (!item)
        return;
    const QRectF rect(getQtOffset().x + mX - mRX, getQtOffset().y + mY - mRY, 2 * mRX, 2 * mRY);
    const double sum = rect.x() + rect.y() + rect.width() + rect.height();
    item->setRect(std::isfinite(sum) ? rect.normalized() : QRectF());
    item->setSpanAngle(toSixteenths(mSpanAngle));
    item->setStartAngle(toSixteenths(mStartAngle));
}

void Ky2DEllipse::updateQGraphicsItemStyle() {
    Ky2DUtil::applyShapeStyle(getStyle(), editItem<QGraphicsEllipseItem>());
}

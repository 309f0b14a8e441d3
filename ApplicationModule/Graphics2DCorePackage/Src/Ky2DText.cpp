// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "Ky2DText.h"

#include "Ky2DItem.h"
#include "Ky2DStyle.h"
#include "Ky2DUtil.h"
#include "KyWhiteSpace_p.h"

#include "KyQtText.h"

#include "KyTypeBuilder.h"

#include <QBrush>
#include <QFont>
#include <QGraphicsSimpleTextItem>
#include <QPen>

namespace {

/// From the top of a line to where its letters stand, as a part of its height.
constexpr double cLinePart = 0.815;

/// How much of its width a text moves to the left.
double getWidthPart(KyTextAnchor anchor) {
    switch (anchor) {
    case eMiddle:
        return 0.5;
    case eEnd:
        return 1.0;
    default:
        return 0.0;
    }
}

/// How much of its height a text moves up.
double getHeightPart(KyTextVerticalAnchor anchor) {
    switch (anchor) {
    case eCenter:
        return 0.5;
    case eLine:
        return cLinePart;
    case eBottom:
        return 1.0;
    default:
        return 0.0;
    }
}

} // namespace

const KyType* Ky2DText::msType = nullptr;

void Ky2DText::initializeType() {
    if (msType)
        return;
    Ky2DNode::initializeType();
    using T = Ky2DText;
    msType = KyTypeBuilder<T>("Ky2DText", Ky2DNode::getType())
                 .factory()
                 .attribute("X", &T::getX, &T::setX)
                 .attribute("Y", &T::getY, &T::setY)
                 .attribute("Text", &T::getText, &T::setText)
                 .attribute("WhiteSpaceHandling", &T::getWhiteSpaceHandling, &T::setWhiteSpaceHandling)
                 .enumeration({{"eWhiteSpaceUnchanged", eWhiteSpaceUnchanged},
                               {"eWhiteSpaceDefault", eWhiteSpaceDefault},
                               {"eWhiteSpacePreserve", eWhiteSpacePreserve}})
                 .method("getX", &T::getX)
                 .method("setX", &T::setX)
                 .method("getY", &T::getY)
                 .method("setY", &T::setY)
                 .method("getText", &T::getText)
                 .method("setText", &T::setText)
                 .method("getWhiteSpaceHandling", &T::getWhiteSpaceHandling)
                 .method("setWhiteSpaceHandling", &T::setWhiteSpaceHandling)
                 .method("getWhiteSpaceHandledText", &T::getWhiteSpaceHandledText)
                 .build();
}

void Ky2DText::finalizeType() {
    KyType::remove(msType);
}

const KyType* Ky2DText::getType() {
    if (!msType)
        initializeType();
    return msType;
}

const KyType* Ky2DText::getObjectType() const {
    return getType();
}

Ky2DText* Ky2DText::cast(KyObject* object) {
    return kyCast<Ky2DText>(object);
}

Ky2DText::Ky2DText() {
    createItem<QGraphicsSimpleTextItem>();
}

Ky2DText::Ky2DText(const Ky2DText& other)
    : Ky2DNode(other)
    , mX(other.mX)
    , mY(other.mY)
    , mText(other.mText)
    , mWhiteSpaceHandling(other.mWhiteSpaceHandling) {
    createItem<QGraphicsSimpleTextItem>();
}

Ky2DText* Ky2DText::clone() const {
    return new Ky2DText(*this);
}

void Ky2DText::setWhiteSpaceHandling(std::int32_t handling) {
    setGeometry(mWhiteSpaceHandling, handling, "WhiteSpaceHandling");
}

std::string Ky2DText::getWhiteSpaceHandledText() const {
    return KyWhiteSpace::handle(mText, mWhiteSpaceHandling);
}

void Ky2DText::update() {
    const bool changesSize = isStyleModified() || isGeometryModified();
    Ky2DNode::update();
    // The anchors go by the size that the text has only now.
    if (changesSize)
        updateQGraphicsItemPosition();
}

void Ky2DText::updateQGraphicsItemGeometry() {
    if (auto* item = editItem<QGraphicsSimpleTextItem>())
        item->setText(KyApplication::toQString(getWhiteSpaceHandledText()));
}

void Ky2DText::updateQGraphicsItemStyle() {
    auto* item = editItem<QGraphicsSimpleTextItem>();
    if (!item || !getStyle())
        return;
    QPen pen;
    QBrush brush;
    QFont font;
    getStyle()->configureTextStyle(&pen, &brush, &font);
    item->setPen(pen);
    item->setBrush(brush);
    item->setFont(font);
}

void Ky2DText::updateQGraphicsItemPosition() {
    QGraphicsItem* item = getQGraphicsItem();
    if (!item)
        return;
    const QRectF bound = item->boundingRect();
    const Ky2DStyle* style = getStyle();
    const double dx = style ? getWidthPart(style->getTextAnchor()) * bound.width() : 0.0;
    const double dy = style ? getHeightPart(style->getTextVerticalAnchor()) * bound.height() : 0.0;
    const KyVec2d place = getQtOffset() + KyVec2d(mX - dx, mY - dy);
    const QTransform transform =
        QTransform::fromTranslate(place.x, place.y) * getInitialTransform() * getLocalTransform();
    if (Ky2DUtil::isFinite(transform))
        item->setTransform(transform);
    item->setZValue(getZValue());
    item->setVisible(isOwnVisible());
}

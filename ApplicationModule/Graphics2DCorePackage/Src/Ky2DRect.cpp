// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "Ky2DRect.h"

#include "Ky2DPathCommand.h"
#include "Ky2DStyle.h"
#include "Ky2DUtil.h"

#include "KyCast.h"
#include "KyTypeBuilder.h"

#include <QBrush>
#include <QGraphicsPathItem>
#include <QPainterPath>
#include <QPen>

#include <algorithm>
#include <cmath>
#include <utility>

namespace {

/// As SVG takes them; both 0 when the corners are not rounded.
std::pair<double, double> normalizeRadii(double rx, double ry, double width, double height) {
    if (rx <= 0 && ry > 0)
        rx = ry;
    else if (ry <= 0 && rx > 0)
        ry = rx;
    rx = std::min(rx, width / 2);
    ry = std::min(ry, height / 2);
    return rx > 0 && ry > 0 ? std::pair(rx, ry) : std::pair(0.0, 0.0);
}

/// Qt takes no greater coordinates, and leaving out single ones would leave pieces; false for NaN.
bool isDrawable(const KyVec2d& point) {
    return std::abs(point.x) < 1e128 && std::abs(point.y) < 1e128;
}

/// The outline, clockwise on screen from the upper left corner.
std::vector<Ky2DPathCommand> makeOutline(double x, double y, double width, double height, double rx, double ry) {
    using Command = Ky2DPathCommand;
    const double right = x + width, bottom = y + height;
    std::vector<Command> commands;
    commands.reserve(10);
    const auto turn = [&commands, rx, ry](double endX, double endY) {
        if (rx > 0)
            commands.push_back(Command(Command::eArcTo, {rx, ry, 0, 0, 1, endX, endY}));
    };
    commands.push_back(Command(Command::eMoveTo, {x + rx, y}));
    commands.push_back(Command(Command::eHorizontalTo, {right - rx}));
    turn(right, y + ry);
    commands.push_back(Command(Command::eVerticalTo, {bottom - ry}));
    turn(right - rx, bottom);
    commands.push_back(Command(Command::eHorizontalTo, {x + rx}));
    turn(x, bottom - ry);
    commands.push_back(Command(Command::eVerticalTo, {y + ry}));
    turn(x + rx, y);
    commands.push_back(Command(Command::eClose));
    return commands;
}

} // namespace

const KyType* Ky2DRect::msType = nullptr;

const KyType* Ky2DRect::getType() {
    if (!msType)
        initializeType();
    return msType;
}

Ky2DRect* Ky2DRect::cast(KyObject* object) {
    return kyCast<Ky2DRect>(object);
}

Ky2DRect* Ky2DRect::create() {
    return new Ky2DRect;
}

KyObject* Ky2DRect::factory() {
    return create();
}

void Ky2DRect::finalizeType() {
    KyType::remove(msType);
}

const KyType* Ky2DRect::getObjectType() const {
    return getType();
}

Ky2DRect* Ky2DRect::clone() const {
    return new Ky2DRect(*this);
}

void Ky2DRect::initializeType() {
    if (msType)
        return;
    Ky2DNode::initializeType();
    msType = KyTypeBuilder<Ky2DRect>("Ky2DRect", Ky2DNode::getType())
                 .factory()
                 .attribute("X", &Ky2DRect::getX, &Ky2DRect::setX)
                 .attribute("Y", &Ky2DRect::getY, &Ky2DRect::setY)
                 .attribute("Width", &Ky2DRect::getWidth, &Ky2DRect::setWidth)
                 .attribute("Height", &Ky2DRect::getHeight, &Ky2DRect::setHeight)
                 .attribute("RX", &Ky2DRect::getRX, &Ky2DRect::setRX)
                 .attribute("RY", &Ky2DRect::getRY, &Ky2DRect::setRY)
                 .method("getX", &Ky2DRect::getX)
                 .method("setX", &Ky2DRect::setX)
                 .method("getY", &Ky2DRect::getY)
                 .method("setY", &Ky2DRect::setY)
                 .method("getWidth", &Ky2DRect::getWidth)
                 .method("setWidth", &Ky2DRect::setWidth)
                 .method("getHeight", &Ky2DRect::getHeight)
                 .method("setHeight", &Ky2DRect::setHeight)
                 .method("getRX", &Ky2DRect::getRX)
                 .method("setRX", &Ky2DRect::setRX)
                 .method("getRY", &Ky2DRect::getRY)
                 .method("setRY", &Ky2DRect::setRY)
                 .build();
}

Ky2DRect::Ky2DRect() {
    createItem<QGraphicsPathItem>();
}

Ky2DRect::Ky2DRect(const Ky2DRect& other)
    : Ky2DNode(other)
    , mX(other.mX)
    , mY(other.mY)
    , mWidth(other.mWidth)
    , mHeight(other.mHeight)
    , mRX(other.mRX)
    , mRY(other.mRY) {
    createItem<QGraphicsPathItem>();
}

void Ky2DRect::setX(double x) {
    setGeometry(mX, x, "X");
}

void Ky2DRect::setY(double y) {
    setGeometry(mY, y, "Y");
}

void Ky2DRect::setWidth(double width) {
    setGeometry(mWidth, width, "Width");
}

void Ky2DRect::setHeight(double height) {
    setGeometry(mHeight, height, "Height");
}

void Ky2DRect::setRX(double radius) {
    setGeometry(mRX, radius, "RX");
}

void Ky2DRect::setRY(double radius) {
    setGeometry(mRY, radius, "RY");
}

void Ky2DRect::updateQGraphicsItemGeometry() {
    auto* item = editItem<QGraphicsPathItem>();
    if (!item)
        return;
    QPainterPath path;
    const KyVec2d& offset = getQtOffset();
    const KyVec2d first(mX, mY), last(mX + mWidth, mY + mHeight);
    const bool isPlaceDrawable =
        isDrawable(first) && isDrawable(last) && isDrawable(first + offset) && isDrawable(last + offset);
    if (mWidth > 0 && mHeight > 0 && isPlaceDrawable) {
        const auto [rx, ry] = normalizeRadii(mRX, mRY, mWidth, mHeight);
        Ky2DUtil::initializeQPainterPath(path, makeOutline(mX, mY, mWidth, mHeight, rx, ry), offset);
    }
    item->setPath(path);
}

void Ky2DRect::updateQGraphicsItemStyle() {
    Ky2DUtil::applyShapeStyle(getStyle(), editItem<QGraphicsPathItem>());
}

// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "Ky2DNode.h"

#include <array>
#include <cmath>
#include <memory>
#include <numbers>

namespace {

constexpr double cDegreesPerRadian = 180.0 / std::numbers::pi;

struct Turn {
    double cosine = 1.0;
    double sine = 0.0;
};

/// Exact at right angles.
Turn getTurn(double degrees) {
    const double size = std::abs(degrees);
    if (size == 90.0)
        return {0.0, degrees / 90.0};
    if (size == 270.0)
        return {0.0, degrees / -270.0};
    if (size == 180.0)
        return {-1.0, 0.0};
    const double angle = degrees / cDegreesPerRadian;
    return {std::cos(angle), std::sin(angle)};
}

/// Infinite numbers become NaN and stay so.
double getNothing(const QTransform& t) {
    return (t.m11() * 0.0 + t.m12() * 0.0) + (t.m21() * 0.0 + t.m22() * 0.0) + (t.dx() * 0.0 + t.dy() * 0.0);
}

bool isFiniteAffine(const QTransform& t) {
    const double sum = (t.m11() + t.m12()) + (t.m21() + t.m22()) + (t.dx() + t.dy());
    // The sum of large numbers may be infinite as well.
    return sum * 0.0 == 0.0 || getNothing(t) == 0.0;
}

bool isFinite(const QTransform& t) {
    return getNothing(t) + t.m13() * 0.0 + t.m23() * 0.0 + t.m33() * 0.0 == 0.0;
}

/// A transform that is not finite leaves the item where it is.
void place(QGraphicsItem& item, const QTransform* initial, const QTransform& local) {
    if (initial) {
        const QTransform transform = *initial * local;
        if (isFinite(transform))
            item.setTransform(transform);
    } else if (isFiniteAffine(local)) {
        item.setTransform(local);
    }
}

KyRectd toKyRect(const QRectF& rect) {
    return KyRectd(rect.x(), rect.y(), rect.width(), rect.height());
}

} // namespace

void Ky2DNode::composeTransform() {
    const bool isTurned = mRotation != 0.0 || !mShear.isNull();
    if (!isTurned && mScale.x == 1.0 && mScale.y == 1.0) {
        mLocalTransform = QTransform::fromTranslate(mTranslation.x, mTranslation.y);
        return;
    }
    double m11 = mScale.x, m12 = 0.0, m21 = 0.0, m22 = mScale.y;
    if (isTurned) {
        const auto [cosine, sine] = mRotation == 0.0 ? Turn() : getTurn(mRotation);
        m11 = mScale.x * (cosine - mShear.y * sine);
        m12 = mScale.x * (sine + mShear.y * cosine);
        m21 = mScale.y * (mShear.x * cosine - sine);
        m22 = mScale.y * (mShear.x * sine + cosine);
    }
    double dx = mTranslation.x, dy = mTranslation.y;
    if (const KyVec2d& o = mTransformOriginPoint; !o.isNull()) {
        dx += o.x - (o.x * m11 + o.y * m21);
        dy += o.y - (o.x * m12 + o.y * m22);
    }
    // In place: a copy costs as much again.
    std::construct_at(&mLocalTransform, m11, m12, m21, m22, dx, dy);
}

const QTransform& Ky2DNode::getLocalTransform() const {
    // Setters leave the composing to the first who asks.
    if (mIsPositionModified)
        const_cast<Ky2DNode*>(this)->composeTransform();
    return mLocalTransform;
}

void Ky2DNode::setLocalTransform(const QTransform& transform) {
    const double width = std::hypot(transform.m11(), transform.m12());
    const double determinant = transform.m11() * transform.m22() - transform.m12() * transform.m21();
    mTranslation = KyVec2d(transform.dx(), transform.dy());
    mRotation = width == 0.0 ? 0.0 : std::atan2(transform.m12(), transform.m11()) * cDegreesPerRadian;
    mScale = KyVec2d(width, width == 0.0 ? std::hypot(transform.m21(), transform.m22()) : determinant / width);
    mShear = KyVec2d();
    static constexpr std::array<std::string_view, 4> cNames{"Translation", "Rotation", "Scale", "Shear"};
    const Watch watch(this);
    bool isAlive = positionModified();
    for (std::size_t i = 0; i < cNames.size() && isAlive; ++i) {
        tell(cNames[i]);
        isAlive = watch.isAlive();
    }
}

const QTransform& Ky2DNode::getInitialTransform() const {
    static const QTransform identity;
    return mInitialTransform ? *mInitialTransform : identity;
}

void Ky2DNode::setInitialTransform(const QTransform& transform) {
    mInitialTransform = transform.isIdentity() ? nullptr : std::make_unique<QTransform>(transform);
    positionModified();
}

void Ky2DNode::updateQGraphicsItemPosition() {
    if (!mItem)
        return;
    if (mIsVisible && mItem->isVisible() && mItem->zValue() == mZValue)
        return place(*mItem, mInitialTransform.get(), mLocalTransform);
    // Of a proxy's item others may listen to each of the three.
    const Watch watch(this);
    place(*mItem, mInitialTransform.get(), mLocalTransform);
    if (!watch.isAlive() || !mItem)
        return;
    if (mItem->zValue() != mZValue) {
        mItem->setZValue(mZValue);
        if (!watch.isAlive() || !mItem)
            return;
    }
    // Under a hidden parent an item says that it is hidden, whatever its own switch: then it is set.
    if (!mIsVisible || !mItem->isVisible())
        mItem->setVisible(mIsVisible);
}

KyRectd Ky2DNode::getBound() const {
    const Watch watch(this);
    applyModification();
    return watch.isAlive() && mItem ? toKyRect(mItem->sceneBoundingRect()) : KyRectd();
}

KyRectd Ky2DNode::getLocalBound() const {
    const Watch watch(this);
    applyModification();
    return watch.isAlive() && mItem ? toKyRect(mItem->boundingRect()) : KyRectd();
}

// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyShapeDrag_p.h"

#include "KyCamera.h"
#include "KyNode.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace {

using Manipulator = KyShapeManipulator;

/// Sine between ray and plane, or ray and axis, below which a pixel would move the node too far to be meant.
constexpr double cSmallestSlope = 0.02;
/// The same for planes that a turn is measured in: there is another way to turn.
constexpr double cEdgeSlope = 0.1;
/// Around the origin, where neither an angle nor a ratio can be told. In pixels.
constexpr double cDeadPixels = 3.0;
constexpr double cScalePixels = 16.0;
constexpr double cTreadPixels = 32.0;
constexpr double cSmallestFactor = 0.01;
constexpr double cLargestFactor = 100.0;

/// Which axes a constraint scales and moves along, and which it turns about; the view's own is -1.
struct Axes {
    std::array<bool, 3> acts;
    int axis;
    bool isPlane;
};
constexpr std::array<Axes, Manipulator::eNbConstraints> cAxes{{
    {{true, true, true}, -1, true},
    {{true, false, false}, 0, false},
    {{false, true, false}, 1, false},
    {{false, false, true}, 2, false},
    {{true, true, false}, 2, true},
    {{false, true, true}, 0, true},
    {{true, false, true}, 1, true},
}};

const Axes& getAxes(int constraint) {
    return cAxes[static_cast<std::size_t>(constraint)];
}

double snap(double value, double step) {
    return step > 0.0 ? std::round(value / step) * step : value;
}

KyVec3d getUnitAxis(int index) {
    KyVec3d axis;
    axis[index] = 1.0;
    return axis;
}

KyVec3d getUnit(KyVec3d vector, const KyVec3d& otherwise) {
    return vector.normalize() ? vector : otherwise;
}

KyVec3d getPartAcross(const KyVec3d& vector, const KyVec3d& unit) {
    return vector - unit * unit.dot(vector);
}

bool hasShear(const KyNode& node) {
    constexpr double cRounding = 1e-9;
    const KyMat4d& frame = node.getLocalFrame();
    const KyMat4d plain = KyMat4d(node.getOrientation(), node.getPosition()) * KyMat4d::fromScale(node.getScale());
    const auto differs = [&](int column) {
        const KyVec3d vector = frame.getColumn(column);
        return (vector - plain.getColumn(column)).length() > cRounding * vector.length();
    };
    return differs(0) || differs(1) || differs(2);
}

/// World to parent; false when the parent's frame is singular.
bool getToParent(const KyNode& node, KyMat4d& toParent) {
    toParent = node.getParent() ? node.getParent()->getWorldFrame() : KyMat4d();
    return toParent.invert();
}

} // namespace

bool KyShapePointer::make(const KyCamera& camera, double x, double y, double width, double height,
                          KyShapePointer& pointer) {
    if (!(width > 0.0 && height > 0.0))
        return false;
    pointer.ray = camera.getRay((x + 0.5) / width * 2.0 - 1.0, 1.0 - (y + 0.5) / height * 2.0, width / height);
    pointer.right = camera.getRight();
    pointer.up = camera.getUp();
    pointer.forward = camera.getForward();
    pointer.isInside = x >= 0.0 && y >= 0.0 && x < width && y < height;
    pointer.isParallel = camera.isOrthographic();
    const double extent =
        pointer.isParallel ? camera.getVerticalExtent() : 2.0 * std::tan(camera.getEffectiveAperture() / 2.0);
    pointer.pixel = extent / height;
    return pointer.ray.origin.isFinite() && pointer.ray.direction.isFinite();
}

double KyShapePointer::getPixel(const KyVec3d& point) const {
    return isParallel ? pixel : pixel * std::abs((point - ray.origin).dot(forward));
}

std::optional<KyVec3d> KyShapePointer::meetPlane(const KyVec3d& point, const KyVec3d& normal) const {
    const double slope = normal.dot(ray.direction);
    if (!(std::abs(slope) >= cSmallestSlope))
        return std::nullopt;
    const double distance = normal.dot(point - ray.origin) / slope;
    if (!std::isfinite(distance) || (!isParallel && distance <= 0.0))
        return std::nullopt;
    return ray.getPoint(distance);
}

std::optional<double> KyShapePointer::meetAxis(const KyVec3d& point, const KyVec3d& axis) const {
    const KyVec3d away = ray.origin - point;
    const double cosine = axis.dot(ray.direction);
    const double square = axis.cross(ray.direction).dot(axis.cross(ray.direction));
    if (!(square >= cSmallestSlope * cSmallestSlope))
        return std::nullopt;
    const double along = axis.dot(away), toward = ray.direction.dot(away);
    const double distance = (cosine * along - toward) / square;
    if (!std::isfinite(distance) || (!isParallel && distance <= 0.0))
        return std::nullopt;
    return (along - cosine * toward) / square;
}

KyShapeDrag::KyShapeDrag(KyNode& node, const Choice& choice, const KyShapePointer& pointer, const KyVec3d* grabbed)
    : mNode(&node)
    , mChoice(choice)
    , mPosition(node.getPosition())
    , mOrientation(node.getOrientation())
    , mScale(node.getScale())
    , mFrame(node.getLocalFrame())
    , mIsSheared(hasShear(node))
    , mOrigin(node.getWorldPosition())
    , mForward(pointer.forward)
    , mAnchor(grabbed ? *grabbed : mOrigin) {
    using Prepare = void (KyShapeDrag::*)(const KyShapePointer&);
    constexpr std::array<Prepare, Manipulator::eNbModes> cPrepare{
        &KyShapeDrag::prepareTranslation, &KyShapeDrag::prepareRotation, &KyShapeDrag::prepareScale};
    chooseAxes(node.getWorldFrame(), pointer);
    (this->*cPrepare[static_cast<std::size_t>(mChoice.mode)])(pointer);
}

KyNode* KyShapeDrag::getNode() const {
    return KyNode::cast(mNode.get());
}

bool KyShapeDrag::isMovable(const KyNode& node) {
    KyMat4d toParent;
    return getToParent(node, toParent);
}

void KyShapeDrag::chooseAxes(const KyMat4d& frame, const KyShapePointer& pointer) {
    const Axes& axes = getAxes(mChoice.constraint);
    mIsAxis = !axes.isPlane;
    if (axes.axis < 0) {
        mAxis = -pointer.forward;
        mSide1 = pointer.right;
        mSide2 = pointer.up;
        return;
    }
    const bool isOwn = mChoice.space == Manipulator::eLocal || mChoice.mode == Manipulator::eScale;
    const auto getAxis = [&](int index) {
        const KyVec3d unit = getUnitAxis(index);
        return isOwn ? getUnit(frame.getColumn(index), unit) : unit;
    };
    mAxis = getAxis(axes.axis);
    mSide1 = getAxis((axes.axis + 1) % 3);
    mSide2 = getAxis((axes.axis + 2) % 3);
    if (mIsAxis)
        return;
    // A mirror or a shear must not put the plane elsewhere than its two axes.
    mAxis = getUnit(mSide1.cross(mSide2), mAxis);
    mSide2 = mAxis.cross(mSide1);
}

void KyShapeDrag::prepareTranslation(const KyShapePointer& pointer) {
    if (mIsAxis)
        mFirst = pointer.meetAxis(mAnchor, mAxis);
    else
        mFrom = pointer.meetPlane(mAnchor, mAxis);
}

void KyShapeDrag::prepareRotation(const KyShapePointer& pointer) {
    mCentre = mOrigin + mAxis * mAxis.dot(mAnchor - mOrigin);
    mSmallest = cDeadPixels * pointer.getPixel(mCentre);
    mIsEdgeOn = std::abs(mAxis.dot(pointer.ray.direction)) < cEdgeSlope;
    mFrom = pointer.meetPlane(mAnchor, mIsEdgeOn ? mForward : mAxis);
    if (!mIsEdgeOn || !mFrom)
        return;
    mTread = getUnit(pointer.ray.direction.cross(mAxis), KyVec3d());
    const double radius = getPartAcross(*mFrom - mOrigin, mAxis).length();
    mRadius = std::max(radius, cTreadPixels * pointer.getPixel(*mFrom));
}

void KyShapeDrag::prepareScale(const KyShapePointer& pointer) {
    // The whole object grows in the picture: what counts is how far from its origin the pointer is there.
    if (mChoice.constraint == Manipulator::eViewPlane)
        mAnchor = mOrigin;
    mCentre = mOrigin + mAxis * mAxis.dot(mAnchor - mOrigin);
    mFirst = getReach(pointer);
    mSmallest = cScalePixels * pointer.getPixel(mAnchor);
}

void KyShapeDrag::follow(const KyShapePointer& pointer) const {
    constexpr std::array<Follow, Manipulator::eNbModes> cFollow{&KyShapeDrag::translate, &KyShapeDrag::rotate,
                                                                &KyShapeDrag::scale};
    if (KyNode* node = getNode())
        (this->*cFollow[static_cast<std::size_t>(mChoice.mode)])(*node, pointer);
}

std::optional<KyVec3d> KyShapeDrag::getOffset(const KyShapePointer& pointer) const {
    const double step = mChoice.steps.translation;
    if (mIsAxis) {
        const auto reach = pointer.meetAxis(mAnchor, mAxis);
        return reach && mFirst ? std::optional(mAxis * snap(*reach - *mFirst, step)) : std::nullopt;
    }
    const auto point = pointer.meetPlane(mAnchor, mAxis);
    if (!point || !mFrom)
        return std::nullopt;
    const KyVec3d offset = *point - *mFrom;
    return step > 0.0 ? mSide1 * snap(offset.dot(mSide1), step) + mSide2 * snap(offset.dot(mSide2), step) : offset;
}

void KyShapeDrag::translate(KyNode& node, const KyShapePointer& pointer) const {
    KyMat4d toParent;
    const auto offset = getOffset(pointer);
    if (offset && getToParent(node, toParent))
        node.setPosition(mPosition + toParent.transformVector(*offset));
}

std::optional<double> KyShapeDrag::getTurn(const KyShapePointer& pointer) const {
    const auto point = pointer.meetPlane(mAnchor, mForward);
    return point && mFrom ? std::optional((*point - *mFrom).dot(mTread) / mRadius) : std::nullopt;
}

std::optional<double> KyShapeDrag::getAngle(const KyShapePointer& pointer) const {
    if (mIsEdgeOn)
        return getTurn(pointer);
    const auto point = pointer.meetPlane(mAnchor, mAxis);
    if (!point || !mFrom)
        return std::nullopt;
    const KyVec3d from = *mFrom - mCentre, to = *point - mCentre;
    if (to.length() < mSmallest)
        return from.length() < mSmallest ? std::optional(0.0) : std::nullopt;
    return std::atan2(mAxis.dot(from.cross(to)), from.dot(to));
}

void KyShapeDrag::rotate(KyNode& node, const KyShapePointer& pointer) const {
    KyMat4d toParent;
    const auto angle = getAngle(pointer);
    if (!angle || !std::isfinite(*angle) || !getToParent(node, toParent))
        return;
    // Seen from a mirrored parent, the turn goes the other way about.
    const double sense = toParent.determinant() < 0.0 ? -1.0 : 1.0;
    const double turn = snap(*angle, mChoice.steps.rotation);
    setTurned(node, toParent.transformVector(mAxis), sense * turn);
}

void KyShapeDrag::setTurned(KyNode& node, const KyVec3d& axis, double angle) const {
    const KyQuatd turn(axis, angle);
    if (!mIsSheared)
        return node.setOrientation(angle == 0.0 ? mOrientation : turn * mOrientation);
    KyMat4d frame = turn.getMatrix() * mFrame;
    frame.setColumn(3, mFrame.translation());
    node.setLocalFrame(angle == 0.0 ? mFrame : frame);
}

std::optional<double> KyShapeDrag::getReach(const KyShapePointer& pointer) const {
    if (mIsAxis) {
        const auto reach = pointer.meetAxis(mAnchor, mAxis);
        return reach ? std::optional(*reach + mAxis.dot(mAnchor - mOrigin)) : std::nullopt;
    }
    const auto point = pointer.meetPlane(mAnchor, mAxis);
    return point ? std::optional((*point - mCentre).length()) : std::nullopt;
}

void KyShapeDrag::scale(KyNode& node, const KyShapePointer& pointer) const {
    const auto reach = getReach(pointer);
    const double step = mChoice.steps.scale;
    if (!reach || !mFirst)
        return;
    const double first = std::max(std::abs(*mFirst), mSmallest);
    const double growth = std::copysign(1.0, *mFirst) * (*reach - *mFirst);
    if (!(first > 0.0) || !std::isfinite(growth / first))
        return;
    const double factor = std::clamp(std::max(snap(1.0 + growth / first, step), step), cSmallestFactor, cLargestFactor);
    const auto& acts = getAxes(mChoice.constraint).acts;
    KyVec3d factors;
    for (int i = 0; i < 3; ++i)
        factors[i] = acts[static_cast<std::size_t>(i)] ? factor : 1.0;
    if (mIsSheared)
        node.setLocalFrame(mFrame * KyMat4d::fromScale(factors));
    else
        node.setScale(mScale * factors);
}

void KyShapeDrag::restore() const {
    // On the stack: a listener of one of the changes may end this drag, or the node.
    const KyShapeDrag start = *this;
    const auto change = [&start](auto setter) {
        if (KyNode* node = start.getNode())
            setter(*node);
    };
    if (start.mIsSheared)
        return change([&start](KyNode& node) { node.setLocalFrame(start.mFrame); });
    change([&start](KyNode& node) { node.setPosition(start.mPosition); });
    change([&start](KyNode& node) { node.setOrientation(start.mOrientation); });
    change([&start](KyNode& node) { node.setScale(start.mScale); });
}

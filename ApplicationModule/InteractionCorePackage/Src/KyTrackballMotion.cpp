// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyTrackballManipulator.h"

#include "KyTrackballCoasting_p.h"
#include "KyTrackballMath_p.h"

#include "KyCamera.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace {

constexpr double cDefaultAperture = 0.7853981633974483;
constexpr double cNearestCenter = 1e-12;
constexpr double cSmallestZoom = 0.1;

double getPart(double pixels, int size) {
    return size > 0 ? 2.0 * pixels / size : 0.0;
}

double getDifference(int to, int from) {
    return static_cast<double>(to) - from;
}

/// Listeners may end the camera, and whoever called this. Under a parent that is singular a camera stays where it is.
bool write(KyCamera& camera, const KyMat4d& frame) {
    const KyMat4d& present = camera.getWorldFrame();
    if (frame == present)
        return false;
    if (!camera.getParent()) {
        camera.setWorldFrame(frame);
        return true;
    }
    const KyMat4d before = present;
    const KyObjectReference living(&camera);
    camera.setWorldFrame(frame);
    return !living.get() || !(camera.getWorldFrame() == before);
}

bool write(KyCamera& camera, const KyMat4d& frame, double extent) {
    const KyObjectReference living(&camera);
    const bool isOtherExtent = extent != camera.getVerticalExtent();
    camera.setVerticalExtent(extent);
    return (living.get() && write(camera, frame)) || isOtherExtent;
}

} // namespace

double KyTrackballManipulator::normalizeX(double pixels) const {
    return getPart(pixels, getViewArea().getWidth());
}

double KyTrackballManipulator::normalizeY(double pixels) const {
    return getPart(pixels, getViewArea().getHeight());
}

double KyTrackballManipulator::getViewAspectRatio() const {
    const KyRect<int> area = getViewArea();
    const double width = area.getWidth(), height = area.getHeight();
    return width > 0.0 && height > 0.0 ? width / height : 1.0;
}

bool KyTrackballManipulator::updateFromViewpoint() {
    mExtentFactor = 1.0;
    const KyCamera* camera = getCamera();
    if (!camera)
        return false;
    const KyMat4d& frame = camera->getWorldFrame();
    mRight = frame.getColumn(0);
    mUp = frame.getColumn(1);
    mForward = -frame.getColumn(2);
    mEye = frame.translation();
    kyForceOrthonormal(mRight, mUp, mForward);
    return mEye.isFinite();
}

bool KyTrackballManipulator::updateViewpoint() {
    KyCamera* camera = getCamera();
    if (!camera || !kyAreUnits(mUp, mForward) || !kyIsWithin(mEye, cFarthest))
        return false;
    if (mExtentFactor == 1.0 || !camera->isOrthographic())
        return write(*camera, getTransform());
    const double extent = camera->getVerticalExtent() * mExtentFactor;
    if (!(extent >= cSmallestExtent && extent <= cFarthest))
        return false;
    mExtentFactor = 1.0;
    return write(*camera, getTransform(), extent);
}

void KyTrackballManipulator::moveEyeToPosition(const KyVec3d& position, double factor) {
    mEye = position;
    mExtentFactor *= factor;
}

KyMat4d KyTrackballManipulator::getTransform() const {
    KyMat4d frame;
    frame.setColumn(0, mRight);
    frame.setColumn(1, mUp);
    frame.setColumn(2, -mForward);
    frame.setColumn(3, mEye);
    return frame;
}

KyTrackballManipulator::Extent KyTrackballManipulator::getExtentAtCenter() const {
    const KyVec3d toCenter = mCenter - mEye;
    double depth = mHasOrthographicMovements ? toCenter.length() : toCenter.dot(mForward);
    if (depth < mTolerance)
        depth = toCenter.length();
    if (depth < mTolerance)
        depth = 1.0;
    const KyCamera* camera = getCamera();
    const double aperture = camera ? camera->getEffectiveAperture() : cDefaultAperture;
    const bool isOrthographic = camera && camera->isOrthographic();
    const double height = isOrthographic ? camera->getVerticalExtent() : 2.0 * depth * std::tan(aperture / 2.0);
    return {depth, height * getViewAspectRatio(), height};
}

void KyTrackballManipulator::turn(const KyQuatd& rotation, const KyVec3d& pivot) {
    const KyTurn prepared(rotation);
    mEye = pivot + prepared.apply(mEye - pivot);
    mUp = prepared.apply(mUp);
    mForward = prepared.apply(mForward);
    mRight = mForward.cross(mUp);
}

void KyTrackballManipulator::doUpOrbit(double angle) {
    turn(kyTurnAbout(mBasisY, angle), mCenter);
}

void KyTrackballManipulator::doRightOrbit(double angle) {
    turn(kyTurnAbout(mRight, angle), mCenter);
}

bool KyTrackballManipulator::hasDragOrigin() const {
    const KyInputEvent &current = getInputEvent(), &previous = getPreviousInputEvent();
    if (current.isTouch())
        return previous.isTouch();
    // A press that went elsewhere is no origin of this drag.
    const std::uint32_t changed = current.getState() ^ previous.getState();
    return !previous.isEmpty() && !previous.isTouch() && (changed & KyInputEvent::cMouseButtons) == 0;
}

bool KyTrackballManipulator::drag(Motion motion) {
    if (!hasDragOrigin())
        return false;
    const KyInputEvent &current = getInputEvent(), &previous = getPreviousInputEvent();
    const KyRect<int> area = getViewArea();
    const KyVec2d step(getPart(getDifference(current.getX(), previous.getX()), area.getWidth()),
                       getPart(getDifference(current.getY(), previous.getY()), area.getHeight()));
    if (step.isNull())
        return false;
    if (mCoasting)
        mCoasting->record(motion, step);
    return apply(motion, step);
}

bool KyTrackballManipulator::apply(Motion motion, const KyVec2d& step) {
    switch (motion) {
    case eOrbit:
        return orbit(step);
    case ePan:
        return pan(step);
    case eMove:
        return move(step);
    case eRotate:
        return rotate(step);
    default:
        return false;
    }
}

bool KyTrackballManipulator::doOrbit() {
    return drag(eOrbit);
}

bool KyTrackballManipulator::doPan() {
    return drag(ePan);
}

bool KyTrackballManipulator::doMove() {
    return drag(eMove);
}

bool KyTrackballManipulator::doRotate() {
    return drag(eRotate);
}

bool KyTrackballManipulator::orbit(const KyVec2d& step) {
    const double b = mInverses[eOrbit] ? -step.y : step.y;
    const double speed = mSpeeds[eOrbit];
    turn(kyTurnAbout(mBasisY, -speed * step.x) * kyTurnAbout(mRight, speed * b), mCenter);
    return updateViewpoint();
}

bool KyTrackballManipulator::pan(const KyVec2d& step) {
    const Extent extent = getExtentAtCenter();
    const double factor = 0.5 * mSpeeds[ePan];
    mEye += mUp * (factor * extent.height * step.y) - mRight * (factor * extent.width * step.x);
    return updateViewpoint();
}

bool KyTrackballManipulator::move(const KyVec2d& step) {
    const Extent extent = getExtentAtCenter();
    const double factor = (mInverses[eMove] ? -0.5 : 0.5) * mSpeeds[eMove];
    mEye += mRight * (factor * extent.width * step.x) - mForward * (factor * extent.height * step.y);
    return updateViewpoint();
}

bool KyTrackballManipulator::rotate(const KyVec2d& step) {
    const double speed = mInverses[eRotate] ? mSpeeds[eRotate] : -mSpeeds[eRotate];
    turn(kyTurnAbout(mBasisY, speed * step.x) * kyTurnAbout(mRight, speed * step.y), mEye);
    return updateViewpoint();
}

double KyTrackballManipulator::getZoomAmount() const {
    const KyInputEvent& event = getInputEvent();
    if (event.isTouch())
        return event.getWheelDelta() / 100.0;
    if (event.getState() & KyInputEvent::cWheel)
        return event.isWheelVertical() ? event.getWheelDelta() / 1200.0 : 0.0;
    return hasDragOrigin() ? normalizeY(getDifference(getPreviousInputEvent().getY(), event.getY())) : 0.0;
}

bool KyTrackballManipulator::doZoom() {
    const double amount = getZoomAmount();
    if (amount == 0.0)
        return false;
    stopCoasting();
    KyVec3d direction = mCenter - mEye;
    double distance = direction.length();
    if (distance < cNearestCenter) {
        distance = mTolerance;
        direction = mForward;
    } else {
        direction /= distance;
    }
    const double factor = std::max(1.0 - amount * mSpeeds[eZoom], cSmallestZoom);
    if (factor > 1.0)
        direction = mForward;
    moveEyeToPosition(mEye + direction * (distance - factor * distance), factor);
    return updateViewpoint();
}

bool KyTrackballManipulator::applyPinch(const KyPinchGesture* gesture) {
    const double given = gesture->getScaleFactor(), degrees = gesture->getRotationAngle();
    const double scale = given > 0.0 && std::isfinite(given) ? std::clamp(given, 0.1, 10.0) : 1.0;
    double angle = std::isfinite(degrees) ? degrees * std::numbers::pi / 180.0 : 0.0;
    if (scale == 1.0 && angle == 0.0)
        return false;
    // Seen from below the world turns the other way.
    if (mForward.dot(mBasisY) > 0.0)
        angle = -angle;
    const Extent extent = getExtentAtCenter();
    const KyRect<int> area = getViewArea();
    const KyVec2i& center = gesture->getRotationCenter();
    KyVec3d pivot = mEye + mForward * extent.depth;
    if (area.getWidth() > 0 && area.getHeight() > 0) {
        const double x = getPart(getDifference(center.x, area.origin.x), area.getWidth()) - 1.0;
        const double y = 1.0 - getPart(getDifference(center.y, area.origin.y), area.getHeight());
        pivot += mRight * (x * extent.width / 2.0) + mUp * (y * extent.height / 2.0);
    }
    turn(kyTurnAbout(mBasisY, angle), pivot);
    moveEyeToPosition(pivot + (mEye - pivot) * scale, scale);
    return updateViewpoint();
}

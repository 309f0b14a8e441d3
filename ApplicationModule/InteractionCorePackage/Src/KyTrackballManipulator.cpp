// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyTrackballManipulator.h"

#include "KyGestureRecognizer.h"
#include "KyTrackballCoasting_p.h"
#include "KyTrackballMath_p.h"

#include "KyGraphicsViewMultiPass.h"

#include <algorithm>
#include <cmath>

namespace {

using Names = std::array<std::string_view, 2>;

constexpr std::array<Names, KyTrackballManipulator::eNbMotions> cMaskNames{{{"MaskOrbit", "Mask2Orbit"},
                                                                            {"MaskPan", "Mask2Pan"},
                                                                            {"MaskMove", "Mask2Move"},
                                                                            {"MaskZoom", "Mask2Zoom"},
                                                                            {"MaskRotate", "Mask2Rotate"}}};
constexpr std::array<std::string_view, KyTrackballManipulator::eNbMotions> cSpeedNames{
    "OrbitSpeed", "PanSpeed", "MoveSpeed", "ZoomSpeed", "RotateSpeed"};
constexpr std::array<std::string_view, KyTrackballManipulator::eNbMotions> cInverseNames{
    "OrbitInverseCtrl", "", "MoveInverseCtrl", "", "RotateInverseCtrl"};

} // namespace

KyTrackballManipulator::KyTrackballManipulator() = default;

KyTrackballManipulator::~KyTrackballManipulator() = default;

void KyTrackballManipulator::setMask(Motion motion, unsigned index, int mask) {
    if (mMasks[motion][index] == mask)
        return;
    mMasks[motion][index] = mask;
    notifyModified(cMaskNames[motion][index]);
}

void KyTrackballManipulator::setSpeed(Motion motion, double speed) {
    if (!std::isfinite(speed) || mSpeeds[motion] == speed)
        return;
    mSpeeds[motion] = speed;
    notifyModified(cSpeedNames[motion]);
}

void KyTrackballManipulator::setInverse(Motion motion, bool isInverse) {
    if (mInverses[motion] == isInverse)
        return;
    mInverses[motion] = isInverse;
    notifyModified(cInverseNames[motion]);
}

void KyTrackballManipulator::setAutoCenter(bool isAutoCenter) {
    if (mIsAutoCenter == isAutoCenter)
        return;
    mIsAutoCenter = isAutoCenter;
    notifyModified("AutoCenter");
}

void KyTrackballManipulator::setOrthographicMovements(bool hasThem) {
    if (mHasOrthographicMovements == hasThem)
        return;
    mHasOrthographicMovements = hasThem;
    notifyModified("OrthographicMovements");
}

void KyTrackballManipulator::setCenter(const KyVec3d& center) {
    if (center == mCenter || !kyIsWithin(center, cFarthest))
        return;
    mCenter = center;
    notifyModified("Center");
}

KyMat4d KyTrackballManipulator::getOrthonormalBasis() const {
    KyMat4d basis;
    basis.setColumn(0, mBasisX);
    basis.setColumn(1, mBasisY);
    basis.setColumn(2, KyVec3d() - mBasisZ);
    return basis;
}

void KyTrackballManipulator::setOrthonormalBasis(const KyMat4d& basis) {
    KyVec3d x = basis.getColumn(0), y = basis.getColumn(1), z = -basis.getColumn(2);
    if (!x.normalize() || !y.normalize() || !z.normalize() || (x == mBasisX && y == mBasisY && z == mBasisZ))
        return;
    mBasisX = x;
    mBasisY = y;
    mBasisZ = z;
    notifyModified("OrthonormalBasis");
}

void KyTrackballManipulator::setDamping(double seconds) {
    if (!(seconds >= 0.0) || !std::isfinite(seconds))
        return;
    seconds = std::min(seconds, cLongestDamping);
    if (seconds == mDamping)
        return;
    mDamping = seconds;
    if (seconds == 0.0)
        mCoasting.reset();
    else if (!mCoasting)
        mCoasting = std::make_unique<KyTrackballCoasting>(*this);
    notifyModified("Damping");
}

bool KyTrackballManipulator::coast(double seconds) {
    if (!mCoasting || !mCoasting->isMoving())
        return false;
    if (!getIsEnabled() || !updateFromViewpoint()) {
        mCoasting->stop();
        return false;
    }
    if (!(seconds > 0.0) || !std::isfinite(seconds))
        return true;
    const auto motion = static_cast<Motion>(mCoasting->getMotion());
    apply(motion, mCoasting->advance(seconds, mDamping));
    return true;
}

void KyTrackballManipulator::stopCoasting() {
    if (mCoasting)
        mCoasting->clear();
}

bool KyTrackballManipulator::acceptEvent(const KyInputEvent& event) const {
    constexpr std::uint32_t cAccepted = 1u << KyInputEvent::eMousePressed | 1u << KyInputEvent::eMouseReleased |
                                        1u << KyInputEvent::eWheel | 1u << KyInputEvent::eMouseMoved |
                                        1u << KyInputEvent::eTouchBegan | 1u << KyInputEvent::eTouchUpdated |
                                        1u << KyInputEvent::eTouchEnded;
    const auto type = static_cast<std::uint32_t>(event.getType());
    const bool isKnown = type < KyInputEvent::eNbTypes && (cAccepted >> type & 1u) != 0;
    return KyCameraManipulator::acceptEvent(event) && !event.repeatsTouch() && isKnown;
}

void KyTrackballManipulator::initialize() {
    KyCameraManipulator::initialize();
    stopCoasting();
    updateFromViewpoint();
}

void KyTrackballManipulator::handleIsEnabled() {
    stopCoasting();
}

void KyTrackballManipulator::reset() {
    editPreviousInputEvent() = getInputEvent();
    editPreviousInputEvent().setNativeEvent(nullptr);
    stopCoasting();
}

bool KyTrackballManipulator::handleEvents() {
    return handleEvents(KyVec3d());
}

bool KyTrackballManipulator::handleEvents(const KyVec3d& point) {
    if (!getIsEnabled() || !getObject())
        return false;
    updateFromViewpoint();
    const KyInputEvent& event = getInputEvent();
    bool isUsed = true;
    switch (event.getType()) {
    case KyInputEvent::eMousePressed:
        updateCenter(point);
        reset();
        break;
    case KyInputEvent::eMouseReleased:
        release();
        break;
    case KyInputEvent::eWheel:
        stopCoasting();
        isUsed = event.isWheelVertical();
        if (isUsed)
            updateCenter(point);
        break;
    case KyInputEvent::eTouchBegan:
    case KyInputEvent::eTouchUpdated:
    case KyInputEvent::eTouchEnded:
        return handleTouch(point);
    default:
        isUsed = false;
    }
    const bool hasMoved = handleState();
    return isUsed || hasMoved;
}

bool KyTrackballManipulator::handleState() {
    using Operation = bool (KyTrackballManipulator::*)();
    constexpr std::array<Operation, eNbMotions> cOperations{
        &KyTrackballManipulator::doOrbit, &KyTrackballManipulator::doPan, &KyTrackballManipulator::doMove,
        &KyTrackballManipulator::doZoom, &KyTrackballManipulator::doRotate};
    const auto state = static_cast<std::int32_t>(getInputEvent().getState());
    // No mask may match it, and the marks of touches are the same number.
    if (state == cNoMask)
        return false;
    for (std::size_t i = 0; i < cOperations.size(); ++i)
        if (mMasks[i][0] == state || mMasks[i][1] == state)
            return (this->*cOperations[i])();
    return false;
}

void KyTrackballManipulator::release() {
    const bool isLast = (getInputEvent().getState() & KyInputEvent::cMouseButtons) == 0;
    if (!mCoasting || !isLast)
        return reset();
    // The reset ends a motion that goes on, not the one that begins with it.
    const int motion = mCoasting->getMotion();
    const KyVec2d velocity = mCoasting->takeVelocity();
    reset();
    if (mCoasting)
        mCoasting->start(motion, velocity);
}

bool KyTrackballManipulator::handleTouch(const KyVec3d& point) {
    if (!mCoasting)
        return handleGesture(point);
    if (getInputEvent().getType() == KyInputEvent::eTouchBegan)
        stopCoasting();
    const bool isEnd = getInputEvent().getType() == KyInputEvent::eTouchEnded;
    const KyObjectReference self(this);
    const bool hasMoved = handleGesture(point);
    if (isEnd && self.get() && mCoasting)
        mCoasting->start(mCoasting->getMotion(), mCoasting->takeVelocity());
    return hasMoved;
}

bool KyTrackballManipulator::handleGesture(const KyVec3d& point) {
    KyInputEvent& event = editInputEvent();
    const auto& touchPoints = event.getTouchPoints();
    if (event.getType() != KyInputEvent::eTouchBegan && !touchPoints.empty())
        event.setPosition(touchPoints.front().x, touchPoints.front().y);
    const KyGesture* gesture = KyGestureRecognizer(*this).recognizeGesture();
    if (!gesture || gesture->getKind() == KyGesture::eTap) {
        if (!hasSameFingers())
            mLastGesture = KyGesture::eNone;
        return false;
    }
    if (gesture->getKind() == KyGesture::ePinch) {
        const KyVec2i& center = editPinchGesture()->getRotationCenter();
        event.setPosition(center.x, center.y);
        stopCoasting();
    } else {
        const bool isPan = gesture->getKind() == KyGesture::ePan;
        setDragPoints(isPan ? 0 : static_cast<std::size_t>(editTiltGesture()->getIndex()));
    }
    // While a gesture goes on, what lies under the fingers is not yet where the motion will put it.
    if (beginsGesture(gesture->getKind()))
        updateCenter(point);
    switch (gesture->getKind()) {
    case KyGesture::ePan:
        return doPan();
    case KyGesture::ePinch:
        return applyPinch(editPinchGesture());
    default:
        return doOrbit();
    }
}

bool KyTrackballManipulator::hasSameFingers() const {
    const KyInputEvent &event = getInputEvent(), &previous = getPreviousInputEvent();
    return event.getType() == KyInputEvent::eTouchUpdated && previous.getType() != KyInputEvent::eTouchEnded &&
           std::ranges::equal(event.getTouchPoints(), previous.getTouchPoints(), {}, &KyTouchPoint::id,
                              &KyTouchPoint::id);
}

bool KyTrackballManipulator::beginsGesture(int kind) {
    const KyInputEvent &event = getInputEvent(), &previous = getPreviousInputEvent();
    const bool isTilt = kind == KyGesture::eTilt;
    const bool isNewTilt = isTilt && previous.getGestureKind() != kind;
    if (kind == mLastGesture && !isNewTilt && previous.getType() != KyInputEvent::eTouchEnded)
        return false;
    // Three resting fingers tilt nothing yet, and perhaps another one than last will.
    const bool rests = isTilt && event.getX() == previous.getX() && event.getY() == previous.getY();
    mLastGesture = rests ? KyGesture::eNone : kind;
    return true;
}

void KyTrackballManipulator::setDragPoints(std::size_t finger) {
    for (KyInputEvent* event : {&editPreviousInputEvent(), &editInputEvent()}) {
        const KyTouchPoint& point = event->getTouchPoints()[finger];
        event->setPosition(point.x, point.y);
    }
}

KyRect<int> KyTrackballManipulator::getViewArea() const {
    if (const KyGraphicsView* view = getView())
        return view->getAbsoluteArea();
    const KyGraphicsViewMultiPass* view = getViewMultiPass();
    return view ? view->getAreaPixels() : KyRect<int>();
}

bool KyTrackballManipulator::pickCenter(KyVec3d& point) const {
    const KyGraphicsView* view = getViewMultiPass();
    if (!view)
        view = getView();
    if (!view)
        return false;
    const KyInputEvent& event = getInputEvent();
    return view->containsPixel(event.getX(), event.getY()) && view->pickPoint(event.getX(), event.getY(), point);
}

void KyTrackballManipulator::updateCenter(const KyVec3d& point) {
    if (!mIsAutoCenter)
        return;
    KyVec3d center = point;
    if (point.isNull() && !pickCenter(center))
        return;
    // Without telling listeners: they could end this in the middle of an event.
    if (kyIsWithin(center, cFarthest))
        mCenter = center;
}

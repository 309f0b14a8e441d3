// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyGestureRecognizer.h"

#include "KyManipulator.h"

#include "KyScalar.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdlib>
#include <limits>

namespace {

using Points = std::vector<KyTouchPoint>;

constexpr double cDegreesPerRadian = 57.29577951308232;
constexpr double cRestingSquare = 9.0;
constexpr std::int64_t cNbEqualSteps = 4;

KyVec2i getPosition(const KyTouchPoint& point) {
    return KyVec2i(point.x, point.y);
}

/// Computed in double: coordinates may be as far apart as int allows, and more.
KyVec2d getStep(const KyTouchPoint& from, const KyTouchPoint& to) {
    return KyVec2d(static_cast<double>(to.x) - from.x, static_cast<double>(to.y) - from.y);
}

double getSquare(const KyVec2d& vector) {
    return vector.dot(vector);
}

std::int64_t getDistance(const KyTouchPoint& from, const KyTouchPoint& to) {
    return static_cast<std::int64_t>(std::sqrt(getSquare(getStep(from, to))));
}

/// Whole division of a mean with weights that are distances, whose sum is not 0.
int getMean(int a, std::int64_t weightA, int b, std::int64_t weightB) {
    const std::int64_t sum = weightA + weightB;
    if (sum < (std::int64_t{1} << 32))
        return static_cast<int>((a * weightA + b * weightB) / sum);
    const double mean = (static_cast<double>(a) * static_cast<double>(weightA) +
                         static_cast<double>(b) * static_cast<double>(weightB)) /
                        static_cast<double>(sum);
    return KyScalar::convert<int>(mean);
}

/// Orders doubles as integers, so that neighbours differ by 1.
std::int64_t getRank(double value) {
    const auto bits = std::bit_cast<std::int64_t>(value);
    return bits < 0 ? std::numeric_limits<std::int64_t>::min() - bits : bits;
}

/// Of numbers from -1 to 1, whose ranks do not overflow when subtracted.
bool areEqual(double a, double b) {
    return std::abs(getRank(a) - getRank(b)) <= cNbEqualSteps;
}

/// Of two directions, degrees.
double getAngle(const KyVec2d& former, const KyVec2d& present) {
    if (areEqual(former.x, present.x) && areEqual(former.y, present.y))
        return 0.0;
    const double angle = std::acos(std::clamp(former.dot(present), -1.0, 1.0)) * cDegreesPerRadian;
    return present.cross(former) > 0.0 ? -angle : angle;
}

/// Fingers on one pixel have neither a distance nor a direction.
void setTurn(KyPinchGesture& pinch, const KyVec2d& former, const KyVec2d& present) {
    const double formerSquare = getSquare(former), presentSquare = getSquare(present);
    if (formerSquare == 0.0 || presentSquare == 0.0) {
        pinch.setScaleFactor(1.0);
        pinch.setRotationAngle(0.0);
        return;
    }
    pinch.setScaleFactor(std::sqrt(formerSquare / presentSquare));
    pinch.setRotationAngle(getAngle(former / std::sqrt(formerSquare), present / std::sqrt(presentSquare)));
}

bool areSameFingers(const Points& former, const Points& present) {
    return former.size() == present.size() &&
           std::equal(former.begin(), former.end(), present.begin(),
                      [](const KyTouchPoint& a, const KyTouchPoint& b) { return a.id == b.id; });
}

/// The begin of a sequence, or one of its first two updates, which KyManipulator marks.
bool isEarly(const KyInputEvent& event) {
    return event.getType() == KyInputEvent::eTouchBegan || event.getState() == 0xFFFFFFFFu || event.getState() == 31u;
}

KyGesture* recognizePoint(KyManipulator& manipulator, const KyInputEvent& previous, KyInputEvent& current) {
    const KyVec2i point = getPosition(current.getTouchPoints().front());
    if (current.getType() == KyInputEvent::eTouchEnded && isEarly(previous)) {
        current.setGestureKind(KyGesture::eTap);
        manipulator.editTapGesture()->setPoint(point);
        return manipulator.editTapGesture();
    }
    const Points& former = previous.getTouchPoints();
    if (former.empty() || getPosition(former.front()) == point)
        return nullptr;
    current.setGestureKind(KyGesture::ePan);
    manipulator.editPanGesture()->setPoint(point);
    return manipulator.editPanGesture();
}

} // namespace

KyGesture* KyGestureRecognizer::recognizeGesture() {
    KyInputEvent& current = mManipulator.editInputEvent();
    const KyInputEvent& previous = mManipulator.getPreviousInputEvent();
    current.setGestureKind(KyGesture::eNone);
    if (!previous.isTouch() || !current.isTouch() || current.getType() == KyInputEvent::eTouchBegan)
        return nullptr;
    const Points &former = previous.getTouchPoints(), &present = current.getTouchPoints();
    const bool isFirst = former.empty() && present.size() == 1;
    if (!isFirst && !areSameFingers(former, present))
        return nullptr;
    switch (present.size()) {
    case 1:
        return recognizePoint(mManipulator, previous, current);
    case 2:
        return recognizePinch();
    case 3:
        return recognizeTilt();
    default:
        return nullptr;
    }
}

KyGesture* KyGestureRecognizer::recognizePinch() {
    KyInputEvent& current = mManipulator.editInputEvent();
    const Points &p = mManipulator.getPreviousInputEvent().getTouchPoints(), &c = current.getTouchPoints();
    current.setGestureKind(KyGesture::ePinch);
    const std::int64_t moved0 = getDistance(p[0], c[0]), moved1 = getDistance(p[1], c[1]);
    if (moved0 + moved1 == 0)
        return nullptr;
    KyPinchGesture& pinch = *mManipulator.editPinchGesture();
    setTurn(pinch, getStep(p[0], p[1]), getStep(c[0], c[1]));
    pinch.setRotationCenter(KyVec2i(getMean(c[0].x, moved1, c[1].x, moved0), getMean(c[0].y, moved1, c[1].y, moved0)));
    return &pinch;
}

KyGesture* KyGestureRecognizer::recognizeTilt() {
    KyInputEvent& current = mManipulator.editInputEvent();
    const Points &p = mManipulator.getPreviousInputEvent().getTouchPoints(), &c = current.getTouchPoints();
    KyTiltGesture& tilt = *mManipulator.editTiltGesture();
    int nbMoving = 0, moving = -1;
    for (int i = 0; i < 3; ++i) {
        const auto finger = static_cast<std::size_t>(i);
        if (getSquare(getStep(p[finger], c[finger])) < cRestingSquare)
            continue;
        ++nbMoving;
        moving = i;
    }
    if (nbMoving > 1)
        return nullptr;
    current.setGestureKind(KyGesture::eTilt);
    if (nbMoving == 1)
        tilt.setIndex(moving);
    if (tilt.getIndex() < 0 || tilt.getIndex() > 2)
        return nullptr;
    tilt.setOrientationPoint(getPosition(c[static_cast<std::size_t>(tilt.getIndex())]));
    return &tilt;
}

// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyTrackballManipulator.h"

#include "KyTrackballMath_p.h"

#include "KyCamera.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace {

constexpr double cMargin = 1.05;
constexpr double cParallel = 1e-9;

/// A camera's settings for a picture.
struct Shot {
    double near, far, extent;
    KyMat4d frame;
};

/// A volume seen along axes: how far the camera stands from its centre, and what lies nearest and farthest from there.
struct Framing {
    double distance = 0.0, extent = 0.0, nearest = 0.0, farthest = 0.0;
};

Framing getFraming(const KyVolumed& volume, const KyMat4d& axes, double tangent, double aspect) {
    Framing framing;
    const KyVec3d center = volume.getCenter();
    for (const KyVec3d& corner : volume.getCorners()) {
        const KyVec3d o = corner - center;
        const double x = std::abs(o.dot(axes.getColumn(0))) / aspect, y = std::abs(o.dot(axes.getColumn(1)));
        const double z = -o.dot(axes.getColumn(2));
        framing.distance = std::max(framing.distance, cMargin * std::max(x, y) / tangent - z);
        framing.extent = std::max(framing.extent, 2.0 * cMargin * std::max(x, y));
        framing.nearest = std::min(framing.nearest, z);
        framing.farthest = std::max(framing.farthest, z);
    }
    return framing;
}

void includeDepths(Shot& shot, double nearest, double farthest) {
    if (nearest < shot.near * (1.0 - 1e-9))
        shot.near = nearest * 0.5;
    if (farthest > shot.far)
        shot.far = farthest * 1.5;
}

/// Whether the camera would have that frame: under a parent that is singular it stays where it is.
bool canStand(const KyCamera& camera, const KyMat4d& frame) {
    const KyNode* parent = camera.getParent();
    KyMat4d toParent = parent ? parent->getWorldFrame() : KyMat4d();
    if (!toParent.invert())
        return false;
    const KyMat4d local = toParent * frame;
    return std::all_of(local.data(), local.data() + 16, [](double number) { return std::isfinite(number); });
}

/// Listeners may end the camera, and whoever called this.
void write(KyCamera& camera, const Shot& shot) {
    const KyObjectReference living(&camera);
    const auto set = [&](auto setter, const auto& value) {
        if (living.get())
            (camera.*setter)(value);
    };
    set(&KyCamera::setNear, shot.near);
    set(&KyCamera::setFar, shot.far);
    set(&KyCamera::setVerticalExtent, shot.extent);
    set(&KyCamera::setWorldFrame, shot.frame);
}

} // namespace

bool KyTrackballManipulator::focusFront(const KyVolumed& volume) {
    return focus(volume, mBasisX, mBasisY, mBasisZ);
}

bool KyTrackballManipulator::focusPerspective(const KyVolumed& volume) {
    return focusPerspective(volume, 1.0, 1.0, 1.0);
}

bool KyTrackballManipulator::focusPerspective(const KyVolumed& volume, double x, double y, double z) {
    const auto getBack = [this](double right, double up, double front) {
        return mBasisX * right + mBasisY * up - mBasisZ * front;
    };
    KyVec3d forward = -getBack(x, y, z);
    if (!forward.normalize()) {
        forward = -getBack(1.0, 1.0, 1.0);
        forward.normalize();
    }
    KyVec3d right = forward.cross(mBasisY);
    if (right.length() < cParallel)
        right = mBasisX;
    right.normalize();
    return focus(volume, right, right.cross(forward), forward);
}

bool KyTrackballManipulator::focus(const KyVolumed& volume, const KyVec3d& right, const KyVec3d& up,
                                   const KyVec3d& forward) {
    KyCamera* camera = getCamera();
    const bool isUsable =
        volume.isFinite() && kyIsWithin(volume.getMin(), cFarthest) && kyIsWithin(volume.getMax(), cFarthest);
    if (!camera || !isUsable)
        return false;
    KyVec3d x = right, y = up, z = forward;
    kyForceOrthonormal(x, y, z);
    Shot shot{camera->getNear(), camera->getFar(), camera->getVerticalExtent(), KyMat4d()};
    shot.frame.setColumn(0, x);
    shot.frame.setColumn(1, y);
    shot.frame.setColumn(2, -z);
    const KyVec3d center = volume.getCenter();
    const bool isOrthographic = camera->isOrthographic();
    Framing framing =
        getFraming(volume, shot.frame, std::tan(camera->getEffectiveAperture() / 2.0), getViewAspectRatio());
    if (volume.isPoint()) {
        const double distance = (center - camera->getWorldPosition()).length();
        framing.distance = distance >= mTolerance && std::isfinite(distance) ? distance : 1.0;
    } else if (isOrthographic) {
        framing.distance = std::max(volume.getSize().length(), mTolerance);
    } else {
        framing.distance = std::max({framing.distance, shot.near - framing.nearest, mTolerance});
    }
    if (isOrthographic && framing.extent > 0.0)
        shot.extent = std::max(framing.extent, cSmallestExtent);
    const KyVec3d eye = center - z * framing.distance;
    shot.frame.setColumn(3, eye);
    const bool isSensible = kyIsWithin(eye, cFarthest) && (!isOrthographic || framing.extent <= cFarthest);
    if (!isSensible || !canStand(*camera, shot.frame))
        return false;
    includeDepths(shot, framing.distance + framing.nearest, framing.distance + framing.farthest);
    stopCoasting();
    const KyObjectReference self(this);
    const bool isOther = !(std::exchange(mCenter, center) == center);
    write(*camera, shot);
    if (isOther && self.get())
        notifyModified("Center");
    return true;
}

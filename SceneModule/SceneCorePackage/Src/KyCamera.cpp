// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyCamera.h"

#include "KyCallSignatures.h"
#include "KyRay.h"
#include "KyTypeBuilder.h"

#include <algorithm>
#include <cmath>
#include <numbers>

const KyType* KyCamera::msType = nullptr;

namespace {

constexpr double cSmallest = 1e-9;

double limitAspect(double aspect) {
    return aspect > 0.0 && std::isfinite(aspect) ? aspect : 1.0;
}

KyVec3d getUnit(KyVec3d vector, const KyVec3d& otherwise) {
    return vector.normalize() ? vector : otherwise;
}

} // namespace

void KyCamera::initializeType() {
    if (msType)
        return;
    msType = KyTypeBuilder<KyCamera>("KyCamera", KyNode::getType())
                 .factory()
                 .attribute("Near", &KyCamera::getNear, &KyCamera::setNear)
                 .attribute("Far", &KyCamera::getFar, &KyCamera::setFar)
                 .attribute("VerticalAperture", &KyCamera::getVerticalAperture, &KyCamera::setVerticalAperture)
                 .attribute("Orthographic", &KyCamera::isOrthographic, &KyCamera::setOrthographic)
                 .attribute("VerticalExtent", &KyCamera::getVerticalExtent, &KyCamera::setVerticalExtent)
                 .method("getRight", &KyCamera::getRight)
                 .method("getUp", &KyCamera::getUp)
                 .method("getForward", &KyCamera::getForward)
                 .method("frame", [](KyCamera& c, KyNode& node) { return c.frame(node.getBoundingVolume(), 1.0); })
                 .method("frame", [](KyCamera& c, KyNode& node,
                                     double aspect) { return c.frame(node.getBoundingVolume(), aspect); })
                 .method("frame", [](KyCamera& c, KyNode& node, double aspect,
                                     double margin) { return c.frame(node.getBoundingVolume(), aspect, margin); })
                 .build();
    KyCallSignatures::add("KyCamera", {"frame(node, aspect?, margin?)"});
}

void KyCamera::finalizeType() {
    KyType::remove(msType);
}

const KyType* KyCamera::getType() {
    if (!msType)
        initializeType();
    return msType;
}

const KyType* KyCamera::getObjectType() const {
    return getType();
}

KyCamera* KyCamera::cast(KyObject* object) {
    return kyCast<KyCamera>(object);
}

KyObject* KyCamera::factory() {
    return new KyCamera;
}

double KyCamera::getEffectiveAperture() const {
    const bool isGiven = mVerticalAperture > 0.0 && mVerticalAperture < std::numbers::pi;
    return isGiven ? mVerticalAperture : std::numbers::pi / 4.0;
}

void KyCamera::setNear(double near) {
    if (!std::isfinite(near) || near == mNear)
        return;
    mNear = near;
    markModified("Near");
}

void KyCamera::setFar(double far) {
    if (!std::isfinite(far) || far == mFar)
        return;
    mFar = far;
    markModified("Far");
}

void KyCamera::setVerticalAperture(double aperture) {
    if (!std::isfinite(aperture) || aperture == mVerticalAperture)
        return;
    mVerticalAperture = aperture;
    markModified("VerticalAperture");
}

void KyCamera::setOrthographic(bool isOrthographic) {
    if (isOrthographic == mIsOrthographic)
        return;
    mIsOrthographic = isOrthographic;
    markModified("Orthographic");
}

void KyCamera::setVerticalExtent(double extent) {
    if (!(extent > 0.0) || !std::isfinite(extent) || extent == mVerticalExtent)
        return;
    mVerticalExtent = extent;
    markModified("VerticalExtent");
}

KyVec3d KyCamera::getRight() const {
    return getUnit(getWorldFrame().getColumn(0), KyVec3d(1, 0, 0));
}

KyVec3d KyCamera::getUp() const {
    return getUnit(getWorldFrame().getColumn(1), KyVec3d(0, 1, 0));
}

KyVec3d KyCamera::getForward() const {
    return -getUnit(getWorldFrame().getColumn(2), KyVec3d(0, 0, 1));
}

KyMat4d KyCamera::getViewMatrix() const {
    KyMat4d frame = KyMat4d::fromTranslation(getWorldPosition());
    frame.setColumn(0, getRight());
    frame.setColumn(1, getUp());
    frame.setColumn(2, -getForward());
    return frame.getInverse();
}

KyMat4d KyCamera::getProjection(double aspect) const {
    aspect = limitAspect(aspect);
    if (mIsOrthographic) {
        const double far = mFar > mNear ? mFar : mNear + 1.0;
        return KyMat4d::orthographic(mVerticalExtent, aspect, mNear, far);
    }
    const double near = std::max(mNear, cSmallest);
    return KyMat4d::perspective(getEffectiveAperture(), aspect, near, std::max(mFar, near * 1.001));
}

KyRayd KyCamera::getRay(double x, double y, double aspect) const {
    aspect = limitAspect(aspect);
    const KyVec3d eye = getWorldPosition();
    if (mIsOrthographic) {
        const double half = mVerticalExtent / 2.0;
        return KyRayd(eye + getRight() * (x * half * aspect) + getUp() * (y * half), getForward());
    }
    const double half = std::tan(getEffectiveAperture() / 2.0);
    KyVec3d direction = getForward() + getRight() * (x * half * aspect) + getUp() * (y * half);
    direction.normalize();
    return KyRayd(eye, direction);
}

bool KyCamera::frame(const KyVolumed& volume, double aspect, double margin) {
    if (!volume.isFinite() || !volume.getSize().isFinite())
        return false;
    aspect = limitAspect(aspect);
    margin = margin > 0.0 && std::isfinite(margin) ? margin : 1.0;
    const KyVec3d right = getRight(), up = getUp(), forward = getForward(), centre = volume.getCenter();
    const double half = std::tan(getEffectiveAperture() / 2.0);
    double distance = cSmallest, extent = cSmallest, nearest = 0.0, farthest = 0.0;
    for (const KyVec3d& corner : volume.getCorners()) {
        const KyVec3d o = corner - centre;
        const double x = std::abs(o.dot(right)) * margin / aspect, y = std::abs(o.dot(up)) * margin, z = o.dot(forward);
        distance = std::max(distance, std::max(x, y) / half - z);
        extent = std::max(extent, 2.0 * std::max(x, y));
        nearest = std::min(nearest, z);
        farthest = std::max(farthest, z);
    }
    if (volume.isPoint())
        distance = std::max((centre - getWorldPosition()).length(), 1.0);
    else if (mIsOrthographic)
        distance = 2.0 * volume.getRadius();
    if (mIsOrthographic && !volume.isPoint())
        setVerticalExtent(extent);
    setWorldPosition(centre - forward * distance);
    includeDepths(distance + nearest, distance + farthest);
    return true;
}

void KyCamera::includeDepths(double nearest, double farthest) {
    if (nearest < mNear)
        setNear(std::max(nearest * 0.5, farthest * 1e-4));
    if (farthest > mFar)
        setFar(farthest * 1.5);
}

// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyHostNavigation.h"

#include "KyHostStage.h"

#include "KyTrackballManipulator.h"

#include "KyMeshNode.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr double cSmallestDistance = 1e-6;

struct Side {
    /// From the centre to the eye.
    KyVec3d direction;
    KyVec3d up;
};

const Side cSides[KyHostNavigation::eNbDirections] = {
    {KyVec3d(0, 0, 1), KyVec3d(0, 1, 0)},  {KyVec3d(0, 0, -1), KyVec3d(0, 1, 0)}, {KyVec3d(1, 0, 0), KyVec3d(0, 1, 0)},
    {KyVec3d(-1, 0, 0), KyVec3d(0, 1, 0)}, {KyVec3d(0, 1, 0), KyVec3d(0, 0, -1)}, {KyVec3d(0, -1, 0), KyVec3d(0, 0, 1)},
};

bool isGround(KyNode& node) {
    const KyMeshNode* mesh = KyMeshNode::cast(&node);
    return mesh && mesh->getShading() == KyMeshNode::eGrid && node.getNbChildren() == 0;
}

} // namespace

KyVolumed KyHostNavigation::getModelVolume() const {
    KyScene& scene = mStage.getScene();
    KyVolumed volume;
    for (unsigned i = 0; i < scene.getNbChildren(); ++i)
        if (!isGround(*scene.getChild(i)))
            volume.merge(scene.getChild(i)->getBoundingVolume());
    return volume.isFinite() ? volume : scene.getBoundingVolume();
}

void KyHostNavigation::frameModel() {
    const KyVec3d towardsEye = -mStage.getCamera().getForward();
    KyTrackballManipulator& trackball = mStage.getTrackball();
    const KyMat4d basis = trackball.getOrthonormalBasis();
    trackball.focusPerspective(getModelVolume(), towardsEye.dot(basis.getColumn(0)), towardsEye.dot(basis.getColumn(1)),
                               towardsEye.dot(basis.getColumn(2)));
}

void KyHostNavigation::lookFrom(Direction direction) {
    KyCamera& camera = mStage.getCamera();
    KyTrackballManipulator& trackball = mStage.getTrackball();
    trackball.reset();
    const KyVec3d center = trackball.getCenter();
    const double distance = std::max((center - camera.getWorldPosition()).length(), cSmallestDistance);
    const KyMat4d basis = trackball.getOrthonormalBasis();
    const Side& side = cSides[direction];
    camera.lookAt(center + basis.transformVector(side.direction) * distance, center, basis.transformVector(side.up));
}

double KyHostNavigation::getDepthOfCenter() const {
    const KyCamera& camera = mStage.getCamera();
    const KyVec3d towards = mStage.getTrackball().getCenter() - camera.getWorldPosition();
    const double depth = towards.dot(camera.getForward());
    return depth > cSmallestDistance ? depth : std::max(towards.length(), 1.0);
}

void KyHostNavigation::toggleOrthographic() {
    KyCamera& camera = mStage.getCamera();
    mStage.getTrackball().reset();
    const double depth = getDepthOfCenter();
    const double extentAtOne = 2.0 * std::tan(camera.getEffectiveAperture() / 2.0);
    if (camera.isOrthographic())
        camera.setWorldPosition(camera.getWorldPosition() +
                                camera.getForward() * (depth - camera.getVerticalExtent() / extentAtOne));
    else
        camera.setVerticalExtent(depth * extentAtOne);
    camera.setOrthographic(!camera.isOrthographic());
}

// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KySceneExport.h"

#include "KyNode.h"

template <class T>
class KyRay;

/// An eye in a scene: it looks along -z of its world frame. It may stand in a scene's tree or by itself. Scale in its
/// frame does not count. Setters tell listeners, so that views draw anew.
///
/// ```
/// KyHolder<KyCamera> camera(new KyCamera);
/// camera->lookAt(KyVec3d(3, 2, 5), KyVec3d());
/// camera->frame(scene->getBoundingVolume(), 16.0 / 9.0);
/// ```
class KYSCENE_EXPORT KyCamera : public KyNode {
public:
    static const KyType* getType();
    static KyCamera* cast(KyObject* object);
    static KyObject* factory();
    static void initializeType();
    static void finalizeType();
    const KyType* getObjectType() const override;

    /// Distances along the view between which things are drawn.
    double getNear() const { return mNear; }
    /// See setNear.
    double getFar() const { return mFar; }
    /// Radians; 0 or less: none given, pi / 4 is used then.
    double getVerticalAperture() const { return mVerticalAperture; }
    /// See setOrthographic.
    bool isOrthographic() const { return mIsOrthographic; }
    /// Full height of an orthographic view in world units.
    double getVerticalExtent() const { return mVerticalExtent; }
    /// The aperture that is drawn with: the given one below pi, or pi / 4.
    double getEffectiveAperture() const;

    /// Values that are not finite are ignored by all setters. Whatever near and far are, a projection is drawn with
    /// 0 < near < far.
    void setNear(double near);
    /// See setNear.
    void setFar(double far);
    void setVerticalAperture(double aperture);
    /// Off, the picture has perspective.
    void setOrthographic(bool isOrthographic);
    /// Positive, else ignored.
    void setVerticalExtent(double extent);

    /// Unit vectors of the world frame, without scale.
    KyVec3d getRight() const;
    /// In the world, length 1.
    KyVec3d getUp() const;
    /// In the world, length 1: where the camera looks.
    KyVec3d getForward() const;
    /// World to eye coordinates.
    KyMat4d getViewMatrix() const;
    /// Eye coordinates to the device's cube; aspect = width / height, 1 is taken when it is not positive.
    KyMat4d getProjection(double aspect) const;
    /// The world ray through a point of the view, x and y from -1 (left, bottom) to 1; direction of length 1.
    KyRay<double> getRay(double x, double y, double aspect) const;

    /// Moves the eye along its direction, and changes the extent of an orthographic view, until the volume fills the
    /// view but for the margin (1 touches the border). Near and far are widened when they would cut it. False, and
    /// nothing changed, for a volume that is null or infinite.
    bool frame(const KyVolumed& volume, double aspect, double margin = 1.1);

private:
    void includeDepths(double nearest, double farthest);

    double mNear = 0.05;
    double mFar = 1000.0;
    double mVerticalAperture = 0.78539816339744830962;
    double mVerticalExtent = 10.0;
    bool mIsOrthographic = false;

    static const KyType* msType;
};

// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyShapeManipulator.h"

#include "KyMat4.h"
#include "KyObjectReference.h"
#include "KyQuat.h"
#include "KyRay.h"
#include "KyVec3.h"

#include <optional>

class KyCamera;
class KyNode;

/// Where the pointer is in the world, as a camera sees it.
struct KyShapePointer {
    KyRayd ray;
    KyVec3d right, up, forward;
    /// Rays of an orthographic camera; what lies behind it is then met, too.
    bool isParallel = false;
    /// Within the view.
    bool isInside = false;
    /// World units a pixel: everywhere with parallel rays, else at depth 1.
    double pixel = 0.0;

    /// False where the camera or the size give no ray. x and y in pixels of a view of that size.
    static bool make(const KyCamera& camera, double x, double y, double width, double height, KyShapePointer& pointer);

    double getPixel(const KyVec3d& point) const;
    /// Where the ray meets the plane; none near the horizon and behind the eye.
    std::optional<KyVec3d> meetPlane(const KyVec3d& point, const KyVec3d& normal) const;
    /// How far along the axis the ray comes closest to it; none where it looks along the axis.
    std::optional<double> meetAxis(const KyVec3d& point, const KyVec3d& axis) const;
};

/// One drag: the node as it was at the press, and what it becomes for where the pointer is now.
class KyShapeDrag {
public:
    struct Choice {
        int mode = 0;
        int constraint = 0;
        int space = 0;
        KyShapeManipulator::Steps steps;
    };

    /// Null stands for no point: the drag then holds the plane or axis through the object's origin.
    KyShapeDrag(KyNode& node, const Choice& choice, const KyShapePointer& pointer, const KyVec3d* grabbed);

    /// Null once it is gone.
    KyNode* getNode() const;
    /// Whether world movements can be given to the node.
    static bool isMovable(const KyNode& node);

    /// Changes the node, as the last thing: listeners may end this drag.
    void follow(const KyShapePointer& pointer) const;
    /// As it was at the press; listeners may end this drag.
    void restore() const;

private:
    using Follow = void (KyShapeDrag::*)(KyNode&, const KyShapePointer&) const;

    void chooseAxes(const KyMat4d& frame, const KyShapePointer& pointer);
    void prepareTranslation(const KyShapePointer& pointer);
    void prepareRotation(const KyShapePointer& pointer);
    void prepareScale(const KyShapePointer& pointer);

    std::optional<KyVec3d> getOffset(const KyShapePointer& pointer) const;
    std::optional<double> getAngle(const KyShapePointer& pointer) const;
    std::optional<double> getTurn(const KyShapePointer& pointer) const;
    std::optional<double> getReach(const KyShapePointer& pointer) const;
    void translate(KyNode& node, const KyShapePointer& pointer) const;
    void rotate(KyNode& node, const KyShapePointer& pointer) const;
    void scale(KyNode& node, const KyShapePointer& pointer) const;
    void setTurned(KyNode& node, const KyVec3d& axis, double angle) const;

    KyObjectReference mNode;
    Choice mChoice;
    // At the press.
    KyVec3d mPosition;
    KyQuatd mOrientation;
    KyVec3d mScale;
    KyMat4d mFrame;
    bool mIsSheared = false;
    KyVec3d mOrigin;
    KyVec3d mForward;

    // Of an axis, the axis and no plane; of a plane, its sides and the normal. Unit vectors.
    bool mIsAxis = false;
    KyVec3d mAxis;
    KyVec3d mSide1;
    KyVec3d mSide2;

    // What the pointer is measured against: a point of the plane or axis, and the pointer's first measure there.
    KyVec3d mAnchor;
    KyVec3d mCentre;
    std::optional<KyVec3d> mFrom;
    std::optional<double> mFirst;
    double mSmallest = 0.0;
    bool mIsEdgeOn = false;
    KyVec3d mTread;
    double mRadius = 0.0;
};

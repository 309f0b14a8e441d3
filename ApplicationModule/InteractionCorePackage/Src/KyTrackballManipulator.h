// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyCameraManipulator.h"

#include "KyVec2.h"
#include "KyVec3.h"
#include "KyVolume.h"

#include <array>
#include <cstdint>
#include <memory>
#include <string_view>

class KyTrackballCoasting;

/// Moves a camera about a centre by mouse, wheel and fingers. What a drag does is told by the whole state word of its
/// events: with two masks each for orbit, pan, move, zoom and rotate, the first that equals it, in this order, decides.
/// -1 never matches. At the start the left button orbits, the middle one pans, the right one moves, the wheel zooms.
///
/// Orbit: turns about the centre, so that the scene follows the pointer. It goes over the poles without a jump; beyond
/// one the scene is upside down and the horizontal turns the other way. Pan: the point of the centre's depth stays
/// under the pointer. Move: drives sideways and along the view, more slowly near the centre. Zoom: goes towards the
/// centre or away from it; a notch in leaves 0.89 of the distance, one back makes 1.11 of that. Rotate: looks round
/// from where the camera stands. One finger pans, two pinch (zoom and twist), one of three orbits.
///
/// With auto centre the point of the scene under the pointer becomes the centre at each press and notch, so that
/// zooming goes to what the pointer shows. Centre and eye are world points and stay within 1e12 of the origin: a motion
/// that would leave this, or become not finite, is refused. The camera's world frame is read before each event, made
/// orthonormal, and written as the last thing that a motion does: listeners may end camera, views and manipulator.
///
/// ```
/// auto* trackball = KyTrackballManipulator::create();
/// trackball->setObject(camera);
/// trackball->setViewMultiPass(view);
/// trackball->focusPerspective(scene->getBoundingVolume());
/// ```
class KYAPPLICATION_EXPORT KyTrackballManipulator : public KyCameraManipulator {
public:
    /// In the order in which their masks are compared.
    enum Motion { eOrbit, ePan, eMove, eZoom, eRotate, eNbMotions };

    /// A mask that never matches.
    static constexpr int cNoMask = -1;
    /// Farther from the origin neither eye nor centre may be.
    static constexpr double cFarthest = 1e12;
    /// Seconds; a longer damping counts as this one.
    static constexpr double cLongestDamping = 10.0;

    static const KyType* getType();
    static KyTrackballManipulator* cast(KyObject* object);
    static KyObject* factory();
    static void initializeType();
    static void finalizeType();
    static void initializeClass();
    const KyType* getObjectType() const override;

    static KyTrackballManipulator* create() { return new KyTrackballManipulator; }
    KyTrackballManipulator();
    ~KyTrackballManipulator() override;

    /// Bits of KyInputEvent's state word: buttons, 32 for the wheel, modifiers.
    int getMaskOrbit() const { return mMasks[eOrbit][0]; }
    /// @{
    /// See getMaskOrbit.
    int getMask2Orbit() const { return mMasks[eOrbit][1]; }
    int getMaskPan() const { return mMasks[ePan][0]; }
    int getMask2Pan() const { return mMasks[ePan][1]; }
    int getMaskMove() const { return mMasks[eMove][0]; }
    int getMask2Move() const { return mMasks[eMove][1]; }
    int getMaskZoom() const { return mMasks[eZoom][0]; }
    int getMask2Zoom() const { return mMasks[eZoom][1]; }
    int getMaskRotate() const { return mMasks[eRotate][0]; }
    int getMask2Rotate() const { return mMasks[eRotate][1]; }
    void setMaskOrbit(int mask) { setMask(eOrbit, 0, mask); }
    void setMask2Orbit(int mask) { setMask(eOrbit, 1, mask); }
    void setMaskPan(int mask) { setMask(ePan, 0, mask); }
    void setMask2Pan(int mask) { setMask(ePan, 1, mask); }
    void setMaskMove(int mask) { setMask(eMove, 0, mask); }
    void setMask2Move(int mask) { setMask(eMove, 1, mask); }
    void setMaskZoom(int mask) { setMask(eZoom, 0, mask); }
    void setMask2Zoom(int mask) { setMask(eZoom, 1, mask); }
    void setMaskRotate(int mask) { setMask(eRotate, 0, mask); }
    void setMask2Rotate(int mask) { setMask(eRotate, 1, mask); }
    /// @}

    /// Orbit and rotate: radians for a drag of half the view. Pan and move: 1 keeps up with the pointer. Zoom: 1.1
    /// makes a notch 11 % of the distance. Values that are not finite are ignored.
    double getOrbitSpeed() const { return mSpeeds[eOrbit]; }
    /// @{
    /// See getOrbitSpeed.
    double getPanSpeed() const { return mSpeeds[ePan]; }
    double getMoveSpeed() const { return mSpeeds[eMove]; }
    double getZoomSpeed() const { return mSpeeds[eZoom]; }
    double getRotateSpeed() const { return mSpeeds[eRotate]; }
    void setOrbitSpeed(double speed) { setSpeed(eOrbit, speed); }
    void setPanSpeed(double speed) { setSpeed(ePan, speed); }
    void setMoveSpeed(double speed) { setSpeed(eMove, speed); }
    void setZoomSpeed(double speed) { setSpeed(eZoom, speed); }
    void setRotateSpeed(double speed) { setSpeed(eRotate, speed); }
    /// @}

    /// Orbit: the scene follows the pointer up and down (on at the start). Move and rotate: both directions the other
    /// way (off).
    bool getOrbitInverseCtrl() const { return mInverses[eOrbit]; }
    /// @{
    /// See getOrbitInverseCtrl.
    bool getMoveInverseCtrl() const { return mInverses[eMove]; }
    bool getRotateInverseCtrl() const { return mInverses[eRotate]; }
    void setOrbitInverseCtrl(bool isInverse) { setInverse(eOrbit, isInverse); }
    void setMoveInverseCtrl(bool isInverse) { setInverse(eMove, isInverse); }
    void setRotateInverseCtrl(bool isInverse) { setInverse(eRotate, isInverse); }
    /// @}

    /// Whether presses, notches and gestures set the centre; on at the start.
    bool isAutoCenter() const { return mIsAutoCenter; }
    void setAutoCenter(bool isAutoCenter);
    /// Pan, move and pinch take the distance of the centre instead of its depth along the view; off at the start.
    bool hasOrthographicMovements() const { return mHasOrthographicMovements; }
    void setOrthographicMovements(bool hasThem);
    /// World coordinates. Ignored when it is not finite or beyond cFarthest.
    const KyVec3d& getCenter() const { return mCenter; }
    void setCenter(const KyVec3d& center);
    /// Columns X, Y and -Z, as a camera's frame: Y is the world's up, Z the direction of focusFront. The columns are
    /// made length 1; a matrix with a column that is null or not finite is ignored.
    KyMat4d getOrthonormalBasis() const;
    void setOrthonormalBasis(const KyMat4d& basis);

    /// Seconds in which a motion that goes on after the release falls to 1/e; 0, at the start, ends it with the
    /// release. Negative and not finite ones are ignored, those above 10 count as 10. A press, touch, drag, notch,
    /// reset, other object, framing or disabling ends the motion.
    double getDamping() const { return mDamping; }
    void setDamping(double seconds);
    /// Lets the motion go on for some seconds; false when nothing moves. The main task manager calls it each frame
    /// while something moves.
    bool coast(double seconds);

    /// Looks along the basis' Z at the volume, from so far that it fits the view with a margin of 5 % on each side at
    /// any aspect ratio. Its centre becomes the centre. A single point keeps the distance. Near and far widen when they
    /// would cut the volume. False, and nothing changed, without a camera, under a parent that is singular, and for a
    /// volume that is empty, not finite or, with its picture, beyond cFarthest.
    virtual bool focusFront(const KyVolume<double>& volume);
    /// As focusFront, from the direction (1, 1, 1) of the basis: right of it, above it, in front of it.
    virtual bool focusPerspective(const KyVolume<double>& volume);
    /// From the direction x, y to the right, above and z in front; (1, 1, 1) for one that is null or not finite.
    virtual bool focusPerspective(const KyVolume<double>& volume, double x, double y, double z);

    bool acceptEvent(const KyInputEvent& event) const override;
    bool handleEvents() override;
    bool handleEvents(const KyVec3d& point) override;
    void initialize() override;
    /// The current event becomes the origin of the next motion, and nothing moves on.
    void reset() override;

    /// Each uses the last two events; true when the camera changed.
    virtual bool doOrbit();
    /// @{
    /// See doOrbit.
    virtual bool doPan();
    virtual bool doMove();
    virtual bool doZoom();
    virtual bool doRotate();
    /// @}

protected:
    /// Pixels as a part of half the view's size; 0 without a view or size.
    double normalizeX(double pixels) const;
    /// See normalizeX.
    double normalizeY(double pixels) const;
    /// Width / height of the view; 1 without a view or size.
    double getViewAspectRatio() const;
    /// With auto centre: takes the point, or for the null vector the scene's point under the event, when there is one.
    void updateCenter(const KyVec3d& point);
    /// Reads the camera's frame; false, and no motion will succeed, without a camera or with a frame that is not
    /// finite.
    bool updateFromViewpoint();
    /// Writes the frame to the camera, and is the last thing to do: false when the frame is refused, or stayed.
    bool updateViewpoint();
    /// Sets the eye; the extent of an orthographic view is multiplied by the factor with the next updateViewpoint.
    void moveEyeToPosition(const KyVec3d& position, double factor);
    /// The frame: columns right, up, -forward, eye.
    KyMat4d getTransform() const;
    /// Turn the frame about the centre, radians: about the basis' Y, about the present right axis.
    void doUpOrbit(double angle);
    /// See doUpOrbit.
    void doRightOrbit(double angle);
    /// Moves and zooms with two fingers; true when the camera changed.
    bool applyPinch(const KyPinchGesture* gesture);
    void handleIsEnabled() override;

private:
    /// What the view shows at the centre's depth.
    struct Extent {
        double depth, width, height;
    };

    void setMask(Motion motion, unsigned index, int mask);
    void setSpeed(Motion motion, double speed);
    void setInverse(Motion motion, bool isInverse);

    KyRect<int> getViewArea() const;
    bool pickCenter(KyVec3d& point) const;
    void release();
    bool handleTouch(const KyVec3d& point);
    bool handleGesture(const KyVec3d& point);
    bool hasSameFingers() const;
    /// Whether the gesture that will be applied is another one than last.
    bool beginsGesture(int kind);
    void setDragPoints(std::size_t finger);
    bool handleState();
    bool hasDragOrigin() const;
    bool drag(Motion motion);
    bool apply(Motion motion, const KyVec2d& step);
    bool orbit(const KyVec2d& step);
    bool pan(const KyVec2d& step);
    bool move(const KyVec2d& step);
    bool rotate(const KyVec2d& step);
    double getZoomAmount() const;
    Extent getExtentAtCenter() const;
    void turn(const KyQuat<double>& rotation, const KyVec3d& pivot);
    bool focus(const KyVolume<double>& volume, const KyVec3d& right, const KyVec3d& up, const KyVec3d& forward);
    void stopCoasting();

    std::array<std::array<std::int32_t, 2>, eNbMotions> mMasks{{{1, -1}, {4, -1}, {2, -1}, {32, -1}, {-1, -1}}};
    std::array<double, eNbMotions> mSpeeds{2.0, 1.0, 1.0, 1.1, 1.0};
    std::array<bool, eNbMotions> mInverses{true, false, false, false, false};
    double mTolerance = 0.01;
    KyVec3d mCenter;
    KyVec3d mEye;
    KyVec3d mRight{1, 0, 0};
    KyVec3d mUp{0, 1, 0};
    KyVec3d mForward{0, 0, -1};
    KyVec3d mBasisX{1, 0, 0};
    KyVec3d mBasisY{0, 1, 0};
    KyVec3d mBasisZ{0, 0, -1};
    bool mHasOrthographicMovements = false;
    bool mIsAutoCenter = true;
    double mExtentFactor = 1.0;
    /// Of the fingers that are down: what they did last.
    int mLastGesture = KyGesture::eNone;
    double mDamping = 0.0;
    /// Null while damping is off.
    std::unique_ptr<KyTrackballCoasting> mCoasting;

    static const KyType* msType;
    static bool msIsClassInitialized;
};

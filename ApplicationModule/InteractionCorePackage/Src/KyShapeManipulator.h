// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyApplicationExport.h"

#include "KyManipulator.h"

#include <cstdint>
#include <memory>

class KyScenePass;
class KyShapeDrag;
struct KyNodeHit;
struct KyShapePointer;

/// Moves, turns and scales a node of the scene with the pointer, in the multi-pass view whose scene pass shows it. A
/// press whose state word equals one of the masks takes the node under the pointer, or with "AutoPick" off the object
/// that was set, wherever the pointer is. Moves drag it, the release of the button ends the drag. What is used up are
/// the events of a drag; all others are left to the manipulators behind, so that this one stands before a trackball.
///
/// - Translate: the grabbed point stays under the pointer, in the plane across the view, in a plane of two axes, or as
///   near to it as an axis allows.
/// - Rotate: about the object's origin; the grabbed point turns with the pointer in the plane across the axis, which is
///   the one that points to the viewer with eViewPlane, and the axis that a plane of two axes lacks. Where that plane
///   is seen from its edge, the surface follows the pointer as a wheel's tread does. Under an unevenly scaled parent
///   the turn is one of the parent's space: nothing is ever sheared.
/// - Scale: by the ratio of the distances of the pointer from the object's origin, along an axis, in a plane (both of
///   its axes) or in the view (all three). Always along the object's own axes, whatever the space, as no others can be
///   scaled without shear. One drag scales by 0.01 to 100; close to the origin, where ratios explode, by less.
///
/// Everything is computed from the press: back at its pixel, the node is as it was. Where a movement has no answer
/// (plane or axis seen from its edge or end, pointer past the horizon, eye at the object) the node stays as it was
/// last. Another button's press in a drag cancels it; what follows is used up until all buttons of both are released.
/// Mode, constraint, space and steps of a drag are those at its press. A node that cannot be moved (the parent's frame
/// is singular, the camera stands on it) is not taken. Neither object nor view are owned, and either may end during a
/// drag. One thread.
///
/// ```
/// auto* shapes = KyShapeManipulator::create();
/// shapes->setViewMultiPass(view);
/// shapes->setMode(KyShapeManipulator::eRotate);
/// handler->setManipulator(shapes);
/// handler->setMultipleManipulators(trackball);
/// ```
class KYAPPLICATION_EXPORT KyShapeManipulator : public KyManipulator {
public:
    /// What a drag does.
    enum Mode { eTranslate = 0, eRotate = 1, eScale = 2, eNbModes };
    /// Along which axes or in which plane.
    enum Constraint {
        eViewPlane = 0,
        eAxisX = 1,
        eAxisY = 2,
        eAxisZ = 3,
        ePlaneXY = 4,
        ePlaneYZ = 5,
        ePlaneZX = 6,
        eNbConstraints
    };
    /// Whose axes: the world's, or the object's own at the press.
    enum Space { eWorld = 0, eLocal = 1, eNbSpaces };

    /// How far a drag goes in whole steps, counted from the press; 0 is off.
    struct Steps {
        /// World units.
        double translation = 0.0;
        /// Radians.
        double rotation = 0.0;
        /// Of the factor.
        double scale = 0.0;
    };

    static const KyType* getType();
    static KyShapeManipulator* cast(KyObject* object);
    static KyObject* factory();
    static void initializeType();
    static void finalizeType();
    static void initializeClass();
    const KyType* getObjectType() const override;

    static KyShapeManipulator* create() { return new KyShapeManipulator; }
    KyShapeManipulator();
    ~KyShapeManipulator() override;

    /// A number of Mode.
    int getMode() const { return mMode; }
    /// A number of Constraint.
    int getConstraint() const { return mConstraint; }
    /// A number of Space.
    int getSpace() const { return mSpace; }
    /// State words of the press that begins a drag: Control and the left button at first, the second one off; -1 is
    /// off.
    int getMask() const { return mMask; }
    /// See getMask.
    int getMask2() const { return mMask2; }
    /// On at first: a press sets the object to the node under the pointer; the object stays set after the drag.
    bool isAutoPick() const { return mIsAutoPick; }
    /// World units, along the axis or both axes of the plane (to the right and up with eViewPlane).
    double getTranslationStep() const { return mSteps.translation; }
    /// Radians.
    double getRotationStep() const { return mSteps.rotation; }
    /// Of the factor.
    double getScaleStep() const { return mSteps.scale; }
    /// True from the press that takes a node to the drag's end.
    bool isDragging() const { return mDrag != nullptr; }

    /// Numbers that are none of the enumeration are ignored.
    void setMode(int mode);
    /// @{
    /// See setMode.
    void setConstraint(int constraint);
    void setSpace(int space);
    /// @}
    /// @{
    /// See getMask.
    void setMask(int mask);
    void setMask2(int mask);
    /// @}
    void setAutoPick(bool isOn);
    /// Negative and not finite steps are ignored.
    void setTranslationStep(double step);
    void setRotationStep(double step);
    void setScaleStep(double step);

    /// Gives the object the frame that it had at the press and ends the drag; moves up to the release are still used
    /// up. Nothing without a drag.
    void cancel();
    /// Ends the drag and leaves the object as it is.
    void reset() override;
    /// As reset: another object is not dragged by the old press.
    void initialize() override;
    /// Nodes that are no cameras, and null.
    bool acceptObject(KyObject* object) const override;
    /// Of the pointer only: presses, moves and releases that repeat no touch.
    bool acceptEvent(const KyInputEvent& event) const override;
    bool handleEvents() override;
    bool handleEvents(const KyVec3<double>& point) override;

private:
    void endDrag();
    bool handlePress();
    bool handleMove();
    bool handleRelease();
    /// Waits no longer for buttons that are up; the first one ends the drag. False when none is left.
    bool keepButtons();
    bool isGrab(std::uint32_t state) const;
    bool choose(const KyScenePass& pass, const KyShapePointer& pointer, KyNodeHit& hit);
    /// The pass that shows the scene, and where it has the pointer; null where it has none.
    KyScenePass* getPointer(KyShapePointer& pointer) const;
    static KyScenePass* findPass(KyGraphicsViewMultiPass& view);
    void assign(double& step, double value, const char* attribute);
    template <class T>
    void change(T& member, T value, const char* attribute);

    int mMode = eTranslate;
    int mConstraint = eViewPlane;
    int mSpace = eWorld;
    int mMask = 0x40000001;
    int mMask2 = -1;
    bool mIsAutoPick = true;
    Steps mSteps;
    // Buttons of a drag, also of a cancelled one, and of what cancelled it, up to their releases.
    std::uint32_t mButtons = 0;
    std::unique_ptr<KyShapeDrag> mDrag;

    static const KyType* msType;
    static bool msIsClassInitialized;
};

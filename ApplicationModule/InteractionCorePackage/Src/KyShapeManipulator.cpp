// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyShapeManipulator.h"

#include "KyMaskSetter_p.h"
#include "KyShapeDrag_p.h"

#include "KyCamera.h"
#include "KyGraphicsViewMultiPass.h"
#include "KyHolder.h"
#include "KyNode.h"
#include "KyNodeHit.h"
#include "KyScene.h"
#include "KyScenePass.h"

#include "KyCast.h"
#include "KyInputEvent.h"
#include "KyTypeBuilder.h"

#include <algorithm>
#include <array>
#include <cmath>

const KyType* KyShapeManipulator::msType = nullptr;
bool KyShapeManipulator::msIsClassInitialized = false;

namespace {

constexpr int cOff = -1;
/// A press that follows a click too fast is told as a double click.
constexpr std::array cPresses{KyInputEvent::eMousePressed, KyInputEvent::eMouseDoubleClicked};

bool isPress(const KyInputEvent& event) {
    return std::ranges::find(cPresses, event.getType()) != cPresses.end();
}

bool matches(int mask, std::uint32_t state) {
    return mask != cOff && static_cast<std::uint32_t>(mask) == state;
}

bool isIn(int number, int count) {
    return number >= 0 && number < count;
}

bool isCarriedBy(const KyCamera& camera, const KyNode& node) {
    const KyNode* carrier = &camera;
    while (carrier && carrier != &node)
        carrier = carrier->getParent();
    return carrier != nullptr;
}

} // namespace

void KyShapeManipulator::initializeType() {
    if (msType)
        return;
    KyManipulator::initializeType();
    using Shapes = KyShapeManipulator;
    msType = KyTypeBuilder<KyShapeManipulator>("KyShapeManipulator", KyManipulator::getType())
                 .factory()
                 .attribute("Mode", &KyShapeManipulator::getMode, &KyShapeManipulator::setMode)
                 .attribute("Constraint", &KyShapeManipulator::getConstraint, &KyShapeManipulator::setConstraint)
                 .attribute("Space", &KyShapeManipulator::getSpace, &KyShapeManipulator::setSpace)
                 .attribute("Mask", &Shapes::getMask, kyMakeMaskSetter<Shapes, &Shapes::setMask>())
                 .attribute("Mask2", &Shapes::getMask2, kyMakeMaskSetter<Shapes, &Shapes::setMask2>())
                 .attribute("AutoPick", &KyShapeManipulator::isAutoPick, &KyShapeManipulator::setAutoPick)
                 .attribute("TranslationStep", &KyShapeManipulator::getTranslationStep,
                            &KyShapeManipulator::setTranslationStep)
                 .attribute("RotationStep", &KyShapeManipulator::getRotationStep, &KyShapeManipulator::setRotationStep)
                 .attribute("ScaleStep", &KyShapeManipulator::getScaleStep, &KyShapeManipulator::setScaleStep)
                 .method("cancel", &KyShapeManipulator::cancel)
                 .method("isDragging", &KyShapeManipulator::isDragging)
                 .enumeration({{"eTranslate", eTranslate},
                               {"eRotate", eRotate},
                               {"eScale", eScale},
                               {"eViewPlane", eViewPlane},
                               {"eAxisX", eAxisX},
                               {"eAxisY", eAxisY},
                               {"eAxisZ", eAxisZ},
                               {"ePlaneXY", ePlaneXY},
                               {"ePlaneYZ", ePlaneYZ},
                               {"ePlaneZX", ePlaneZX},
                               {"eWorld", eWorld},
                               {"eLocal", eLocal}})
                 .build();
}

void KyShapeManipulator::finalizeType() {
    msIsClassInitialized = false;
    KyType::remove(msType);
}

void KyShapeManipulator::initializeClass() {
    if (msIsClassInitialized)
        return;
    msIsClassInitialized = true;
    initializeType();
}

const KyType* KyShapeManipulator::getType() {
    if (!msType)
        initializeType();
    return msType;
}

const KyType* KyShapeManipulator::getObjectType() const {
    return getType();
}

KyShapeManipulator* KyShapeManipulator::cast(KyObject* object) {
    return kyCast<KyShapeManipulator>(object);
}

KyObject* KyShapeManipulator::factory() {
    return new KyShapeManipulator;
}

KyShapeManipulator::KyShapeManipulator() = default;

KyShapeManipulator::~KyShapeManipulator() {
    notifyEnd();
}

template <class T>
void KyShapeManipulator::change(T& member, T value, const char* attribute) {
    if (member == value)
        return;
    member = value;
    notifyModified(attribute);
}

void KyShapeManipulator::setMode(int mode) {
    if (isIn(mode, eNbModes))
        change(mMode, mode, "Mode");
}

void KyShapeManipulator::setConstraint(int constraint) {
    if (isIn(constraint, eNbConstraints))
        change(mConstraint, constraint, "Constraint");
}

void KyShapeManipulator::setSpace(int space) {
    if (isIn(space, eNbSpaces))
        change(mSpace, space, "Space");
}

void KyShapeManipulator::setMask(int mask) {
    change(mMask, mask, "Mask");
}

void KyShapeManipulator::setMask2(int mask) {
    change(mMask2, mask, "Mask2");
}

void KyShapeManipulator::setAutoPick(bool isOn) {
    change(mIsAutoPick, isOn, "AutoPick");
}

void KyShapeManipulator::assign(double& step, double value, const char* attribute) {
    if (value >= 0.0 && std::isfinite(value))
        change(step, value, attribute);
}

void KyShapeManipulator::setTranslationStep(double step) {
    assign(mSteps.translation, step, "TranslationStep");
}

void KyShapeManipulator::setRotationStep(double step) {
    assign(mSteps.rotation, step, "RotationStep");
}

void KyShapeManipulator::setScaleStep(double step) {
    assign(mSteps.scale, step, "ScaleStep");
}

void KyShapeManipulator::cancel() {
    if (const std::unique_ptr<KyShapeDrag> drag = std::move(mDrag))
        drag->restore();
}

void KyShapeManipulator::endDrag() {
    mDrag.reset();
    mButtons = 0;
}

void KyShapeManipulator::reset() {
    endDrag();
    KyManipulator::reset();
}

void KyShapeManipulator::initialize() {
    mDrag.reset();
    KyManipulator::initialize();
}

bool KyShapeManipulator::acceptObject(KyObject* object) const {
    return !object || (KyNode::cast(object) && !KyCamera::cast(object));
}

bool KyShapeManipulator::acceptEvent(const KyInputEvent& event) const {
    const bool isPointer = isPress(event) || event.getType() == KyInputEvent::eMouseMoved ||
                           event.getType() == KyInputEvent::eMouseReleased;
    return isPointer && !event.repeatsTouch() && KyManipulator::acceptEvent(event);
}

bool KyShapeManipulator::handleEvents(const KyVec3d&) {
    return handleEvents();
}

bool KyShapeManipulator::handleEvents() {
    if (mDrag && mDrag->getNode() != getObject())
        mDrag.reset();
    // Events were missed: the pointer may be anywhere by now.
    if (getPreviousInputEvent().isEmpty())
        endDrag();
    const KyInputEvent& event = getInputEvent();
    if (isPress(event))
        return handlePress();
    return event.getType() == KyInputEvent::eMouseMoved ? handleMove() : handleRelease();
}

bool KyShapeManipulator::isGrab(std::uint32_t state) const {
    return (state & KyInputEvent::cMouseButtons) != 0 && (matches(mMask, state) || matches(mMask2, state));
}

bool KyShapeManipulator::handlePress() {
    keepButtons();
    const KyInputEvent& event = getInputEvent();
    const bool isOther = mButtons != 0 && (event.getButton() & mButtons) == 0;
    if (isOther) {
        // Before listeners may end this.
        mButtons |= event.getButton() & KyInputEvent::cMouseButtons;
        cancel();
        return true;
    }
    // The release of the drag before was lost.
    endDrag();
    KyScenePass* pass = nullptr;
    KyShapePointer pointer;
    const std::uint32_t state = event.getState();
    if (!isGrab(state) || !(pass = getPointer(pointer)))
        return false;
    const KyHolder<KyScenePass> keep(pass);
    KyNodeHit hit;
    const KyObjectReference self(this);
    if (!choose(*pass, pointer, hit) || !self)
        return false;
    KyNode* node = KyNode::cast(getObject());
    if (!node || isCarriedBy(*pass->getCamera(), *node) || !KyShapeDrag::isMovable(*node))
        return false;
    mDrag = std::make_unique<KyShapeDrag>(*node, KyShapeDrag::Choice{mMode, mConstraint, mSpace, mSteps}, pointer,
                                          hit.node ? &hit.point : nullptr);
    mButtons = state & KyInputEvent::cMouseButtons;
    return true;
}

bool KyShapeManipulator::choose(const KyScenePass& pass, const KyShapePointer& pointer, KyNodeHit& hit) {
    if (!mIsAutoPick)
        return true;
    if (!pointer.isInside || !pass.getScene() || !pass.getScene()->intersect(pointer.ray, hit) ||
        !acceptObject(hit.node))
        return false;
    if (getObject() != hit.node)
        setObject(hit.node);
    return true;
}

bool KyShapeManipulator::handleMove() {
    if (mButtons == 0)
        return false;
    if (!keepButtons())
        return false;
    KyShapePointer pointer;
    if (mDrag && getPointer(pointer)) {
        // A copy: listeners of the node may end the drag, or this manipulator.
        const KyShapeDrag drag = *mDrag;
        drag.follow(pointer);
    }
    return true;
}

bool KyShapeManipulator::handleRelease() {
    if (mButtons == 0)
        return false;
    keepButtons();
    return true;
}

bool KyShapeManipulator::keepButtons() {
    const std::uint32_t down = getInputEvent().getState() & mButtons;
    if (down != mButtons)
        mDrag.reset();
    mButtons = down;
    return down != 0;
}

KyScenePass* KyShapeManipulator::findPass(KyGraphicsViewMultiPass& view) {
    if (auto* main = KyScenePass::cast(view.getMainPass()))
        return main;
    for (unsigned i = 0; i < view.getNbPasses(); ++i)
        if (auto* pass = KyScenePass::cast(view.getPass(i)))
            return pass;
    return nullptr;
}

KyScenePass* KyShapeManipulator::getPointer(KyShapePointer& pointer) const {
    KyGraphicsViewMultiPass* view = editViewMultiPass();
    if (!view)
        view = KyGraphicsViewMultiPass::cast(getView());
    KyScenePass* pass = view ? findPass(*view) : nullptr;
    if (!pass || !pass->getCamera())
        return nullptr;
    const KyRect<int> area = pass->getAreaPixels(view);
    const double x = static_cast<double>(getInputEvent().getX()) - area.origin.x;
    const double y = static_cast<double>(getInputEvent().getY()) - area.origin.y;
    const bool isSeen = KyShapePointer::make(*pass->getCamera(), x, y, area.getWidth(), area.getHeight(), pointer);
    return isSeen ? pass : nullptr;
}

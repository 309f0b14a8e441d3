// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyMaskSetter_p.h"
#include "KyTrackballCoasting_p.h"
#include "KyTrackballManipulator.h"

#include "KyNode.h"

#include "KyCallSignatures.h"
#include "KyTypeBuilder.h"

const KyType* KyTrackballManipulator::msType = nullptr;
bool KyTrackballManipulator::msIsClassInitialized = false;

namespace {

using Trackball = KyTrackballManipulator;
using Builder = KyTypeBuilder<Trackball>;

/// An attribute, and its accessors as methods.
template <class Getter, class Setter>
void describe(Builder& builder, const std::string& name, Getter getter, Setter setter,
              const std::string& getterPrefix = "get") {
    builder.attribute(name, getter, setter).method(getterPrefix + name, getter).method("set" + name, setter);
}

template <auto Getter, auto Setter>
void describeMask(Builder& builder, const std::string& name) {
    describe(builder, name, Getter, kyMakeMaskSetter<Trackball, Setter>());
}

void describeMasks(Builder& builder) {
    describeMask<&Trackball::getMaskOrbit, &Trackball::setMaskOrbit>(builder, "MaskOrbit");
    describeMask<&Trackball::getMask2Orbit, &Trackball::setMask2Orbit>(builder, "Mask2Orbit");
    describeMask<&Trackball::getMaskPan, &Trackball::setMaskPan>(builder, "MaskPan");
    describeMask<&Trackball::getMask2Pan, &Trackball::setMask2Pan>(builder, "Mask2Pan");
    describeMask<&Trackball::getMaskMove, &Trackball::setMaskMove>(builder, "MaskMove");
    describeMask<&Trackball::getMask2Move, &Trackball::setMask2Move>(builder, "Mask2Move");
    describeMask<&Trackball::getMaskZoom, &Trackball::setMaskZoom>(builder, "MaskZoom");
    describeMask<&Trackball::getMask2Zoom, &Trackball::setMask2Zoom>(builder, "Mask2Zoom");
    describeMask<&Trackball::getMaskRotate, &Trackball::setMaskRotate>(builder, "MaskRotate");
    describeMask<&Trackball::getMask2Rotate, &Trackball::setMask2Rotate>(builder, "Mask2Rotate");
}

void describeSettings(Builder& builder) {
    describe(builder, "OrbitSpeed", &Trackball::getOrbitSpeed, &Trackball::setOrbitSpeed);
    describe(builder, "PanSpeed", &Trackball::getPanSpeed, &Trackball::setPanSpeed);
    describe(builder, "MoveSpeed", &Trackball::getMoveSpeed, &Trackball::setMoveSpeed);
    describe(builder, "ZoomSpeed", &Trackball::getZoomSpeed, &Trackball::setZoomSpeed);
    describe(builder, "RotateSpeed", &Trackball::getRotateSpeed, &Trackball::setRotateSpeed);
    describe(builder, "OrbitInverseCtrl", &Trackball::getOrbitInverseCtrl, &Trackball::setOrbitInverseCtrl);
    describe(builder, "MoveInverseCtrl", &Trackball::getMoveInverseCtrl, &Trackball::setMoveInverseCtrl);
    describe(builder, "RotateInverseCtrl", &Trackball::getRotateInverseCtrl, &Trackball::setRotateInverseCtrl);
    describe(builder, "AutoCenter", &Trackball::isAutoCenter, &Trackball::setAutoCenter, "is");
    describe(builder, "OrthographicMovements", &Trackball::hasOrthographicMovements,
             &Trackball::setOrthographicMovements, "has");
    describe(builder, "Center", &Trackball::getCenter, &Trackball::setCenter);
    describe(builder, "OrthonormalBasis", &Trackball::getOrthonormalBasis, &Trackball::setOrthonormalBasis);
    describe(builder, "Damping", &Trackball::getDamping, &Trackball::setDamping);
}

void describeFraming(Builder& builder) {
    builder.method("focusFront", &Trackball::focusFront)
        .method("focusFront", [](Trackball& t, KyNode& node) { return t.focusFront(node.getBoundingVolume()); })
        .method("focusPerspective", [](Trackball& t, const KyVolumed& volume) { return t.focusPerspective(volume); })
        .method("focusPerspective",
                [](Trackball& t, KyNode& node) { return t.focusPerspective(node.getBoundingVolume()); })
        .method("focusPerspective", [](Trackball& t, const KyVolumed& volume, double x, double y,
                                       double z) { return t.focusPerspective(volume, x, y, z); })
        .method("focusPerspective", [](Trackball& t, KyNode& node, double x, double y, double z) {
            return t.focusPerspective(node.getBoundingVolume(), x, y, z);
        });
}

} // namespace

void KyTrackballManipulator::initializeClass() {
    if (msIsClassInitialized)
        return;
    msIsClassInitialized = true;
    initializeType();
}

void KyTrackballManipulator::initializeType() {
    if (msType)
        return;
    Builder builder("KyTrackballManipulator", KyCameraManipulator::getType());
    builder.factory().method("coast", &Trackball::coast);
    describeMasks(builder);
    describeSettings(builder);
    describeFraming(builder);
    msType = builder.build();
    KyCallSignatures::add("KyTrackballManipulator",
                          {"coast(seconds)", "focusFront(volume)", "focusFront(node)", "focusPerspective(volume)",
                           "focusPerspective(node)", "focusPerspective(volume, x, y, z)",
                           "focusPerspective(node, x, y, z)"});
}

void KyTrackballManipulator::finalizeType() {
    msIsClassInitialized = false;
    KyType::remove(msType);
}

const KyType* KyTrackballManipulator::getType() {
    if (!msType)
        initializeType();
    return msType;
}

const KyType* KyTrackballManipulator::getObjectType() const {
    return getType();
}

KyTrackballManipulator* KyTrackballManipulator::cast(KyObject* object) {
    return kyCast<KyTrackballManipulator>(object);
}

KyObject* KyTrackballManipulator::factory() {
    return create();
}

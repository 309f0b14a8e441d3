// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyCameraManipulator.h"

#include "KyCamera.h"

#include "KyTypeBuilder.h"

const KyType* KyCameraManipulator::msType = nullptr;

void KyCameraManipulator::initializeType() {
    if (msType)
        return;
    msType = KyTypeBuilder<KyCameraManipulator>("KyCameraManipulator", KyManipulator::getType()).build();
}

void KyCameraManipulator::finalizeType() {
    KyType::remove(msType);
}

const KyType* KyCameraManipulator::getType() {
    if (!msType)
        initializeType();
    return msType;
}

const KyType* KyCameraManipulator::getObjectType() const {
    return getType();
}

KyCameraManipulator* KyCameraManipulator::cast(KyObject* object) {
    return kyCast<KyCameraManipulator>(object);
}

bool KyCameraManipulator::acceptObject(KyObject* object) const {
    return KyCamera::cast(object) != nullptr;
}

void KyCameraManipulator::initialize() {
    KyManipulator::initialize();
}

KyCamera* KyCameraManipulator::getCamera() const {
    return static_cast<KyCamera*>(getObject());
}

double KyCameraManipulator::getCameraNear() const {
    const KyCamera* camera = getCamera();
    return camera ? camera->getNear() : 0.0;
}

double KyCameraManipulator::getCameraFar() const {
    const KyCamera* camera = getCamera();
    return camera ? camera->getFar() : 0.0;
}

double KyCameraManipulator::getCameraVerticalAperture() const {
    const KyCamera* camera = getCamera();
    return camera ? camera->getVerticalAperture() : 0.0;
}

KyMat4d KyCameraManipulator::getCameraLocalFrame() const {
    const KyCamera* camera = getCamera();
    return camera ? camera->getLocalFrame() : KyMat4d();
}

KyMat4d KyCameraManipulator::getCameraWorldFrame() const {
    const KyCamera* camera = getCamera();
    return camera ? camera->getWorldFrame() : KyMat4d();
}

bool KyCameraManipulator::isCameraOrthographic() const {
    const KyCamera* camera = getCamera();
    return camera && camera->isOrthographic();
}

void KyCameraManipulator::setCameraNear(double near) {
    if (KyCamera* camera = getCamera())
        camera->setNear(near);
}

void KyCameraManipulator::setCameraFar(double far) {
    if (KyCamera* camera = getCamera())
        camera->setFar(far);
}

void KyCameraManipulator::setCameraVerticalAperture(double aperture) {
    if (KyCamera* camera = getCamera())
        camera->setVerticalAperture(aperture);
}

void KyCameraManipulator::setCameraLocalFrame(const KyMat4d& frame) {
    if (KyCamera* camera = getCamera())
        camera->setLocalFrame(frame);
}

void KyCameraManipulator::setCameraWorldFrame(const KyMat4d& frame) {
    if (KyCamera* camera = getCamera())
        camera->setWorldFrame(frame);
}

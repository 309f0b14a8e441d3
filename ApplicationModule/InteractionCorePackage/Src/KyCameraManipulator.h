// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyManipulator.h"

#include "KyMat4.h"

class KyCamera;

/// Base of manipulators that move a camera: setObject takes cameras only. Without a camera the setters do nothing and
/// the getters give 0, the identity and false.
class KYAPPLICATION_EXPORT KyCameraManipulator : public KyManipulator {
public:
    static const KyType* getType();
    static KyCameraManipulator* cast(KyObject* object);
    static void initializeType();
    static void finalizeType();
    const KyType* getObjectType() const override;

    /// Null without one.
    KyCamera* getCamera() const;
    /// @{
    /// World units from the eye; 0 without a camera.
    double getCameraNear() const;
    double getCameraFar() const;
    /// @}
    /// Radians, as it was given to the camera.
    double getCameraVerticalAperture() const;
    /// Against the camera's parent; the identity without a camera.
    KyMat4d getCameraLocalFrame() const;
    /// In the world; the identity without a camera.
    KyMat4d getCameraWorldFrame() const;
    /// False without a camera.
    bool isCameraOrthographic() const;

    /// The camera ignores values that are not finite.
    void setCameraNear(double near);
    /// @{
    /// See setCameraNear.
    void setCameraFar(double far);
    void setCameraVerticalAperture(double aperture);
    void setCameraLocalFrame(const KyMat4d& frame);
    void setCameraWorldFrame(const KyMat4d& frame);
    /// @}

    bool acceptObject(KyObject* object) const override;
    void initialize() override;

private:
    static const KyType* msType;
};

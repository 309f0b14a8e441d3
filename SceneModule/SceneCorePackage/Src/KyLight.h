// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KySceneExport.h"

#include "KyNode.h"

#include "KyColor.h"

/// A light: far away, shining along -z of its frame, or a point that shines everywhere around. A scene without any is
/// drawn with a key light that follows the camera.
///
/// ```
/// auto* sun = new KyLight;
/// sun->lookAt(KyVec3d(3, 10, 4), KyVec3d());  // from there towards the middle
/// scene->addChild(sun);
/// ```
class KYSCENE_EXPORT KyLight : public KyNode {
public:
    /// From everywhere with one direction, or from a point.
    enum Kind { eDirectional = 0, ePoint = 1, eNbKinds };

    static const KyType* getType();
    static KyLight* cast(KyObject* object);
    static KyObject* factory();
    static void initializeType();
    static void finalizeType();
    const KyType* getObjectType() const override;

    /// A number of Kind; directional at the start.
    int getKind() const { return mKind; }
    /// Multiplied by the intensity.
    const KyColor& getColor() const { return mColor; }
    /// 1 lights a white surface that faces the light fully.
    double getIntensity() const { return mIntensity; }
    /// World units up to which a point light reaches; 0: no end.
    double getRange() const { return mRange; }
    /// Towards where it shines, in world coordinates, length 1.
    KyVec3d getWorldDirection() const;

    /// Others than those of Kind are ignored.
    void setKind(int kind);
    /// Components above 1 are brighter than the intensity says.
    void setColor(const KyColor& color);
    /// Negative and not finite values are ignored.
    void setIntensity(double intensity);
    /// See getRange; negative and not finite values are ignored.
    void setRange(double range);

private:
    int mKind = eDirectional;
    KyColor mColor{1.0f, 1.0f, 1.0f, 1.0f};
    double mIntensity = 1.0;
    double mRange = 0.0;

    static const KyType* msType;
};

// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyOrientationObject.h"
#include "KyCompositeOrientationChannel.h"
#include "KyCompositeSources.h"

/// An orientation that a script computes from axes, buttons and orientations. Insertions are those of
/// KyCompositeOrientationChannel and refuse what KyCompositeAxisObject refuses. Angles are radians.
///
///     local look = KyCompositeOrientationObject()
///     look:insertConstant(look.eOperationSet, Quatf())
///     look:insertMappedAxis(pad.Axes[2], look.eComponentHeading, look.eOperationPostMultiply)
class KYAPPLICATION_EXPORT KyCompositeOrientationObject : public KyOrientationObject {
public:
    static const KyType* getType();
    static KyCompositeOrientationObject* cast(KyObject* object);
    static KyObject* factory() { return new KyCompositeOrientationObject; }
    static void initializeType();
    static void finalizeType();
    const KyType* getObjectType() const override;

    KyCompositeOrientationObject();
    /// With the same sources.
    KyObject* clone() const override;

    const KyCompositeSources* getSources() const override { return &mSources; }

    bool insertMappedAxis(KyObject* axis, int component, int operation, int position = -1);
    bool insertMappedButton(KyObject* button, int action, float angle, int component, int operation, int position = -1);
    bool insertMappedOrientation(KyObject* orientation, int operation, int position = -1);
    bool insertConstant(int operation, const KyQuat<float>& value, int position = -1);
    bool insertCondition(KyObject* button, int condition, int expected);
    /// 0 for what is no axis, or gone.
    float mapChannelValueToAngle(KyObject* axis) const;
    /// True when the orientation is another than after the last update.
    bool update() { return mComposite.update(); }

private:
    KyCompositeOrientationChannel mComposite;
    KyCompositeSources mSources;

    static const KyType* msType;
};

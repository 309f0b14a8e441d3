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

    /// The axis turns about one component: 0 is x, 1 is y, 2 is z. False for what is no such channel, for one that is
    /// gone and for numbers that name nothing, here and below. Position -1 is the end of the list.
    bool insertMappedAxis(KyObject* axis, int component, int operation, int position = -1);
    /// The button's action turns by the angle (radians) about the component.
    bool insertMappedButton(KyObject* button, int action, float angle, int component, int operation, int position = -1);
    /// The orientation of another channel.
    bool insertMappedOrientation(KyObject* orientation, int operation, int position = -1);
    /// An orientation of its own as a source.
    bool insertConstant(int operation, const KyQuat<float>& value, int position = -1);
    /// A KyButtonCondition that must hold; `expected` is the button's value. False as above.
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

// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyAxisObject.h"
#include "KyCompositeAxisChannel.h"
#include "KyCompositeSources.h"

/// An axis that a script computes from others. Insertions are those of KyCompositeAxisChannel: false, a report and
/// nothing inserted for a source that is null, gone, of another kind or computed from this axis, and for numbers that
/// mean nothing. Without a position a source stands at the end.
///
///     local speed = KyCompositeAxisObject()
///     speed.Absolute = true
///     speed:insertConstant(speed.eOperationSet, 0)
///     speed:insertMappedAxis(pad.Axes[1], speed.eOperationAdd)
///     speed:insertMappedButton(pad.Buttons[0], speed.eActionWhilePressed, 5, speed.eOperationAdd)
///     if speed:update() then move(speed.Value) end
class KYAPPLICATION_EXPORT KyCompositeAxisObject : public KyAxisObject {
public:
    static const KyType* getType();
    static KyCompositeAxisObject* cast(KyObject* object);
    static KyObject* factory() { return new KyCompositeAxisObject; }
    static void initializeType();
    static void finalizeType();
    const KyType* getObjectType() const override;

    KyCompositeAxisObject();
    /// With the same sources.
    KyObject* clone() const override;

    const KyCompositeSources* getSources() const override { return &mSources; }

    /// False for what is no such channel, for one that is gone and for numbers that name no operation, here and below.
    /// Position -1 is the end of the list.
    bool insertMappedAxis(KyObject* axis, int operation, int position = -1);
    /// The button's action gives the value.
    bool insertMappedButton(KyObject* button, int action, float value, int operation, int position = -1);
    /// A value of its own as a source.
    bool insertConstant(int operation, float value, int position = -1);
    /// A KyButtonCondition that must hold; `expected` is the button's value. False as above.
    bool insertCondition(KyObject* button, int condition, int expected);
    /// From 0 ... 1 to the range of the axis.
    float mapNormalizedValueToAxis(float value) const { return mComposite.mapNormalizedValueToAxis(value); }
    /// True when the axis is another than after the last update.
    bool update() { return mComposite.update(); }

private:
    KyCompositeAxisChannel mComposite;
    KyCompositeSources mSources;

    static const KyType* msType;
};

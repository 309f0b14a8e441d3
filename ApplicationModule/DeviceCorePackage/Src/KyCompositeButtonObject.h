// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyButtonObject.h"
#include "KyCompositeButtonChannel.h"
#include "KyCompositeSources.h"

/// A button that a script computes from others. Insertions are those of KyCompositeButtonChannel and refuse what
/// KyCompositeAxisObject refuses.
///
///     local fire = KyCompositeButtonObject()
///     fire:insertConstant(fire.eOperationSet, 0)
///     fire:insertMappedButton(pad.Buttons[0], fire.eActionWhilePressed, 1, fire.eOperationSetValue)
class KYAPPLICATION_EXPORT KyCompositeButtonObject : public KyButtonObject {
public:
    static const KyType* getType();
    static KyCompositeButtonObject* cast(KyObject* object);
    static KyObject* factory() { return new KyCompositeButtonObject; }
    static void initializeType();
    static void finalizeType();
    const KyType* getObjectType() const override;

    KyCompositeButtonObject();
    /// With the same sources.
    KyObject* clone() const override;

    const KyCompositeSources* getSources() const override { return &mSources; }

    /// The button's action gives the value. False for what is no button, for one that is gone and for numbers that name
    /// no operation, here and below. Position -1 is the end of the list.
    bool insertMappedButton(KyObject* button, int action, int value, int operation, int position = -1);
    /// A value of its own as a source.
    bool insertConstant(int operation, int value, int position = -1);
    /// A KyButtonCondition that must hold; `expected` is the button's value. False as above.
    bool insertCondition(KyObject* button, int condition, int expected);
    /// True when the button is another than after the last update.
    bool update() { return mComposite.update(); }

private:
    KyCompositeButtonChannel mComposite;
    KyCompositeSources mSources;

    static const KyType* msType;
};

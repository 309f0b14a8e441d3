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

    bool insertMappedButton(KyObject* button, int action, int value, int operation, int position = -1);
    bool insertConstant(int operation, int value, int position = -1);
    bool insertCondition(KyObject* button, int condition, int expected);
    /// True when the button is another than after the last update.
    bool update() { return mComposite.update(); }

private:
    KyCompositeButtonChannel mComposite;
    KyCompositeSources mSources;

    static const KyType* msType;
};

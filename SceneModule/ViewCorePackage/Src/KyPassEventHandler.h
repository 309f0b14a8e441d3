// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KySceneExport.h"

#include "KyEventHandler.h"
#include "KyObject.h"

class KyBaseGraphicsPass;
class KyGraphicsViewMultiPass;

/// Receives the events of a pass. An object of the model, reference counted: passes hold a reference.
class KYSCENE_EXPORT KyPassEventHandler : public KyObject, public KyEventHandler {
public:
    static const KyType* getType();
    static KyPassEventHandler* cast(KyObject* object);
    static void initializeType();
    static void finalizeType();
    const KyType* getObjectType() const override;

    /// The event came by a pass of a view; both are null when it did not. Positions are pixels of the canvas. True, or
    /// the event's internal return set, when the event was used and goes no further.
    virtual bool handleEvent(const KyInputEvent& event, KyGraphicsViewMultiPass* view, KyBaseGraphicsPass* pass);
    /// As above without view and pass.
    bool handleEvent(const KyInputEvent& event) override { return handleEvent(event, nullptr, nullptr); }

private:
    static const KyType* msType;
};

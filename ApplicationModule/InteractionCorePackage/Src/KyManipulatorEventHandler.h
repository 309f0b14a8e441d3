// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyApplicationExport.h"

#include "KyPassEventHandler.h"

#include "KyObjectReference.h"

#include <vector>

class KyManipulator;

/// Gives the events of a pass to manipulators: the main one first, then further ones in their order, until one uses the
/// event. Manipulators are not owned and are skipped once they are gone; they, and this, may end meanwhile. Each one
/// that stood in the list before the event is asked in its turn, unless it was removed meanwhile.
///
/// ```
/// KyHolder<KyManipulatorEventHandler> handler(new KyManipulatorEventHandler);
/// handler->setManipulator(trackball);
/// pass->setEventHandler(handler.get());
/// ```
class KYAPPLICATION_EXPORT KyManipulatorEventHandler : public KyPassEventHandler {
public:
    static const KyType* getType();
    static KyManipulatorEventHandler* cast(KyObject* object);
    static KyObject* factory();
    static void initializeType();
    static void finalizeType();
    static void initializeClass();
    const KyType* getObjectType() const override;

    static KyManipulatorEventHandler* create() { return new KyManipulatorEventHandler; }

    /// The main one; null when there is none.
    const KyManipulator* getManipulator() const { return editManipulator(); }
    KyManipulator* editManipulator() const;
    /// Null leaves no main one.
    void setManipulator(KyManipulator* manipulator);

    /// Further ones, those that are gone included until one is added.
    unsigned getNbManipulators() const { return static_cast<unsigned>(mManipulators.size()); }
    /// Null when out of range or gone.
    const KyManipulator* getElementManipulator(unsigned index) const { return editElementManipulator(index); }
    KyManipulator* editElementManipulator(unsigned index) const;
    /// Appends one further manipulator, after those that are gone were removed; null is ignored.
    void setMultipleManipulators(KyManipulator* manipulator);
    /// Inserts a further one before the index, at the end when that is larger. False for null.
    bool insertManipulator(unsigned index, KyManipulator* manipulator);
    /// False when out of range.
    bool removeManipulator(unsigned index);

    using KyPassEventHandler::handleEvent;
    /// The last answer, which the event's internal return holds as well; false when nobody was asked.
    bool handleEvent(const KyInputEvent& event, KyGraphicsViewMultiPass* view, KyBaseGraphicsPass* pass) override;

private:
    void removeGone();

    KyObjectReference mManipulator;
    std::vector<KyObjectReference> mManipulators;

    static const KyType* msType;
    static bool msIsClassInitialized;
};

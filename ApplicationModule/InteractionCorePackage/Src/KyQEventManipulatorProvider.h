// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyApplicationExport.h"

#include "KyQEventProvider.h"

#include "KyObjectReference.h"

class KyManipulator;

/// An event provider that sends its events straight to a manipulator. The manipulator is not owned; one that is gone
/// gets nothing.
///
/// ```
/// auto* provider = new KyQEventManipulatorProvider(1, widget);
/// provider->setManipulator(trackball);
/// widget->installEventFilter(provider);
/// ```
class KYAPPLICATION_EXPORT KyQEventManipulatorProvider : public KyQEventProvider {
public:
    using KyQEventProvider::KyQEventProvider;

    /// Null when there is none or it is gone.
    KyManipulator* getManipulator() const;
    /// Null for none.
    void setManipulator(KyManipulator* manipulator);

    /// Whether the manipulator used the event is the event's internal return; without one nothing happens.
    void setInputEvent(KyInputEvent& event) override;

private:
    KyObjectReference mManipulator;
};

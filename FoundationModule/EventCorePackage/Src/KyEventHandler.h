// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyFoundationExport.h"
#include "KyReferenceCounted.h"

class KyInputEvent;

/// Receives input events from an event provider. Reference counted: providers and passes hold a reference.
class KYFOUNDATION_EXPORT KyEventHandler : public KyReferenceCounted {
public:
    ~KyEventHandler() override;
    /// True when the event was used and goes no further.
    virtual bool handleEvent(const KyInputEvent& event);
};

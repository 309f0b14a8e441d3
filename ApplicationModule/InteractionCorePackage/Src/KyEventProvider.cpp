// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyEventProvider.h"

#include "KyInputEvent.h"

KyEventProvider::~KyEventProvider() = default;

void KyEventProvider::sendInputEvent(KyInputEvent& event) {
    // The handler may be replaced, and this provider may end, while it runs.
    const KyHolder<KyEventHandler> handler = mEventHandler;
    if (!handler)
        return;
    event.setInternalEventReturn(false);
    if (handler->handleEvent(event))
        event.setInternalEventReturn(true);
}

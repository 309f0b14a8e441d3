// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyApplicationExport.h"

#include "KyHolder.h"

#include "KyEventHandler.h"

class KyInputEvent;

/// Source of input events for one event handler, of which it holds a reference. Knows nothing of where events come
/// from.
class KYAPPLICATION_EXPORT KyEventProvider {
public:
    KyEventProvider() = default;
    KyEventProvider(const KyEventProvider&) = delete;
    KyEventProvider& operator=(const KyEventProvider&) = delete;
    virtual ~KyEventProvider();

    /// Null when there is none.
    KyEventHandler* getEventHandler() const { return mEventHandler.get(); }
    /// Takes a reference of the new handler and gives that of the old one back; null for none.
    void setEventHandler(KyEventHandler* handler) { mEventHandler.reset(handler); }

    /// Hands the event to the handler. Whether that used it, by its answer or by setting the internal return, is the
    /// event's internal return; a former one counts for nothing. Without a handler the event is dropped. The handler
    /// may end the provider.
    virtual void sendInputEvent(KyInputEvent& event);

private:
    KyHolder<KyEventHandler> mEventHandler;
};

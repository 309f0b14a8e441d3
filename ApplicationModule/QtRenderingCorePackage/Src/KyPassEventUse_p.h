// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyPassDelivery_p.h"
#include "KyPassEventSession_p.h"

#include "KyBaseGraphicsPass.h"

#include "KyHolder.h"

struct KyPassEventSession::Use {
    explicit Use(KyPassEventSession& used)
        : session(used.shared_from_this()) {
        auto* const shown = static_cast<KyBaseGraphicsPass*>(used.getPass());
        // One that nobody holds must not end with this.
        if (shown && shown->getNbReferences() > 0)
            pass.reset(shown);
    }

    std::shared_ptr<KyPassEventSession> session;
    KyHolder<KyBaseGraphicsPass> pass;
    KyPassDelivery delivery;
};

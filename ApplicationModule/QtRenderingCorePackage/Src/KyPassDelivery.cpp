// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyPassDelivery_p.h"

#include <utility>
#include <vector>

namespace {

int gDepth = 0;

std::vector<std::function<void()>>& editWaiting() {
    // Never destroyed: passes may end after the statics.
    static auto* const waiting = new std::vector<std::function<void()>>;
    return *waiting;
}

} // namespace

KyPassDelivery::KyPassDelivery() {
    ++gDepth;
}

KyPassDelivery::~KyPassDelivery() {
    if (--gDepth > 0)
        return;
    for (const auto& action : std::exchange(editWaiting(), {}))
        action();
}

void KyPassDelivery::runAfter(std::function<void()> action) {
    if (gDepth == 0)
        action();
    else
        editWaiting().push_back(std::move(action));
}

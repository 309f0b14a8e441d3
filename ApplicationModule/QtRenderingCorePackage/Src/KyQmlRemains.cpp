// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyQmlRemains_p.h"

#include <optional>

namespace {

std::vector<KyQmlRemains*>& getAll() {
    static auto* all = new std::vector<KyQmlRemains*>;
    return *all;
}

} // namespace

KyQmlRemains::KyQmlRemains() {
    getAll().push_back(this);
    deleteLater();
}

KyQmlRemains::~KyQmlRemains() {
    std::erase(getAll(), this);
    std::optional<KyQmlTarget::Scope> current;
    if (target)
        current.emplace(*target);
    control.reset();
    delete root.data();
    component.reset();
    window.reset();
}

void KyQmlRemains::endAll() {
    while (!getAll().empty())
        delete getAll().front();
}

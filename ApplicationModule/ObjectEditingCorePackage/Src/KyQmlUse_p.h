// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyObjectQmlBinding.h"

#include <QPointer>

/// Marks a binding as being worked on while this one lives, so that the converter does not delete it under its own
/// feet. The binding may end meanwhile all the same, by another hand; null marks nothing.
class KyQmlUse {
public:
    explicit KyQmlUse(KyObjectQmlBinding* binding)
        : mBinding(binding) {
        if (binding)
            ++binding->mNbUses;
    }
    ~KyQmlUse() {
        if (mBinding)
            --mBinding->mNbUses;
    }
    KyQmlUse(const KyQmlUse&) = delete;
    KyQmlUse& operator=(const KyQmlUse&) = delete;

private:
    QPointer<KyObjectQmlBinding> mBinding;
};

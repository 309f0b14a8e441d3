// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyHasSettings.h"

#include "KySettings.h"

#include <QObject>

KyHasSettings::KyHasSettings()
    : mSettings(std::make_unique<KySettings>()) {}

KyHasSettings::~KyHasSettings() = default;

void KyHasSettings::updateDataFromSettings() {}

QObject* KyHasSettings::editLife() {
    if (!mLife)
        mLife = std::make_unique<QObject>();
    return mLife.get();
}

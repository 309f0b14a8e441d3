// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KySettings.h"

KySettings::KySettings()
    : KyQDomDocument(QString()) {}

KySettings::~KySettings() = default;

QString KySettings::getRootElementTagName() const {
    return QStringLiteral("Settings");
}

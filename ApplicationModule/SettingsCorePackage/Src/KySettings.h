// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyQDomDocument.h"

/// A document of settings: its root element is "Settings".
class KYAPPLICATION_EXPORT KySettings : public KyQDomDocument {
public:
    /// Without a file; see setFilePath.
    KySettings();
    ~KySettings() override;

    QString getRootElementTagName() const override;
};

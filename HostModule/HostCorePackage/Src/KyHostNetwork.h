// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

/// Where the program's network connection keeps its proxy: a document of its own, beside that of KyHostSettings, so
/// that neither is written over the other.
class KyHostNetwork {
public:
    /// Makes the connection read the document when there is one, and take the system's proxy when it is not told
    /// otherwise.
    static void load(const QString& path);
    /// In the user's folder for configurations.
    static QString getDefaultPath();
};

// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QRegExp>
#include <QStringList>

#include <vector>

/// Wildcards as QDir takes them, read once for many names.
class KyNameFilter {
public:
    /// Without wildcards every name matches.
    KyNameFilter(const QStringList& wildcards, Qt::CaseSensitivity sensitivity);

    bool matches(const QString& name) const;

private:
    std::vector<QRegExp> mExpressions;
};

// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyNameFilter_p.h"

#include <algorithm>

KyNameFilter::KyNameFilter(const QStringList& wildcards, Qt::CaseSensitivity sensitivity) {
    for (const QString& wildcard : wildcards)
        mExpressions.emplace_back(wildcard, sensitivity, QRegExp::Wildcard);
}

bool KyNameFilter::matches(const QString& name) const {
    return mExpressions.empty() ||
           std::ranges::any_of(mExpressions, [&](const QRegExp& expression) { return expression.exactMatch(name); });
}

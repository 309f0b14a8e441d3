// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QRegExp>
#include <QString>

#include <functional>
#include <vector>

/// What goes past the proxy, made ready once for many addresses. People write lists of hosts, wildcards and what
/// other programs understand where a regular expression is asked for: one that is sound is searched as it is, any other
/// is taken apart and each alternative for what it is.
class KyNoProxyMatcher {
public:
    explicit KyNoProxyMatcher(const QRegExp& pattern);

    /// Never for an empty pattern.
    bool matches(const QString& url) const;

private:
    using Test = std::function<bool(const QString&)>;

    static Test makeTest(const QString& alternative);

    std::vector<Test> mTests;
};

// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyNoProxyMatcher_p.h"

#include <QRegularExpression>
#include <QStringList>
#include <QUrl>

#include <algorithm>

namespace {

const QLatin1String cLocal("<local>");
/// Some expressions take seconds for a long address, which a server may have made up for a redirect.
constexpr int cNbSearched = 512;

/// An IPv6 address as addresses of resources have it; a regular expression would take it for a set of characters.
bool isBracketedAddress(const QString& text) {
    static const QRegularExpression pattern(
        QStringLiteral("^\\[[0-9A-Fa-f.]*:[0-9A-Fa-f:.]*(%[^\\]]*)?\\](:[0-9]+)?$"));
    return pattern.match(text).hasMatch();
}

bool isLocal(const QString& url) {
    const QString host = QUrl(url).host();
    return !host.isEmpty() && !host.contains('.') && !host.contains(':');
}

/// Whether the alternatives of a sound expression end here: not inside of brackets of either kind.
class Nesting {
public:
    bool isOutside(QChar character) {
        const bool isPlain = !mIsEscaped && !mIsInSet;
        if (isPlain && character == '(')
            ++mDepth;
        if (isPlain && character == ')')
            --mDepth;
        if (!mIsEscaped && (character == '[' || character == ']'))
            mIsInSet = character == '[';
        mIsEscaped = !mIsEscaped && character == '\\';
        return isPlain && mDepth == 0;
    }

private:
    int mDepth = 0;
    bool mIsEscaped = false;
    bool mIsInSet = false;
};

QStringList splitExpression(const QString& pattern) {
    QStringList alternatives(QString{});
    Nesting nesting;
    for (const QChar character : pattern) {
        if (nesting.isOutside(character) && character == '|')
            alternatives.append(QString());
        else
            alternatives.last() += character;
    }
    return alternatives;
}

bool isOrdinary(const QString& alternative) {
    return !alternative.isEmpty() && alternative != cLocal && !isBracketedAddress(alternative);
}

} // namespace

KyNoProxyMatcher::KyNoProxyMatcher(const QRegExp& pattern) {
    const QStringList alternatives =
        pattern.isValid() ? splitExpression(pattern.pattern()) : pattern.pattern().split('|');
    if (pattern.isValid() && std::ranges::all_of(alternatives, isOrdinary)) {
        mTests.emplace_back([pattern](const QString& url) { return pattern.indexIn(url) >= 0; });
        return;
    }
    for (const QString& alternative : alternatives) {
        if (!alternative.isEmpty())
            mTests.push_back(makeTest(alternative));
    }
}

bool KyNoProxyMatcher::matches(const QString& url) const {
    const QString searched = url.left(cNbSearched);
    return std::ranges::any_of(mTests, [&searched](const Test& test) { return test(searched); });
}

KyNoProxyMatcher::Test KyNoProxyMatcher::makeTest(const QString& alternative) {
    if (alternative == cLocal)
        return isLocal;
    if (isBracketedAddress(alternative))
        return [alternative](const QString& url) { return url.contains(alternative); };
    QRegExp expression(alternative);
    if (!expression.isValid())
        expression.setPatternSyntax(QRegExp::Wildcard);
    if (!expression.isValid())
        return [alternative](const QString& url) { return url.contains(alternative); };
    return [expression](const QString& url) { return expression.indexIn(url) >= 0; };
}

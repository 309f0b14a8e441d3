// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyRegexp.h"

#include "KyException.h"

#include <algorithm>
#include <regex>

namespace {
// An upper bound: escaped brackets count as well.
std::size_t countGroups(const std::string& expression) {
    return static_cast<std::size_t>(std::ranges::count(expression, '('));
}
} // namespace

struct KyRegexp::Compiled {
    explicit Compiled(const std::string& text)
        : expression(text, std::regex::ECMAScript)
        , maxTextLength(cMaxTextLength / (countGroups(text) + 1)) {}

    std::regex expression;
    std::size_t maxTextLength;
};

KyRegexp::KyRegexp(const std::string& expression) {
    try {
        mCompiled = std::make_unique<const Compiled>(expression);
    } catch (const std::exception& error) {
        KyException::create("KyRegexp: \"" + expression + "\" is invalid: " + error.what());
    }
}

KyRegexp::~KyRegexp() = default;

bool KyRegexp::isValid() const {
    return mCompiled != nullptr;
}

bool KyRegexp::exactMatch(const std::string& text) const {
    if (!mCompiled)
        return false;
    if (text.size() > mCompiled->maxTextLength) {
        KyException::create("KyRegexp::exactMatch(): the text is too long.");
        return false;
    }

    try {
        return std::regex_match(text, mCompiled->expression);
    } catch (const std::exception& error) {
        KyException::create(std::string("KyRegexp::exactMatch(): ") + error.what());
        return false;
    }
}

// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KySvgDocument_p.h"
#include "KySvgReports_p.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

/// A property and its text; what has a higher priority wins, among equals the later one.
struct KySvgDeclaration {
    std::string_view property;
    std::string_view value;
    unsigned priority = 0;
    std::size_t order = 0;

    bool isBelow(const KySvgDeclaration& other) const {
        return priority != other.priority ? priority < other.priority : order < other.order;
    }
};

/// The style sheets of a document: rules whose selectors ask for one element's type, classes and id. Others are
/// reported as "selector", and what begins with "@" by its name.
class KySvgStyleSheet {
public:
    /// Adds the rules of a sheet.
    void add(std::string text, KySvgReports& reports);
    /// Adds what the rules say of the element; returns a measure of the work, about bytes.
    std::size_t match(const KySvgElement& element, std::vector<KySvgDeclaration>& declarations) const;

    /// Adds what a list between semicolons says; the texts lie in the list. Important ones go above all others.
    static void readDeclarations(std::string_view text, unsigned priority, std::size_t order,
                                 std::vector<KySvgDeclaration>& declarations);
    /// Priority of what the element's own style attribute says.
    static constexpr unsigned cElementPriority = 1U << 20;

    bool isEmpty() const { return mRules.empty(); }

private:
    struct Rule {
        std::string type;
        std::string id;
        std::vector<std::string> classes;
        unsigned priority = 0;
        /// Where the declarations are.
        std::size_t text = 0;
    };
    void addRule(std::string_view selectors, std::string_view body, KySvgReports& reports);
    static bool readSelector(std::string_view selector, Rule& rule);
    static bool fits(const Rule& rule, const KySvgElement& element, const std::vector<std::string_view>& classes);
    std::size_t matchKey(const std::string& key, const KySvgElement& element,
                         const std::vector<std::string_view>& classes,
                         std::vector<KySvgDeclaration>& declarations) const;

    std::vector<std::string> mTexts;
    std::vector<Rule> mRules;
    /// Numbers of rules by "#id", ".class", type or "*".
    std::unordered_map<std::string, std::vector<std::size_t>> mByKey;
};

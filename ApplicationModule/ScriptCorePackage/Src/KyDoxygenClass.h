// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

/// Documentation of one member of a class: function, variable, enumeration, signal and so on. Texts are plain UTF-8.
struct KyDoxygenMember {
    /// "function", "variable", "enum", "typedef", "property", ...
    std::string kind;
    /// Of the result or value; empty for constructors.
    std::string type;
    /// As it stands in the class, without arguments.
    std::string name;
    /// "(int index) const"; empty for what takes none.
    std::string arguments;
    /// The first sentence.
    std::string brief;
    /// All that follows.
    std::string detailed;
};

/// Documentation of one class or structure. Members stand in the file's order, without private ones; overloads have one
/// entry each.
struct KyDoxygenClass {
    /// With its namespaces.
    std::string name;
    /// The first sentence of the class's own comment.
    std::string brief;
    /// Paragraphs and list items on lines of their own.
    std::string detailed;
    /// In the order of the file.
    std::vector<KyDoxygenMember> members;
};

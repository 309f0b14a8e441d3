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
    std::string name;
    /// "(int index) const"; empty for what takes none.
    std::string arguments;
    std::string brief;
    std::string detailed;
};

/// Documentation of one class or structure. Members stand in the file's order, without private ones; overloads have one
/// entry each.
struct KyDoxygenClass {
    /// With its namespaces.
    std::string name;
    std::string brief;
    /// Paragraphs and list items on lines of their own.
    std::string detailed;
    std::vector<KyDoxygenMember> members;
};

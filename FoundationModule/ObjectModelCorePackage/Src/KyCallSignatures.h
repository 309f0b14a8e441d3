// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyFoundationExport.h"

#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

/// What the parameters of functions are called, which their C++ types do not tell: for annotations and references,
/// never for a call. Said beside the registration, a line for each overload that has parameters:
///
/// ```
/// KyCallSignatures::add("KyLamp", {"blink(seconds, count?)", "setColor(red, green, blue)", "setColor(html)"});
/// ```
///
/// - A line stands for the overload with as many parameters, among equals in the order of the registration. One that
///   ends in parameters with "?" stands for the overloads without those too.
/// - Signals stand beside methods; constructors are "__init(width, height)".
/// - Types may follow, where the registration has none or a wider one, and a text: "openUrl(url: string): boolean --
///   Opens it." A type in back quotes is for a text that names the class of the result.
///
/// Any thread.
class KYFOUNDATION_EXPORT KyCallSignatures {
public:
    /// `owner` is the class or table, as scripts write it; empty for global functions. Replaces what the functions
    /// named had before.
    static void add(std::string_view owner, std::initializer_list<std::string_view> lines);
    /// In the order in which they were added; nothing for a function that has none.
    static std::vector<std::string> find(std::string_view owner, std::string_view function);
};

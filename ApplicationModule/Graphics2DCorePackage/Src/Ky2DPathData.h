// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyApplicationExport.h"

#include "Ky2DPathCommand.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

/// The text of a path, in the grammar of SVG 1.1's path data: numbers run together ("1.5.5-2"), exponents, arc flags
/// without separators, a letter for several commands. The process's locale plays no part.
///
/// ```
/// std::vector<Ky2DPathCommand> commands;
/// if (!Ky2DPathData::parse("M10 10h20v20H10z", commands))
///     return;
/// ```
class KYAPPLICATION_EXPORT Ky2DPathData {
public:
    Ky2DPathData() = delete;

    /// Appends the commands of the text; repeated points after a move are lines. False when the text has an error:
    /// everything before it is appended all the same, and `errorPosition` is the byte that could not be read. Differs
    /// from SVG in one thing: the first command may be any. An empty text has no commands. Numbers that no
    /// double can hold are errors.
    static bool parse(std::string_view text, std::vector<Ky2DPathCommand>& commands,
                      std::size_t* errorPosition = nullptr);

    /// The text that gives these commands again, number for number. What no text can say is left out: unknown types,
    /// commands with too few numbers, or with one that is not finite. Numbers beyond those that a command needs are
    /// left out too, and an arc's flags are 0 or 1.
    static std::string format(const std::vector<Ky2DPathCommand>& commands);
};

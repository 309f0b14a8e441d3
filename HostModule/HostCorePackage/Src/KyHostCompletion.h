// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

/// What may stand for an unfinished word at the prompt: global names, fields of tables, and attributes, components and
/// methods of objects, along a path such as "camera.Pos" or "scene:add". Runs no script code to find out.
struct KyHostCompletion {
    KyHostCompletion() = delete;

    /// Whole words, sorted, each once; none when the path leads nowhere. Methods end in "(".
    static std::vector<std::string> complete(const std::string& word);
};

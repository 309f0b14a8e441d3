// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

/// Names of what is not carried, each once. A document full of invented elements does not fill the memory.
class KySvgReports {
public:
    explicit KySvgReports(std::vector<std::string>& names)
        : mNames(names) {}

    void add(std::string_view name) {
        const std::string text(name.substr(0, cMaxLength));
        if (mNames.size() < cMaxNames && std::ranges::find(mNames, text) == mNames.end())
            mNames.push_back(text);
    }

private:
    static constexpr std::size_t cMaxNames = 100;
    static constexpr std::size_t cMaxLength = 80;

    std::vector<std::string>& mNames;
};

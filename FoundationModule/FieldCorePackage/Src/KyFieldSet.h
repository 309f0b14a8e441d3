// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyField.h"

#include <string>
#include <utility>
#include <vector>

/// Named fields in the order in which they were set: a copyable value, for parameters that travel together.
class KyFieldSet {
public:
    /// Name and value.
    using Entry = std::pair<std::string, KyField>;

    /// Replaces the value of that name or adds it at the end.
    void set(const std::string& name, KyField value) {
        if (KyField* known = find(name))
            *known = std::move(value);
        else
            mEntries.emplace_back(name, std::move(value));
    }
    /// Null when there is none.
    const KyField* get(std::string_view name) const { return const_cast<KyFieldSet*>(this)->find(name); }
    /// In the order of their first setting.
    const std::vector<Entry>& getEntries() const { return mEntries; }

private:
    KyField* find(std::string_view name) {
        for (Entry& entry : mEntries)
            if (entry.first == name)
                return &entry.second;
        return nullptr;
    }

    std::vector<Entry> mEntries;
};

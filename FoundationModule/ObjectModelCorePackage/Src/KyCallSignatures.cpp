// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyCallSignatures.h"

#include <map>
#include <mutex>
#include <utility>

namespace {

using Key = std::pair<std::string, std::string>;

struct Registry {
    std::mutex mutex;
    std::map<Key, std::vector<std::string>> lines;
};

Registry& editRegistry() {
    static Registry registry;
    return registry;
}

Key makeKey(std::string_view owner, std::string_view line) {
    return {std::string(owner), std::string(line.substr(0, line.find('(')))};
}

} // namespace

void KyCallSignatures::add(std::string_view owner, std::initializer_list<std::string_view> lines) {
    Registry& registry = editRegistry();
    const std::lock_guard lock(registry.mutex);
    for (const std::string_view line : lines)
        registry.lines[makeKey(owner, line)].clear();
    for (const std::string_view line : lines)
        registry.lines[makeKey(owner, line)].emplace_back(line);
}

std::vector<std::string> KyCallSignatures::find(std::string_view owner, std::string_view function) {
    Registry& registry = editRegistry();
    const std::lock_guard lock(registry.mutex);
    const auto found = registry.lines.find(makeKey(owner, function));
    return found == registry.lines.end() ? std::vector<std::string>() : found->second;
}

// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyLocalPath_p.h"

#include "KyResource.h"
#include "KyResourceDirectories_p.h"

#include <exception>

namespace {
// With the "/" a link to a directory would be that directory itself.
std::filesystem::path withoutFinalSlash(const std::filesystem::path& path) {
    return path.has_filename() || !path.has_relative_path() ? path : path.parent_path();
}
} // namespace

std::filesystem::path KyLocalPath::fromURL(const KyURL& url) {
    return withoutFinalSlash(fromText(KyResource::resolve(url).getLocalPath()));
}

std::filesystem::path KyLocalPath::fromTarget(const KyURL& url) {
    return withoutFinalSlash(fromText(KyResourceDirectories::resolveInCurrent(url).getLocalPath()));
}

std::filesystem::path KyLocalPath::fromText(const std::string& text) {
    try {
        return std::u8string(text.begin(), text.end());
    } catch (const std::exception&) {
        return {};
    }
}

std::string KyLocalPath::toText(const std::filesystem::path& path) {
    const auto text = path.generic_u8string();
    return {text.begin(), text.end()};
}

bool KyLocalPath::exists(const std::filesystem::path& path) {
    std::error_code error;
    return !path.empty() && std::filesystem::exists(std::filesystem::symlink_status(path, error));
}

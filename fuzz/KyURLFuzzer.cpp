// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyURL.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

namespace {
void require(bool condition) {
    if (!condition)
        std::abort();
}

void requireSound(const KyURL& url) {
    const std::string text = url.toString();
    require(std::ranges::all_of(text, [](char c) { return c > ' ' && c < '\x7F'; }));
    // Encoding makes a text up to three times as long, and the longest texts are refused.
    if (text.size() < 300'000)
        require(KyURL(text) == url);
}

void exerciseSetters(const std::string& text) {
    KyURL url("http://host/path");
    url.setScheme(text);
    url.setHost(text);
    url.setUser(text);
    requireSound(url);
    require(url.getUser() == text);
    url.setPath(text);
    url.appendPath(text);
    url.setQuery(text);
    url.setFragment(text);
    url.setFileName(text);
    url.setExtension(text);
    requireSound(url);
}

void exerciseRelations(const KyURL& url, const KyURL& base) {
    requireSound(url.getAbsoluteURL(base));
    requireSound(base.getAbsoluteURL(url));
    requireSound(url.getDirectoryURL());

    KyURL target(url);
    target.setCanonicalPath();
    requireSound(target);
    const KyURL relative = target.getRelativeURL(base);
    requireSound(relative);
    if (!target.isRelative() && relative.isRelative())
        require(relative.getAbsoluteURL(base) == target);
}
} // namespace

// The first byte picks the default scheme; a line end divides URL and base.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0)
        return 0;
    const std::string text(reinterpret_cast<const char*>(data) + 1, size - 1);
    const int scheme = data[0] % (KyURL::eNbSchemeTypes + 1);
    const auto half = std::min(text.find('\n'), text.size());
    const KyURL url(text.substr(0, half), scheme);
    const KyURL base(half < text.size() ? text.substr(half + 1) : std::string("file:///C:/dir/x?q"));
    requireSound(url);
    exerciseRelations(url, base);
    exerciseSetters(text);

    KyURL local;
    if (local.fromLocalPath(text) && text.find('\\') == std::string::npos)
        require(local.getLocalPath() == text);
    return 0;
}

// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyURLScheme_p.h"

#include "KyURL.h"
#include "KyURLText_p.h"

#include <array>

namespace {
struct DefaultScheme {
    std::string_view scheme;
    bool beginsWithHost;
};

// By SchemeType; a URL and a local path have no scheme before they are read.
constexpr std::array<DefaultScheme, KyURL::eNbSchemeTypes> cDefaultSchemes = {{
    {"file", false},
    {"http", true},
    {"ftp", true},
    {"resource", false},
    {{}, false},
    {"https", true},
    {{}, false},
}};

const DefaultScheme& getDefaultScheme(int type) {
    const bool known = type >= 0 && type < KyURL::eNbSchemeTypes;
    return cDefaultSchemes[static_cast<std::size_t>(known ? type : KyURL::eURL)];
}

// "localhost:8080" is a host with its port where a host is expected.
bool hasScheme(std::string_view text, bool beginsWithHost) {
    const auto scheme = KyURLText::findScheme(text);
    if (scheme.empty())
        return false;
    const auto rest = text.substr(scheme.size() + 1);
    return !beginsWithHost || rest.empty() || rest.find_first_of("0123456789") != 0;
}
} // namespace

std::string_view KyURLScheme::getText(int schemeType) {
    return getDefaultScheme(schemeType).scheme;
}

std::string KyURLScheme::addDefault(std::string_view text, int schemeType) {
    const auto& [scheme, beginsWithHost] = getDefaultScheme(schemeType);
    if (text.empty() || scheme.empty() || hasScheme(text, beginsWithHost))
        return std::string(text);
    const bool hostFollows = beginsWithHost && !text.starts_with('/');
    return std::string(scheme).append(hostFollows ? "://" : ":").append(text);
}

bool KyURLScheme::isWholeURL(std::string_view path) {
    const auto scheme = KyURLText::findScheme(path);
    return !scheme.empty() && path.substr(scheme.size() + 1).starts_with('/');
}

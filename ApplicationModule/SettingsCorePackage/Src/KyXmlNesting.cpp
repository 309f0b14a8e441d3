// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyXmlNesting_p.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace {

struct Skipped {
    std::string_view begin;
    std::string_view end;
};

/// What is no markup inside.
constexpr std::array<Skipped, 3> cSkipped{{{"<!--", "-->"}, {"<![CDATA[", "]]>"}, {"<?", "?>"}}};

constexpr auto cEnd = std::string_view::npos;

/// Behind the ">" that closes the tag; one in quotes does not.
std::size_t findTagEnd(std::string_view text, std::size_t at) {
    char quote = 0;
    for (; at < text.size(); ++at) {
        const char c = text[at];
        if (quote)
            quote = c == quote ? char(0) : quote;
        else if (c == '"' || c == '\'')
            quote = c;
        else if (c == '>')
            return at + 1;
    }
    return cEnd;
}

/// Behind what is skipped at this place; the place itself when nothing is.
std::size_t skip(std::string_view text, std::size_t at) {
    const auto* found = std::ranges::find_if(
        cSkipped, [rest = text.substr(at)](const Skipped& skipped) { return rest.starts_with(skipped.begin); });
    if (found == cSkipped.end())
        return at;
    const std::size_t end = text.find(found->end, at + found->begin.size());
    return end == cEnd ? cEnd : end + found->end.size();
}

KyXmlNesting::Place getPlace(std::string_view text, std::size_t at) {
    const std::string_view before = text.substr(0, at);
    const auto lines = std::ranges::count(before, '\n');
    const std::size_t lineStart = before.rfind('\n') + 1;
    return {static_cast<int>(lines) + 1, static_cast<int>(at - lineStart) + 1};
}

} // namespace

std::optional<KyXmlNesting::Place> KyXmlNesting::findExcess(const QByteArray& bytes, int maxDepth) {
    const QByteArray narrow = QByteArray(bytes).replace('\0', "");
    const std::string_view text(narrow.constData(), static_cast<std::size_t>(narrow.size()));
    int depth = 0;
    for (std::size_t at = text.find('<'); at < text.size(); at = text.find('<', at)) {
        const std::string_view rest = text.substr(at);
        const std::size_t skipped = skip(text, at);
        if (skipped != at) {
            at = skipped;
        } else if (rest.starts_with("<!ENTITY")) {
            return getPlace(text, at);
        } else if (rest.starts_with("<!")) {
            at += 2;
        } else if (rest.starts_with("</")) {
            depth = std::max(depth - 1, 0);
            at += 2;
        } else {
            const std::size_t end = findTagEnd(text, at);
            if (++depth > maxDepth)
                return getPlace(text, at);
            if (end != cEnd && text[end - 2] == '/')
                --depth;
            at = end;
        }
    }
    return std::nullopt;
}

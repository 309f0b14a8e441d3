// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KySvgStyleSheet_p.h"

#include "KySvgValues_p.h"

#include <algorithm>

namespace {

/// What is beyond is left out: the work for an element is bounded.
constexpr std::size_t cMaxRules = 10'000;
constexpr std::size_t cMaxClasses = 100;
/// What a rule that is looked at costs, beside its bytes.
constexpr std::size_t cTestWork = 16;

constexpr unsigned cImportant = 1U << 24;
constexpr unsigned cTypePriority = 1;
constexpr unsigned cClassPriority = 1U << 4;
constexpr unsigned cIdPriority = 1U << 12;
constexpr std::size_t cMaxSelectorClasses = 100;

constexpr std::string_view cNoNameCharacters = " \t\r\n\f>+~:[()*\"'";

void eraseComments(std::string& text) {
    std::string kept;
    std::size_t position = 0;
    for (std::size_t begin = 0; (begin = text.find("/*", position)) != std::string::npos;) {
        kept.append(text, position, begin - position);
        const std::size_t end = text.find("*/", begin + 2);
        position = end == std::string::npos ? text.size() : end + 2;
    }
    text = kept.append(text, position);
}

/// The end of the piece before the separator, quoted and bracketed ones skipped.
std::size_t findOutside(std::string_view text, char separator) {
    char quote = 0;
    int depth = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        if (quote)
            quote = c == quote ? char(0) : quote;
        else if (c == separator && depth == 0)
            return i;
        else if (c == '"' || c == '\'')
            quote = c;
        else
            depth += c == '(' ? 1 : (c == ')' && depth > 0 ? -1 : 0);
    }
    return text.size();
}

std::string_view takePiece(std::string_view& text, char separator) {
    const std::size_t end = findOutside(text, separator);
    const std::string_view piece = KySvgValues::trim(text.substr(0, end));
    text.remove_prefix(std::min(end + 1, text.size()));
    return piece;
}

std::vector<std::string_view> splitClasses(std::string_view text) {
    std::vector<std::string_view> classes;
    while (classes.size() < cMaxClasses && !(text = KySvgValues::trim(text)).empty()) {
        const std::size_t end = std::min(text.find_first_of(KySvgValues::cBlanks), text.size());
        classes.push_back(text.substr(0, end));
        text.remove_prefix(end);
    }
    return classes;
}

bool contains(const std::vector<std::string_view>& classes, const std::string& name) {
    return std::ranges::find(classes, name) != classes.end();
}

/// Past the block that opens at the position, blocks within it included.
std::size_t skipBlock(std::string_view text, std::size_t open) {
    int depth = 0;
    for (std::size_t i = open; i < text.size(); ++i) {
        depth += text[i] == '{' ? 1 : (text[i] == '}' ? -1 : 0);
        if (depth == 0)
            return i + 1;
    }
    return text.size();
}

/// Takes "@name ...;" or "@name ... {...}" off the front.
void skipAtRule(std::string_view& text, KySvgReports& reports) {
    const std::size_t nameEnd = std::min(text.find_first_of(" \t\r\n\f;{(\"'"), text.size());
    if (text.substr(0, nameEnd) != "@charset")
        reports.add(text.substr(0, nameEnd));
    const std::size_t end = std::min(text.find_first_of(";{"), text.size());
    const bool isBlock = end < text.size() && text[end] == '{';
    text.remove_prefix(isBlock ? skipBlock(text, end) : std::min(end + 1, text.size()));
}

} // namespace

void KySvgStyleSheet::add(std::string text, KySvgReports& reports) {
    eraseComments(text);
    std::string_view rest = text;
    while (!(rest = KySvgValues::trim(rest)).empty()) {
        if (rest.starts_with("<!--") || rest.starts_with("-->")) {
            rest.remove_prefix(rest[0] == '<' ? 4 : 3);
            continue;
        }
        if (rest[0] == '@') {
            skipAtRule(rest, reports);
            continue;
        }
        const std::size_t open = rest.find('{');
        const std::size_t close = rest.find('}');
        if (open == std::string_view::npos || close == std::string_view::npos || close < open)
            return;
        addRule(rest.substr(0, open), rest.substr(open + 1, close - open - 1), reports);
        rest.remove_prefix(close + 1);
    }
}

void KySvgStyleSheet::addRule(std::string_view selectors, std::string_view body, KySvgReports& reports) {
    mTexts.emplace_back(body);
    while (!(selectors = KySvgValues::trim(selectors)).empty()) {
        Rule rule;
        rule.text = mTexts.size() - 1;
        if (mRules.size() >= cMaxRules)
            return reports.add("size");
        if (!readSelector(takePiece(selectors, ','), rule)) {
            reports.add("selector");
            continue;
        }
        const std::string key = !rule.id.empty()        ? '#' + rule.id
                                : !rule.classes.empty() ? '.' + rule.classes.front()
                                                        : (rule.type.empty() ? "*" : rule.type);
        mByKey[key].push_back(mRules.size());
        mRules.push_back(std::move(rule));
    }
}

bool KySvgStyleSheet::readSelector(std::string_view selector, Rule& rule) {
    const bool isAny = selector.starts_with('*');
    if (isAny)
        selector.remove_prefix(1);
    if ((selector.empty() && !isAny) || selector.find_first_of(cNoNameCharacters) != std::string_view::npos)
        return false;
    while (!selector.empty()) {
        const char kind = selector[0];
        const std::size_t begin = kind == '.' || kind == '#' ? 1 : 0;
        const std::size_t end = std::min(selector.find_first_of(".#", begin), selector.size());
        const std::string name(selector.substr(begin, end - begin));
        if (name.empty() || (begin == 0 && isAny) || rule.classes.size() >= cMaxSelectorClasses)
            return false;
        if (kind == '.')
            rule.classes.push_back(name);
        else
            (kind == '#' ? rule.id : rule.type) = name;
        selector.remove_prefix(end);
    }
    rule.priority = (rule.id.empty() ? 0 : cIdPriority) + unsigned(rule.classes.size()) * cClassPriority +
                    (rule.type.empty() ? 0 : cTypePriority);
    return true;
}

bool KySvgStyleSheet::fits(const Rule& rule, const KySvgElement& element,
                           const std::vector<std::string_view>& classes) {
    return (rule.type.empty() || rule.type == element.name) &&
           (rule.id.empty() || rule.id == element.getAttribute("id")) &&
           std::ranges::all_of(rule.classes, [&classes](const std::string& name) { return contains(classes, name); });
}

std::size_t KySvgStyleSheet::matchKey(const std::string& key, const KySvgElement& element,
                                      const std::vector<std::string_view>& classes,
                                      std::vector<KySvgDeclaration>& declarations) const {
    const auto found = mByKey.find(key);
    if (found == mByKey.end())
        return 0;
    std::size_t work = 0;
    for (const std::size_t number : found->second) {
        const Rule& rule = mRules[number];
        work += cTestWork;
        if (!fits(rule, element, classes))
            continue;
        work += mTexts[rule.text].size();
        // Rank 0 is the attributes'.
        readDeclarations(mTexts[rule.text], rule.priority + 1, number, declarations);
    }
    return work;
}

std::size_t KySvgStyleSheet::match(const KySvgElement& element, std::vector<KySvgDeclaration>& declarations) const {
    if (mRules.empty())
        return 0;
    const std::vector<std::string_view> classes = splitClasses(element.getAttribute("class"));
    std::size_t work = matchKey("*", element, classes, declarations);
    work += matchKey(element.name, element, classes, declarations);
    for (const std::string_view name : classes)
        work += matchKey('.' + std::string(name), element, classes, declarations);
    return work + matchKey('#' + std::string(element.getAttribute("id")), element, classes, declarations);
}

void KySvgStyleSheet::readDeclarations(std::string_view text, unsigned priority, std::size_t order,
                                       std::vector<KySvgDeclaration>& declarations) {
    while (!text.empty()) {
        const std::string_view piece = takePiece(text, ';');
        const std::size_t colon = piece.find(':');
        if (colon == std::string_view::npos)
            continue;
        KySvgDeclaration declaration{KySvgValues::trim(piece.substr(0, colon)),
                                     KySvgValues::trim(piece.substr(colon + 1)), priority, order};
        const std::size_t mark = declaration.value.rfind('!');
        if (mark != std::string_view::npos && KySvgValues::trim(declaration.value.substr(mark + 1)) == "important") {
            declaration.value = KySvgValues::trim(declaration.value.substr(0, mark));
            declaration.priority += cImportant;
        }
        declarations.push_back(declaration);
    }
}

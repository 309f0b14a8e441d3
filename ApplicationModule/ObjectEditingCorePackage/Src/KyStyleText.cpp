// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyStyleText_p.h"

#include "KyColor.h"
#include "KyURL.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

namespace {

constexpr char cMark = '@';

constexpr bool isLetter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_';
}

constexpr bool isNameCharacter(char c) {
    return isLetter(c) || (c >= '0' && c <= '9');
}

/// The longest name at the beginning of the text, which may be empty.
std::string_view leadingName(std::string_view text) {
    if (text.empty() || !isLetter(text.front()))
        return {};
    const auto end = std::find_if_not(text.begin(), text.end(), &isNameCharacter);
    return text.substr(0, static_cast<std::size_t>(end - text.begin()));
}

/// In full: style sheets read no exponents.
template <class T>
bool formatReal(const KyField& value, std::string& text) {
    const T number = value.unchecked<T>();
    if (!std::isfinite(number))
        return false;
    std::array<char, 512> digits;
    const auto result = std::to_chars(digits.data(), digits.data() + digits.size(), number, std::chars_format::fixed);
    text.assign(digits.data(), result.ptr);
    return true;
}

/// Qt reads an alpha of 2 to 255 as steps and anything up to 1 as a fraction.
std::string formatAlpha(unsigned alpha) {
    return alpha == 1 ? "0.004" : std::to_string(alpha);
}

bool formatColor(const KyField& value, std::string& text) {
    const KyColor& color = value.unchecked<KyColor>();
    if (!std::isfinite(color.red) || !std::isfinite(color.green) || !std::isfinite(color.blue) ||
        !std::isfinite(color.alpha))
        return false;
    const std::uint32_t packed = color.toR8G8B8A8();
    const auto component = [packed](unsigned shift) { return packed >> shift & 0xFFu; };
    if (component(0) == 0xFF)
        text = color.getHtmlName();
    else
        text = "rgba(" + std::to_string(component(24)) + ", " + std::to_string(component(16)) + ", " +
               std::to_string(component(8)) + ", " + formatAlpha(component(0)) + ")";
    return true;
}

/// The name under which Qt opens what the URL names.
std::string fileNameOf(const KyURL& url) {
    std::string path;
    if (url.getScheme() == "qrc")
        return ":" + url.getDecodedPath();
    return url.getLocalPath(path) ? path : url.toString();
}

bool formatUrl(const KyField& value, std::string& text) {
    std::string quoted = "url(\"";
    for (const char c : fileNameOf(value.unchecked<KyURL>())) {
        if (c == '"' || c == '\\')
            quoted += '\\';
        quoted += c == '\n' ? std::string("\\a ") : std::string(1, c);
    }
    text = quoted + "\")";
    return true;
}

bool formatBool(const KyField& value, std::string& text) {
    text = value.unchecked<bool>() ? "1" : "0";
    return true;
}

bool formatPlain(const KyField& value, std::string& text) {
    text = value.toString();
    return true;
}

struct Form {
    KyFieldKind kind;
    bool (*format)(const KyField& value, std::string& text);
};

constexpr Form cForms[] = {
    {cFieldKindOf<bool>, &formatBool},           {cFieldKindOf<std::int32_t>, &formatPlain},
    {cFieldKindOf<std::uint32_t>, &formatPlain}, {cFieldKindOf<std::int64_t>, &formatPlain},
    {cFieldKindOf<std::uint64_t>, &formatPlain}, {cFieldKindOf<float>, &formatReal<float>},
    {cFieldKindOf<double>, &formatReal<double>}, {cFieldKindOf<std::string>, &formatPlain},
    {cFieldKindOf<KyColor>, &formatColor},       {cFieldKindOf<KyURL>, &formatUrl},
};

} // namespace

bool KyStyleText::isName(std::string_view text) {
    return !text.empty() && leadingName(text).size() == text.size();
}

bool KyStyleText::format(const KyField& value, std::string& text) {
    const auto* const form = std::find_if(std::begin(cForms), std::end(cForms),
                                          [&](const Form& candidate) { return candidate.kind == value.getKind(); });
    return form != std::end(cForms) && form->format(value, text);
}

std::string KyStyleText::replaceNames(std::string_view text, const Lookup& lookup) {
    std::string result;
    result.reserve(text.size());
    while (!text.empty()) {
        const std::size_t mark = std::min(text.find(cMark), text.size());
        result += text.substr(0, mark);
        text.remove_prefix(mark);
        if (text.empty())
            break;
        const std::string_view name = leadingName(text.substr(1));
        std::string value;
        const bool isEscaped = text.size() > 1 && text[1] == cMark;
        const bool isKnown = !name.empty() && lookup(name, value);
        const std::size_t taken = isEscaped ? 2 : name.size() + 1;
        result += isEscaped ? text.substr(0, 1) : (isKnown ? std::string_view(value) : text.substr(0, taken));
        text.remove_prefix(taken);
    }
    return result;
}

// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyFieldText_p.h"

#include "KyPublishedObjects_p.h"

#include "KyBox.h"
#include "KyColor.h"
#include "KyMat4.h"
#include "KyNumberReading.h"
#include "KyObject.h"
#include "KyQuat.h"
#include "KyRect.h"
#include "KyType.h"
#include "KyURL.h"
#include "KyVec2.h"
#include "KyVec3.h"
#include "KyVolume.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <vector>

namespace {

constexpr int cEveryDigit = 17;

constexpr std::array cSingleKinds{cFieldKindOf<float>,   cFieldKindOf<KyVec2f>, cFieldKindOf<KyVec3f>,
                                  cFieldKindOf<KyColor>, cFieldKindOf<KyQuatf>, cFieldKindOf<KyMat4f>,
                                  cFieldKindOf<KyRectf>, cFieldKindOf<KyBoxf>,  cFieldKindOf<KyVolumef>};
constexpr std::array cDoubleKinds{cFieldKindOf<double>,  cFieldKindOf<KyVec2d>,  cFieldKindOf<KyVec3d>,
                                  cFieldKindOf<KyQuatd>, cFieldKindOf<KyMat4d>,  cFieldKindOf<KyRectd>,
                                  cFieldKindOf<KyBoxd>,  cFieldKindOf<KyVolumed>};
/// What the elements of a list are taken for when there is none to go by, most likely first.
constexpr std::array cGuessedKinds{cFieldKindOf<std::int64_t>, cFieldKindOf<double>,  cFieldKindOf<bool>,
                                   cFieldKindOf<std::string>,  cFieldKindOf<KyVec2d>, cFieldKindOf<KyVec3d>,
                                   cFieldKindOf<KyColor>,      cFieldKindOf<KyQuatd>};

template <class Kinds>
bool isOneOf(const Kinds& kinds, KyFieldKind kind) {
    return std::ranges::find(kinds, kind) != kinds.end();
}

template <class Number>
std::string formatShortest(Number number) {
    std::array<char, 32> buffer{};
    const auto result = std::to_chars(buffer.data(), buffer.data() + buffer.size(), number);
    return std::string(buffer.data(), result.ptr);
}

template <class Number>
std::string shortenNumbers(std::string_view text) {
    std::string shortened;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find(' '), text.size());
        double number = 0;
        const auto result = KyNumberReading::read(text.data(), text.data() + end, number);
        const bool isNumber = result.ec == std::errc() && result.ptr == text.data() + end;
        shortened += isNumber ? formatShortest(static_cast<Number>(number)) : std::string(text.substr(0, end));
        if (end < text.size())
            shortened += ' ';
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return shortened;
}

std::string escape(std::string_view text) {
    std::string escaped;
    for (const char c : text) {
        if (c == ';' || c == '\\')
            escaped += '\\';
        escaped += c;
    }
    return escaped;
}

std::vector<std::string> splitList(std::string_view text) {
    std::vector<std::string> parts;
    if (text.empty())
        return parts;
    parts.emplace_back();
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == ';') {
            parts.emplace_back();
            continue;
        }
        if (text[i] == '\\' && i + 1 < text.size())
            ++i;
        parts.back() += text[i];
    }
    return parts;
}

std::string formatList(const KyField& field) {
    const KyFieldOperations& operations = field.getFieldType().getOperations();
    std::string text;
    for (std::size_t i = 0; i < operations.size(field.data()); ++i) {
        if (i != 0)
            text += ';';
        text += escape(KyFieldText::format(operations.element(field.data(), i)));
    }
    return text;
}

std::string_view trim(std::string_view text) {
    constexpr std::string_view blanks = " \t\r\n";
    const std::size_t begin = std::min(text.find_first_not_of(blanks), text.size());
    text.remove_prefix(begin);
    return text.substr(0, text.find_last_not_of(blanks) + 1);
}

bool appendParsed(const KyFieldOperations& operations, KyField& list, const std::string& text, const KyField& like) {
    KyField element;
    return KyFieldText::parse(text, like, element) && operations.append(const_cast<void*>(list.data()), element);
}

// An element keeps the type that it had; new ones have that of the first.
bool parseList(std::string_view text, const KyField& like, KyField& result) {
    const KyFieldOperations& operations = like.getFieldType().getOperations();
    const std::size_t size = operations.size(like.data());
    KyField list = KyField::makeDefault(like.getKind());
    std::size_t index = 0;
    for (const std::string& part : splitList(text)) {
        bool isDone =
            size > 0 && appendParsed(operations, list, part, operations.element(like.data(), index < size ? index : 0));
        for (std::size_t i = 0; i < cGuessedKinds.size() && !isDone; ++i)
            isDone = appendParsed(operations, list, part, KyField::makeDefault(cGuessedKinds[i]));
        if (!isDone)
            return false;
        ++index;
    }
    result = std::move(list);
    return true;
}

int countInfinities(std::string_view text) {
    constexpr std::string_view infinity = "inf";
    const auto isSame = [](char c, char lower) { return c == lower || c + ('a' - 'A') == lower; };
    int count = 0;
    for (;; ++count) {
        const auto found = std::search(text.begin(), text.end(), infinity.begin(), infinity.end(), isSame);
        if (found == text.end())
            return count;
        text.remove_prefix(std::size_t(found - text.begin()) + infinity.size());
    }
}

bool isNumeric(const KyField& field) {
    return isOneOf(cSingleKinds, field.getKind()) || isOneOf(cDoubleKinds, field.getKind());
}

/// Whether the text means what the value holds, not a value that stands for all that it cannot hold.
bool isTrue(const std::string& text, const KyField& parsed) {
    if (const KyURL* url = parsed.get<KyURL>())
        return text.empty() || !url->isEmpty();
    return !isNumeric(parsed) || countInfinities(KyFieldText::format(parsed)) <= countInfinities(text);
}

bool holdsObjects(const KyField& field) {
    if (field.getKind() == cFieldKindOf<KyObjectReference>)
        return true;
    if (!field.getFieldType().isList())
        return false;
    const KyFieldOperations& operations = field.getFieldType().getOperations();
    for (std::size_t i = 0; i < operations.size(field.data()); ++i)
        if (holdsObjects(operations.element(field.data(), i)))
            return true;
    return false;
}

} // namespace

std::string KyFieldText::format(const KyField& field) {
    if (field.isEmpty())
        return {};
    if (field.getKind() == cFieldKindOf<KyObjectReference>)
        return describe(field.toKyObject());
    if (field.getFieldType().isList())
        return formatList(field);
    const std::string text = field.toString(cEveryDigit);
    if (isOneOf(cSingleKinds, field.getKind()))
        return shortenNumbers<float>(text);
    return isOneOf(cDoubleKinds, field.getKind()) ? shortenNumbers<double>(text) : text;
}

bool KyFieldText::parse(std::string_view text, const KyField& like, KyField& result) {
    if (like.isEmpty() || like.isText()) {
        result = KyField(std::string(text));
        return true;
    }
    if (like.getFieldType().isList())
        return parseList(text, like, result);
    const std::string trimmed(trim(text));
    KyColor color;
    if (like.getKind() == cFieldKindOf<KyColor> && KyColor::fromHtml(trimmed, color)) {
        result = KyField(color);
        return true;
    }
    KyField parsed = like;
    if (!parsed.fromString(trimmed) || !isTrue(trimmed, parsed))
        return false;
    result = std::move(parsed);
    return true;
}

bool KyFieldText::isParsable(const KyField& field) {
    KyField again;
    return !field.isEmpty() && !holdsObjects(field) && parse(format(field), field, again);
}

bool KyFieldText::areSame(const KyField& field, const KyField& other) {
    if (field == other || field.getKind() != other.getKind())
        return field == other;
    if (!field.getFieldType().isList())
        return isNumeric(field) && field.toString(cEveryDigit) == other.toString(cEveryDigit);
    const KyFieldOperations& operations = field.getFieldType().getOperations();
    const std::size_t size = operations.size(field.data());
    if (operations.size(other.data()) != size)
        return false;
    for (std::size_t i = 0; i < size; ++i)
        if (!areSame(operations.element(field.data(), i), operations.element(other.data(), i)))
            return false;
    return true;
}

std::string KyFieldText::describe(KyObject* object) {
    if (!object)
        return "none";
    const std::string published = KyPublishedObjects::findName(object);
    const std::string& name = published.empty() ? object->getName() : published;
    const std::string& type = object->getObjectType()->getName();
    return name.empty() ? type : name + " (" + type + ")";
}

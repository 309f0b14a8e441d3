// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyModelFileCheck_p.h"

#include "KyModelNesting_p.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>
#include <cstring>
#include <limits>
#include <vector>

namespace {

constexpr std::string_view cBlanks = " \t\r";

std::string_view trim(std::string_view text) {
    const std::size_t first = text.find_first_not_of(cBlanks);
    if (first == std::string_view::npos)
        return {};
    return text.substr(first, text.find_last_not_of(cBlanks) - first + 1);
}

std::string_view takeLine(std::string_view& text) {
    const std::size_t end = std::min(text.find('\n'), text.size());
    const std::string_view line = trim(text.substr(0, end));
    text.remove_prefix(std::min(end + 1, text.size()));
    return line;
}

std::vector<std::string_view> split(std::string_view line) {
    std::vector<std::string_view> words;
    while (!(line = trim(line)).empty()) {
        const std::size_t end = std::min(line.find_first_of(cBlanks), line.size());
        words.push_back(line.substr(0, end));
        line.remove_prefix(end);
    }
    return words;
}

bool readCount(std::string_view word, std::uint64_t& count) {
    const auto result = std::from_chars(word.data(), word.data() + word.size(), count);
    return result.ec == std::errc() && result.ptr == word.data() + word.size();
}

std::string checkObj(std::string_view bytes) {
    bool hasFace = false;
    while (!bytes.empty()) {
        const std::vector<std::string_view> words = split(takeLine(bytes));
        if (words.empty())
            continue;
        if (words[0] == "v" && words.size() < 4)
            return "a vertex has fewer than three numbers";
        if (words[0] == "f" && words.size() < 4)
            return "a face has fewer than three corners";
        hasFace = hasFace || words[0] == "f" || words[0] == "l" || words[0] == "p";
    }
    return hasFace ? std::string() : "it has no faces";
}

std::string checkTextStl(std::string_view bytes) {
    return bytes.find("endsolid") == std::string_view::npos ? "it ends before \"endsolid\"" : std::string();
}

std::string checkStl(std::string_view bytes) {
    constexpr std::size_t cHeader = 80, cPrefix = 84, cFacet = 50;
    if (bytes.size() >= cPrefix) {
        std::uint32_t count = 0;
        std::memcpy(&count, bytes.data() + cHeader, sizeof(count));
        const std::uint64_t needed = cPrefix + std::uint64_t{count} * cFacet;
        if (count > 0 && needed == bytes.size())
            return {};
        if (!bytes.starts_with("solid"))
            return count == 0 ? "it has no facets" : "it is shorter or longer than its number of facets";
    }
    return bytes.starts_with("solid") ? checkTextStl(bytes) : "it is too short";
}

struct PlyElement {
    std::uint64_t count = 0;
    std::uint64_t smallestSize = 0;
};

struct PlyHeader {
    bool isBinary = false;
    bool isComplete = false;
    std::vector<PlyElement> elements;
};

std::uint64_t getPlySize(std::string_view type) {
    struct Size {
        std::string_view type;
        std::uint64_t bytes;
    };
    static constexpr std::array<Size, 16> cSizes{{{"char", 1},
                                                  {"uchar", 1},
                                                  {"int8", 1},
                                                  {"uint8", 1},
                                                  {"short", 2},
                                                  {"ushort", 2},
                                                  {"int16", 2},
                                                  {"uint16", 2},
                                                  {"int", 4},
                                                  {"uint", 4},
                                                  {"int32", 4},
                                                  {"uint32", 4},
                                                  {"float", 4},
                                                  {"float32", 4},
                                                  {"double", 8},
                                                  {"float64", 8}}};
    const auto found = std::ranges::find(cSizes, type, &Size::type);
    return found == cSizes.end() ? 0 : found->bytes;
}

std::string readPlyLine(const std::vector<std::string_view>& words, PlyHeader& header) {
    if (words[0] == "format" && words.size() > 1)
        header.isBinary = words[1] != "ascii";
    if (words[0] == "element") {
        PlyElement element;
        if (words.size() < 3 || !readCount(words[2], element.count))
            return "an element has no count";
        header.elements.push_back(element);
    }
    if (words[0] == "property") {
        if (header.elements.empty() || words.size() < 3)
            return "a property stands outside an element";
        // A list may be empty, its own count is there always.
        const std::uint64_t size = getPlySize(words[1] == "list" ? words[2] : words[1]);
        if (size == 0)
            return "a property has an unknown type";
        header.elements.back().smallestSize += size;
    }
    return {};
}

std::string checkPlyBody(const PlyHeader& header, std::string_view body) {
    const auto available = header.isBinary ? static_cast<std::uint64_t>(body.size())
                                           : static_cast<std::uint64_t>(std::ranges::count(body, '\n')) +
                                                 (body.empty() || body.back() == '\n' ? 0 : 1);
    std::uint64_t needed = 0;
    for (const PlyElement& element : header.elements) {
        const std::uint64_t each = header.isBinary ? std::max<std::uint64_t>(element.smallestSize, 1) : 1;
        if (element.count > (std::numeric_limits<std::uint64_t>::max() - needed) / each)
            return "its counts are impossible";
        needed += element.count * each;
    }
    return needed > available ? "it is shorter than its counts say" : std::string();
}

std::string checkPly(std::string_view bytes) {
    if (takeLine(bytes) != "ply")
        return "it does not begin with \"ply\"";
    PlyHeader header;
    while (!bytes.empty() && !header.isComplete) {
        const std::vector<std::string_view> words = split(takeLine(bytes));
        if (words.empty())
            continue;
        if (std::string error = readPlyLine(words, header); !error.empty())
            return error;
        header.isComplete = words[0] == "end_header";
    }
    return header.isComplete ? checkPlyBody(header, bytes) : "its header has no end";
}

std::string checkBinaryGltf(std::string_view bytes) {
    constexpr std::size_t cLength = 12, cPrefix = 20;
    if (bytes.size() < cPrefix)
        return "it is too short";
    if (!bytes.starts_with("glTF"))
        return "it does not begin with \"glTF\"";
    std::uint32_t length = 0;
    std::memcpy(&length, bytes.data() + cLength, sizeof(length));
    if (length > bytes.size() - cPrefix)
        return "it is shorter than its length says";
    return kyCheckGltfNesting(bytes.substr(cPrefix, length));
}

/// As many as the deep stack of the reader bears inside each other.
constexpr std::size_t cMaxBraces = 30000;

/// Of a binary file: numbers that look like the sign of a brace count too, so there are no more than these.
std::size_t countBraces(std::string_view bytes) {
    constexpr std::string_view cBrace("\x0a\0", 2);
    std::size_t count = 0;
    for (std::size_t at = bytes.find(cBrace); at != std::string_view::npos; at = bytes.find(cBrace, at + 1))
        ++count;
    return count;
}

std::string checkX(std::string_view bytes) {
    constexpr std::size_t cFormat = 8;
    if (bytes.starts_with("xof ") && bytes.size() > cFormat && bytes.substr(cFormat).starts_with("tzip"))
        return "compressed files of this kind are not read";
    if (bytes.starts_with("xof ") && bytes.size() > cFormat && bytes.substr(cFormat).starts_with("bin "))
        return countBraces(bytes) > cMaxBraces ? "its nodes are nested too deeply" : std::string();
    return kyCheckBraceNesting(bytes, "#/");
}

struct Check {
    std::string_view extension;
    std::string (*check)(std::string_view bytes);
};

constexpr std::array<Check, 8> cChecks{{{"obj", checkObj},
                                        {"stl", checkStl},
                                        {"ply", checkPly},
                                        {"gltf", kyCheckGltfNesting},
                                        {"glb", checkBinaryGltf},
                                        {"dae", kyCheckColladaNesting},
                                        {"x", checkX},
                                        {"fbx", kyCheckFbxNesting}}};

} // namespace

std::string kyCheckModelFile(std::string_view extension, std::string_view bytes) {
    if (bytes.empty())
        return "it is empty";
    const auto found = std::ranges::find(cChecks, extension, &Check::extension);
    return found == cChecks.end() ? std::string() : found->check(bytes);
}

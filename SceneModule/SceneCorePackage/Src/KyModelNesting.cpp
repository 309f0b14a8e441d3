// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyModelNesting_p.h"

#include "KyNode.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <iterator>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

namespace {

constexpr std::size_t cMaxJsonDepth = 100;
constexpr std::size_t cMaxTreeDepth = KyNode::cMaxDepth;
const std::string cTooDeep = "it is nested too deeply";
const std::string cNodesTooDeep = "its nodes are nested too deeply";

/// Everything up to and with `end` is taken away; all of it when there is no end.
void skipPast(std::string_view& text, std::string_view end) {
    const std::size_t found = text.find(end);
    text.remove_prefix(found == std::string_view::npos ? text.size() : found + end.size());
}

void appendEscaped(std::string_view& json, std::string& text) {
    static constexpr std::string_view cSigns = "bfnrt", cMeanings = "\b\f\n\r\t";
    const char sign = json.front();
    json.remove_prefix(1);
    unsigned code = 0;
    if (sign == 'u' && json.size() >= 4 &&
        std::from_chars(json.data(), json.data() + 4, code, 16).ptr == json.data() + 4) {
        json.remove_prefix(4);
        // Only whether two texts are the same matters, not how others than ASCII are written.
        text += code < 0x80 ? std::string(1, static_cast<char>(code)) : "\\u" + std::to_string(code);
        return;
    }
    const std::size_t index = cSigns.find(sign);
    text += index == std::string_view::npos ? sign : cMeanings[index];
}

/// Takes a text away whose opening quote is gone already.
std::string takeText(std::string_view& json) {
    std::string text;
    while (!json.empty() && json.front() != '"') {
        const char sign = json.front();
        json.remove_prefix(1);
        if (sign == '\\' && !json.empty())
            appendEscaped(json, text);
        else
            text += sign;
    }
    json.remove_prefix(json.empty() ? 0 : 1);
    return text;
}

/// The tree of a file's nodes, each known by its index or its name.
class NodeTree {
public:
    /// False when the child has a parent already.
    bool add(const std::string& parent, const std::string& child) { return mParents.try_emplace(child, parent).second; }

    bool isTooDeep() {
        return std::ranges::any_of(mParents,
                                   [this](const auto& entry) { return getDepth(entry.first) > cMaxTreeDepth; });
    }

private:
    /// The number of nodes above; more than the limit in a loop.
    std::size_t getDepth(const std::string& node) {
        std::vector<const std::string*> path;
        std::size_t depth = 0;
        const std::string* above = &node;
        for (auto found = mParents.find(node); found != mParents.end(); found = mParents.find(*above)) {
            if (const auto known = mDepths.find(*above); known != mDepths.end()) {
                depth = known->second;
                break;
            }
            path.push_back(above);
            above = &found->second;
            if (path.size() > cMaxTreeDepth)
                return path.size();
        }
        for (auto each = path.rbegin(); each != path.rend(); ++each)
            mDepths[**each] = ++depth;
        return depth;
    }

    std::unordered_map<std::string, std::string> mParents;
    std::unordered_map<std::string, std::size_t> mDepths;
};

/// Goes through the JSON text once, with the way to the present place on a list instead of the stack.
class GltfScan {
public:
    std::string run(std::string_view json) {
        while (!json.empty() && mError.empty())
            step(json);
        if (mError.empty() && mNodes.isTooDeep())
            mError = cNodesTooDeep;
        return mError;
    }

private:
    struct Level {
        bool isObject = false;
        bool hasKey = false;
        std::string key;
        std::size_t index = 0;
    };

    void step(std::string_view& json) {
        static constexpr std::string_view cEnds = " \t\r\n{}[],:\"";
        const std::size_t length = std::min(json.find_first_of(cEnds), json.size());
        if (length > 0)
            value(std::string(json.substr(0, length)));
        json.remove_prefix(length);
        if (json.empty())
            return;
        const char sign = json.front();
        json.remove_prefix(1);
        if (sign == '"')
            text(takeText(json));
        else
            structure(sign);
    }

    void structure(char sign) {
        if (sign == '{' || sign == '[')
            open(sign == '{');
        else if ((sign == '}' || sign == ']') && !mLevels.empty())
            mLevels.pop_back();
        else if (sign == ',' && !mLevels.empty())
            next(mLevels.back());
    }

    void open(bool isObject) {
        mLevels.push_back({isObject, false, {}, 0});
        if (mLevels.size() > cMaxJsonDepth)
            mError = cTooDeep;
    }

    static void next(Level& level) {
        level.hasKey = false;
        level.key = level.isObject ? std::string() : std::to_string(++level.index);
    }

    void text(std::string content) {
        if (mLevels.empty() || !mLevels.back().isObject || mLevels.back().hasKey)
            return value(content);
        mLevels.back().hasKey = true;
        mLevels.back().key = std::move(content);
    }

    /// "nodes" is a list, or an object in files of the first version.
    void value(const std::string& child) {
        if (mLevels.size() != 4 || mLevels[0].key != "nodes" || mLevels[2].key != "children" || mLevels[3].isObject)
            return;
        const std::string& parent = mLevels[1].isObject ? mLevels[1].key : std::to_string(mLevels[1].index);
        if (!mNodes.add(parent, child))
            mError = "a node stands below two";
    }

    std::vector<Level> mLevels;
    NodeTree mNodes;
    std::string mError;
};

/// Takes the rest of a tag away; gives whether it closes itself.
bool takeTag(std::string_view& xml) {
    char quote = 0, last = 0;
    while (!xml.empty()) {
        const char sign = xml.front();
        xml.remove_prefix(1);
        if (quote == 0 && sign == '>')
            return last == '/';
        if (quote == 0 && (sign == '"' || sign == '\''))
            quote = sign;
        else if (sign == quote)
            quote = 0;
        last = sign;
    }
    return false;
}

/// Takes away what begins with "<" but is no element; gives whether there was such a thing.
bool skipMarkup(std::string_view& xml) {
    static constexpr std::array<std::pair<std::string_view, std::string_view>, 3> cMarkups{
        {{"!--", "-->"}, {"![CDATA[", "]]>"}, {"?", "?>"}}};
    for (const auto& [begin, end] : cMarkups)
        if (xml.starts_with(begin)) {
            xml.remove_prefix(begin.size());
            skipPast(xml, end);
            return true;
        }
    return false;
}

/// Records of a binary file: where each ends, how many values it has, their size, and its name.
class FbxScan {
public:
    explicit FbxScan(std::string_view bytes)
        : mBytes(bytes) {
        std::uint32_t version = 0;
        if (mBytes.size() >= cHeader)
            std::memcpy(&version, mBytes.data() + cHeader - sizeof(version), sizeof(version));
        mWord = version >= cFirstLongVersion ? 8 : 4;
    }

    std::string run() {
        while (mPosition < mBytes.size() && mBytes.size() - mPosition >= 3 * mWord + 1) {
            while (!mEnds.empty() && mPosition >= mEnds.back())
                close();
            if (mBytes.size() - mPosition < 3 * mWord + 1)
                break;
            const std::uint64_t end = read(0);
            if (end == 0 && mEnds.empty())
                break;
            if (end == 0)
                mPosition += mWord;
            else if (!enter(end))
                return "its records are broken";
            if (mEnds.size() > cMaxTreeDepth)
                return cTooDeep;
        }
        return {};
    }

private:
    static constexpr std::size_t cHeader = 27;
    static constexpr std::uint32_t cFirstLongVersion = 7500;

    std::uint64_t read(std::size_t index) const {
        std::uint64_t number = 0;
        for (std::size_t i = mWord; i-- > 0;)
            number = number << 8 | static_cast<unsigned char>(mBytes[mPosition + index * mWord + i]);
        return number;
    }

    /// Records inside others are followed by an empty one.
    std::size_t getEmptySize() const { return 3 * mWord + 1; }

    void close() {
        mPosition = std::max<std::size_t>(mPosition, mEnds.back() + getEmptySize());
        mEnds.pop_back();
    }

    bool enter(std::uint64_t end) {
        const std::size_t name = static_cast<unsigned char>(mBytes[mPosition + 3 * mWord]);
        const std::uint64_t begin = mPosition + getEmptySize() + name, values = read(2);
        if (end > mBytes.size() || begin > end || values > end - begin)
            return false;
        mPosition = static_cast<std::size_t>(begin + values);
        if (mPosition == end)
            return true;
        if (end - mPosition < getEmptySize())
            return false;
        mEnds.push_back(static_cast<std::size_t>(end) - getEmptySize());
        return true;
    }

    std::string_view mBytes;
    std::size_t mWord = 4;
    std::size_t mPosition = cHeader;
    std::vector<std::size_t> mEnds;
};

/// Texts of two bytes a character without the zeros are readable enough to count signs.
std::string_view dropZeros(std::string_view text, std::string& storage) {
    if (text.substr(0, 4).find('\0') == std::string_view::npos)
        return text;
    std::ranges::copy_if(text, std::back_inserter(storage), [](char c) { return c != 0; });
    return storage;
}

} // namespace

std::string kyCheckGltfNesting(std::string_view json) {
    return GltfScan().run(json);
}

std::string kyCheckXmlNesting(std::string_view xml) {
    std::string storage;
    xml = dropZeros(xml, storage);
    std::size_t depth = 0;
    for (skipPast(xml, "<"); !xml.empty(); skipPast(xml, "<")) {
        if (skipMarkup(xml))
            continue;
        if (xml.starts_with('!'))
            return "it declares a document type";
        const bool isEnd = xml.starts_with('/');
        const bool isWhole = takeTag(xml);
        if (isEnd)
            depth -= std::min<std::size_t>(depth, 1);
        else if (!isWhole && ++depth > cMaxTreeDepth)
            return cTooDeep;
    }
    return {};
}

std::string kyCheckBraceNesting(std::string_view text, std::string_view commentSigns) {
    static constexpr std::string_view cBlanksAndDelimiters = " \t\r\n;,{}";
    std::string storage;
    std::size_t depth = 0, floor = 0;
    char end = 0, last = '\n';
    for (const char sign : dropZeros(text, storage)) {
        if (sign == '{' && ++depth > cMaxTreeDepth)
            return cTooDeep;
        if (sign == '}' && depth > floor)
            --depth;
        // Inside a quotation or a comment nothing closes what was opened before: a reader may see it as neither.
        const bool isComment = commentSigns.find(sign) != std::string_view::npos &&
                               cBlanksAndDelimiters.find(last) != std::string_view::npos;
        if (end == 0 && (sign == '"' || isComment)) {
            end = sign == '"' ? '"' : '\n';
            floor = depth;
        } else if (sign == end) {
            end = 0;
            floor = 0;
        }
        last = sign;
    }
    return {};
}

std::string kyCheckBinaryFbxNesting(std::string_view bytes) {
    return FbxScan(bytes).run();
}

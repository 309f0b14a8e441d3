// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyModelNesting_p.h"

#include "KyModelGraph_p.h"
#include "KyNode.h"

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <iterator>
#include <utility>
#include <vector>

namespace {

constexpr std::size_t cMaxJsonDepth = 100;
const std::string cTooDeep = "it is nested too deeply";

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

/// Goes through the JSON text once, with the way to the present place on a list instead of the stack.
class GltfScan {
public:
    std::string run(std::string_view json) {
        while (!json.empty() && mError.empty())
            step(json);
        return mError.empty() ? mNodes.check() : mError;
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
        if (!mNodes.addLink(parent, child))
            mError = "a node stands below two";
    }

    std::vector<Level> mLevels;
    KyModelGraph mNodes;
    std::string mError;
};

} // namespace

std::string_view kyDropZeros(std::string_view text, std::string& storage) {
    if (text.substr(0, 4).find('\0') == std::string_view::npos)
        return text;
    std::ranges::copy_if(text, std::back_inserter(storage), [](char c) { return c != 0; });
    return storage;
}

std::string kyCheckGltfNesting(std::string_view json) {
    return GltfScan().run(json);
}

std::string kyCheckBraceNesting(std::string_view text, std::string_view commentSigns) {
    static constexpr std::string_view cBlanksAndDelimiters = " \t\r\n;,{}";
    std::string storage;
    std::size_t depth = 0, floor = 0;
    char end = 0, last = '\n';
    for (const char sign : kyDropZeros(text, storage)) {
        if (sign == '{' && ++depth > KyNode::cMaxDepth)
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

// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyModelGraph_p.h"
#include "KyModelNesting_p.h"
#include "KyNode.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <set>
#include <utility>
#include <vector>

namespace {

/// Everything up to and with `end` is taken away; all of it when there is no end.
void skipPast(std::string_view& text, std::string_view end) {
    const std::size_t found = text.find(end);
    text.remove_prefix(found == std::string_view::npos ? text.size() : found + end.size());
}

/// Takes the rest of a tag away, with the sign that ends it.
std::string_view takeTag(std::string_view& xml) {
    const std::string_view whole = xml;
    char quote = 0;
    while (!xml.empty()) {
        const char sign = xml.front();
        xml.remove_prefix(1);
        if (quote == 0 && sign == '>')
            break;
        if (quote == 0 && (sign == '"' || sign == '\''))
            quote = sign;
        else if (sign == quote)
            quote = 0;
    }
    return whole.substr(0, whole.size() - xml.size());
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

std::string_view getElement(std::string_view tag) {
    return tag.substr(0, tag.find_first_of(" \t\r\n/>"));
}

/// The value of an attribute of the tag; empty when it has none.
std::string_view getAttribute(std::string_view tag, std::string_view name) {
    for (std::size_t at = tag.find(name); at != std::string_view::npos; at = tag.find(name, at + 1)) {
        const std::string_view before = tag.substr(0, at), after = tag.substr(at + name.size());
        const std::size_t sign = after.find_first_not_of(" \t\r\n");
        if (before.empty() || !std::isspace(static_cast<unsigned char>(before.back())) ||
            sign == std::string_view::npos || after[sign] != '=')
            continue;
        const std::size_t quote = after.find_first_not_of(" \t\r\n", sign + 1);
        if (quote == std::string_view::npos)
            return {};
        return after.substr(quote + 1, after.find(after[quote], quote + 1) - quote - 1);
    }
    return {};
}

/// Goes through the elements once, with the way to the present one on a list instead of the stack.
class ColladaScan {
public:
    std::string run(std::string_view xml) {
        for (skipPast(xml, "<"); !xml.empty() && mError.empty(); skipPast(xml, "<")) {
            if (skipMarkup(xml))
                continue;
            if (xml.starts_with('!'))
                return "it declares a document type";
            element(takeTag(xml));
        }
        return mError.empty() ? checkNodes() : mError;
    }

private:
    struct Name {
        std::string_view name;
        std::string node;
    };

    void element(std::string_view tag) {
        if (tag.starts_with('/')) {
            if (!mWay.empty())
                mWay.pop_back();
            return;
        }
        const std::string node = getNode(tag);
        if (tag.ends_with("/>"))
            return;
        mWay.push_back(node);
        if (mWay.size() > KyNode::cMaxDepth)
            mError = "it is nested too deeply";
    }

    /// The node that what stands in this element belongs to; empty outside of nodes.
    std::string getNode(std::string_view tag) {
        std::string parent = mWay.empty() ? std::string() : mWay.back();
        const std::string_view name = getElement(tag);
        if (name == "instance_node")
            addInstance(parent, getAttribute(tag, "url"));
        if (name != "node")
            return parent;
        std::string node = std::to_string(++mNbNodes);
        if (!parent.empty())
            mNodes.addLink(parent, node);
        std::set<std::string_view> names;
        for (const std::string_view attribute : {"id", "name", "sid"})
            names.insert(getAttribute(tag, attribute));
        for (const std::string_view known : names)
            mNames.push_back({known, node});
        return node;
    }

    void addInstance(const std::string& parent, std::string_view url) {
        url.remove_prefix(url.starts_with('#') ? 1 : 0);
        mInstanced.insert(url);
        mNodes.addLink(parent, '#' + std::string(url));
    }

    std::string checkNodes() {
        for (const Name& name : mNames) {
            if (!mInstanced.empty() && name.name.find('&') != std::string_view::npos)
                return "a node that may be instanced has its name in character codes";
            if (mInstanced.contains(name.name))
                mNodes.addLink('#' + std::string(name.name), name.node);
        }
        return mNodes.check();
    }

    std::vector<std::string> mWay;
    std::size_t mNbNodes = 0;
    KyModelGraph mNodes;
    std::vector<Name> mNames;
    std::set<std::string_view> mInstanced;
    std::string mError;
};

} // namespace

std::string kyCheckColladaNesting(std::string_view xml) {
    std::string storage;
    return ColladaScan().run(kyDropZeros(xml, storage));
}

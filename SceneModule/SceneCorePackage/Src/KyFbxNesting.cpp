// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyModelGraph_p.h"
#include "KyModelNesting_p.h"
#include "KyNode.h"

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <unordered_set>
#include <utility>
#include <vector>

namespace {

/// Which models of the file stand below which; other objects are never followed.
class FbxModels {
public:
    void addModel(std::uint64_t id) { mIds.insert(id); }
    void addConnection(std::uint64_t child, std::uint64_t parent) { mConnections.emplace_back(child, parent); }

    std::string check() const {
        KyModelGraph graph;
        for (const auto& [child, parent] : mConnections)
            if (mIds.contains(child))
                graph.addLink(std::to_string(parent), std::to_string(child));
        return graph.check();
    }

private:
    std::unordered_set<std::uint64_t> mIds;
    std::vector<std::pair<std::uint64_t, std::uint64_t>> mConnections;
};

/// Takes away what stands between two values, comments too; gives whether a value is left.
bool skipSeparators(std::string_view& text) {
    while (true) {
        text.remove_prefix(std::min(text.find_first_not_of(" \t\r\n,"), text.size()));
        if (!text.starts_with(';'))
            return !text.empty();
        text.remove_prefix(std::min(text.find('\n'), text.size()));
    }
}

bool takeId(std::string_view& text, std::uint64_t& id) {
    if (!skipSeparators(text))
        return false;
    const auto result = std::from_chars(text.data(), text.data() + text.size(), id);
    text.remove_prefix(static_cast<std::size_t>(result.ptr - text.data()));
    return result.ec == std::errc();
}

/// Connections of an object to another, or to a property of it that has no name.
void addTextConnections(std::string_view text, FbxModels& models) {
    constexpr std::size_t cSize = 4;
    for (std::size_t at = text.find("\"O"); at != std::string_view::npos; at = text.find("\"O", at + 1)) {
        const std::string_view kind = text.substr(at, cSize);
        std::string_view rest = text.substr(std::min(at + cSize, text.size()));
        std::uint64_t child = 0, parent = 0;
        if ((kind != "\"OO\"" && kind != "\"OP\"") || !takeId(rest, child) || !takeId(rest, parent))
            continue;
        const bool hasProperty = kind == "\"OP\"" && skipSeparators(rest) && !rest.starts_with("\"\"");
        if (!hasProperty)
            models.addConnection(child, parent);
    }
}

std::string checkTextModels(std::string_view text) {
    constexpr std::string_view cKey = "Model:";
    FbxModels models;
    for (std::size_t at = text.find(cKey); at != std::string_view::npos; at = text.find(cKey, at + 1)) {
        std::string_view rest = text.substr(at + cKey.size());
        std::uint64_t id = 0;
        if (takeId(rest, id))
            models.addModel(id);
    }
    addTextConnections(text, models);
    return models.check();
}

/// The values of a binary record, each after the sign of its kind.
class FbxValues {
public:
    explicit FbxValues(std::string_view bytes)
        : mBytes(bytes) {}

    bool takeId(std::uint64_t& id) { return take('L', 8, id); }
    bool takeText(std::string_view& text) {
        std::uint64_t size = 0;
        if (!take('S', 4, size) || size > mBytes.size())
            return false;
        text = mBytes.substr(0, static_cast<std::size_t>(size));
        mBytes.remove_prefix(text.size());
        return true;
    }

private:
    bool take(char kind, std::size_t size, std::uint64_t& number) {
        if (!mBytes.starts_with(kind) || mBytes.size() < size + 1)
            return false;
        number = 0;
        for (std::size_t i = size; i > 0; --i)
            number = number << 8 | static_cast<unsigned char>(mBytes[i]);
        mBytes.remove_prefix(size + 1);
        return true;
    }

    std::string_view mBytes;
};

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
            if (mEnds.size() > KyNode::cMaxDepth)
                return "it is nested too deeply";
        }
        return mModels.check();
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
        const std::size_t first = static_cast<std::size_t>(begin);
        note(mBytes.substr(first - name, name), FbxValues(mBytes.substr(first, static_cast<std::size_t>(values))));
        mPosition = first + static_cast<std::size_t>(values);
        if (mPosition == end)
            return true;
        if (end - mPosition < getEmptySize())
            return false;
        mEnds.push_back(static_cast<std::size_t>(end) - getEmptySize());
        return true;
    }

    void note(std::string_view name, FbxValues values) {
        std::uint64_t child = 0, parent = 0;
        std::string_view kind, property;
        if (name == "Model" && values.takeId(child))
            mModels.addModel(child);
        else if (name == "C" && values.takeText(kind) && values.takeId(child) && values.takeId(parent) &&
                 (kind == "OO" || (kind == "OP" && (!values.takeText(property) || property.empty()))))
            mModels.addConnection(child, parent);
    }

    std::string_view mBytes;
    FbxModels mModels;
    std::size_t mWord = 4;
    std::size_t mPosition = cHeader;
    std::vector<std::size_t> mEnds;
};

} // namespace

std::string kyCheckFbxNesting(std::string_view bytes) {
    if (bytes.starts_with("Kaydara FBX Binary"))
        return FbxScan(bytes).run();
    std::string error = kyCheckBraceNesting(bytes, ";");
    return error.empty() ? checkTextModels(bytes) : error;
}

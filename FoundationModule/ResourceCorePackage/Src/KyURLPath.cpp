// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyURLPath_p.h"

#include <algorithm>
#include <vector>

namespace {
using Segments = std::vector<std::string_view>;

bool isAbsolute(std::string_view path) {
    return path.starts_with('/');
}

Segments split(std::string_view path) {
    Segments segments;
    for (auto slash = path.find('/'); slash != std::string_view::npos; slash = path.find('/')) {
        segments.push_back(path.substr(0, slash));
        path.remove_prefix(slash + 1);
    }
    segments.push_back(path);
    return segments;
}

void appendSegment(Segments& segments, std::string_view segment, bool absolute) {
    if (segment == ".")
        return;
    if (segment != "..")
        return segments.push_back(segment);
    if (!segments.empty() && segments.back() != "..")
        segments.pop_back();
    else if (!absolute)
        segments.push_back(segment);
}

// Keeps a relative path from being read as something else.
std::string guardRelative(std::string path) {
    const auto first = std::string_view(path).substr(0, path.find('/'));
    const bool unsafe = first.empty() || first.find(':') != std::string_view::npos;
    if (unsafe)
        path.insert(0, "./");
    return path;
}
} // namespace

std::string_view KyURLPath::getDirectory(std::string_view path) {
    const auto slash = path.rfind('/');
    return slash == std::string_view::npos ? std::string_view() : path.substr(0, slash + 1);
}

std::string_view KyURLPath::getFileName(std::string_view path) {
    return path.substr(getDirectory(path).size());
}

std::string KyURLPath::resolveDots(std::string_view path) {
    if (path.empty())
        return {};
    const bool absolute = isAbsolute(path);
    Segments segments;
    const std::string_view last = getFileName(path);
    const bool endsInFile = !last.empty() && last != "." && last != "..";
    Segments given = split(path.substr(absolute ? 1 : 0));
    if (last.empty())
        given.pop_back();
    for (const auto segment : given)
        appendSegment(segments, segment, absolute);

    std::string out = absolute ? "/" : "";
    for (const auto segment : segments)
        out.append(segment) += '/';
    if (endsInFile)
        out.pop_back();
    return absolute || (!out.empty() && out.front() != '/') ? out : "./" + out;
}

std::string KyURLPath::makeAbsolute(std::string_view reference, std::string_view base) {
    if (isAbsolute(reference))
        return resolveDots(reference);
    return resolveDots(std::string(getDirectory(base)).append(reference));
}

std::optional<std::string> KyURLPath::makeRelative(std::string_view target, std::string_view base) {
    if (target.empty() || isAbsolute(target) != isAbsolute(base))
        return std::nullopt;

    const std::string to = resolveDots(target);
    const std::string from = resolveDots(getDirectory(base));
    const Segments toSegments = split(to);
    const Segments fromSegments = split(from);
    // The last segments are the target's file name and what is empty behind the base's last "/".
    const auto toLast = toSegments.end() - 1;
    const auto fromLast = fromSegments.end() - 1;
    const auto [down, up] = std::mismatch(toSegments.begin(), toLast, fromSegments.begin(), fromLast);
    if (std::find(up, fromLast, "..") != fromLast)
        return std::nullopt;

    std::string out;
    std::for_each(up, fromLast, [&out](std::string_view) { out += "../"; });
    std::for_each(down, toSegments.end(), [&out](std::string_view segment) { out.append(segment) += '/'; });
    out.pop_back();
    return guardRelative(std::move(out));
}

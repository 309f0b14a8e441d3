// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyURL.h"

#include "KyURLPath_p.h"
#include "KyURLScheme_p.h"
#include "KyURLText_p.h"

#include <algorithm>
#include <filesystem>
#include <utility>

using KyURLText::Escapes;

namespace {
constexpr std::size_t cMaxTextLength = std::size_t{1} << 20;
constexpr std::string_view cFileScheme = "file";
constexpr bool cBackslashSeparates = std::filesystem::path::preferred_separator == '\\';

// Takes the part from the separator on out of the text and returns it without the separator.
std::string_view cutTail(std::string_view& text, char separator) {
    const auto at = text.find(separator);
    if (at == std::string_view::npos)
        return {};
    const auto tail = text.substr(at + 1);
    text = text.substr(0, at);
    return tail;
}

std::string encodePath(std::string_view path) {
    return KyURLText::encode(path, KyURLText::cPathCharacters, Escapes::eNormalize);
}

std::string encodeQuery(std::string_view query) {
    return KyURLText::encode(query, KyURLText::cQueryCharacters, Escapes::eNormalize);
}

std::string encodePlain(std::string_view text) {
    return KyURLText::encode(text, KyURLText::cPathCharacters, Escapes::eEncode);
}

bool isDriveInPath(std::string_view path) {
    return path.starts_with('/') && KyURLText::isDrivePath(path.substr(1));
}

// "/c:", or empty.
std::string getDrive(std::string_view path) {
    return isDriveInPath(path) ? KyURLText::toLower(path.substr(0, 3)) : std::string();
}

bool isFileName(std::string_view name) {
    return name.find_first_of(std::string_view("/\0", 2)) == std::string_view::npos;
}

// Position of the "." before the extension, or the end.
std::size_t findExtension(std::string_view name) {
    const auto dot = name.rfind('.');
    return dot == std::string_view::npos || dot == 0 ? name.size() : dot;
}
} // namespace

KyURL::KyURL(const std::string& text, int defaultScheme) {
    fromString(text, defaultScheme);
}

bool KyURL::operator==(const KyURL& other) const = default;

bool KyURL::isEmpty() const {
    return *this == KyURL();
}

bool KyURL::isRelative() const {
    if (mScheme.empty())
        return true;
    return mScheme == cFileScheme && mHost.empty() && !mPath.starts_with('/');
}

bool KyURL::checkScheme(int schemeType) const {
    if (schemeType == eURL)
        return !mScheme.empty();
    if (schemeType == eLocalPath)
        return !getLocalPath().empty();
    return !mScheme.empty() && mScheme == KyURLScheme::getText(schemeType);
}

std::string KyURL::toString() const {
    std::string text;
    if (!mScheme.empty())
        text.append(mScheme) += ':';
    // A path that begins with "//" would be read as a host.
    const bool isFile = mScheme == cFileScheme && mPath.starts_with('/');
    if (isFile || hasAuthority() || mPath.starts_with("//"))
        text.append("//").append(getAuthority());
    text += mPath;
    if (!mQuery.empty())
        text.append("?").append(mQuery);
    if (!mFragment.empty())
        text.append("#").append(mFragment);
    return text;
}

bool KyURL::hasAuthority() const {
    return !mHost.empty() || !mUserInformation.empty() || mPort >= 0;
}

bool KyURL::sharesAuthority(const KyURL& other) const {
    return mScheme == other.mScheme && mHost == other.mHost && mPort == other.mPort &&
           mUserInformation == other.mUserInformation;
}

std::string KyURL::getAuthority() const {
    std::string text;
    if (!mUserInformation.empty())
        text.append(mUserInformation) += '@';
    const bool isAddress = mHost.find(':') != std::string::npos;
    text += isAddress ? "[" + mHost + "]" : mHost;
    if (mPort >= 0)
        text.append(":").append(std::to_string(mPort));
    return text;
}

std::string KyURL::getUser() const {
    return KyURLText::decode(mUserInformation);
}

std::string KyURL::getDecodedPath() const {
    return KyURLText::decode(mPath);
}

std::string KyURL::getDirectory() const {
    std::string directory(KyURLPath::getDirectory(mPath));
    return directory.starts_with('/') ? directory : "/" + directory;
}

KyURL KyURL::getDirectoryURL() const {
    KyURL directory(*this);
    directory.mPath = KyURLPath::getDirectory(mPath);
    directory.mQuery.clear();
    directory.mFragment.clear();
    return directory;
}

std::string KyURL::getLocalDirectory() const {
    return std::string(KyURLPath::getDirectory(getLocalPath()));
}

std::string KyURL::getFileName() const {
    return KyURLText::decode(KyURLPath::getFileName(mPath));
}

std::string KyURL::getBasename() const {
    const std::string name = getFileName();
    return name.substr(0, findExtension(name));
}

std::string KyURL::getExtension() const {
    const std::string name = getFileName();
    return name.substr(std::min(findExtension(name) + 1, name.size()));
}

std::string KyURL::getLocalPath() const {
    std::string path;
    getLocalPath(path);
    return path;
}

bool KyURL::getLocalPath(std::string& path) const {
    const bool isLocal = mScheme == cFileScheme || (mScheme.empty() && !hasAuthority());
    if (!isLocal || mPath.empty())
        return false;
    std::string local = KyURLText::decode(isDriveInPath(mPath) ? mPath.substr(1) : mPath);
    if (local.find('\0') != std::string::npos)
        return false;
    const bool isElsewhere = !mHost.empty() && mHost != "localhost";
    path = isElsewhere ? "//" + mHost + local : std::move(local);
    return true;
}

void KyURL::setScheme(const std::string& scheme) {
    if (!scheme.empty() && !KyURLText::isScheme(scheme))
        return;
    mScheme = KyURLText::toLower(scheme);
    normalize();
}

void KyURL::setHost(const std::string& host) {
    KyURL changed(*this);
    changed.mHost = KyURLText::encodeHost(host);
    changed.normalize();
    if (KyURLText::isWellFormed(changed.toString()))
        *this = std::move(changed);
}

void KyURL::setPort(int port) {
    if (port < -1 || port > 65535)
        return;
    mPort = port;
    normalize();
}

void KyURL::setUser(const std::string& user) {
    mUserInformation = KyURLText::encode(user, KyURLText::cUserCharacters, Escapes::eEncode);
    normalize();
}

void KyURL::setPath(const std::string& path) {
    mPath = encodePath(path);
    normalize();
}

void KyURL::setQuery(const std::string& query) {
    mQuery = encodeQuery(query);
}

void KyURL::setFragment(const std::string& fragment) {
    mFragment = encodeQuery(fragment);
}

void KyURL::setLocalPath(const std::string& path) {
    fromLocalPath(path);
}

void KyURL::setFileName(const std::string& name) {
    if (isFileName(name))
        replaceFileName(encodePlain(name));
}

void KyURL::setExtension(const std::string& extension) {
    const std::string base = getBasename();
    if (base.empty() || !isFileName(base + extension))
        return;
    replaceFileName(encodePlain(extension.empty() ? base : base + '.' + extension));
}

void KyURL::replaceFileName(std::string_view encodedName) {
    mPath = std::string(KyURLPath::getDirectory(mPath)).append(encodedName);
    normalize();
}

void KyURL::appendPath(const std::string& path) {
    std::string tail = encodePath(path);
    if (tail.empty())
        return;
    const bool needsSeparator = !mPath.empty() && !mPath.ends_with('/');
    if (!mPath.empty() && tail.front() == '/')
        tail.erase(0, 1);
    mPath.append(needsSeparator ? "/" : "").append(tail);
    normalize();
}

void KyURL::setCanonicalPath() {
    mPath = KyURLPath::resolveDots(mPath);
    normalize();
}

bool KyURL::fromString(const std::string& text, int defaultScheme) {
    clear();
    if (text.size() > cMaxTextLength)
        return false;
    const std::string_view trimmed = KyURLText::trim(text);
    if (KyURLText::isDrivePath(trimmed) || (defaultScheme == eLocalPath && !KyURLScheme::isWholeURL(text)))
        return fromLocalPath(defaultScheme == eLocalPath ? text : std::string(trimmed));

    if (readText(KyURLScheme::addDefault(trimmed, defaultScheme)) && KyURLText::isWellFormed(toString()))
        return true;
    clear();
    return false;
}

bool KyURL::readText(std::string_view text) {
    const auto scheme = KyURLText::findScheme(text);
    mScheme = KyURLText::toLower(scheme);
    if (!scheme.empty())
        text.remove_prefix(scheme.size() + 1);
    mFragment = encodeQuery(cutTail(text, '#'));
    mQuery = encodeQuery(cutTail(text, '?'));

    if (text.starts_with("//")) {
        const auto authority = text.substr(2, text.find('/', 2) - 2);
        // "file://C:/a" is meant as "file:///C:/a".
        const bool isDrive = mScheme == cFileScheme && KyURLText::isDrivePath(authority);
        text.remove_prefix(isDrive ? 2 : authority.size() + 2);
        if (!isDrive && !readAuthority(authority))
            return false;
    }
    mPath = encodePath(text);
    normalize();
    return true;
}

bool KyURL::readAuthority(std::string_view authority) {
    // A password may hold "@"; a host may not.
    const auto at = authority.rfind('@');
    if (at != std::string_view::npos) {
        mUserInformation = KyURLText::encode(authority.substr(0, at), KyURLText::cUserCharacters, Escapes::eKeep);
        authority.remove_prefix(at + 1);
    }

    const auto bracket = authority.starts_with('[') ? authority.find(']') : 0;
    if (bracket == std::string_view::npos)
        return false;
    const auto colon = std::min(authority.find(':', bracket), authority.size());
    mHost = KyURLText::encodeHost(authority.substr(0, colon));
    return KyURLText::readPort(authority.substr(std::min(colon + 1, authority.size())), mPort);
}

bool KyURL::fromLocalPath(const std::string& path) {
    clear();
    if (path.empty() || path.size() > cMaxTextLength || path.find('\0') != std::string::npos)
        return false;

    const bool isDrive = KyURLText::isDrivePath(path);
    std::string local = path;
    if (isDrive || path.starts_with("\\\\") || cBackslashSeparates)
        std::ranges::replace(local, '\\', '/');
    mPath = encodePlain(local);
    if (isDrive)
        mPath.insert(mPath.begin(), '/');
    // What looks like a drive behind a "/" is a name.
    if (!isDrive && isDriveInPath(mPath))
        mPath.replace(2, 1, "%3A");
    if (mPath.starts_with('/'))
        mScheme = cFileScheme;
    normalize();
    return true;
}

void KyURL::clear() {
    *this = KyURL();
}

void KyURL::normalize() {
    if (mScheme == cFileScheme && KyURLText::isDrivePath(mPath))
        mPath.insert(mPath.begin(), '/');
    if (hasAuthority() && !mPath.empty() && mPath.front() != '/')
        mPath.insert(mPath.begin(), '/');
    if (!mScheme.empty() || hasAuthority())
        return;
    // Without a scheme, ":" in the first segment would make one.
    for (auto at = mPath.find_first_of(":/"); at != std::string::npos && mPath[at] == ':';
         at = mPath.find_first_of(":/", at))
        mPath.replace(at, 1, "%3A");
}

KyURL KyURL::getAbsoluteURL(const KyURL& base) const {
    const bool otherScheme = !mScheme.empty() && !base.mScheme.empty() && mScheme != base.mScheme;
    if (!isRelative() || otherScheme)
        return *this;

    KyURL result(*this);
    result.mScheme = base.mScheme.empty() ? mScheme : base.mScheme;
    if (!hasAuthority()) {
        result.mUserInformation = base.mUserInformation;
        result.mHost = base.mHost;
        result.mPort = base.mPort;
        const bool atRoot = base.hasAuthority() && base.mPath.empty();
        result.mPath = mPath.empty() ? base.mPath : KyURLPath::makeAbsolute(mPath, atRoot ? "/" : base.mPath);
        result.mQuery = mPath.empty() && mQuery.empty() ? base.mQuery : mQuery;
    }
    result.normalize();
    return result;
}

void KyURL::setAbsoluteURL(const KyURL& base) {
    *this = getAbsoluteURL(base);
}

KyURL KyURL::getRelativeURL(const KyURL& base) const {
    if (!sharesAuthority(base) || (mScheme == cFileScheme && getDrive(mPath) != getDrive(base.mPath)))
        return *this;

    const bool atRoot = base.hasAuthority() && base.mPath.empty();
    const auto path = KyURLPath::makeRelative(mPath, atRoot ? "/" : base.mPath);
    if (!path)
        return *this;
    KyURL result;
    result.mPath = *path;
    result.mQuery = mQuery;
    result.mFragment = mFragment;
    result.normalize();
    return result;
}

void KyURL::setRelativeURL(const KyURL& base) {
    *this = getRelativeURL(base);
}

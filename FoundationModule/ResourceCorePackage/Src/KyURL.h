// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyFoundationExport.h"

#include <string>
#include <string_view>

/// A URL, or a relative reference, in its parts. A value type: copy it freely.
///
/// The parts are kept percent-encoded (pure ASCII); the text before encoding is UTF-8. Local paths
/// and file names, extensions and the user are given and taken decoded. Reading is tolerant:
/// blanks, non-ASCII bytes and stray "%" are encoded. Nothing throws; text that is no URL even so
/// (a port of 70000, a broken IPv6 address, more than a megabyte) leaves the URL empty.
///
/// A path with a drive letter ("C:\dir\a.png", "C:/dir/a.png") is a local path wherever a URL is
/// expected; it becomes "file:///C:/dir/a.png".
///
///     KyURL url("textures/wood floor.png", KyURL::eLocalPath);
///     url.setAbsoluteURL(KyURL("file:///data/"));
///     url.toString();      // "file:///data/textures/wood%20floor.png"
///     url.getLocalPath();  // "/data/textures/wood floor.png"
class KYFOUNDATION_EXPORT KyURL {
public:
    /// The numbers are seen by scripts. As default scheme: what a text without a scheme means.
    enum SchemeType : int {
        eFile = 0,      ///< "file", the text is its path
        eHttp = 1,      ///< "http", the text begins with the host
        eFtp = 2,       ///< "ftp", the text begins with the host
        eResource = 3,  ///< "resource", the text is its path
        eURL = 4,       ///< the text is a whole URL; without a scheme it is a relative reference
        eHttps = 5,     ///< "https", the text begins with the host
        eLocalPath = 6, ///< the text is a path on this machine, not percent-encoded
        eNbSchemeTypes
    };

    KyURL() = default;

    /// Reads the text as `fromString` does; empty when it cannot be read.
    explicit KyURL(const std::string& text, int defaultScheme = eURL);

    /// The same parts.
    bool operator==(const KyURL& other) const;

    /// Whether nothing is set.
    [[nodiscard]] bool isEmpty() const;
    /// Whether it needs a base: no scheme, or "file" with a path that does not begin with "/".
    [[nodiscard]] bool isRelative() const;
    /// Whether the scheme is the given `SchemeType`; `eURL`: any scheme at all; `eLocalPath`: there is
    /// a local path. False for other numbers.
    [[nodiscard]] bool checkScheme(int schemeType) const;

    /// Percent-encoded, pure ASCII; reading it again gives the same URL, up to the limit of a megabyte.
    [[nodiscard]] std::string toString() const;

    /// Lower case, without ":"; empty for a relative reference.
    [[nodiscard]] const std::string& getScheme() const { return mScheme; }
    /// Lower case; an IPv6 address without its brackets.
    [[nodiscard]] const std::string& getHost() const { return mHost; }
    /// 0 to 65535, -1 when there is none.
    [[nodiscard]] int getPort() const { return mPort; }
    /// The user information decoded: user name, then ":" and password when there is one.
    [[nodiscard]] std::string getUser() const;
    /// The user information as it stands in the URL, not decoded; empty when absent.
    [[nodiscard]] const std::string& getUserInformation() const { return mUserInformation; }
    /// Percent-encoded.
    [[nodiscard]] const std::string& getPath() const { return mPath; }
    /// The path decoded, for schemes whose names are no local paths.
    [[nodiscard]] std::string getDecodedPath() const;
    /// Percent-encoded, without "?".
    [[nodiscard]] const std::string& getQuery() const { return mQuery; }
    /// Percent-encoded, without "#".
    [[nodiscard]] const std::string& getFragment() const { return mFragment; }

    /// The path up to its last "/", percent-encoded; it always begins and ends with "/".
    [[nodiscard]] std::string getDirectory() const;
    /// This URL without file name, query and fragment.
    [[nodiscard]] KyURL getDirectoryURL() const;
    /// The local path up to its last "/", which is kept; empty when there is none.
    [[nodiscard]] std::string getLocalDirectory() const;
    /// What follows the last "/" of the path, decoded.
    [[nodiscard]] std::string getFileName() const;
    /// The file name without its extension.
    [[nodiscard]] std::string getBasename() const;
    /// What follows the last "." of the file name; empty when that "." is its first character.
    [[nodiscard]] std::string getExtension() const;

    /// UTF-8 path for the file system; empty when the URL is not local.
    [[nodiscard]] std::string getLocalPath() const;
    /// As above; false, and `path` unchanged, when the URL is not local: another scheme than "file",
    /// a host without a scheme, no path, or a zero byte in it.
    bool getLocalPath(std::string& path) const;

    /// Bad schemes are ignored; empty removes.
    void setScheme(const std::string& scheme);
    /// Brackets of an IPv6 address may be given or not; a bad address is ignored.
    void setHost(const std::string& host);
    /// 0 to 65535, -1 removes, others are ignored.
    void setPort(int port);
    /// Decoded user information; whatever follows the first ":" is the password. Empty removes.
    void setUser(const std::string& user);
    /// Encoded or plain; a "%" that begins no escape stands for itself. The same for the next two.
    void setPath(const std::string& path);
    void setQuery(const std::string& query);
    void setFragment(const std::string& fragment);
    /// Replaces everything, as `fromLocalPath` does.
    void setLocalPath(const std::string& path);
    /// Plain text; empty leaves the directory. A name with "/" or a zero byte is ignored.
    void setFileName(const std::string& name);
    /// Without "."; replaces, adds or, when empty, removes. Ignored without a file name.
    void setExtension(const std::string& extension);

    /// Appends with exactly one "/" between; encoded or plain.
    void appendPath(const std::string& path);
    /// Resolves "." and ".." in the path; leading ".." of a relative path stay.
    void setCanonicalPath();

    /// Replaces everything by the text; false, and empty, when it cannot be read.
    bool fromString(const std::string& text, int defaultScheme = eURL);
    /// Replaces everything by a path in UTF-8; an absolute one gets the scheme "file", a relative one
    /// none. False, and empty, for an empty path and one with a zero byte.
    bool fromLocalPath(const std::string& path);
    /// Makes the URL empty.
    void clear();

    /// This URL seen from the base (a directory ends with "/"); unchanged when it is not relative.
    [[nodiscard]] KyURL getAbsoluteURL(const KyURL& base) const;
    void setAbsoluteURL(const KyURL& base);
    /// The reference that gives this URL when it is resolved against the base; unchanged when there
    /// is none, as with another scheme, host or drive.
    [[nodiscard]] KyURL getRelativeURL(const KyURL& base) const;
    void setRelativeURL(const KyURL& base);

private:
    bool readText(std::string_view text);
    bool readAuthority(std::string_view authority);
    [[nodiscard]] bool hasAuthority() const;
    [[nodiscard]] bool sharesAuthority(const KyURL& other) const;
    [[nodiscard]] std::string getAuthority() const;
    void replaceFileName(std::string_view encodedName);
    void normalize();

    std::string mScheme;
    std::string mUserInformation;
    std::string mHost;
    std::string mPath;
    std::string mQuery;
    std::string mFragment;
    int mPort = -1;
};

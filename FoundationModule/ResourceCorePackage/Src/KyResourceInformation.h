// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyURL.h"

#include "KyFoundationExport.h"

#include <string>

/// What the file system says of a local URL. A relative URL is resolved as `KyResource::resolve`
/// does. Each question asks the disk anew; all answers are false or 0 when the URL is not local or
/// nothing is there.
///
///     const KyResourceInformation script(KyURL("tools/start.lua", KyURL::eLocalPath));
///     std::string directory;
///     if (script.getLocalDirectory(directory))
///       KyResource::pushCurrentDirectory(directory);
class KYFOUNDATION_EXPORT KyResourceInformation {
public:
    KyResourceInformation() = default;
    /// Asks the file system at once.
    explicit KyResourceInformation(const KyURL& url);

    /// @{
    /// Setting it asks the file system again.
    [[nodiscard]] const KyURL& getURL() const { return mURL; }
    void setURL(const KyURL& url);
    /// @}
    /// The same URL.
    bool operator==(const KyResourceInformation&) const = default;

    /// Directory of the URL as an absolute path ending in "/"; what is on the disk does not matter.
    /// False, and `directory` unchanged, when the URL is not local.
    bool getLocalDirectory(std::string& directory) const;
    /// File name, decoded; what is on the disk does not matter. False, and `name` unchanged, when the
    /// URL is not local or names a directory by its last "/".
    bool getFileName(std::string& name) const;

    /// Whether something is there.
    [[nodiscard]] bool isValid() const;
    /// What the URL names, through links.
    [[nodiscard]] bool isDirectory() const;
    /// The URL itself is a link.
    [[nodiscard]] bool isSymbolicLink() const;
    /// Hidden by its name on Linux (it begins with "."), by its attribute on Windows.
    [[nodiscard]] bool isHidden() const;
    /// @{
    /// For this process.
    [[nodiscard]] bool isReadable() const;
    [[nodiscard]] bool isWritable() const;
    [[nodiscard]] bool isExecutable() const;
    /// @}
    /// Bytes of a file; 4294967295 for any larger one.
    [[nodiscard]] unsigned getSize32() const;

private:
    KyURL mURL;
};

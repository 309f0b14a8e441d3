// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyResourceInformation.h"

#include "KyFileAccess_p.h"
#include "KyLocalPath_p.h"
#include "KyResource.h"

#include <algorithm>
#include <limits>

namespace fs = std::filesystem;

KyResourceInformation::KyResourceInformation(const KyURL& url)
    : mURL(url) {}

void KyResourceInformation::setURL(const KyURL& url) {
    mURL = url;
}

bool KyResourceInformation::getLocalDirectory(std::string& directory) const {
    if (mURL.isEmpty())
        return false;
    std::string found = KyResource::resolve(mURL).getLocalDirectory();
    if (found.empty())
        return false;
    directory = std::move(found);
    return true;
}

bool KyResourceInformation::getFileName(std::string& name) const {
    std::string found = KyResource::resolve(mURL).getLocalPath();
    found.erase(0, found.rfind('/') + 1);
    if (mURL.isEmpty() || found.empty())
        return false;
    name = std::move(found);
    return true;
}

bool KyResourceInformation::isValid() const {
    return KyLocalPath::exists(KyLocalPath::fromURL(mURL));
}

bool KyResourceInformation::isDirectory() const {
    return KyResource::existDirectory(mURL);
}

bool KyResourceInformation::isSymbolicLink() const {
    std::error_code error;
    return fs::is_symlink(fs::symlink_status(KyLocalPath::fromURL(mURL), error));
}

bool KyResourceInformation::isHidden() const {
    return KyFileAccess::isHidden(KyLocalPath::fromURL(mURL));
}

bool KyResourceInformation::isReadable() const {
    return KyFileAccess::isReadable(KyLocalPath::fromURL(mURL));
}

bool KyResourceInformation::isWritable() const {
    return KyFileAccess::isWritable(KyLocalPath::fromURL(mURL));
}

bool KyResourceInformation::isExecutable() const {
    return KyFileAccess::isExecutable(KyLocalPath::fromURL(mURL));
}

unsigned KyResourceInformation::getSize32() const {
    std::error_code error;
    const auto size = fs::file_size(KyLocalPath::fromURL(mURL), error);
    if (error)
        return 0;
    return static_cast<unsigned>(std::min<std::uintmax_t>(size, std::numeric_limits<unsigned>::max()));
}

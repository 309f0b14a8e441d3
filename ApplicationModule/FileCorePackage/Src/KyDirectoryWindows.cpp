// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyDirectory_p.h"

#include <windows.h>

#include <memory>
#include <string_view>

namespace {

using Kind = KyDirectory::Kind;

struct SearchCloser {
    using pointer = HANDLE;
    void operator()(HANDLE search) const { ::FindClose(search); }
};
using Search = std::unique_ptr<HANDLE, SearchCloser>;

// Nobody can rename or remove a directory, or put a link in its place, while it is open without FILE_SHARE_DELETE.
KyFileHandle openDirectory(const std::filesystem::path& path, DWORD flags) {
    const HANDLE handle = ::CreateFileW(path.c_str(), FILE_LIST_DIRECTORY, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                                        OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS | flags, nullptr);
    return KyFileHandle(reinterpret_cast<std::intptr_t>(handle));
}

bool isPlainDirectory(const KyFileHandle& directory) {
    BY_HANDLE_FILE_INFORMATION information = {};
    if (!::GetFileInformationByHandle(reinterpret_cast<HANDLE>(directory.get()), &information))
        return false;
    constexpr DWORD cMask = FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_REPARSE_POINT;
    return (information.dwFileAttributes & cMask) == FILE_ATTRIBUTE_DIRECTORY;
}

// Other reparse points, of backup and cloud programs, are files and directories like any.
bool isLink(const WIN32_FIND_DATAW& data) {
    return (data.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0 &&
           (data.dwReserved0 == IO_REPARSE_TAG_SYMLINK || data.dwReserved0 == IO_REPARSE_TAG_MOUNT_POINT);
}

Kind getEntryKind(const std::filesystem::path& path, const WIN32_FIND_DATAW& data) {
    const bool isDirectory = (data.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
    if (!isLink(data))
        return isDirectory ? Kind::eDirectory : Kind::eFile;
    if (isDirectory)
        return Kind::eDirectoryLink;
    std::error_code error;
    return std::filesystem::is_regular_file(path, error) ? Kind::eFileLink : Kind::eOtherLink;
}

bool isMissing(DWORD error) {
    return error == ERROR_FILE_NOT_FOUND || error == ERROR_PATH_NOT_FOUND;
}

} // namespace

bool KyFileHandle::close() {
    return isOpened() && ::CloseHandle(reinterpret_cast<HANDLE>(std::exchange(mValue, cNone)));
}

KyDirectory::KyDirectory(const std::filesystem::path& path)
    : mHandle(openDirectory(path, 0))
    , mPath(path) {}

KyDirectory KyDirectory::openBelow(const Name& name) const {
    KyDirectory below;
    if (!isOpened() || mDepth >= cMaxDepth)
        return below;
    below.mPath = mPath / name;
    below.mDepth = mDepth + 1;
    below.mHandle = openDirectory(below.mPath, FILE_FLAG_OPEN_REPARSE_POINT);
    if (!isPlainDirectory(below.mHandle))
        below.mHandle.close();
    return below;
}

KyDirectory::Kind KyDirectory::getKind(const Name& name) const {
    // A search would take these for wildcards; no file has them in its name.
    if (name.find_first_of(L"*?") != Name::npos)
        return Kind::eOther;
    const std::filesystem::path path = mPath / name;
    WIN32_FIND_DATAW data = {};
    const HANDLE search = ::FindFirstFileW(path.c_str(), &data);
    if (search == INVALID_HANDLE_VALUE)
        return isMissing(::GetLastError()) ? Kind::eMissing : Kind::eOther;
    ::FindClose(search);
    return getEntryKind(path, data);
}

bool KyDirectory::list(std::vector<Entry>& entries) const {
    WIN32_FIND_DATAW data = {};
    const HANDLE first = isOpened() ? ::FindFirstFileW((mPath / L"*").c_str(), &data) : INVALID_HANDLE_VALUE;
    if (first == INVALID_HANDLE_VALUE)
        return false;
    const Search search(first);
    do {
        const std::wstring_view name = data.cFileName;
        if (name == L"." || name == L"..")
            continue;
        const bool isHidden = (data.dwFileAttributes & FILE_ATTRIBUTE_HIDDEN) != 0;
        entries.push_back({Name(name), getEntryKind(mPath / name, data), isHidden});
    } while (::FindNextFileW(search.get(), &data));
    return ::GetLastError() == ERROR_NO_MORE_FILES;
}

bool KyDirectory::createDirectory(const Name& name) {
    return ::CreateDirectoryW((mPath / name).c_str(), nullptr) != 0;
}

bool KyDirectory::removeFile(const Name& name) {
    const std::filesystem::path path = mPath / name;
    return getKind(name) == Kind::eDirectoryLink ? ::RemoveDirectoryW(path.c_str()) != 0
                                                 : ::DeleteFileW(path.c_str()) != 0;
}

bool KyDirectory::removeDirectory(const Name& name) {
    return ::RemoveDirectoryW((mPath / name).c_str()) != 0;
}

// Handles are plenty, and keep the directories in their places.

void KyDirectory::suspend() {}

bool KyDirectory::resume(const KyDirectory&) {
    return true;
}

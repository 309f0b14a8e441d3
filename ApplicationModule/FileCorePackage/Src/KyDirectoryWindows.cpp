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

// Other reparse points, of backup and cloud programs, are files and directories like any.
bool isLink(DWORD attributes, DWORD tag) {
    return (attributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0 &&
           (tag == IO_REPARSE_TAG_SYMLINK || tag == IO_REPARSE_TAG_MOUNT_POINT);
}

bool isPlainDirectory(const KyFileHandle& directory) {
    FILE_ATTRIBUTE_TAG_INFO information = {};
    if (!::GetFileInformationByHandleEx(reinterpret_cast<HANDLE>(directory.get()), FileAttributeTagInfo, &information,
                                        sizeof information))
        return false;
    return (information.FileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0 &&
           !isLink(information.FileAttributes, information.ReparseTag);
}

Kind getEntryKind(const std::filesystem::path& path, const WIN32_FIND_DATAW& data) {
    const bool isDirectory = (data.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
    if (!isLink(data.dwFileAttributes, data.dwReserved0))
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

bool KyDirectory::isSameFile(const KyDirectory& a, const Name& nameA, const KyDirectory& b, const Name& nameB) {
    const std::filesystem::path first = a.mPath / nameA;
    const std::filesystem::path second = b.mPath / nameB;
    std::error_code error;
    if (!std::filesystem::equivalent(first, second, error))
        return static_cast<bool>(error) && std::filesystem::exists(second, error);
    if (std::filesystem::hard_link_count(first, error) == 1)
        return true;
    return std::filesystem::canonical(first, error) == std::filesystem::canonical(second, error);
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

// New directories inherit theirs from the directory they are in.
void KyDirectory::takePermissions(const KyDirectory&, Stage) {}

// Handles are plenty, and keep the directories in their places.

void KyDirectory::suspend() {}

bool KyDirectory::resume(const KyDirectory&) {
    return true;
}

// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyNewFile_p.h"

#include <windows.h>

#include <algorithm>
#include <vector>

namespace {

constexpr std::size_t cChunk = 1024 * 1024;

HANDLE toHandle(std::intptr_t handle) {
    return reinterpret_cast<HANDLE>(handle);
}

KyFileHandle open(const std::filesystem::path& path, DWORD access, DWORD sharing, DWORD disposition) {
    const HANDLE handle =
        ::CreateFileW(path.c_str(), access, sharing, nullptr, disposition, FILE_ATTRIBUTE_NORMAL, nullptr);
    return KyFileHandle(reinterpret_cast<std::intptr_t>(handle));
}

// Such a file would not be replaced.
void clearReadOnly(const std::filesystem::path& path) {
    const DWORD attributes = ::GetFileAttributesW(path.c_str());
    if (attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_READONLY) != 0)
        ::SetFileAttributesW(path.c_str(), attributes & ~static_cast<DWORD>(FILE_ATTRIBUTE_READONLY));
}

} // namespace

KySourceFile::KySourceFile(const KyDirectory& directory, const KyDirectory::Name& name) {
    const KyDirectory::Kind kind = directory.getKind(name);
    if (kind != KyDirectory::Kind::eFile && kind != KyDirectory::Kind::eFileLink)
        return;
    const std::filesystem::path path = directory.getPath() / name;
    mHandle = open(path, GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, OPEN_EXISTING);
    LARGE_INTEGER size = {};
    if (isOpened() && ::GetFileSizeEx(toHandle(mHandle.get()), &size))
        mSize = static_cast<std::uint64_t>(size.QuadPart);
    mPermissions = ::GetFileAttributesW(path.c_str()) & FILE_ATTRIBUTE_READONLY;
}

KyNewFile::~KyNewFile() {
    mHandle.close();
    if (mIsPending)
        ::DeleteFileW((mDirectory.getPath() / mFirstName).c_str());
    else if (mIsReadOnly)
        ::SetFileAttributesW((mDirectory.getPath() / mName).c_str(), FILE_ATTRIBUTE_READONLY);
}

bool KyNewFile::create(const KySourceFile* model) {
    if (mDirectory.isOpened())
        mHandle = open(mDirectory.getPath() / mFirstName, GENERIC_WRITE, 0, CREATE_NEW);
    mIsReadOnly = isOpened() && model && model->getPermissions() != 0;
    return isOpened();
}

bool KyNewFile::write(std::string_view bytes) {
    while (!bytes.empty()) {
        DWORD count = 0;
        const auto size = static_cast<DWORD>((std::min)(bytes.size(), cChunk));
        if (!::WriteFile(toHandle(mHandle.get()), bytes.data(), size, &count, nullptr) || count == 0)
            return false;
        bytes.remove_prefix(count);
    }
    return true;
}

bool KyNewFile::write(const KySourceFile& source, const Progress& progress) {
    std::vector<char> chunk(cChunk);
    for (std::uint64_t nbDone = 0;;) {
        DWORD count = 0;
        if (!progress(nbDone) || !::ReadFile(toHandle(source.getHandle()), chunk.data(), cChunk, &count, nullptr))
            return false;
        if (count == 0)
            return true;
        if (!write(std::string_view(chunk.data(), count)))
            return false;
        nbDone += count;
    }
}

bool KyNewFile::rename() {
    const std::filesystem::path last = mDirectory.getPath() / mName;
    const bool isReplacing = mMode == Mode::eReplace;
    if (isReplacing)
        clearReadOnly(last);
    mIsPending = !::MoveFileExW((mDirectory.getPath() / mFirstName).c_str(), last.c_str(),
                                isReplacing ? MOVEFILE_REPLACE_EXISTING : 0);
    return !mIsPending;
}

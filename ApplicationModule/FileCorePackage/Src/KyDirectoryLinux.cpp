// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyDirectory_p.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <memory>
#include <string_view>
#include <tuple>

namespace {

using Kind = KyDirectory::Kind;

// Enough to address entries, also where only searching is allowed.
constexpr int cDirectoryFlags = O_PATH | O_DIRECTORY | O_CLOEXEC;

struct DirectoryCloser {
    void operator()(DIR* stream) const { ::closedir(stream); }
};
using Stream = std::unique_ptr<DIR, DirectoryCloser>;

int toDescriptor(std::intptr_t handle) {
    return static_cast<int>(handle);
}

Kind getLinkKind(int directory, const char* name) {
    struct stat target = {};
    if (::fstatat(directory, name, &target, 0) != 0)
        return Kind::eOtherLink;
    if (S_ISREG(target.st_mode))
        return Kind::eFileLink;
    return S_ISDIR(target.st_mode) ? Kind::eDirectoryLink : Kind::eOtherLink;
}

Kind findKind(int directory, const char* name) {
    struct stat entry = {};
    if (::fstatat(directory, name, &entry, AT_SYMLINK_NOFOLLOW) != 0)
        return errno == ENOENT ? Kind::eMissing : Kind::eOther;
    if (S_ISREG(entry.st_mode))
        return Kind::eFile;
    if (S_ISDIR(entry.st_mode))
        return Kind::eDirectory;
    return S_ISLNK(entry.st_mode) ? getLinkKind(directory, name) : Kind::eOther;
}

// Most file systems tell the kind with the name, which spares a call per entry.
Kind getEntryKind(int directory, const dirent& entry) {
    if (entry.d_type == DT_REG)
        return Kind::eFile;
    if (entry.d_type == DT_DIR)
        return Kind::eDirectory;
    return findKind(directory, entry.d_name);
}

Stream openStream(int directory) {
    const int descriptor = ::openat(directory, ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (descriptor < 0)
        return nullptr;
    Stream stream(::fdopendir(descriptor));
    if (!stream)
        ::close(descriptor);
    return stream;
}

bool isSame(const struct stat& a, const struct stat& b) {
    return a.st_dev == b.st_dev && a.st_ino == b.st_ino;
}

bool isLink(int directory, const char* name) {
    struct stat entry = {};
    return ::fstatat(directory, name, &entry, AT_SYMLINK_NOFOLLOW) == 0 && S_ISLNK(entry.st_mode);
}

} // namespace

bool KyFileHandle::close() {
    return isOpened() && ::close(toDescriptor(std::exchange(mValue, cNone))) == 0;
}

KyDirectory::KyDirectory(const std::filesystem::path& path)
    : mHandle(::open(path.c_str(), cDirectoryFlags))
    , mPath(path) {}

KyDirectory KyDirectory::openBelow(const Name& name) const {
    KyDirectory below;
    if (mDepth >= cMaxDepth)
        return below;
    below.mHandle = KyFileHandle(::openat(toDescriptor(mHandle.get()), name.c_str(), cDirectoryFlags | O_NOFOLLOW));
    below.mDepth = mDepth + 1;
    return below;
}

KyDirectory::Kind KyDirectory::getKind(const Name& name) const {
    return findKind(toDescriptor(mHandle.get()), name.c_str());
}

bool KyDirectory::list(std::vector<Entry>& entries) const {
    const Stream stream = openStream(toDescriptor(mHandle.get()));
    if (!stream)
        return false;
    errno = 0;
    while (const dirent* entry = ::readdir(stream.get())) {
        const std::string_view name = entry->d_name;
        if (name != "." && name != "..")
            entries.push_back({Name(name), getEntryKind(::dirfd(stream.get()), *entry), name.starts_with('.')});
        errno = 0;
    }
    return errno == 0;
}

bool KyDirectory::isSameFile(const KyDirectory& a, const Name& nameA, const KyDirectory& b, const Name& nameB) {
    const int directoryA = toDescriptor(a.mHandle.get());
    const int directoryB = toDescriptor(b.mHandle.get());
    struct stat first = {};
    struct stat second = {};
    if (::fstatat(directoryA, nameA.c_str(), &first, 0) != 0)
        return true;
    if (::fstatat(directoryB, nameB.c_str(), &second, 0) != 0 || !isSame(first, second))
        return false;
    // Which of the names a link leads to would be hard to tell.
    if (first.st_nlink == 1 || isLink(directoryA, nameA.c_str()) || isLink(directoryB, nameB.c_str()))
        return true;
    return nameA == nameB && ::fstat(directoryA, &first) == 0 && ::fstat(directoryB, &second) == 0 &&
           isSame(first, second);
}

bool KyDirectory::createDirectory(const Name& name) {
    return ::mkdirat(toDescriptor(mHandle.get()), name.c_str(), 0777) == 0;
}

bool KyDirectory::removeFile(const Name& name) {
    return ::unlinkat(toDescriptor(mHandle.get()), name.c_str(), 0) == 0;
}

bool KyDirectory::removeDirectory(const Name& name) {
    return ::unlinkat(toDescriptor(mHandle.get()), name.c_str(), AT_REMOVEDIR) == 0;
}

void KyDirectory::takePermissions(const KyDirectory& model, Stage stage) {
    struct stat directory = {};
    if (::fstat(toDescriptor(model.mHandle.get()), &directory) != 0)
        return;
    const mode_t permissions = (directory.st_mode & 0777) | (stage == Stage::eFilling ? S_IRWXU : 0);
    // File systems without permissions refuse.
    std::ignore = ::fchmodat(toDescriptor(mHandle.get()), ".", permissions, 0);
}

void KyDirectory::suspend() {
    struct stat self = {};
    if (mDepth < cMaxNbOpened || ::fstat(toDescriptor(mHandle.get()), &self) != 0)
        return;
    mIdentity = {self.st_dev, self.st_ino};
    mHandle.close();
}

bool KyDirectory::resume(const KyDirectory& below) {
    if (isOpened())
        return true;
    KyFileHandle handle(::openat(toDescriptor(below.mHandle.get()), "..", cDirectoryFlags));
    struct stat self = {};
    if (!handle.isOpened() || ::fstat(toDescriptor(handle.get()), &self) != 0)
        return false;
    if (mIdentity != Identity{self.st_dev, self.st_ino})
        return false;
    mHandle = std::move(handle);
    return true;
}

// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyNewFile_p.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdio>
#include <tuple>

namespace {

// Below, a read and a write are cheaper than asking the file system to share or splice.
constexpr std::uint64_t cMinSizeInKernel = std::uint64_t{256} << 10;
constexpr std::size_t cChunkInKernel = std::size_t{16} << 20;
constexpr std::size_t cChunk = std::size_t{64} << 10;
constexpr mode_t cPermissions = 0777;

int toDescriptor(std::intptr_t handle) {
    return static_cast<int>(handle);
}

// As far as the kernel takes it: not at all between some file systems, and files that it makes up end at once. False
// when it was not to go on.
bool copyInKernel(int from, int to, std::uint64_t& nbDone, const KyNewFile::Progress& progress) {
    for (;;) {
        if (!progress(nbDone))
            return false;
        const ssize_t count = ::copy_file_range(from, nullptr, to, nullptr, cChunkInKernel, 0);
        if (count <= 0)
            return true;
        nbDone += static_cast<std::uint64_t>(count);
    }
}

ssize_t readSome(int descriptor, char* bytes, std::size_t size) {
    ssize_t count = 0;
    do {
        count = ::read(descriptor, bytes, size);
    } while (count < 0 && errno == EINTR);
    return count;
}

// Of a file closed already nobody can tell.
bool isNameOf(int file, int directory, const KyDirectory::Name& name) {
    struct stat opened = {};
    struct stat named = {};
    if (::fstat(file, &opened) != 0)
        return true;
    return ::fstatat(directory, name.c_str(), &named, AT_SYMLINK_NOFOLLOW) == 0 && opened.st_dev == named.st_dev &&
           opened.st_ino == named.st_ino;
}

} // namespace

KySourceFile::KySourceFile(const KyDirectory& directory, const KyDirectory::Name& name)
    : mHandle(
          ::openat(toDescriptor(directory.getHandle()), name.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY)) {
    struct stat file = {};
    if (!isOpened() || ::fstat(toDescriptor(mHandle.get()), &file) != 0 || !S_ISREG(file.st_mode)) {
        mHandle.close();
        return;
    }
    mSize = static_cast<std::uint64_t>(file.st_size);
    mPermissions = file.st_mode & cPermissions;
}

KyNewFile::~KyNewFile() {
    const int directory = toDescriptor(mDirectory.getHandle());
    if (mIsPending && isNameOf(toDescriptor(mHandle.get()), directory, mFirstName))
        ::unlinkat(directory, mFirstName.c_str(), 0);
}

bool KyNewFile::create(const KySourceFile* model) {
    const mode_t permissions = model ? model->getPermissions() : mMode == Mode::ePrivate ? 0600 : 0666;
    mHandle = KyFileHandle(::openat(toDescriptor(mDirectory.getHandle()), mFirstName.c_str(),
                                    O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, permissions));
    // What the process's mask took away comes back; file systems without permissions refuse.
    if (isOpened() && model)
        std::ignore = ::fchmod(toDescriptor(mHandle.get()), permissions);
    return isOpened();
}

bool KyNewFile::write(std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t count = ::write(toDescriptor(mHandle.get()), bytes.data(), bytes.size());
        if (count > 0)
            bytes.remove_prefix(static_cast<std::size_t>(count));
        else if (count == 0 || errno != EINTR)
            return false;
    }
    return true;
}

bool KyNewFile::write(const KySourceFile& source, const Progress& progress) {
    const int from = toDescriptor(source.getHandle());
    std::uint64_t nbDone = 0;
    if (source.getSize() >= cMinSizeInKernel && !copyInKernel(from, toDescriptor(mHandle.get()), nbDone, progress))
        return false;
    // What is left: all of a small file, and of any other what the kernel did not take.
    std::array<char, cChunk> chunk;
    ssize_t count = 0;
    while ((count = readSome(from, chunk.data(), chunk.size())) > 0) {
        const auto size = static_cast<std::size_t>(count);
        if (!progress(nbDone) || !write(std::string_view(chunk.data(), size)))
            return false;
        nbDone += size;
    }
    return count == 0;
}

bool KyNewFile::rename() {
    const int directory = toDescriptor(mDirectory.getHandle());
    const unsigned flags = mMode == Mode::eReplace ? 0 : RENAME_NOREPLACE;
    mIsPending = ::renameat2(directory, mFirstName.c_str(), directory, mName.c_str(), flags) != 0;
    if (!mIsPending)
        return true;
    // Some file systems do not know the flag. The destructor takes the first name away.
    return (errno == EINVAL || errno == ENOSYS) && mMode != Mode::eReplace &&
           ::linkat(directory, mFirstName.c_str(), directory, mName.c_str(), 0) == 0;
}

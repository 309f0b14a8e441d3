// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyFileHandle_p.h"

#include <cstdint>
#include <filesystem>
#include <utility>
#include <vector>

/// An open directory. Its entries are addressed by name within it, whatever becomes of the path that led here.
///
/// ```
/// KyDirectory directory("data");
/// directory.visit("textures", [](KyDirectory& textures) { return textures.removeFile("old.png"); });
/// ```
class KyDirectory {
public:
    using Name = std::filesystem::path::string_type;

    enum class Kind {
        eMissing,
        eFile,
        eDirectory,
        eFileLink,
        eDirectoryLink,
        eOtherLink, ///< to nothing, to itself, or to what is neither file nor directory
        eOther,     ///< pipes, sockets, devices, and what can not be looked at
        eNbKinds
    };

    struct Entry {
        Name name;
        Kind kind;
        bool isHidden;
    };

    KyDirectory() = default;
    /// Follows links.
    explicit KyDirectory(const std::filesystem::path& path);

    bool isOpened() const { return mHandle.isOpened(); }
    /// Where it was when it was opened. Not known below the first directory on Linux, where nothing needs it.
    const std::filesystem::path& getPath() const { return mPath; }
    std::intptr_t getHandle() const { return mHandle.get(); }

    Kind getKind(const Name& name) const;
    /// Without "." and "..". False when it could not be read to its end.
    bool list(std::vector<Entry>& entries) const;

    /// Whether two names lead to the same file, so that replacing one would be replacing a file by itself. Two hard
    /// links are two files: taking one name away leaves the content.
    static bool isSameFile(const KyDirectory& a, const Name& nameA, const KyDirectory& b, const Name& nameB);

    bool createDirectory(const Name& name);
    /// Files and links; of links the link itself.
    bool removeFile(const Name& name);
    bool removeDirectory(const Name& name);
    enum class Stage { eFilling, eFilled };
    /// Makes this directory accessible to those who can access the model; while it is filled to its owner anyhow.
    void takePermissions(const KyDirectory& model, Stage stage);

    /// Calls the function with the directory of that name, and returns its result. False when it is a link or can not
    /// be opened, and when this directory is no longer above it afterwards.
    template <class Function>
    bool visit(const Name& name, const Function& function) {
        KyDirectory below = openBelow(name);
        if (!below.isOpened())
            return false;
        suspend();
        const bool result = function(below);
        return resume(below) && result;
    }

private:
    struct Identity {
        std::uint64_t device = 0;
        std::uint64_t file = 0;
        bool operator==(const Identity&) const = default;
    };

    // A deep tree must not use up the handles of the process, nor the stack.
    static constexpr int cMaxNbOpened = 64;
    static constexpr int cMaxDepth = 2000;

    KyDirectory openBelow(const Name& name) const;
    /// Closes directories deep in a tree; resume() finds them again, from the one below.
    void suspend();
    bool resume(const KyDirectory& below);

    KyFileHandle mHandle;
    std::filesystem::path mPath;
    Identity mIdentity;
    int mDepth = 0;
};

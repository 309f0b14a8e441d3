// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyURL.h"

#include "KyFoundationExport.h"
#include "KyThread.h"

#include <streambuf>
#include <string>

/// A resource named by a URL, read or written through a stream buffer. Which buffer is decided by
/// the URL's scheme: creators are registered per scheme; "file" and relative URLs are built in.
/// The resource closes itself in its destructor.
///
///     KyResource resource(KyURL("shaders/floor.glsl"));
///     if (resource.openStreamBuffer(KyResource::eRead))
///       std::istream stream(resource.getStreamBuffer());
///
/// The static part is the resource layer's view of the file system: the stack of current
/// directories (the process has one directory: for the main thread), the directories of each
/// thread (any thread), and operations on local files, which return false for URLs that are not
/// local. Relative names that are read or looked for are resolved as `resolve` says, the thread's
/// directory first. What changes the file system never follows the thread's directory: what is
/// created, written, deleted or renamed, the target of a copy and the directory that becomes the
/// current one are taken from the current directory only. So a script that has gone elsewhere works
/// there, and still finds what lies beside its own file. A resource belongs to one thread at a time; creators may be
/// registered on any.
class KYFOUNDATION_EXPORT KyResource {
public:
    /// What is to be done with the bytes.
    enum Mode : int {
        eRead = 0,
        eWrite = 1,  ///< creates, or empties what is there
        eAppend = 2, ///< creates, or writes behind what is there
        eNbModes
    };

    /// Makes the buffer of a resource; null when it cannot. It should refuse a resource that is
    /// already opened.
    using Creator = std::streambuf* (*)(KyResource& resource, int mode);
    /// Ends the buffer that the creator made; the resource still has it at this time.
    using Destructor = void (*)(KyResource& resource);

    KyResource() = default;
    /// Opens nothing yet.
    explicit KyResource(const KyURL& url);
    KyResource(const KyResource&) = delete;
    KyResource& operator=(const KyResource&) = delete;
    ~KyResource();

    /// The URL as given; from the first opening on, resolved.
    [[nodiscard]] const KyURL& getURL() const { return mURL; }
    /// Between a successful opening and the closing.
    [[nodiscard]] bool isOpened() const { return mBuffer != nullptr; }
    /// Owned by the resource's creator, valid until closing; null when not opened.
    [[nodiscard]] std::streambuf* getStreamBuffer() const { return mBuffer; }

    /// Opens with the creator of the URL's scheme; `mode` is a `Mode`. False when it gives none. To write, a relative
    /// URL is taken from the current directory.
    bool openStreamBuffer(int mode);
    /// Closes with the destructor that belongs to the buffer, also when the scheme has been removed
    /// since; does nothing when not opened.
    void closeStreamBuffer();

    /// Registers a scheme (lower case, without ":"); a later registration replaces. Null functions
    /// are ignored.
    static void addBufferCreator(const std::string& scheme, Creator creator, Destructor destructor);
    /// Forgets the scheme; opened buffers stay until they are closed.
    static void removeBufferCreator(const std::string& scheme);

    /// An absolute URL for a relative one: beside the calling thread's directory if it has one and
    /// the file is there, else in the current directory if the file is there, else beside the
    /// first of the two. Others come back as they are.
    static KyURL resolve(const KyURL& url);

    /// All bytes of a resource of any scheme; false, and `bytes` unchanged, when it cannot be read.
    static bool readBytes(const KyURL& url, std::string& bytes);

    /// Changes the process's directory and remembers the one before; the text is a local path or a
    /// URL, a relative one from the current directory. False when it is not possible.
    static bool pushCurrentDirectory(const std::string& directory);
    /// Goes back; false when nothing is on the stack or the directory is gone.
    static bool popCurrentDirectory();
    /// Changes the process's directory without touching the stack; a relative one is taken from the current directory.
    static bool setCurrentDirectory(const KyURL& directory);
    /// The process's directory, with "/" at the end; empty when it is gone.
    static KyURL getCurrentDirectory();

    /// Directory that relative URLs of a thread are resolved against first; a relative one is taken
    /// from the current directory now. False for an empty one.
    static bool pushThreadDirectory(KyThread::ID thread, const std::string& directory);
    static bool pushThreadDirectory(const KyURL& directory, KyThread::ID thread = KyThread::getCurrentThreadID());
    /// False when the thread has none.
    static bool popThreadDirectory(KyThread::ID thread = KyThread::getCurrentThreadID());
    /// The directory pushed last, with "/" at the end; empty when the thread has none.
    static KyURL getThreadDirectory(KyThread::ID thread = KyThread::getCurrentThreadID());

    /// True for a local directory that is there.
    static bool existDirectory(const KyURL& url);
    /// True for a local file that is there.
    static bool existFile(const KyURL& url);
    /// False when it exists already or its parent does not.
    static bool createDirectory(const KyURL& url);
    /// With all parents; true when it exists already.
    static bool createDirectoryHierarchy(const KyURL& url);
    /// The whole tree; links in it are removed and not followed. False for a link, a file, a file
    /// system's root, a URL without a path, the current directory, one that a thread has pushed, what holds one of
    /// these, and when anything is left.
    static bool deleteDirectory(const KyURL& url);
    /// An empty file; false when something is there.
    static bool createFile(const KyURL& url);
    /// `from` is read, the thread's directory first. False when something is there.
    static bool copyFile(const KyURL& from, const KyURL& to);
    /// False when something is there, and for directories.
    static bool renameFile(const KyURL& from, const KyURL& to);
    /// A file or a link, not a directory; false when nothing was deleted.
    static bool deleteFile(const KyURL& url);

private:
    KyURL mURL;
    std::streambuf* mBuffer = nullptr;
    Destructor mDestructor = nullptr;
};

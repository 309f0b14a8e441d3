// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include <atomic>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <string>

class KyTracker;
struct aiScene;
namespace Assimp {
class Importer;
}

/// One model file as its reader gives it, before anything of ours is made of it: no object of the object model is
/// touched, so a thread of its own may read while the others go on. What was read ends with it.
class KyModelReader {
public:
    /// Local path; the extension in lower case, without dot.
    KyModelReader(std::string path, std::string extension);
    ~KyModelReader();
    KyModelReader(const KyModelReader&) = delete;
    KyModelReader& operator=(const KyModelReader&) = delete;

    /// Checks the file and reads it, in the calling thread.
    void read();
    /// The same on a thread of its own, while the caller's tracker is told, short of the last step of the task it is
    /// in. Once that is cancelled nobody waits any longer: the thread ends when the reader tells next how far it is.
    /// All do between the steps that follow reading, "obj" also every few thousand lines. What remains is one step, of
    /// which joining the vertices of a mesh is the longest (seconds for a million triangles), or the whole reading of
    /// another format (a second for some 50 megabytes).
    static void readBeside(const std::shared_ptr<KyModelReader>& reading, KyTracker& tracker);
    /// Waits for the threads that were left to themselves, so the program's end does.
    static void waitForAll();

    /// Null when the file was refused.
    const aiScene* getScene() const { return mScene; }
    /// Why it was refused.
    const std::string& getReason() const { return mReason; }

private:
    class Handler;

    std::string check() const;
    void import();
    void run();
    bool waitUntilDone(int milliseconds);

    const std::string mPath;
    const std::string mExtension;
    std::unique_ptr<Assimp::Importer> mImporter;
    const aiScene* mScene = nullptr;
    std::string mReason;
    /// How much of it is read, 0 to 1.
    std::atomic<float> mShare = 0.0f;
    std::atomic<bool> mIsAbandoned = false;
    std::mutex mMutex;
    std::condition_variable mEnded;
    bool mIsDone = false;
};

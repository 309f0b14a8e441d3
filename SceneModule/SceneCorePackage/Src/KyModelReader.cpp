// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyModelReader_p.h"

#ifdef KY_WITH_ASSIMP

#include "KyDeepStack_p.h"
#include "KyModelFileCheck_p.h"
#include "KyModelLoader.h"

#include "KyTracker.h"

#include <fmt/format.h>

#include <assimp/BaseImporter.h>
#include <assimp/Importer.hpp>
#include <assimp/ProgressHandler.hpp>
#include <assimp/config.h>
#include <assimp/postprocess.h>
#include <assimp/scene.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <system_error>
#include <thread>
#include <utility>
#include <vector>

namespace {

constexpr std::uintmax_t cMaxFileSize = std::uintmax_t{1} << 31;
constexpr unsigned cSteps = aiProcess_Triangulate | aiProcess_GenSmoothNormals | aiProcess_JoinIdenticalVertices |
                            aiProcess_SortByPType | aiProcess_FindInvalidData | aiProcess_ImproveCacheLocality;
/// What the check takes of the whole, and what is left to those who use the scene.
constexpr float cCheckShare = 0.1f;
constexpr float cReadShare = 0.95f;
constexpr unsigned cNbTrackerSteps = 200;
constexpr int cLook = 15;

/// How the time goes, by what the reader tells: its last steps, joining vertices above all, take as long as the rest.
float toTime(float told) {
    constexpr float cLastSteps = 0.85f;
    constexpr float cTimeBefore = 0.5f;
    return told < cLastSteps ? told * cTimeBefore / cLastSteps
                             : std::lerp(cTimeBefore, 1.0f, (told - cLastSteps) / (1.0f - cLastSteps));
}

/// Threads of cancelled readings.
struct Leftovers {
    std::mutex mutex;
    std::vector<std::thread> threads;
};

Leftovers& getLeftovers() {
    static Leftovers& leftovers = *new Leftovers;
    return leftovers;
}

std::filesystem::path toPath(const std::string& utf8) {
    return std::filesystem::path(std::u8string(utf8.begin(), utf8.end()));
}

/// The extension alone tells the format: what was checked as one format is not read as another.
void keepReaders(Assimp::Importer& importer, const std::string& extension) {
    for (std::size_t i = importer.GetImporterCount(); i-- > 0;) {
        const std::string known = fmt::format(" {} ", importer.GetImporterInfo(i)->mFileExtensions);
        if (known.find(fmt::format(" {} ", extension)) != std::string::npos)
            continue;
        const std::unique_ptr<Assimp::BaseImporter> reader(importer.GetImporter(i));
        importer.UnregisterLoader(reader.get());
    }
}

void advance(KyTracker& tracker, unsigned& nbDone, float share) {
    const auto target = static_cast<unsigned>(std::clamp(share, 0.0f, 1.0f) * static_cast<float>(cNbTrackerSteps));
    if (nbDone >= target)
        tracker.touch();
    for (; nbDone < target; ++nbDone)
        tracker.step();
}

} // namespace

/// Readers tell how far they are, some more often than others. What they are answered they do not hear, but an
/// exception ends them: the importer catches it, and no scene comes.
class KyModelReader::Handler : public Assimp::ProgressHandler {
public:
    explicit Handler(KyModelReader& reading)
        : mReading(reading) {}

    bool Update(float share) override {
        if (mReading.mIsAbandoned)
            throw std::runtime_error("it was cancelled");
        if (share >= 0.0f)
            mReading.mShare = cCheckShare + (cReadShare - cCheckShare) * toTime(std::min(share, 1.0f));
        return true;
    }

private:
    KyModelReader& mReading;
};

KyModelReader::KyModelReader(std::string path, std::string extension)
    : mPath(std::move(path))
    , mExtension(std::move(extension)) {}

/// Deep trees end as they were made, by calls within calls; where there is no room for them they stay.
KyModelReader::~KyModelReader() {
    if (!mImporter)
        return;
    try {
        kyRunOnDeepStack([this] { mImporter.reset(); });
    } catch (const std::exception&) {
        static_cast<void>(mImporter.release());
    }
}

/// The reason why the file is not even tried, empty when it is.
std::string KyModelReader::check() const {
    std::error_code failure;
    const std::filesystem::path path = toPath(mPath);
    const std::filesystem::file_status status = std::filesystem::status(path, failure);
    if (!std::filesystem::exists(status))
        return "there is no such file";
    if (std::filesystem::is_directory(status))
        return "it is a directory";
    if (!std::filesystem::is_regular_file(status))
        return "it is no file";
    if (std::ranges::find(KyModelLoader::getExtensions(), mExtension) == KyModelLoader::getExtensions().end())
        return fmt::format("its extension \"{}\" is not known", mExtension);
    if (std::filesystem::file_size(path, failure) > cMaxFileSize || failure)
        return "it is too large";
    std::ifstream stream(path, std::ios::binary);
    if (!stream)
        return "it cannot be read";
    const std::string bytes(std::istreambuf_iterator<char>(stream), {});
    return mIsAbandoned ? std::string() : kyCheckModelFile(mExtension, bytes);
}

void KyModelReader::read() {
    try {
        mReason = check();
        mShare = cCheckShare;
        if (mReason.empty() && !mIsAbandoned)
            kyRunOnDeepStack([this] { import(); });
    } catch (const std::exception& exception) {
        mReason = exception.what();
    } catch (...) {
        mReason = "the reader failed";
    }
}

/// Reading and what follows are two calls, so that the second can be left out.
void KyModelReader::import() {
    mImporter = std::make_unique<Assimp::Importer>();
    keepReaders(*mImporter, mExtension);
    mImporter->SetPropertyFloat(AI_CONFIG_PP_GSN_MAX_SMOOTHING_ANGLE, 45.0f);
    // The importer deletes it.
    mImporter->SetProgressHandler(new Handler(*this));
    const aiScene* scene = mImporter->ReadFile(mPath, aiProcess_ValidateDataStructure);
    if (scene && !mIsAbandoned)
        scene = mImporter->ApplyPostProcessing(cSteps);
    if (scene && scene->mRootNode && !(scene->mFlags & AI_SCENE_FLAGS_INCOMPLETE))
        mScene = scene;
    else
        mReason = mImporter->GetErrorString();
}

void KyModelReader::run() {
    read();
    const std::lock_guard lock(mMutex);
    mIsDone = true;
    mEnded.notify_all();
}

bool KyModelReader::waitUntilDone(int milliseconds) {
    std::unique_lock lock(mMutex);
    return mEnded.wait_for(lock, std::chrono::milliseconds(milliseconds), [this] { return mIsDone; });
}

void KyModelReader::readBeside(const std::shared_ptr<KyModelReader>& reading, KyTracker& tracker) {
    std::thread thread;
    try {
        thread = std::thread([reading] { reading->run(); });
    } catch (const std::system_error&) {
        return reading->read();
    }
    unsigned nbDone = 0;
    tracker.setNbSteps(cNbTrackerSteps);
    bool isDone = reading->waitUntilDone(cLook);
    for (; !isDone && !tracker.isCanceled(); isDone = reading->waitUntilDone(cLook))
        advance(tracker, nbDone, reading->mShare);
    if (isDone)
        return thread.join();
    reading->mIsAbandoned = true;
    Leftovers& leftovers = getLeftovers();
    const std::lock_guard lock(leftovers.mutex);
    leftovers.threads.push_back(std::move(thread));
}

void KyModelReader::waitForAll() {
    Leftovers& leftovers = getLeftovers();
    const std::lock_guard lock(leftovers.mutex);
    for (std::thread& thread : leftovers.threads)
        thread.join();
    leftovers.threads.clear();
}

#else

void KyModelReader::waitForAll() {}

#endif

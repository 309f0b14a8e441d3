// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyBufferCreators_p.h"

#include "KyLocalPath_p.h"

#include "KyException.h"

#include <array>
#include <exception>
#include <fstream>
#include <memory>

namespace {
constexpr std::array<std::ios_base::openmode, KyResource::eNbModes> cOpenModes = {
    std::ios_base::in,
    std::ios_base::out | std::ios_base::trunc,
    std::ios_base::out | std::ios_base::app,
};

std::streambuf* createFileBuffer(KyResource& resource, int mode) {
    const auto path = KyLocalPath::fromURL(resource.getURL());
    std::error_code error;
    if (resource.isOpened() || mode < 0 || mode >= KyResource::eNbModes || path.empty() ||
        std::filesystem::is_directory(path, error))
        return nullptr;

    auto buffer = std::make_unique<std::filebuf>();
    const auto openMode = cOpenModes[static_cast<std::size_t>(mode)] | std::ios_base::binary;
    return buffer->open(path, openMode) ? buffer.release() : nullptr;
}

void destroyFileBuffer(KyResource& resource) {
    delete resource.getStreamBuffer();
}
} // namespace

std::streambuf* KyBufferCreators::Entry::create(KyResource& resource, int mode) const {
    try {
        return creator(resource, mode);
    } catch (const std::exception& error) {
        KyException::create(std::string("KyResource::openStreamBuffer(): ") + error.what());
        return nullptr;
    }
}

KyBufferCreators::KyBufferCreators() {
    mEntries["file"] = {&createFileBuffer, &destroyFileBuffer};
}

KyBufferCreators& KyBufferCreators::get() {
    static KyBufferCreators creators;
    return creators;
}

void KyBufferCreators::add(const std::string& scheme, Entry entry) {
    const std::scoped_lock guard(mMutex);
    mEntries[scheme] = entry;
}

void KyBufferCreators::remove(const std::string& scheme) {
    const std::scoped_lock guard(mMutex);
    mEntries.erase(scheme);
}

KyBufferCreators::Entry KyBufferCreators::find(std::string_view scheme) {
    const std::scoped_lock guard(mMutex);
    const auto found = mEntries.find(scheme);
    return found == mEntries.end() ? Entry() : found->second;
}

// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyResource.h"

#include "KyBufferCreators_p.h"
#include "KyResourceDirectories_p.h"

#include "KyException.h"

#include <array>
#include <exception>
#include <utility>

KyResource::KyResource(const KyURL& url)
    : mURL(url) {}

KyResource::~KyResource() {
    closeStreamBuffer();
}

bool KyResource::openStreamBuffer(int mode) {
    mURL = mode == eRead ? resolve(mURL) : KyResourceDirectories::resolveInCurrent(mURL);
    const auto entry = KyBufferCreators::get().find(mURL.getScheme());
    if (!entry.creator) {
        KyException::create("KyResource::openStreamBuffer(): cannot open \"" + mURL.toString() +
                            "\", nothing is registered for its scheme.");
        return false;
    }

    // An opened resource goes to the creator as well: it is the one that says what it thinks of it.
    std::streambuf* buffer = entry.create(*this, mode);
    if (!buffer)
        return false;
    closeStreamBuffer();
    mBuffer = buffer;
    mDestructor = entry.destructor;
    return true;
}

void KyResource::closeStreamBuffer() {
    // Out of the member first: the destructor may close this resource again.
    if (const auto destructor = std::exchange(mDestructor, nullptr)) {
        try {
            destructor(*this);
        } catch (const std::exception& error) {
            KyException::create(std::string("KyResource::closeStreamBuffer(): ") + error.what());
        }
    }
    mBuffer = nullptr;
}

void KyResource::addBufferCreator(const std::string& scheme, Creator creator, Destructor destructor) {
    if (creator && destructor)
        KyBufferCreators::get().add(scheme, {creator, destructor});
}

void KyResource::removeBufferCreator(const std::string& scheme) {
    KyBufferCreators::get().remove(scheme);
}

bool KyResource::readBytes(const KyURL& url, std::string& bytes) {
    KyResource resource(url);
    if (!resource.openStreamBuffer(eRead))
        return false;

    std::string read;
    std::array<char, 16384> block{};
    const auto size = static_cast<std::streamsize>(block.size());
    try {
        for (auto got = resource.mBuffer->sgetn(block.data(), size); got > 0;
             got = resource.mBuffer->sgetn(block.data(), size))
            read.append(block.data(), static_cast<std::size_t>(got));
    } catch (const std::exception& error) {
        KyException::create(std::string("KyResource::readBytes(): ") + error.what());
        return false;
    }
    bytes = std::move(read);
    return true;
}

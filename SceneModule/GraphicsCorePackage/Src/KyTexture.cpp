// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyTexture.h"

#include "KyGpuName_p.h"
#include "KyImage.h"

#include "KyCallSignatures.h"
#include "KyTypeBuilder.h"

#include <epoxy/gl.h>

#include <algorithm>

const KyType* KyTexture::msType = nullptr;

namespace {

constexpr unsigned cNbUnits = 4;

GLint toGlFilter(int filter) {
    return filter == KyTexture::eNearest ? GL_NEAREST : GL_LINEAR;
}

std::unique_ptr<KyImage> makeUploadImage(const KyImage& image) {
    auto result = std::make_unique<KyImage>(image.getWidth(), image.getHeight(), 32);
    // Row 0 of a GL texture is the lowest.
    const int last = image.getHeight() - 1;
    for (int y = 0; y <= last; ++y)
        for (int x = 0; x < image.getWidth(); ++x)
            result->setPixel(x, last - y, image.getPixel(x, y));
    return result;
}

} // namespace

void KyTexture::initializeType() {
    if (msType)
        return;
    msType = KyTypeBuilder<KyTexture>("KyTexture", KyGraphicsObject::getType())
                 .factory()
                 .attribute("Width", &KyTexture::getWidth)
                 .attribute("Height", &KyTexture::getHeight)
                 .attribute("Version", &KyTexture::getVersion)
                 .attribute("MinFilter", &KyTexture::getMinFilter, &KyTexture::setMinFilter)
                 .attribute("MagFilter", &KyTexture::getMagFilter, &KyTexture::setMagFilter)
                 .method("setImage", &KyTexture::setImage)
                 .method("setSize", &KyTexture::setSize)
                 .method("touch", &KyTexture::touch)
                 .enumeration({{"eNearest", eNearest}, {"eLinear", eLinear}})
                 .build();
    KyCallSignatures::add("KyTexture", {"setSize(width, height)"});
}

void KyTexture::finalizeType() {
    KyType::remove(msType);
}

const KyType* KyTexture::getType() {
    if (!msType)
        initializeType();
    return msType;
}

const KyType* KyTexture::getObjectType() const {
    return getType();
}

KyTexture* KyTexture::cast(KyObject* object) {
    return kyCast<KyTexture>(object);
}

KyObject* KyTexture::factory() {
    return new KyTexture;
}

KyTexture::KyTexture()
    : mName(std::make_unique<KyGpuName>(KyGpuName::Kind::eTexture)) {}

KyTexture::~KyTexture() = default;

std::size_t KyTexture::getByteSize() const {
    return static_cast<std::size_t>(mWidth) * static_cast<std::size_t>(mHeight) * 4;
}

unsigned KyTexture::getHandle() const {
    return mForeignHandle != 0 ? mForeignHandle : mName->get();
}

void KyTexture::setMinFilter(int filter) {
    if (filter < 0 || filter >= eNbFilters || filter == mMinFilter)
        return;
    mMinFilter = filter;
    notifyModified("MinFilter");
}

void KyTexture::setMagFilter(int filter) {
    if (filter < 0 || filter >= eNbFilters || filter == mMagFilter)
        return;
    mMagFilter = filter;
    notifyModified("MagFilter");
}

void KyTexture::setHandle(unsigned handle) {
    if (handle == mForeignHandle)
        return;
    mForeignHandle = handle;
    mName->reset();
    mNeedsUpload = true;
    touch();
}

void KyTexture::setSize(int width, int height) {
    width = std::max(width, 0);
    height = std::max(height, 0);
    if (width == mWidth && height == mHeight)
        return;
    mWidth = width;
    mHeight = height;
    mImage.reset();
    mNeedsUpload = true;
    touch();
}

bool KyTexture::setImage(const KyImage* image) {
    if (!image || !image->isValid())
        return false;
    setSize(image->getWidth(), image->getHeight());
    mImage = makeUploadImage(*image);
    mNeedsUpload = true;
    touch();
    return true;
}

void KyTexture::touch() {
    ++mVersion;
    // Frame buffers touch theirs every frame.
    if (isWatched())
        notifyModified("Version");
}

bool KyTexture::setPixels(const std::uint32_t* pixels, int width, int height) {
    if (!pixels || !kyGetCurrentGpuHandle() || width < 1 || height < 1)
        return false;
    GLint bound = 0;
    glGetIntegerv(GL_TEXTURE_BINDING_2D, &bound);
    const bool isKept = !isForeign() && width == mWidth && height == mHeight && hasPixels();
    const bool isMade = isKept || makeStorage(width, height);
    if (isMade) {
        glBindTexture(GL_TEXTURE_2D, mName->get());
        glPixelStorei(GL_UNPACK_ALIGNMENT, 4);
        glTexSubImage2D(GL_TEXTURE_2D, 0, 0, 0, width, height, GL_BGRA, GL_UNSIGNED_INT_8_8_8_8_REV, pixels);
        touch();
    }
    glBindTexture(GL_TEXTURE_2D, static_cast<GLuint>(bound));
    return isMade;
}

bool KyTexture::hasPixels() const {
    return isForeign() || (!mNeedsUpload && mName->isUsable());
}

bool KyTexture::makeStorage(int width, int height) {
    GLint largest = 0;
    glGetIntegerv(GL_MAX_TEXTURE_SIZE, &largest);
    if (width > largest || height > largest)
        return false;
    setHandle(0);
    setSize(width, height);
    mImage.reset();
    mNeedsUpload = true;
    return prepare() != 0;
}

bool KyTexture::bind(unsigned unit) {
    if (unit >= cNbUnits || !kyGetCurrentGpuHandle())
        return false;
    const unsigned handle = prepare();
    if (handle == 0)
        return false;
    glActiveTexture(GL_TEXTURE0 + unit);
    glBindTexture(GL_TEXTURE_2D, handle);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, toGlFilter(mMinFilter));
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, toGlFilter(mMagFilter));
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GL_CLAMP_TO_EDGE);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, GL_CLAMP_TO_EDGE);
    return true;
}

unsigned KyTexture::prepare() {
    if (mForeignHandle != 0)
        return mForeignHandle;
    if (mWidth < 1 || mHeight < 1)
        return 0;
    if (!mName->isUsable()) {
        mName->create();
        mNeedsUpload = true;
    }
    if (mNeedsUpload)
        upload();
    return mName->get();
}

void KyTexture::upload() {
    mNeedsUpload = false;
    GLint bound = 0;
    glGetIntegerv(GL_TEXTURE_BINDING_2D, &bound);
    glBindTexture(GL_TEXTURE_2D, mName->get());
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAX_LEVEL, 0);
    glPixelStorei(GL_UNPACK_ALIGNMENT, 4);
    glTexImage2D(GL_TEXTURE_2D, 0, GL_RGBA8, mWidth, mHeight, 0, GL_RGBA, GL_UNSIGNED_BYTE,
                 mImage ? mImage->getData() : nullptr);
    glBindTexture(GL_TEXTURE_2D, static_cast<GLuint>(bound));
}

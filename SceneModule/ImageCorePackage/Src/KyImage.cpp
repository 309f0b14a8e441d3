// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyImage.h"

#include "KyImagePixels_p.h"

#include "KyCallSignatures.h"
#include "KyTypeBuilder.h"
#include "KyURL.h"

#include <stb_image.h>
#include <stb_image_write.h>

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <limits>

const KyType* KyImage::msType = nullptr;

namespace {

constexpr std::int64_t cMaxPixels = std::int64_t{1} << 28;

std::filesystem::path toPath(const std::string& utf8) {
    return std::filesystem::path(std::u8string(utf8.begin(), utf8.end()));
}

std::vector<unsigned char> readFile(const KyURL& url) {
    std::string path;
    if (!url.getLocalPath(path))
        return {};
    std::error_code error;
    // A directory opens like a file on some systems.
    if (!std::filesystem::is_regular_file(toPath(path), error) || error)
        return {};
    std::ifstream stream(toPath(path), std::ios::binary);
    return std::vector<unsigned char>(std::istreambuf_iterator<char>(stream), {});
}

void appendToStream(void* stream, void* bytes, int size) {
    static_cast<std::ofstream*>(stream)->write(static_cast<const char*>(bytes), size);
}

/// The channels that the picture writer knows: grey, red-green-blue, with alpha.
int getNbChannels(int bitsPerPixel) {
    return bitsPerPixel >= 8 && bitsPerPixel != 16 ? bitsPerPixel / 8 : 0;
}

} // namespace

void KyImage::initializeType() {
    if (msType)
        return;
    msType = KyTypeBuilder<KyImage>("KyImage", KyObject::getType())
                 .factory()
                 .attribute("Width", &KyImage::getWidth)
                 .attribute("Height", &KyImage::getHeight)
                 .attribute("BitsPerPixel", &KyImage::getBitsPerPixel)
                 .attribute("LayoutName", &KyImage::getLayoutName)
                 .method("isValid", &KyImage::isValid)
                 .method("getPixel", &KyImage::getPixel)
                 .method("setPixel", &KyImage::setPixel)
                 .method("flipVertically", &KyImage::flipVertically)
                 .method("savePNG", &KyImage::savePNG)
                 .staticMethod("load", [](const KyURL& url) { return create(url); })
                 .constructor([](int width, int height, int bits) { return new KyImage(width, height, bits); })
                 .build();
    KyCallSignatures::add("KyImage", {"__init(width, height, bitsPerPixel)", "getPixel(x, y)", "setPixel(x, y, color)",
                                      "load(url)", "savePNG(url)"});
}

void KyImage::finalizeType() {
    KyType::remove(msType);
}

const KyType* KyImage::getType() {
    if (!msType)
        initializeType();
    return msType;
}

const KyType* KyImage::getObjectType() const {
    return getType();
}

KyImage* KyImage::cast(KyObject* object) {
    return kyCast<KyImage>(object);
}

KyObject* KyImage::factory() {
    return new KyImage;
}

KyImage::KyImage(int width, int height, int bitsPerPixel) {
    const KyImageLayout* layout = kyFindImageLayout(bitsPerPixel);
    if (!layout || width < 1 || height < 1 || std::int64_t{width} * height > cMaxPixels)
        return;
    mWidth = width;
    mHeight = height;
    mBitsPerPixel = bitsPerPixel;
    mLayoutName = layout->name;
    mData.resize(getBytesPerRow() * static_cast<std::size_t>(height));
}

KyImage* KyImage::create(const KyURL& url) {
    const std::vector<unsigned char> bytes = readFile(url);
    return createFromMemory(bytes.data(), bytes.size());
}

KyImage* KyImage::createFromMemory(const unsigned char* bytes, std::size_t size) {
    if (!bytes || size == 0 || size > static_cast<std::size_t>(std::numeric_limits<int>::max()))
        return nullptr;
    const int length = static_cast<int>(size);
    int width = 0, height = 0, channels = 0;
    // The header alone decides about the memory that decoding takes.
    if (!stbi_info_from_memory(bytes, length, &width, &height, &channels) || std::int64_t{width} * height > cMaxPixels)
        return nullptr;
    const int wanted = channels == 2 ? 4 : channels;
    const std::unique_ptr<unsigned char, void (*)(void*)> pixels(
        stbi_load_from_memory(bytes, length, &width, &height, &channels, wanted), &stbi_image_free);
    if (!pixels)
        return nullptr;
    auto image = std::make_unique<KyImage>(width, height, 8 * wanted);
    if (!image->isValid())
        return nullptr;
    std::copy_n(pixels.get(), image->mData.size(), image->mData.begin());
    return image.release();
}

KyImage* KyImage::clone() const {
    return new KyImage(*this);
}

std::size_t KyImage::getBytesPerRow() const {
    return (static_cast<std::size_t>(mWidth) * static_cast<std::size_t>(mBitsPerPixel) + 7) / 8;
}

KyColor KyImage::getPixel(int x, int y) const {
    const KyImageLayout* layout = kyFindImageLayout(mBitsPerPixel, mLayoutName);
    if (!layout || x < 0 || y < 0 || x >= mWidth || y >= mHeight)
        return KyColor(0, 0, 0, 0);
    return layout->read(mData.data() + static_cast<std::size_t>(y) * getBytesPerRow(), static_cast<std::size_t>(x));
}

void KyImage::setPixel(int x, int y, const KyColor& color) {
    const KyImageLayout* layout = kyFindImageLayout(mBitsPerPixel, mLayoutName);
    if (!layout || x < 0 || y < 0 || x >= mWidth || y >= mHeight)
        return;
    layout->write(mData.data() + static_cast<std::size_t>(y) * getBytesPerRow(), static_cast<std::size_t>(x), color);
}

void KyImage::setLayoutName(const std::string& name) {
    if (mBitsPerPixel == 16)
        mLayoutName = name;
}

void KyImage::flipVertically() {
    const auto rowSize = static_cast<std::ptrdiff_t>(getBytesPerRow());
    for (std::ptrdiff_t top = 0, bottom = mHeight - 1; top < bottom; ++top, --bottom)
        std::swap_ranges(mData.begin() + top * rowSize, mData.begin() + (top + 1) * rowSize,
                         mData.begin() + bottom * rowSize);
}

bool KyImage::savePNG(const KyURL& url) const {
    std::string path;
    if (!isValid() || !url.getLocalPath(path))
        return false;
    const int channels = getNbChannels(mBitsPerPixel);
    if (channels == 0) {
        KyImage converted(mWidth, mHeight, 24);
        for (int y = 0; y < mHeight; ++y)
            for (int x = 0; x < mWidth; ++x)
                converted.setPixel(x, y, getPixel(x, y));
        return converted.savePNG(url);
    }
    std::ofstream stream(toPath(path), std::ios::binary);
    const bool isWritten = stream && stbi_write_png_to_func(&appendToStream, &stream, mWidth, mHeight, channels,
                                                            mData.data(), static_cast<int>(getBytesPerRow()));
    stream.close();
    return isWritten && stream.good();
}

double KyImage::getDifference(const KyImage& other) const {
    if (!isValid() || mWidth != other.mWidth || mHeight != other.mHeight)
        return 1.0;
    double sum = 0.0;
    for (int y = 0; y < mHeight; ++y)
        for (int x = 0; x < mWidth; ++x) {
            const KyColor difference = getPixel(x, y) - other.getPixel(x, y);
            for (int i = 0; i < 4; ++i)
                sum += std::abs(static_cast<double>(difference[i]));
        }
    return sum / (4.0 * mWidth * mHeight);
}

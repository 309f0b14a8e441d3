// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KySceneExport.h"

#include "KyColor.h"
#include "KyObject.h"
#include "KyReferenceCounted.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

class KyURL;

/// A picture in memory. Reference counted from 0: hold it in a KyHolder, or `destroy()` it.
///
/// Rows come top first, without padding between them (1-bit rows end at a whole byte). Bytes of a pixel: 8 bits grey;
/// 24 bits red, green, blue; 32 bits red, green, blue, alpha (straight, not premultiplied); 16 bits one host-order word
/// "R5G6B5", red highest; 1 bit the highest bit of a byte is the leftmost pixel, 1 is white. Files give 8, 24 or 32.
///
/// ```
/// KyHolder<KyImage> image(KyImage::create(KyURL("photo.png", KyURL::eLocalPath)));
/// if (image)
///     std::cout << image->getWidth();
/// ```
class KYSCENE_EXPORT KyImage : public KyObject, public KyReferenceCounted {
public:
    static const KyType* getType();
    static KyImage* cast(KyObject* object);
    static KyObject* factory();
    static void initializeType();
    static void finalizeType();
    const KyType* getObjectType() const override;

    /// An image without pixels, not valid.
    KyImage() = default;
    /// Black, alpha 0; not valid when width or height is under 1 or the depth is none of 1, 8, 16, 24, 32.
    KyImage(int width, int height, int bitsPerPixel);

    /// Loads a PNG, JPEG, BMP, TGA or GIF file; null when the URL is not local or the file is no such picture.
    static KyImage* create(const KyURL& url);
    /// The same from the bytes of a file; null when they are no picture, or one of more than 2^28 pixels.
    static KyImage* createFromMemory(const unsigned char* bytes, std::size_t size);
    /// A copy of the pixels.
    KyImage* clone() const override;

    /// False for one without pixels.
    bool isValid() const { return !mData.empty(); }
    /// @{
    /// Pixels; 0 when not valid.
    int getWidth() const { return mWidth; }
    int getHeight() const { return mHeight; }
    /// @}
    /// 1, 8, 16, 24 or 32; 0 when not valid.
    int getBitsPerPixel() const { return mBitsPerPixel; }
    /// Of one row, rounded up to whole bytes; 0 when not valid.
    std::size_t getBytesPerRow() const;
    /// "Mono", "L8", "R5G6B5", "R8G8B8", "R8G8B8A8"; other texts only for foreign 16-bit data; empty when not valid.
    const std::string& getLayoutName() const { return mLayoutName; }
    /// Null when not valid.
    const unsigned char* getData() const { return mData.empty() ? nullptr : mData.data(); }
    /// The colour at column x, row y (0 is the top); transparent black outside.
    KyColor getPixel(int x, int y) const;

    /// Writable pixels, null when not valid.
    unsigned char* editData() { return mData.empty() ? nullptr : mData.data(); }
    /// Components are limited to 0 ... 1; grey takes the luminance. Nothing happens outside.
    void setPixel(int x, int y, const KyColor& color);
    /// Names the layout of 16-bit data that is not "R5G6B5"; getPixel then gives transparent black.
    void setLayoutName(const std::string& name);
    /// Exchanges top and bottom.
    void flipVertically();
    /// Writes a PNG; false when the image is not valid, the URL is not local or the file cannot be written.
    bool savePNG(const KyURL& url) const;
    /// Mean absolute difference of all channels, 0 ... 1; 1 when the sizes differ or one is not valid.
    double getDifference(const KyImage& other) const;

private:
    std::vector<unsigned char> mData;
    std::string mLayoutName;
    int mWidth = 0;
    int mHeight = 0;
    int mBitsPerPixel = 0;

    static const KyType* msType;
};

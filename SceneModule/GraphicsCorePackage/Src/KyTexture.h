// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KySceneExport.h"

#include "KyGraphicsObject.h"

#include <cstddef>
#include <cstdint>
#include <memory>

class KyGpuName;
class KyImage;

/// A picture on the device, 8 bits each of red, green, blue and alpha. Its pixels are its own (an image, or what a
/// frame buffer draws), or it stands for a foreign GL texture, which it never deletes. A version counter tells users
/// whether the pixels may have changed.
///
/// ```
/// KyHolder<KyTexture> texture(KyTexture::create());
/// texture->setMinFilter(KyTexture::eLinear);
/// texture->setHandle(buffer.texture());  // foreign
/// texture->setSize(buffer.width(), buffer.height());
/// texture->touch();                      // painted anew
/// ```
class KYSCENE_EXPORT KyTexture : public KyGraphicsObject {
public:
    /// How colours between pixels are found.
    enum Filter { eNearest = 0, eLinear = 1, eNbFilters };

    static const KyType* getType();
    static KyTexture* cast(KyObject* object);
    static KyObject* factory();
    static void initializeType();
    static void finalizeType();
    const KyType* getObjectType() const override;

    static KyTexture* create() { return new KyTexture; }
    KyTexture();
    ~KyTexture() override;

    /// @{
    /// Pixels; 0 before the first size.
    int getWidth() const { return mWidth; }
    int getHeight() const { return mHeight; }
    /// @}
    /// Width times height times 4.
    std::size_t getByteSize() const;
    /// @{
    /// A number of Filter.
    int getMinFilter() const { return mMinFilter; }
    int getMagFilter() const { return mMagFilter; }
    /// @}
    /// Grows with every touch().
    std::uint64_t getVersion() const { return mVersion; }
    /// GL name: the foreign one, or the own one after it was used; 0 when there is none yet.
    unsigned getHandle() const;
    /// True while it stands for somebody else's texture.
    bool isForeign() const { return mForeignHandle != 0; }

    /// A number of Filter, others are ignored. Both filters are linear at the start.
    void setMinFilter(int filter);
    /// See setMinFilter.
    void setMagFilter(int filter);
    /// Stands for a foreign GL texture from now on; 0 goes back to pixels of its own.
    void setHandle(unsigned handle);
    /// Pixels, at least 0; own pixels are undefined after a change.
    void setSize(int width, int height);
    /// Takes over size and pixels of a valid image of any depth; it is not kept. False for null and not valid ones.
    bool setImage(const KyImage* image);
    /// Gives the device pixels at once: 32-bit words 0xAARRGGBB, row 0 first, without gaps. They are not kept: see
    /// hasPixels(). Own pixels from now on. False, and nothing changed, without context, pixels or a size that the
    /// device takes.
    bool setPixels(const std::uint32_t* pixels, int width, int height);
    /// Whether the current context has pixels that were given it; true for a foreign texture.
    bool hasPixels() const;

    /// Says that the pixels were changed; listeners are told of the attribute "Version".
    void touch();
    /// Makes it the texture of the unit (0 ... 3) in the current context, uploading what is new. False when there is no
    /// context or nothing to bind; nothing is bound then.
    bool bind(unsigned unit = 0);

private:
    friend class KyFrameBuffer;

    /// The GL name, made when needed; 0 when it cannot be.
    unsigned prepare();
    void upload();
    bool makeStorage(int width, int height);

    std::unique_ptr<KyGpuName> mName;
    std::unique_ptr<KyImage> mImage;
    unsigned mForeignHandle = 0;
    int mWidth = 0;
    int mHeight = 0;
    int mMinFilter = eLinear;
    int mMagFilter = eLinear;
    bool mNeedsUpload = true;
    std::uint64_t mVersion = 0;

    static const KyType* msType;
};

// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KySceneExport.h"

#include "KyGraphicsObject.h"
#include "KyHolder.h"
#include "KyTexture.h"

#include <memory>

class KyGpuName;
class KyImage;

/// Where a pass draws instead of the window: a colour texture with depth, or several samples a pixel. It makes its GL
/// objects itself when it is first bound, or stands for a foreign GL frame buffer, which it never deletes.
///
/// ```
/// KyHolder<KyFrameBuffer> buffer(KyFrameBuffer::create(KyTexture::create()));
/// buffer->setSize(800, 600);
/// buffer->bind();
/// ```
class KYSCENE_EXPORT KyFrameBuffer : public KyGraphicsObject {
public:
    static const KyType* getType();
    static KyFrameBuffer* cast(KyObject* object);
    static KyObject* factory();
    static void initializeType();
    static void finalizeType();
    const KyType* getObjectType() const override;

    /// Holds a reference of the texture; null makes one.
    static KyFrameBuffer* create(KyTexture* colour = nullptr) { return new KyFrameBuffer(colour); }
    /// Holds a reference of the texture; null makes one.
    explicit KyFrameBuffer(KyTexture* colour = nullptr);
    ~KyFrameBuffer() override;

    /// @{
    /// Pixels; 0 before the first size.
    int getWidth() const { return mWidth; }
    int getHeight() const { return mHeight; }
    /// @}
    /// Samples a pixel, 1 without smoothing.
    int getSamples() const { return mSamples; }
    /// With more than one sample the texture holds nothing before resolve().
    KyTexture* getColorTexture() const { return mTexture.get(); }
    /// GL name of what is drawn into; 0 before the first bind().
    unsigned getHandle() const;
    /// GL name of what pixels are read from: after resolve() they are there.
    unsigned getReadHandle() const;
    /// True while it stands for somebody else's frame buffer.
    bool isForeign() const { return mForeignHandle != 0; }

    /// Stands for a foreign GL frame buffer from now on; 0 goes back to an own one.
    void setHandle(unsigned handle);
    /// Pixels, at least 0. The texture follows when it is not foreign.
    void setSize(int width, int height);
    /// 1 or less: no multisampling; limited to what the device offers.
    void setSamples(int samples);

    /// Makes it the target of drawing and reading in the current context and sets the viewport to all of it. False when
    /// there is no context, no size, or the device refuses; the bindings are then as before.
    bool bind();
    /// Makes the samples the pixels of the colour texture. Nothing to do with one sample. Changes the bindings.
    bool resolve();
    /// All pixels, top row first, 32 bits; null when there is nothing to read. The caller owns the image (count 0).
    KyImage* readPixels();

private:
    bool prepare();
    bool prepareOwn();
    bool makeStorage();
    bool makeMultisampleStorage();
    bool isComplete() const;

    KyHolder<KyTexture> mTexture;
    std::unique_ptr<KyGpuName> mName;
    std::unique_ptr<KyGpuName> mDepth;
    std::unique_ptr<KyGpuName> mSampleName;
    std::unique_ptr<KyGpuName> mSampleColor;
    unsigned mForeignHandle = 0;
    int mWidth = 0;
    int mHeight = 0;
    int mSamples = 1;
    bool mIsStale = true;

    static const KyType* msType;
};

// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KySceneExport.h"

#include <cstdint>

class KyFrameBuffer;
class KyGraphicsDevice;
class KyImage;
template <class T>
class KyRect;

/// What passes need while one frame is drawn: the device, the target and its size. Lives on the caller's stack around a
/// frame; owns nothing. Without a frame buffer the target is what is bound when the frame begins: the window.
///
/// ```
/// KyRendererContext context(&device);
/// context.setTarget(frameBuffer);  // or nothing, for the window
/// canvas.render(context);
/// ```
class KYSCENE_EXPORT KyRendererContext {
public:
    /// The device may be null: whatever context is current is then taken.
    explicit KyRendererContext(KyGraphicsDevice* device = nullptr)
        : mDevice(device) {}

    /// Null when whatever context is current is taken.
    KyGraphicsDevice* getGraphicsDevice() const { return mDevice; }
    /// Null when the window is the target.
    KyFrameBuffer* getTarget() const { return mTarget; }
    /// Pixels of the whole target; set by the canvas.
    int getWidth() const { return mWidth; }
    /// See getWidth.
    int getHeight() const { return mHeight; }
    /// Samples a pixel of the target as it was bound last, at least 1.
    int getTargetSamples() const { return mTargetSamples; }

    void setTarget(KyFrameBuffer* target) { mTarget = target; }
    /// Set by the canvas.
    void setSize(int width, int height) {
        mWidth = width;
        mHeight = height;
    }

    /// Makes the device current and notes the window's frame buffer. False when there is no usable context.
    bool begin();
    /// Binds a pass's own buffer, or with null the target, and sets viewport and scissor to the area, whose origin is
    /// the top left pixel. False when it cannot be bound.
    bool bind(KyFrameBuffer* buffer, const KyRect<int>& area);
    /// The pixels of the area of the target, top row first; null when there is nothing to read. The caller owns it.
    KyImage* readPixels(const KyRect<int>& area);

private:
    KyGraphicsDevice* mDevice = nullptr;
    KyFrameBuffer* mTarget = nullptr;
    int mWidth = 0;
    int mHeight = 0;
    int mTargetSamples = 1;
    unsigned mWindowHandle = 0;
};

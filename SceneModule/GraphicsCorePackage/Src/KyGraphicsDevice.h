// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KySceneExport.h"

#include <string>

/// The device that pictures are drawn with: one GL context, at least version 3.2, core or compatibility. The base class
/// stands for whatever context is current; a host that has several derives from it and makes its own context current.
/// Used on the thread of its context. Not owned by anybody here: it must outlive the renderer contexts that name it.
///
/// ```
/// KyGraphicsDevice device;              // in the toolkit's paint function, its context is current
/// KyRendererContext context(&device);
/// canvas.render(context);
/// ```
class KYSCENE_EXPORT KyGraphicsDevice {
public:
    KyGraphicsDevice() = default;
    KyGraphicsDevice(const KyGraphicsDevice&) = delete;
    KyGraphicsDevice& operator=(const KyGraphicsDevice&) = delete;
    virtual ~KyGraphicsDevice();

    /// Whether any GL context is current on this thread.
    static bool hasCurrentContext();

    /// Whether a context is current and its version suffices.
    bool isUsable();
    /// "llvmpipe (LLVM 15.0.6, 256 bits)" and the like; empty when no context was ever current.
    const std::string& getRendererName();
    /// Who made the GL; empty without a context.
    const std::string& getVendorName();
    /// As GL tells it; empty without a context.
    const std::string& getVersionText();
    /// Major version times 10 plus the minor one, 45 for 4.5; 0 when unknown.
    int getVersion();
    /// Whether the processor draws: what saves fill rate is worth its price then.
    bool isSoftware();
    /// Largest number of samples a pixel of a frame buffer can have; 0 when unknown.
    int getMaxSamples();

    /// Makes the device's context current; false when it cannot. The base leaves the current one, which must be there.
    virtual bool makeCurrent();

private:
    void readInformation();

    std::string mRendererName;
    std::string mVendorName;
    std::string mVersionText;
    int mVersion = 0;
    int mMaxSamples = 0;
    bool mIsRead = false;
};

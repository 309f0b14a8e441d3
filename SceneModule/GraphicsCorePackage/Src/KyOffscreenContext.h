// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KySceneExport.h"

#include "KyGraphicsDevice.h"

#include <memory>
#include <string>

/// A GL context without window or display, for pictures made in the background and for tests. It has no picture of its
/// own: draw into a KyFrameBuffer. Ending it leaves no context current when it was.
///
/// ```
/// std::string error;
/// const std::unique_ptr<KyOffscreenContext> context = KyOffscreenContext::create(error);
/// if (!context)
///     KyException::create(error);
/// ```
class KYSCENE_EXPORT KyOffscreenContext : public KyGraphicsDevice {
public:
    /// Which GL is asked for.
    enum Profile { eCore, eCompatibility, eNbProfiles };

    /// Makes a context and makes it current; null, and the reason in `error`, when the platform offers none. Textures,
    /// buffers and programs are shared with `share`.
    static std::unique_ptr<KyOffscreenContext> create(std::string& error, Profile profile = eCore,
                                                      const KyOffscreenContext* share = nullptr);
    ~KyOffscreenContext() override;

    bool makeCurrent() override;
    /// Leaves no context current on this thread.
    void doneCurrent();

private:
    struct Native;

    explicit KyOffscreenContext(std::unique_ptr<Native> native);

    std::unique_ptr<Native> mNative;
};

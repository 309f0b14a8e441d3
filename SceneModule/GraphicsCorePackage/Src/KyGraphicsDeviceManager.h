// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KySceneExport.h"

#include <cstddef>

class KyGraphicsDevice;

/// Knows which device is in use, and clears away what ended objects left on the devices. Used on the thread that draws.
class KYSCENE_EXPORT KyGraphicsDeviceManager {
public:
    KyGraphicsDeviceManager(const KyGraphicsDeviceManager&) = delete;
    KyGraphicsDeviceManager& operator=(const KyGraphicsDeviceManager&) = delete;

    /// The one manager, never destroyed.
    static KyGraphicsDeviceManager& get();

    /// The device made current last; null when there is none or it is gone.
    KyGraphicsDevice* getCurrent() const { return mCurrent; }
    /// Makes the device's context current and deletes what waits for it. False, and nothing changed, for null and for a
    /// device that cannot become current.
    bool makeCurrent(KyGraphicsDevice* device);

    /// Deletes what ended objects left in the current context.
    void deletePending();
    /// To be called with a toolkit's context current, just before that ends: what living objects have in it alone, such
    /// as frame buffers, is not taken for that of a later context at the same address.
    void endContext();
    /// How many names of ended objects wait until a context of theirs is current.
    std::size_t getNbPending() const;

private:
    friend class KyGraphicsDevice;

    KyGraphicsDeviceManager() = default;
    void forget(const KyGraphicsDevice* device);

    KyGraphicsDevice* mCurrent = nullptr;
};

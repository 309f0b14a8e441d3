// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyQmlTarget_p.h"

#include <memory>
#include <string>

class QOffscreenSurface;
class QOpenGLContext;
class QOpenGLFramebufferObject;

/// Renders into a frame buffer of a context of its own, which shares with the one that is current when it is made.
class KyQmlGlTarget : public KyQmlTarget {
public:
    /// Null, and the reason, when there is no GL that shares.
    static std::unique_ptr<KyQmlTarget> create(std::string& error);
    ~KyQmlGlTarget() override;

    bool makeCurrent() override { return mDevice.makeCurrent(); }
    void initialize(QQuickRenderControl& control) override;
    bool resize(const QSize& size, QQuickWindow& window) override;
    void share(KyFrameBuffer& buffer) override;
    void render(QQuickWindow& window, QQuickRenderControl& control) override;
    void clear() override;
    void publish(KyTexture& texture) override;
    KyPassPixel::Bytes readPixel(int x, int y) override;

protected:
    KyQGraphicsDevice* getDevice() override { return &mDevice; }

private:
    KyQmlGlTarget();
    bool createContext(std::string& error);
    bool fits(const QSize& size) const;

    std::unique_ptr<QOffscreenSurface> mSurface;
    std::unique_ptr<QOpenGLContext> mContext;
    KyQGraphicsDevice mDevice;
    std::unique_ptr<QOpenGLFramebufferObject> mBuffer;
};

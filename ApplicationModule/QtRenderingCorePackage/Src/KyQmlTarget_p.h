// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyPassPixel_p.h"
#include "KyQGraphicsDevice.h"

#include <QSize>

#include <memory>
#include <optional>
#include <string>

class KyFrameBuffer;
class KyTexture;
class QQuickRenderControl;
class QQuickWindow;

/// Where a quick window that is never shown renders to, so that the view's texture gets its picture: a GL frame buffer
/// whose texture the view shares, or, where no context can share with the view's, an image that is uploaded.
class KyQmlTarget {
public:
    /// Makes the target's context current, where it has one, then what was before.
    class Scope {
    public:
        explicit Scope(KyQmlTarget& target);
        bool isUsable() const { return !mCurrent || mCurrent->isCurrent(); }

    private:
        std::optional<KyQGraphicsDevice::Scope> mCurrent;
    };

    /// What suits the context that is current, the view's. Null, and the reason, when nothing can render here. To be
    /// called before the window is made: what Qt Quick renders with is decided once for the whole process.
    static std::unique_ptr<KyQmlTarget> create(std::string& error);
    virtual ~KyQmlTarget() = default;

    /// Device pixels; empty while there is no buffer.
    const QSize& getSize() const { return mSize; }
    /// Also brings back the context after others took it away. Within a scope.
    virtual bool makeCurrent() { return true; }

    /// Within a scope, as all that follows. May be called again.
    virtual void initialize(QQuickRenderControl& control) = 0;
    /// A new, transparent buffer for the window. False, and none, when the size is not possible.
    virtual bool resize(const QSize& size, QQuickWindow& window) = 0;
    /// Makes the frame buffer and its texture stand for the buffer.
    virtual void share(KyFrameBuffer& buffer) = 0;
    virtual void render(QQuickWindow& window, QQuickRenderControl& control) = 0;
    virtual void clear() = 0;
    /// Tells the texture that it has another picture.
    virtual void publish(KyTexture& texture) = 0;
    /// y counts from the top; inside the buffer.
    virtual KyPassPixel::Bytes readPixel(int x, int y) = 0;

protected:
    virtual KyQGraphicsDevice* getDevice() { return nullptr; }

    QSize mSize;
};

// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyPassPixel_p.h"

#include "KyFrameBuffer.h"
#include "KyHolder.h"

#include <QSize>

#include <functional>
#include <memory>
#include <string>

class KyRendererContext;
class QPainter;

/// How the picture of a Qt pass comes into the colour texture of its frame buffer, row 0 the uppermost: one class for
/// each way. All calls with the renderer's context current, but for read() and the end. The frame buffer has no picture
/// when the target ends.
///
/// ```
/// if (target->begin()) {
///     target->resize(size);
///     target->paint([](QPainter& painter) { ... });
///     target->end();
/// }
/// ```
class KyQtPaintTarget {
public:
    /// With GL in a context of its own; null, and the reason, when there is none that shares with the current one.
    static std::unique_ptr<KyQtPaintTarget> createFrameBuffer(KyFrameBuffer& buffer, std::string& error);
    /// On an image that is given to the texture.
    static std::unique_ptr<KyQtPaintTarget> createImage(KyFrameBuffer& buffer);
    /// What costs less of those that work in the current context; an image where the processor draws, unless
    /// `prefersFrameBuffer`. A display that should offer GL and does not is reported once.
    static std::unique_ptr<KyQtPaintTarget> create(KyFrameBuffer& buffer, const KyRendererContext& context,
                                                   bool prefersFrameBuffer);

    KyQtPaintTarget(const KyQtPaintTarget&) = delete;
    KyQtPaintTarget& operator=(const KyQtPaintTarget&) = delete;
    virtual ~KyQtPaintTarget();

    virtual bool isFrameBuffer() const = 0;
    /// Whether the renderer's context can show what this paints.
    virtual bool isUsable() const = 0;
    /// Whether the renderer's context has lost the picture.
    virtual bool isLost() const { return false; }
    /// False when nothing can be painted; end() is not to be called then.
    virtual bool begin() { return true; }
    /// Makes a transparent picture of another size; none, and a null size, when that cannot be. True when it changed.
    bool resize(const QSize& size);
    virtual void paint(const std::function<void(QPainter&)>& draw) = 0;
    virtual void end() {}

    /// Null while there is no picture.
    const QSize& getSize() const { return mSize; }
    /// A pixel of the picture, y from the uppermost row.
    virtual KyPassPixel::Bytes read(int x, int y) = 0;

protected:
    explicit KyQtPaintTarget(KyFrameBuffer& buffer)
        : mBuffer(&buffer) {}

    /// A picture of that size, or none for a null size; false when the device refuses.
    virtual bool allocate(const QSize& size) = 0;
    /// The frame buffer stands for these GL names; 0 for none.
    void handOver(unsigned frameBuffer, unsigned texture, const QSize& size);
    KyTexture& editTexture() { return *mBuffer->getColorTexture(); }
    const KyTexture& getTexture() const { return *mBuffer->getColorTexture(); }

private:
    KyHolder<KyFrameBuffer> mBuffer;
    QSize mSize{0, 0};
    QSize mRefusedSize;
};

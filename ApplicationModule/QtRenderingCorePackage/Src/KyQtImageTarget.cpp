// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyQtPaintTarget_p.h"

#include <QImage>
#include <QPainter>

namespace {

/// An image that the texture gets whole after each painting: in the renderer's own context, so that it needs nothing
/// of Qt's GL.
class ImageTarget : public KyQtPaintTarget {
public:
    explicit ImageTarget(KyFrameBuffer& buffer)
        : KyQtPaintTarget(buffer) {}

    bool isFrameBuffer() const override { return false; }
    bool isUsable() const override { return true; }
    bool isLost() const override { return !mImage.isNull() && !getTexture().hasPixels(); }
    void paint(const std::function<void(QPainter&)>& draw) override {
        if (mImage.isNull())
            return;
        mImage.fill(Qt::transparent);
        {
            QPainter painter(&mImage);
            draw(painter);
        }
        upload();
    }
    KyPassPixel::Bytes read(int x, int y) override { return KyPassPixel::readImage(mImage, x, y); }

private:
    bool allocate(const QSize& size) override {
        handOver(0, 0, {0, 0});
        mImage = {};
        if (size.isEmpty())
            return true;
        mImage = QImage(size, QImage::Format_ARGB32_Premultiplied);
        mImage.fill(Qt::transparent);
        if (!upload()) {
            mImage = {};
            return false;
        }
        handOver(0, 0, size);
        return true;
    }
    bool upload() {
        const auto* const pixels = reinterpret_cast<const std::uint32_t*>(mImage.constBits());
        return editTexture().setPixels(pixels, mImage.width(), mImage.height());
    }

    QImage mImage;
};

} // namespace

std::unique_ptr<KyQtPaintTarget> KyQtPaintTarget::createImage(KyFrameBuffer& buffer) {
    return std::make_unique<ImageTarget>(buffer);
}

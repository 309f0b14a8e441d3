// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyColor.h"
#include "KyRect.h"
#include "KyVec2.h"

#include <QSize>

#include <array>
#include <cstdint>
#include <optional>

class QImage;
class QPoint;
class QWidget;
class QWindow;

/// One pixel of a pass's picture, kept until the next painting: several events at one place read once.
///
/// ```
/// return mPixel.get(x, y, [&] { return KyPassPixel::readFrameBuffer(handle, x, y); });
/// ```
class KyPassPixel {
public:
    /// Red, green, blue and alpha; colours multiplied by alpha.
    using Bytes = std::array<std::uint8_t, 4>;

    /// The straight colour of the pixel: the one kept, or what `read` gives as Bytes.
    template <class Read>
    KyColor get(int x, int y, Read read) {
        if (!mKept || mKept->x != x || mKept->y != y)
            mKept = Kept{x, y, toColor(read())};
        return mKept->color;
    }
    /// To be called after each painting.
    void reset() { mKept.reset(); }

    /// Of a GL frame buffer of the current context, which is left bound as it was; y counts from the lowest row.
    static Bytes readFrameBuffer(unsigned frameBuffer, int x, int y);
    /// Of an image of 32-bit premultiplied pixels (Format_ARGB32_Premultiplied); y counts from the first row.
    static Bytes readImage(const QImage& image, int x, int y);
    /// Divided by alpha; (0, 0, 0, 0) for alpha 0.
    static KyColor toColor(const Bytes& bytes);

    /// The pixel that a position lies in; empty beside a picture of this size, and for what is no number.
    static std::optional<KyVec2<int>> find(const KyVec2f& position, const QSize& size);
    /// A place on the desktop in device pixels of an area of the canvas that the widget or window shows.
    static KyVec2f fromGlobal(const QPoint& global, const QWidget& canvas, const KyRect<int>& area);
    static KyVec2f fromGlobal(const QPoint& global, const QWindow& canvas, const KyRect<int>& area);

private:
    struct Kept {
        int x;
        int y;
        KyColor color;
    };

    std::optional<Kept> mKept;
};

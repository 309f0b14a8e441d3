// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "Ky2DImage.h"

#include "KyColor.h"

/// An SVG file shown as a picture of its default size, all in one colour once one was set: for symbols that take the
/// colour of their surroundings. The picture's own transparency is kept.
///
/// A picture leads to no other file: an `image` in it is shown when it is embedded and no SVG, and a style sheet of a
/// file is not read. Nothing is shown of a compressed document and of one beyond a limit: 16 MiB, 2^26 pixels, 500
/// elements within elements.
///
/// ```
/// Ky2DSvgImage* symbol = Ky2DSvgImage::create();
/// symbol->setFileLocalPath("/data/arrow.svg");
/// symbol->setColor(KyColor("#3daee9"));
/// ```
class KYAPPLICATION_EXPORT Ky2DSvgImage : public Ky2DImage {
public:
    static const KyType* getType();
    static Ky2DSvgImage* cast(KyObject* object);
    static KyObject* factory() { return create(); }
    static void initializeType();
    static void finalizeType();
    static void initializeClass() { initializeType(); }
    static void finalizeClass() { finalizeType(); }
    const KyType* getObjectType() const override;

    static Ky2DSvgImage* create() { return new Ky2DSvgImage; }
    Ky2DSvgImage() = default;
    Ky2DSvgImage* clone() const override;

    /// Opaque black until one is set.
    const KyColor& getColor() const { return mColor; }
    /// From now on red, green and blue of every pixel; they count as 0 to 1, alpha is not used.
    void setColor(const KyColor& color);
    /// See setColorized.
    bool isColorized() const { return mIsColorized; }

protected:
    QImage loadImage() override;

private:
    void colorizeImage(QImage& image) const;

    KyColor mColor;
    bool mIsColorized = false;

    static const KyType* msType;
};

// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "Ky2DSvgImage.h"

#include "KyTypeBuilder.h"

void Ky2DImage::initializeType() {
    if (msType)
        return;
    Ky2DNode::initializeType();
    using I = Ky2DImage;
    msType = KyTypeBuilder<I>("Ky2DImage", Ky2DNode::getType())
                 .factory()
                 .attribute("X", &I::getX, &I::setX)
                 .attribute("Y", &I::getY, &I::setY)
                 .attribute("Width", &I::getWidth, &I::setWidth)
                 .attribute("Height", &I::getHeight, &I::setHeight)
                 .attribute("Opacity", &I::getOpacity, &I::setOpacity)
                 .attribute("PreserveAspectRatio", &I::isPreserveAspectRatio, &I::setPreserveAspectRatio)
                 .attribute("ImageURL", &I::getImageURL, &I::setImageURL)
                 .attribute("FileLocalPath", &I::getFileLocalPath, &I::setFileLocalPath)
                 .method("getX", &I::getX)
                 .method("setX", &I::setX)
                 .method("getY", &I::getY)
                 .method("setY", &I::setY)
                 .method("getWidth", &I::getWidth)
                 .method("setWidth", &I::setWidth)
                 .method("getHeight", &I::getHeight)
                 .method("setHeight", &I::setHeight)
                 .method("getOpacity", &I::getOpacity)
                 .method("setOpacity", &I::setOpacity)
                 .method("isPreserveAspectRatio", &I::isPreserveAspectRatio)
                 .method("setPreserveAspectRatio", &I::setPreserveAspectRatio)
                 .method("getImageURL", &I::getImageURL)
                 .method("setImageURL", &I::setImageURL)
                 .method("getFileLocalPath", &I::getFileLocalPath)
                 .method("setFileLocalPath", &I::setFileLocalPath)
                 .method("imageModified", &I::imageModified)
                 .method("isImageModified", &I::isImageModified)
                 .build();
    Ky2DSvgImage::initializeType();
}

void Ky2DImage::finalizeType() {
    Ky2DSvgImage::finalizeType();
    KyType::remove(msType);
}

void Ky2DSvgImage::initializeType() {
    if (msType)
        return;
    Ky2DImage::initializeType();
    // Its base initialises it too.
    if (msType)
        return;
    msType = KyTypeBuilder<Ky2DSvgImage>("Ky2DSvgImage", Ky2DImage::getType())
                 .factory()
                 .attribute("Color", &Ky2DSvgImage::getColor, &Ky2DSvgImage::setColor)
                 .method("getColor", &Ky2DSvgImage::getColor)
                 .method("setColor", &Ky2DSvgImage::setColor)
                 .method("isColorized", &Ky2DSvgImage::isColorized)
                 .build();
}

void Ky2DSvgImage::finalizeType() {
    KyType::remove(msType);
}

// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "Ky2DNode.h"

#include "KyURL.h"

#include <QImage>

#include <string>

/// A picture of a file, drawn smoothly into a rectangle. A picture that cannot be loaded shows nothing and is not tried
/// again until it is set again.
///
/// ```
/// Ky2DImage* image = Ky2DImage::create();
/// image->setFileLocalPath("/data/photo.jpg");
/// image->setWidth(320.0);
/// image->setHeight(240.0);
/// ```
class KYAPPLICATION_EXPORT Ky2DImage : public Ky2DNode {
public:
    static const KyType* getType();
    static Ky2DImage* cast(KyObject* object);
    static KyObject* factory() { return create(); }
    /// This type and Ky2DSvgImage's.
    static void initializeType();
    static void finalizeType();
    static void initializeClass() { initializeType(); }
    static void finalizeClass() { finalizeType(); }
    const KyType* getObjectType() const override;

    static Ky2DImage* create() { return new Ky2DImage; }
    Ky2DImage();
    /// As clone.
    Ky2DImage(const Ky2DImage& other);
    Ky2DImage* clone() const override;

    /// Top left corner of the rectangle.
    double getX() const { return mX; }
    void setX(double x) { setGeometry(mX, x, "X"); }
    /// @{
    /// See getX.
    double getY() const { return mY; }
    void setY(double y) { setGeometry(mY, y, "Y"); }
    /// @}
    /// See setWidth.
    double getWidth() const { return mWidth; }
    /// When width or height is not above 0 the picture's own size is taken, a unit for a pixel.
    void setWidth(double width) { setGeometry(mWidth, width, "Width"); }
    /// @{
    /// See setWidth.
    double getHeight() const { return mHeight; }
    void setHeight(double height) { setGeometry(mHeight, height, "Height"); }
    /// @}
    /// See setOpacity.
    double getOpacity() const { return mOpacity; }
    /// Counts as 0 to 1; at 0 the picture is not picked either.
    void setOpacity(double opacity) { setGeometry(mOpacity, opacity, "Opacity"); }
    /// See setPreserveAspectRatio.
    bool isPreserveAspectRatio() const { return mIsPreserveAspectRatio; }
    /// True, the start: the whole picture, centred in the rectangle; false: stretched.
    void setPreserveAspectRatio(bool isPreserved) {
        setGeometry(mIsPreserveAspectRatio, isPreserved, "PreserveAspectRatio");
    }

    /// See setImageURL.
    const KyURL& getImageURL() const { return mImageURL; }
    /// Loaded at the next update, from a regular file of up to 256 MiB or one of Qt's resources ("qrc"). A relative one
    /// is sought among the resources.
    void setImageURL(const KyURL& url);
    /// The path of the URL, UTF-8; empty when it is not local.
    std::string getFileLocalPath() const { return mImageURL.getLocalPath(); }
    void setFileLocalPath(const std::string& path);
    /// As setImageURL, with the file's picture, which may be shared, read already. It is read again when the node is
    /// asked to.
    void setLoadedImage(const KyURL& url, const QImage& image);
    /// A picture that is in memory already, instead of a file; null shows nothing.
    void setImage(const QImage& image);

    /// Loads the picture again at the next update. False when a listener ended the node meanwhile.
    bool imageModified();
    bool isImageModified() const { return mIsImageModified; }
    bool isModified() const override { return mIsImageModified || Ky2DNode::isModified(); }
    void update() override;

protected:
    void updateQGraphicsItemGeometry() override;
    /// The picture to show, null when there is none.
    virtual QImage loadImage();
    /// Where Qt finds the file on this machine, UTF-8; empty when it is not local.
    const std::string& getSourcePath() const { return mSourcePath; }

private:
    void sourceModified();

    double mX = 0.0;
    double mY = 0.0;
    double mWidth = 0.0;
    double mHeight = 0.0;
    double mOpacity = 1.0;
    bool mIsPreserveAspectRatio = true;
    bool mIsImageModified = true;
    KyURL mImageURL;
    /// Found when the URL was set: the script that set it may work elsewhere later.
    std::string mSourcePath;
    /// Given, not loaded.
    QImage mImage;

    static const KyType* msType;
};

// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "Ky2DImage.h"

#include "Ky2DItem.h"
#include "Ky2DUtil.h"
#include "KyPicture_p.h"

#include "KyHolder.h"
#include "KyImage.h"

#include "KyResource.h"
#include "KyTypeBuilder.h"

#include <QGraphicsPixmapItem>
#include <QPainter>
#include <QPainterPath>
#include <QPixmap>

#include <algorithm>
#include <cmath>

namespace {

/// Draws its picture into a rectangle, which is also what it covers.
class KyPictureItem : public QGraphicsPixmapItem {
public:
    void setTarget(const QRectF& target, bool isAspectPreserved) {
        prepareGeometryChange();
        mTarget = target;
        mIsAspectPreserved = isAspectPreserved;
    }

    QRectF boundingRect() const override { return pixmap().isNull() ? QRectF() : mTarget; }

    QPainterPath shape() const override {
        QPainterPath path;
        path.addRect(boundingRect());
        return path;
    }

    void paint(QPainter* painter, const QStyleOptionGraphicsItem*, QWidget*) override {
        const QPixmap picture = pixmap();
        if (picture.isNull())
            return;
        painter->setRenderHint(QPainter::SmoothPixmapTransform);
        painter->drawPixmap(findPlace(picture.size()), picture, picture.rect());
    }

private:
    QRectF findPlace(const QSizeF& size) const {
        if (!mIsAspectPreserved)
            return mTarget;
        QRectF place(QPointF(), size.scaled(mTarget.size(), Qt::KeepAspectRatio));
        place.moveCenter(mTarget.center());
        return place;
    }

    QRectF mTarget;
    bool mIsAspectPreserved = true;
};

bool isFinite(const QRectF& rect) {
    return std::isfinite(rect.x() + rect.y() + rect.width() + rect.height());
}

} // namespace

const KyType* Ky2DImage::msType = nullptr;

const KyType* Ky2DImage::getType() {
    if (!msType)
        initializeType();
    return msType;
}

const KyType* Ky2DImage::getObjectType() const {
    return getType();
}

Ky2DImage* Ky2DImage::cast(KyObject* object) {
    return kyCast<Ky2DImage>(object);
}

Ky2DImage::Ky2DImage() {
    createItem<KyPictureItem>();
}

Ky2DImage::Ky2DImage(const Ky2DImage& other)
    : Ky2DNode(other)
    , mX(other.mX)
    , mY(other.mY)
    , mWidth(other.mWidth)
    , mHeight(other.mHeight)
    , mOpacity(other.mOpacity)
    , mIsPreserveAspectRatio(other.mIsPreserveAspectRatio)
    , mImageURL(other.mImageURL)
    , mSourcePath(other.mSourcePath)
    , mImage(other.mImage) {
    createItem<KyPictureItem>();
}

Ky2DImage* Ky2DImage::clone() const {
    return new Ky2DImage(*this);
}

void Ky2DImage::setImageURL(const KyURL& url) {
    mImageURL = url;
    mSourcePath = url.isEmpty() ? std::string() : KyPicture::findFile(KyResource::resolve(url));
    mImage = QImage();
    sourceModified();
}

void Ky2DImage::setLoadedImage(const KyURL& url, const QImage& image) {
    const Watch watch(this);
    setImageURL(url);
    if (watch.isAlive())
        mImage = image;
}

void Ky2DImage::setFileLocalPath(const std::string& path) {
    KyURL url;
    url.fromLocalPath(path);
    setImageURL(url);
}

void Ky2DImage::setImage(const QImage& image) {
    mImageURL.clear();
    mSourcePath.clear();
    mImage = image;
    sourceModified();
}

void Ky2DImage::sourceModified() {
    if (!imageModified())
        return;
    const Watch watch(this);
    tell("ImageURL");
    if (watch.isAlive())
        tell("FileLocalPath");
}

bool Ky2DImage::imageModified() {
    if (!mImageURL.isEmpty())
        mImage = QImage();
    const bool wasModified = isModified();
    mIsImageModified = true;
    return (wasModified || nodeModified(this)) && geometryModified();
}

void Ky2DImage::update() {
    auto* item = editItem<KyPictureItem>();
    if (mIsImageModified && item)
        item->setPixmap(QPixmap::fromImage(mImage.isNull() ? loadImage() : mImage));
    mIsImageModified = false;
    Ky2DNode::update();
}

void Ky2DImage::updateQGraphicsItemGeometry() {
    auto* item = editItem<KyPictureItem>();
    if (!item)
        return;
    const bool hasSize = mWidth > 0.0 && mHeight > 0.0;
    const QSizeF size = hasSize ? QSizeF(mWidth, mHeight) : QSizeF(item->pixmap().size());
    const QRectF target(QPointF(getQtOffset().x + mX, getQtOffset().y + mY), size);
    if (isFinite(target))
        item->setTarget(target, mIsPreserveAspectRatio);
    item->setOpacity(mOpacity > 0.0 ? std::min(mOpacity, 1.0) : 0.0);
    // The same rectangle may show another way.
    item->QGraphicsItem::update();
}

QImage Ky2DImage::loadImage() {
    const QByteArray bytes = KyPicture::readFile(mSourcePath);
    const auto* data = reinterpret_cast<const unsigned char*>(bytes.constData());
    const KyHolder<KyImage> image(KyImage::createFromMemory(data, std::size_t(bytes.size())));
    return Ky2DUtil::KyImageToQImage(image.get());
}

// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyGraphicsItemType.h"
#include "KyWindow.h"

#include <QGraphicsObject>
#include <QImage>

class KyFrameBuffer;

/// A canvas as an item of any Qt graphics scene, in views that paint with or without GL. It is drawn off-screen, with a
/// context of its own, into a picture that is kept until the canvas needs a redraw. Opaque. Its top left corner is the
/// item's origin; its size is in the scene's units, of which each has as many pixels as the views' finest screen has
/// for a device-independent one: views that scale the scene scale the picture.
///
/// ```
/// auto* item = new KyQGraphicsSceneViewItem(canvas);
/// item->setItemSize({320, 240});
/// scene->addItem(item);
/// ```
class KYAPPLICATION_EXPORT KyQGraphicsSceneViewItem : public QGraphicsObject, public KyWindow {
public:
    static const KyType* getType();
    static KyQGraphicsSceneViewItem* cast(KyObject* object);
    static KyObject* factory() { return create(); }
    static void initializeType();
    static void finalizeType();
    const KyType* getObjectType() const override;

    /// In no scene yet, with that canvas or with null a new one. Null, and reported, when there is no QApplication.
    static KyQGraphicsSceneViewItem* create(KyCanvas* canvas = nullptr);
    /// Needs a QApplication.
    explicit KyQGraphicsSceneViewItem(KyCanvas* canvas = nullptr, QGraphicsItem* parent = nullptr);
    ~KyQGraphicsSceneViewItem() override;

    void destroy() override { KyWindow::destroy(); }

    double getPixelRatio() const override;
    bool isShown() const override;
    void setShown(bool isShown) override;
    void requestRedraw() override;

    /// In units of the Qt scene.
    const QSizeF& getItemSize() const { return mSize; }
    /// In the scene's units, 256 x 256 at the start. Ignored when not finite or negative.
    void setItemSize(const QSizeF& size);

    /// Picking of 2D scenes leaves the item out.
    int type() const override { return eGraphicsItem3DView; }
    QRectF boundingRect() const override { return QRectF(QPointF(), mSize); }
    void paint(QPainter* painter, const QStyleOptionGraphicsItem* option, QWidget* widget) override;

protected:
    QSize getDeviceSize() const override;
    void resizeTo(const QSize& size) override;
    QObject& editQObject() override { return *this; }
    bool prepareContext() override;
    void placeEvent(KyInputEvent& event) override;
    bool sceneEvent(QEvent* event) override;

private:
    void drawImage();
    void sendHover(QGraphicsSceneHoverEvent& event);

    QSizeF mSize{256.0, 256.0};
    QImage mImage;
    KyHolder<KyFrameBuffer> mTarget;

    static const KyType* msType;
};

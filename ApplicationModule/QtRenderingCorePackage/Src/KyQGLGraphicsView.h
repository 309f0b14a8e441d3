// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyWindow.h"

#include <QGraphicsView>

/// A graphics view whose background is the canvas: items of the Qt scene are drawn above it, antialiased, by GL. It
/// has an empty scene of its own until setScene(); without any scene Qt draws nothing. Scroll bars are off.
///
/// The viewport must stay the one it has: the canvas would get no events from another.
///
/// An item under the pointer that takes mouse buttons has pointer events to itself, and so has the item that holds the
/// mouse; an item with the focus has the keys. All others go to the canvas, and to Qt as well.
///
/// ```
/// auto* view = new KyQGLGraphicsView(canvas);
/// view->scene()->addWidget(new QPushButton("Reset"));
/// ```
class KYAPPLICATION_EXPORT KyQGLGraphicsView : public QGraphicsView, public KyWindow {
public:
    static const KyType* getType();
    static KyQGLGraphicsView* cast(KyObject* object);
    static KyObject* factory() { return create(); }
    static void initializeType();
    static void finalizeType();
    const KyType* getObjectType() const override;

    /// Hidden, with that canvas or with null a new one. Null, and reported, when there is no QApplication.
    static KyQGLGraphicsView* create(KyCanvas* canvas = nullptr);
    /// Needs a QApplication.
    explicit KyQGLGraphicsView(KyCanvas* canvas = nullptr, QWidget* parent = nullptr);
    ~KyQGLGraphicsView() override;

    void destroy() override { KyWindow::destroy(); }

    double getPixelRatio() const override;
    std::string getCaption() const override;
    void setCaption(const std::string& caption) override;
    bool isShown() const override;
    void setShown(bool isShown) override;
    void requestRedraw() override;

protected:
    QSize getDeviceSize() const override;
    void resizeTo(const QSize& size) override;
    QObject& editQObject() override { return *this; }
    bool isForCanvas(QObject* watched, QEvent* event) override;
    void drawBackground(QPainter* painter, const QRectF& area) override;
    void paintEvent(QPaintEvent* event) override;
    void showEvent(QShowEvent* event) override;
    bool viewportEvent(QEvent* event) override;
    bool event(QEvent* event) override;

private:
    bool hasItemAt(const QPoint& position) const;
    bool isPointerForCanvas(QEvent* event);
    bool isMouseForCanvas(const QMouseEvent& event);
    void drawPicture(QPainter& painter);

    bool mIsPainting = false;
    /// Who got the last press, and the touch that is going on.
    bool mIsMouseWithItems = false;
    bool mIsTouchWithItems = false;

    static const KyType* msType;
};

// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyApplicationExport.h"

#include "KyColor.h"
#include "KyObject.h"
#include "KySignal.h"
#include "KyVec2.h"

#include <QGraphicsView>
#include <QImage>

#include <string>

class Ky2DNode;
class Ky2DScene;

/// Shows a 2D scene in a window or in a layout: fitted, zoomed, panned and turned, and tells which node was clicked.
///
/// The view does not own the scene: a scene that ends leaves it empty. It repaints when a node, or an item of the Qt
/// scene, changed, and only what changed; nothing is painted while nothing changes. Items that take mouse events
/// themselves, such as embedded widgets, get them first. What is left:
///
/// | input | does |
/// |---|---|
/// | wheel, `+`, `-` | zooms, at the pointer or at the middle |
/// | drag with the left or middle button, arrow keys | pans |
/// | left click | picks: `PickedNode`, and the signal "nodePicked" |
/// | double click, `F`, `Home` | fits the whole scene |
///
/// A view that was fitted, as a new one is, stays so when its size changes, until it is zoomed, panned or centred.
/// Change what is seen by the methods here only, not by QGraphicsView's own transforms and scroll bars.
///
/// A view with a parent widget or in a layout ends with it as every widget; else destroy() ends it, allowed in
/// handlers of its own signals too. Sizes and positions in the view are device-independent pixels. GUI thread.
///
/// ```
/// Ky2DView* view = Ky2DView::create();
/// view->setScene(scene);
/// view->nodePickedSignal().connect([](Ky2DNode* node) { ... }); // null: beside all nodes
/// view->show();
/// ```
class KYAPPLICATION_EXPORT Ky2DView : public QGraphicsView, public KyObject {
public:
    /// Device-independent pixels for a unit of the scene.
    static constexpr double cMinZoom = 1e-6;
    /// See cMinZoom.
    static constexpr double cMaxZoom = 1e6;
    /// Of pictures and of the view, on each axis.
    static constexpr int cLargestSize = 16384;

    static const KyType* getType();
    static Ky2DView* cast(KyObject* object);
    static KyObject* factory() { return create(); }
    static void initializeType();
    static void finalizeType();
    static void initializeClass() { initializeType(); }
    static void finalizeClass() { finalizeType(); }
    const KyType* getObjectType() const override;

    /// Hidden, without scene and parent. Null, and reported, when there is no QApplication.
    static Ky2DView* create();
    /// Needs a QApplication.
    explicit Ky2DView(QWidget* parent = nullptr);
    ~Ky2DView() override;
    /// Living views, shown or not, in the order in which they were made.
    static unsigned getNbViews();
    /// Null when out of range.
    static Ky2DView* getView(unsigned index);
    /// A view is not copied: null.
    KyObject* clone() const override { return nullptr; }
    /// Ends the view: at once, or when the event that it handles has been handled.
    void destroy() override;

    /// Null when there is none or it has ended.
    Ky2DScene* getScene() const;
    /// Not owned; null shows the background alone. Several views may show one scene.
    void setScene(Ky2DScene* scene);
    /// See setBackgroundColor.
    const KyColor& getBackgroundColor() const { return mBackgroundColor; }
    /// White at the start.
    void setBackgroundColor(const KyColor& color);
    /// The window's title, UTF-8.
    std::string getCaption() const;
    void setCaption(const std::string& caption);
    /// Device-independent pixels.
    int getWidth() const { return width(); }
    /// Values under 1 are ignored, those above cLargestSize count as that; a layout may decide otherwise.
    void setWidth(int width);
    /// Device-independent pixels.
    int getHeight() const { return height(); }
    /// See setWidth.
    void setHeight(int height);
    /// @{
    /// Whether the widget is shown.
    bool isShown() const { return isVisible(); }
    void setShown(bool isShown);
    /// @}

    /// Device-independent pixels for a unit.
    double getZoom() const { return mZoom; }
    /// About the middle; limited to cMinZoom ... cMaxZoom. Ignored when not finite or not above 0.
    void setZoom(double zoom);
    /// The point of the scene in the middle of the view.
    const KyVec2d& getCenter() const { return mCenter; }
    /// Ignored when not finite.
    void setCenter(const KyVec2d& center);
    /// See setRotation.
    double getRotation() const { return mRotation; }
    /// Degrees, clockwise, about the middle. Ignored when not finite.
    void setRotation(double degrees);

    /// Shows all visible items as large as possible, with a small margin; a point or nothing keeps the zoom. Waits for
    /// a size when the view has none.
    void fit();
    /// The same with one node and what is below it, once. Nothing for null and for a node without a size and place.
    void fitNode(Ky2DNode* node);
    /// Multiplies the zoom, about the middle.
    void zoom(double factor);
    /// Multiplies the zoom; what is at this pixel stays there.
    void zoomAt(double factor, double x, double y);
    /// Moves the content by pixels.
    void pan(double dx, double dy);

    /// The point of the scene at a pixel of the view, and back.
    KyVec2d toScene(double x, double y) const;
    /// See toScene.
    KyVec2d fromScene(const KyVec2d& point) const;
    /// The topmost visible node at a pixel of the view, or next to it by up to 3 pixels (thin lines); the nearest
    /// ancestor that is driven by a node when an item is none's. Null when there is none.
    Ky2DNode* pick(double x, double y);
    /// What the last click found; null when nothing or when it has ended.
    Ky2DNode* getPickedNode() const;
    /// Sent with the node of each click, null beside all nodes.
    KySignal<Ky2DNode*>& nodePickedSignal() { return mNodePickedSignal; }

    /// What the view shows, scaled to fit that many pixels and centred; a null image when a size is not from 1 to
    /// cLargestSize. Works for hidden views.
    QImage toImage(int width, int height);
    /// In the view's size and its screen's resolution; the format is that of the extension. False when the file cannot
    /// be written.
    bool saveImage(const std::string& path);

    QSize sizeHint() const override { return {640, 480}; }
    QSize minimumSizeHint() const override { return {64, 48}; }

protected:
    bool event(QEvent* event) override;
    bool viewportEvent(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    /// The view scrolls by its transform alone.
    void scrollContentsBy(int, int) override {}

private:
    class Busy;

    /// What a resize that the hidden view was not told of yet has left undone.
    void settle();
    /// Tells what is modified, if anybody listens; the view may end.
    void tell(const char* attribute);
    /// The same with what differs from what was told last.
    void tellSize();
    void tellShown();
    void onChangesPending();
    void place();
    void showRect(const QRectF& rect);
    /// A length in the view as one in the scene, turned and scaled.
    KyVec2d toSceneOffset(double dx, double dy) const;
    QRectF getVisibleBound() const;
    Ky2DNode* findNode(const QRect& area) const;
    void drag(const QPoint& position);
    void endPress();
    void click(const QPoint& position);

    KyObjectReference mScene;
    KyObjectReference mPickedNode;
    KySignal<Ky2DNode*> mNodePickedSignal{"nodePicked"};
    KyHasSlots mSlots;
    KyColor mBackgroundColor{1.0f, 1.0f, 1.0f};
    KyVec2d mCenter;
    double mZoom = 1.0;
    double mRotation = 0.0;
    QPoint mPressPosition;
    QPoint mLastPosition;
    Qt::MouseButton mPressButton = Qt::NoButton;
    bool mIsDragging = false;
    bool mIsFitted = true;
    bool mIsApplyQueued = false;
    /// Nothing was to be seen at the last fit.
    bool mIsFitPending = true;
    unsigned mNbBusy = 0;
    QSize mPlacedSize;
    QSize mToldSize;
    bool mToldShown = false;

    static const KyType* msType;
};

// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyApplicationExport.h"

#include "KyColor.h"
#include "KyGraphicsPass.h"
#include "KyIntersected.h"

#include "KyField.h"
#include "KySignal.h"
#include "KyVec2.h"

#include <QList>
#include <QObject>
#include <QPointer>
#include <QRectF>

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

class Ky2DScene;
class QGraphicsProxyWidget;
class QGraphicsScene;
class QGraphicsView;
class QPoint;
class QWidget;
class QWindow;

/// Paints a 2D scene, or a widget, into the colour texture of its frame buffer, which another pass shows: a picture of
/// Qt's over the 3D image. One pass belongs to one view; its picture has the size of its area there.
///
/// Without a widget it shows a 2D scene through a window onto it, which can be moved and scaled. With a widget it shows
/// that, as large as the picture, through a proxy item in the scene: one unit of the scene is one pixel of the picture;
/// what else is in the scene is seen over or under it. Pixels are premultiplied, and row 0 of the texture is the
/// uppermost.
///
/// It paints when something of it changed, and says so by the signal "needUpdate"; else the last picture stays and no
/// GL call is made. A 2D scene and a widget that it does not own may end at any time; but a Qt scene given to
/// connectQGraphicsScene ends with its items, the widget's among them. What the pass owned and shows no longer ends
/// when control returns to Qt's event loop, because it may be what asked for the change.
///
/// It paints with GL in a context of its own, which shares with QOpenGLContext::globalShareContext(): set
/// Qt::AA_ShareOpenGLContexts before the QApplication is made, and no core profile as the default format. Where the
/// processor draws anyway, and where the renderer's context shares nothing with Qt, it paints on an image and gives the
/// texture its pixels. Qt's main thread, which also renders.
///
/// ```
/// KyGraphicsViewMultiPass* overlay = KyQtPass::createQtPassOverlayView(view, true, true);
/// KyQtPass::cast(overlay->getMainPass())->setQWidget(new Panel, true);
/// ```
class KYAPPLICATION_EXPORT KyQtPass : public QObject, public KyGraphicsPass {
    Q_OBJECT

public:
    /// How the picture is painted. Automatic is what costs less and works.
    enum PaintMethod : std::int32_t { eAutomatic = 0, eFrameBuffer = 1, eImage = 2, eNbPaintMethods };

    /// Carries the pass.
    using Signal = KySignal<KyQtPass*>;

    static const KyType* getType();
    static KyQtPass* cast(KyObject* object);
    static KyObject* factory() { return create(); }
    static void initializeType();
    /// Passes that still live show nothing from then on.
    static void finalizeType();
    static void initializeClass() { initializeType(); }
    static void finalizeClass() { finalizeType(); }
    const KyType* getObjectType() const override;

    /// Null, and reported, when there is no QApplication.
    static KyQtPass* create();
    /// With an empty 2D scene of its own; needs a QApplication.
    KyQtPass();
    ~KyQtPass() override;
    /// The window onto the scene and the switches, with a copy of the 2D scene that the new pass owns; no widget.
    KyQtPass* clone() const override;

    /// A view for an overlay, named "OverlayQtPass": a new Qt pass as its main pass, and a pass that draws its picture,
    /// blended over what is there or instead of it. With `hasHandler` the pass gets a KyQtPassEventHandler. Inserted at
    /// the end of `parent` unless that is null. To show it in a part of `parent` set the area of the view that is
    /// given, not that of its pass. Null without a QApplication.
    static KyGraphicsViewMultiPass* createQtPassOverlayView(KyGraphicsViewMultiPass* parent, bool isBlended,
                                                            bool hasHandler);

    /// Shows another 2D scene; null shows nothing. The one before is destroyed when it was owned.
    void set2DScene(Ky2DScene* scene, bool own);
    /// Null when there is none or it ended.
    Ky2DScene* edit2DScene() const;
    /// Whether the 2D scene ends with the pass.
    bool owns2DScene() const { return mOwns2DScene; }
    /// Shows the widget and returns its item; null goes back to the scene and gives null. Null, and nothing changed,
    /// for a widget that has a parent or an item already, or without a scene to put it in. The widget is as large as
    /// the picture from the next frame on, within its own limits.
    QGraphicsProxyWidget* setQWidget(QWidget* widget, bool own);
    /// Null in scene mode.
    QWidget* editQWidget() const;
    /// The view that delivers events to the scene; never shown. Null once the QApplication is gone.
    QGraphicsView* editQGraphicsView() const;
    /// The Qt scene that is painted; null when it ended.
    QGraphicsScene* editQGraphicsScene() const;
    /// Paints another Qt scene, not owned, in place of the 2D scene's; null paints nothing.
    void connectQGraphicsScene(QGraphicsScene* scene);
    /// Gives the graphics view the size and the mapping of the picture, so that a position of the picture is one of the
    /// view's viewport; to be called before events are delivered.
    void adaptQGraphicsView(const KyGraphicsViewMultiPass* view);

    /// Centre of the window onto the 2D scene; values that are not finite are ignored, here and below.
    const KyVec2f& getViewPosition() const { return mViewPosition; }
    void setViewPosition(const KyVec2f& position);
    /// Size of the window in units of the scene, before scaling. A 0 paints nothing.
    const KyVec2f& getViewRectSize() const { return mViewRectSize; }
    void setViewRectSize(const KyVec2f& size);
    /// Scales the window; a negative one mirrors. With a widget: pixels of the picture for a pixel of the view.
    const KyVec2f& getViewScale() const { return mViewScale; }
    void setViewScale(const KyVec2f& scale);
    /// Widens or heightens the window to the proportions of the view; on at the start.
    bool isKeepAspectRatioEnabled() const { return mIsKeepAspectRatio; }
    void setKeepAspectRatioEnabled(bool isOn);
    /// Lists and menus that widgets open are not cached either; on at the start.
    bool isOverrideCacheModeInWidgetMode() const { return mIsOverrideCacheMode; }
    void setOverrideCacheModeInWidgetMode(bool isOn);
    /// See setPaintMethod.
    PaintMethod getPaintMethod() const { return mPaintMethod; }
    /// Values that name no method are refused with false. What cannot be done counts as automatic.
    bool setPaintMethod(PaintMethod method);
    /// Whether the picture is painted with GL; false before the first frame.
    bool isPaintedByFrameBuffer() const;
    /// How often it painted.
    std::uint64_t getNbPaintings() const { return mNbPaintings; }

    /// The position in the Qt scene of a pixel of the pass's area, from its top left corner.
    KyVec2f getScenePosition(const KyVec2f& pixel, const KyGraphicsViewMultiPass* view) const;
    /// The same of a place on the desktop; `canvas` is the widget or window that shows the view's canvas, (0, 0) when
    /// it is null.
    KyVec2f getScenePositionFromGlobalPosition(const QPoint& global, const KyGraphicsViewMultiPass* view,
                                               const QWidget* canvas) const;
    KyVec2f getScenePositionFromGlobalPosition(const QPoint& global, const KyGraphicsViewMultiPass* view,
                                               const QWindow* canvas) const;
    /// What Ky2DScene::pick finds at a pixel; false when there is no 2D scene or nothing was found.
    bool pick(const KyVec2f& pixel, const KyGraphicsViewMultiPass* view, std::vector<KyIntersected*>& results,
              const KyIntersectedCreator& creator = {}) const;
    /// The straight colour at a pixel in the last picture; (0, 0, 0, 0) outside and before the first frame.
    KyColor getPixelColor(const KyVec2f& pixel, const KyGraphicsViewMultiPass* view);

    /// Makes the widget of a Designer form (a ".ui" file, UTF-8 path) the pass's own widget. False, and the reason in
    /// getError(), when it cannot.
    bool loadForm(const std::string& path);
    /// Of the last loadForm(), getWidgetProperty() or setWidgetProperty(); empty when it went well.
    const std::string& getError() const { return mError; }
    /// A property of the widget, or of the one in it that has this object name; empty when there is none.
    KyField getWidgetProperty(const std::string& objectName, const std::string& property);
    /// False when there is no such widget or property, or it refuses the value.
    bool setWidgetProperty(const std::string& objectName, const std::string& property, const KyField& value);

    /// True until the next painting.
    bool isUpdateNeeded() const;
    /// Sent with the pass when a painting became necessary.
    Signal& needUpdateSignal() { return mNeedUpdateSignal; }
    /// Sends the signal.
    void needUpdate(const KyQtPass* pass) { mNeedUpdateSignal.send(const_cast<KyQtPass*>(pass)); }

    bool adaptView(const KyGraphicsViewMultiPass& view) override;
    void preRender(KyRendererContext& context) override;
    void doRender(KyRendererContext& context, KyGraphicsViewMultiPass& view) override;
    void postRender(KyRendererContext& context) override;
    /// Null makes a new one: there is always one, and its texture holds the picture.
    void setFrameBuffer(KyFrameBuffer* buffer) override;

protected:
    /// Sends the signal when it turns true.
    void setNeedUpdate(bool isNeeded);

private Q_SLOTS:
    void onQGraphicsSceneChanged(const QList<QRectF>& regions);

private:
    struct Painting;

    static void closeAll();
    void close();
    void leave2DScene();
    void attachQGraphicsScene(QGraphicsScene* scene);
    /// Without telling; false when there was none.
    bool dropWidget();
    void leaveWidget();
    void onWidgetDestroyed();
    bool findWidget(const std::string& objectName, QWidget*& found);
    void fail(const std::string& error);

    bool prepareTarget(KyRendererContext& context);
    QSize getWantedSize() const;
    void synchronizeFrameBuffer();
    void renderSceneMode();
    void renderWidgetMode();
    void paint(const QRectF& source);
    void adaptWidget(const QRectF& rect);
    void updateCacheModeOnDynamicallyCreatedItem();
    QRectF getSourceRect(double width, double height) const;
    void initializeDataForReadPixelOperation();
    void finalizeDataForReadPixelOperation();
    template <class T>
    void change(T& member, const T& value, std::string_view attribute);

    QPointer<QGraphicsView> mGraphicsView;
    QPointer<QGraphicsScene> mGraphicsScene;
    KyObjectReference m2DScene;
    bool mOwns2DScene = false;
    QPointer<QWidget> mWidget;
    QPointer<QGraphicsProxyWidget> mProxy;
    bool mOwnsWidget = false;
    KyVec2f mViewPosition{0.0f, 0.0f};
    KyVec2f mViewRectSize{512.0f, 512.0f};
    KyVec2f mViewScale{1.0f, 1.0f};
    bool mIsKeepAspectRatio = true;
    bool mIsOverrideCacheMode = true;
    PaintMethod mPaintMethod = eAutomatic;
    std::uint64_t mNbPaintings = 0;
    std::string mError;
    std::unique_ptr<Painting> mPainting;
    KyHasSlots mSlots;
    Signal mNeedUpdateSignal{"needUpdate"};

    static const KyType* msType;
};

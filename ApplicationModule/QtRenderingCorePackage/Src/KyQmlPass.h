// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyApplicationExport.h"

#include "KyGraphicsPass.h"

#include "KyColor.h"
#include "KyHolder.h"
#include "KySignal.h"
#include "KyVec2.h"

#include <QObject>
#include <QSize>
#include <QUrl>
#include <QVariant>

#include <functional>
#include <memory>
#include <string>

class KyGraphicsViewMultiPass;
class KyQmlRenderControl;
class KyTexture;
class QPoint;
class QQmlComponent;
class QQmlContext;
class QQmlEngine;
class QQuickItem;
class QQuickWindow;
class QWidget;
class QWindow;

/// Renders a QML file off screen into a texture that the view then shows, usually above the 3D picture. It renders when
/// the QML asks for it and when its size changes; otherwise a frame costs nothing but showing the texture.
///
/// The file is loaded in the first frame after it was set, and again whenever it changes on disk, however the editor
/// writes it. A file that fails is replaced by a report with its errors, until it is repaired. All passes share one
/// engine; each has a context of its own, where objects of the object model can be entered by name.
///
/// One unit of the QML is one device pixel of the buffer; its root item is given the buffer's size. The pixels are
/// premultiplied, and row 0 of the texture is the lowest. Where no GL context can share textures with the view's, Qt
/// Quick's software renderer paints into the same texture.
///
/// Reference counted; one pass belongs to one view. The thread that renders the view and runs Qt's event loop.
///
/// ```
/// KyGraphicsViewMultiPass* overlay = KyQmlPass::createQmlPassOverlayView(view, true, true);
/// auto* pass = KyQmlPass::cast(overlay->getMainPass());
/// pass->setContextObject("lamp", lamp);        // Text { text: lamp.Name }
/// pass->setQml(QStringLiteral("/data/panel.qml"));
/// ```
class KYAPPLICATION_EXPORT KyQmlPass : public QObject, public KyGraphicsPass {
    Q_OBJECT

public:
    /// The report that is loaded in place of a failing file.
    static constexpr const char* cErrorsReport = "qrc:///qml/QMLErrorsReport";

    static const KyType* getType();
    static KyQmlPass* cast(KyObject* object);
    static KyObject* factory() { return create(); }
    static void initializeType();
    static void finalizeType();
    static void initializeClass() { initializeType(); }
    /// Empties the living passes, then ends the shared engine and the type record. Called by QML that is running, the
    /// engine ends when that has returned to the event loop.
    static void finalizeClass();
    const KyType* getObjectType() const override;

    static KyQmlPass* create() { return new KyQmlPass; }
    KyQmlPass();
    ~KyQmlPass() override;
    KyQmlPass& operator=(const KyQmlPass&) = delete;
    /// The settings, the QML and the context objects; it loads anew, in a buffer of its own.
    KyQmlPass* clone() const override;

    /// A view "OverlayQmlPass" with a new pass as its main pass and a screen pass above it, inserted at the parent's
    /// end when there is one (count 0 else). Blending shows the parent's picture where the QML is transparent; the
    /// handler sends the view's events to the QML.
    static KyGraphicsViewMultiPass* createQmlPassOverlayView(KyGraphicsViewMultiPass* parent, bool isBlended,
                                                             bool hasEventHandler);

    /// Shows a local file and follows its changes. Empty shows nothing.
    void setQml(const QString& localFile);
    /// As above for any URL; only local files are followed, and only with `isWatched`.
    void setQml(const QUrl& url, bool isWatched);
    /// What is shown or to be loaded: the errors report when that stands for a QML that failed.
    const QUrl& getQml() const { return mQml; }
    /// The file that is followed; empty when none was asked for.
    const QUrl& getWatchedQml() const { return mWatchedQml; }
    /// A local path, relative ones from the current resource directory, or a URL; UTF-8. Followed when local.
    void setQmlText(const std::string& pathOrUrl);
    /// A local path where there is one, else the URL.
    std::string getQmlText() const;
    /// Whether its root item is shown; the errors report's does not count.
    bool isLoaded() const;
    /// What was wrong with the QML, a line each; empty when it loaded.
    const std::string& getErrorText() const { return mErrorText; }

    /// The engine of all passes, made when first asked for; null without QCoreApplication.
    static QQmlEngine* getQmlEngine();
    /// Null when there is no engine.
    QQmlContext* getQmlContext() const;
    /// Null before loading. After a failure those of the errors report, and null where that is off or fails itself; the
    /// item also after somebody has deleted it.
    QQmlComponent* getQmlComponent() const;
    /// See getQmlComponent.
    QQuickItem* getQuickItem() const;
    /// The two of the first frame; null before, and where nothing can render QML. Owned by the pass.
    QQuickWindow* getQuickWindow() const;
    /// See getQuickWindow.
    KyQmlRenderControl* getRenderControl() const;
    /// The colour texture of the frame buffer; null when that was taken away.
    KyTexture* getTexture() const;

    /// Makes the buffer independent of the view's size, which then stretches it; an empty size follows the view again.
    void setFboSize(const QSize& size);
    /// Device pixels: the size set, else the view's at the last frame.
    QSize getFboSize() const;
    /// Where the shared engine looks for modules and plug-ins, before other places.
    void addImportPath(const QString& path);
    /// As addImportPath, for plug-ins.
    void addPluginPath(const QString& path);
    /// On at the start. Off, a file that fails leaves the pass empty until it changes.
    void setEnableErrorsReport(bool isEnabled);
    /// See setEnableErrorsReport.
    bool isErrorsReportEnabled() const { return mIsErrorsReportEnabled; }
    /// A QML that reads the context properties `qmlPathErrors`, the failing file's name, and `qmlError`, a list of maps
    /// with `line`, `column`, `description`, `file` (set where it is another file) and `canOpen` (there is a local
    /// one); of very many errors the last map has `more`, the number of those left out. Its root may have the signals
    /// `openError(var)` and `reloadFile()`.
    void setErrorsReport(const QUrl& url) { mErrorsReport = url; }
    const QUrl& getErrorsReport() const { return mErrorsReport; }
    /// Makes an object visible to this pass's QML, which does not keep it; null removes. An empty name is ignored.
    void setContextObject(const std::string& name, KyObject* object);

    /// A position in the pass's area, device pixels with the origin at its top left, as floats. In the QML it is that
    /// times getFboSize() over the area's size, which differ with a fixed size only.
    KyVec2f getScenePosition(const KyVec2f& pixel, const KyGraphicsViewMultiPass* view) const;
    /// The same for a place on the desktop, of the window or widget that shows the canvas.
    KyVec2f getScenePositionFromGlobalPosition(const QPoint& global, const KyGraphicsViewMultiPass* view,
                                               const QWidget& canvas) const;
    KyVec2f getScenePositionFromGlobalPosition(const QPoint& global, const KyGraphicsViewMultiPass* view,
                                               const QWindow& canvas) const;
    /// The straight colour at a position in the pass's area; (0, 0, 0, 0) outside and before the first frame. Read once
    /// between two renderings when asked for the same place.
    KyColor getPixelColor(const KyVec2f& pixel, const KyGraphicsViewMultiPass* view) const;

    void setFrameBuffer(KyFrameBuffer* buffer) override;
    bool adaptView(const KyGraphicsViewMultiPass& view) override;
    void preRender(KyRendererContext& context) override;
    void doRender(KyRendererContext& context, KyGraphicsViewMultiPass& view) override;
    void postRender(KyRendererContext& context) override;

    /// Makes the buffer anew in the wanted size. Nothing before the first frame.
    void createFbo();
    /// Gives the root item and the quick window the buffer's size.
    void updateQuickSizes();
    /// Ends buffer, context, window and the QML in it; the next frame makes and loads them again. Like all that ends
    /// here, they may be running, so Qt's event loop deletes them.
    void cleanupGraphicsRessources();
    /// Ends the QML's objects and their context; nothing is shown until another QML is set.
    void cleanupModelRessources();

    /// Sent with the pass when a rendering becomes due.
    KySignal<KyQmlPass*>& needUpdateSignal() { return mNeedUpdateSignal; }
    /// The buffer and its texture are new.
    KySignal<>& textureHandleModifiedSignal() { return mTextureHandleModifiedSignal; }
    /// A root item is there, in its size; the errors report's as well.
    KySignal<>& qmlLoadedSignal() { return mQmlLoadedSignal; }

public Q_SLOTS:
    /// Asks for a rendering in the next frame.
    void requestUpdate();
    /// Makes the root item once the component is there.
    void qmlComponentLoaded();
    /// Opens a file with the desktop: that of the error, given as its map in `qmlError`, else the failing one.
    void onOpenError(const QVariant& error);
    /// Loads the file, which has changed.
    void onQmlChanged(const QString& path);
    /// Loads the watched QML again, else the one that failed.
    void onReloadCurrentQml();

protected:
    /// Sends needUpdate when it turns true.
    void setNeedUpdate(bool isNeeded);
    /// True until the next rendering.
    bool isUpdateNeeded() const;
    /// Shows the report of these errors in place of the QML. The list holds maps.
    void onErrorReport(const QVariantList& errors);

private:
    struct Parts;
    enum class State { eEmpty, eLoading, eReady, eLoaded, eFailed };

    KyQmlPass(const KyQmlPass& other);

    static void endQmlEngine();
    const QUrl& getShownQml() const;
    QQmlContext* editContext();
    void setShown(const QUrl& url, bool isReport);
    void load();
    void createRootItem();
    void showRootItem(QQuickItem* item);
    void fail(const QVariantList& errors);
    void releaseQml();
    void releaseContext();
    void releaseGraphics();
    void change(const std::function<void()>& step);
    void onRootEnded();
    bool prepare();
    bool initializeGraphics();
    bool makeGraphics();
    void initializeRenderControl();
    void render();
    bool isCleanedUp() const;
    void shareBuffer();
    void releaseBuffer();

    std::unique_ptr<Parts> mParts;
    State mState = State::eEmpty;
    QUrl mQml;
    QUrl mWatchedQml;
    QUrl mFailingQml;
    /// Whether mQml is the errors report and stands for mFailingQml.
    bool mIsReport = false;
    QUrl mErrorsReport{QString::fromLatin1(cErrorsReport)};
    bool mIsErrorsReportEnabled = true;
    QSize mFixedSize;
    std::string mErrorText;
    KySignal<KyQmlPass*> mNeedUpdateSignal{"needUpdate"};
    KySignal<> mTextureHandleModifiedSignal{"textureHandleModified"};
    KySignal<> mQmlLoadedSignal{"qmlLoaded"};

    static QQmlEngine* msQmlEngine;
    static const KyType* msType;
};

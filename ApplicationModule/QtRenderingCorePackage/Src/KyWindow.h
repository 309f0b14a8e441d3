// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyApplicationExport.h"

#include "KyQGraphicsDevice.h"

#include "KyCanvas.h"

#include "KyHolder.h"
#include "KyObject.h"
#include "KySignal.h"

#include <QSize>
#include <QSurfaceFormat>

#include <cstdint>
#include <memory>
#include <string>

class KyFrameBuffer;
class KyImage;
class KyInputEvent;
class KyQEventCanvasProvider;
class KyURL;
class QEvent;
class QObject;
class QOpenGLContext;
class QSurface;

/// What everything that shows a canvas on a screen has in common: the canvas, of which it holds a reference, its size
/// and pixel ratio, the graphics device, the conversion of Qt's events into the canvas's, and redrawing on need. The
/// classes derived from it are Qt's windows, widgets and items; Qt's parents own them as usual, else destroy() ends
/// them. Qt's main thread.
///
/// Redrawing: a window whose canvas changed, or whose size or picture is stale, needs a redraw. The task
/// "KyWindowRedrawTask" of the main task manager, made by initializeClass, asks for it once a frame for all windows
/// that are shown and redraw by themselves; nothing is drawn while nothing changes. A canvas may be shown by several
/// windows, each at its own size.
///
/// All contexts must share: set Qt::AA_ShareOpenGLContexts before the QApplication is made. Without GL a window shows
/// nothing, and says so once.
///
/// ```
/// KyQOpenGLWindow* window = KyQOpenGLWindow::create(canvas);
/// if (window)
///     window->show();
/// ```
class KYAPPLICATION_EXPORT KyWindow : public KyObject {
public:
    /// Sent with the window.
    using Signal = KySignal<KyWindow*>;

    static const KyType* getType();
    static KyWindow* cast(KyObject* object);
    static void initializeType();
    static void finalizeType();
    /// This type, and the task that redraws.
    static void initializeClass();
    static void finalizeClass();
    const KyType* getObjectType() const override;

    KyWindow(const KyWindow&) = delete;
    KyWindow& operator=(const KyWindow&) = delete;
    ~KyWindow() override;

    /// Living windows, shown or not, in the order in which they were made.
    static unsigned getNbWindows();
    /// Null when out of range.
    static KyWindow* getWindow(unsigned index);
    /// What windows that are drawn with GL alone ask for: 3.3 core, 24 bits of depth, 4 samples. Never for a context
    /// that Qt paints with, nor as Qt's default.
    static QSurfaceFormat getDefaultFormat();
    /// Whether this display offers such contexts; else the reason. Needs a QGuiApplication.
    static bool isSupported(std::string& error);

    /// Ends the window: at once, or, while it handles an event, draws, or sends a signal, when it has done so; it is
    /// hidden and gives up its canvas at once in either case.
    void destroy() override;

    /// Never null before the end: a window that was given none has an empty one of its own.
    KyCanvas* getCanvas() const { return mCanvas.get(); }
    /// Holds a reference; null makes a new, empty one.
    void setCanvas(KyCanvas* canvas);
    /// Its context is there from the first frame on.
    KyQGraphicsDevice& editGraphicsDevice() { return *mDevice; }
    /// Turns Qt's events into the canvas's; its mouse focus policy is the window's.
    KyQEventCanvasProvider& editEventProvider();
    /// A number of KyMouseFocusPolicy; others are ignored.
    void setMouseFocusPolicy(int policy);
    int getMouseFocusPolicy() const;

    /// Device pixels: the size of what GL draws into, and of the canvas from showing on, while this window draws it and
    /// has the pointer.
    int getWidth() const { return getDeviceSize().width(); }
    /// See getWidth.
    int getHeight() const { return getDeviceSize().height(); }
    /// Device pixels for each of Qt's device-independent ones.
    virtual double getPixelRatio() const = 0;
    /// Larger than window systems and devices take.
    static constexpr int cLargestSize = 16384;
    /// Device pixels; takes the nearest size that the pixel ratio allows. Values under 1 are ignored, those above
    /// cLargestSize count as that, and a layout may decide otherwise.
    void setSize(int width, int height);
    /// UTF-8; empty where there is no title.
    virtual std::string getCaption() const { return {}; }
    virtual void setCaption(const std::string&) {}
    /// Whether its picture is to be seen, as far as Qt knows.
    virtual bool isShown() const = 0;
    virtual void setShown(bool isShown) = 0;

    /// Asks for a frame soon, changed or not; several requests make one frame.
    virtual void requestRedraw() = 0;
    /// Whether a frame would be another than the one that was drawn last; false without a size.
    bool needsRedraw() const;
    /// Whether the task redraws it, true at the start; else the host calls requestRedraw().
    bool getAutoRedraw() const { return mIsAutoRedraw; }
    void setAutoRedraw(bool isAuto);

    /// The canvas as it is now, at the window's size in device pixels; the caller owns it (count 0). Null without a
    /// size, without GL, and before the first frame where Qt makes the context. The picture on the screen and what is
    /// current stay as they are.
    KyImage* grabPicture();
    /// Writes grabPicture() to a PNG file. False when there is none or it cannot be written.
    bool savePicture(const KyURL& url);

    /// A frame is on the screen, or on its way there where the system does not tell.
    Signal& drawnSignal() { return mDrawnSignal; }
    /// The person or the program closed the window: it hides and still lives.
    Signal& closedSignal() { return mClosedSignal; }

protected:
    /// While one lives on the stack destroy() waits.
    class KYAPPLICATION_EXPORT Busy {
    public:
        /// The window is watched, not owned.
        explicit Busy(KyWindow& window);
        ~Busy();
        Busy(const Busy&) = delete;
        Busy& operator=(const Busy&) = delete;

    private:
        /// Qt's parents end windows as they like.
        KyObjectReference mWindow;
    };

    /// Holds a reference to the canvas; null makes one.
    explicit KyWindow(KyCanvas* canvas);

    /// Whether Qt's application is there, else reported: `className` cannot be made.
    static bool hasApplication(const char* className, bool needsWidgets);

    /// Device pixels; empty before the window has a size.
    virtual QSize getDeviceSize() const = 0;
    /// In device-independent pixels.
    virtual void resizeTo(const QSize& size) = 0;
    /// The Qt object that is the window.
    virtual QObject& editQObject() = 0;
    /// False for events of the watched object that are not meant for the canvas.
    virtual bool isForCanvas(QObject* watched, QEvent* event);

    /// Moves an event to where it belongs in the canvas, when Qt's position was not in the window.
    virtual void placeEvent(KyInputEvent&) {}
    /// Whether the device has a context; makes it where that is possible without a frame.
    virtual bool prepareContext();

    /// Lets the canvas have the object's events.
    void watch(QObject& object);
    /// What a derived class's event() calls with Qt's result; returns what it is to return. Stops events that the
    /// canvas used from going to Qt's parents, and sends "closed".
    bool finishEvent(QEvent* event, bool wasHandled);
    /// Whether something in the canvas used the event, which is being handled: keys that are typed there, for one.
    bool isUsedByCanvas(const QEvent& event) const { return mUsedEvent == &event; }
    /// What a derived class calls first in its destructor, while all of it is there.
    void end();
    /// Whether there is GL; reported when there is none, once for each window.
    bool checkSupport();
    /// The context that is used from now on; null for none.
    void setContext(QOpenGLContext* context, QSurface* surface);
    /// Draws with this device from now on; the one before ends.
    void setDevice(std::unique_ptr<KyQGraphicsDevice> device);
    /// Draws the canvas at the window's size into the buffer, with null into what is bound in the context, which must
    /// be current or the device's. False, and reported once, when that cannot be done.
    bool drawCanvas(KyFrameBuffer* target = nullptr);
    /// Sends "drawn" if there was a frame since the last time.
    void tellDrawn();
    /// The picture was lost, or lies on another screen.
    void setStale() { mIsStale = true; }

private:
    friend class KyWindowEvents;
    friend class KyWindowRedrawTask;

    bool isEmpty() const;
    /// Gives the canvas this window's size; other windows that show it are not stale by that.
    void fitCanvas();
    void reportOnce(const std::string& text);

    KyHolder<KyCanvas> mCanvas;
    std::unique_ptr<KyQGraphicsDevice> mDevice;
    std::unique_ptr<KyQEventCanvasProvider> mEvents;
    Signal mDrawnSignal{"drawn"};
    Signal mClosedSignal{"closed"};
    /// Of the canvas, as this window drew it last; 0 for never.
    std::uint64_t mDrawnRevision = 0;
    QSize mDrawnSize;
    unsigned mNbBusy = 0;
    bool mIsStale = true;
    bool mIsAutoRedraw = true;
    bool mHasNewFrame = false;
    bool mIsSupported = false;
    bool mHasReported = false;
    bool mHasEnded = false;
    /// The event that the canvas used last, only to be compared.
    const void* mUsedEvent = nullptr;

    static const KyType* msType;
    static bool msIsClassInitialized;
};

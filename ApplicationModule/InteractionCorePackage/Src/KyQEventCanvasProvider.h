// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyApplicationExport.h"

#include "KyMouseFocusPolicy.h"
#include "KyQEventProvider.h"

#include "KyObjectReference.h"
#include "KySignal.h"

#include <cstdint>

class KyCanvas;
class KyGraphicsViewMultiPass;

/// An event provider that sends its events to the views of a canvas, or to the canvas. Whether one used the event is
/// the event's internal return. The canvas is not owned; events of one that is gone are dropped. Handlers may remove
/// views and end the canvas or the provider.
///
/// Without a grab the enabled views under the position are asked, front first, until one uses the event; a view in one
/// that is not enabled is not enabled either. A grabbing view that was disabled keeps the grab and uses nothing. A
/// press while no other mouse button is down ends a grab whose release never came, and so does a touch's begin with one
/// whose end never came.
///
/// Keys, context menus by key, input method queries and touches without a finger have no position of their own and get
/// the pointer's last one. With eFocusGrabOnPress they go to the view that last used a press or a touch, and to those
/// under the pointer when none did or it was removed; with eFocusUnderPointer always to those under the pointer. Tool
/// tips and other context menus go to the view under them, and to the grabbing view while one has the grab.
///
/// By its signals the canvas tells where events went that a view was not asked about, that the pointer left, that a
/// touch was canceled and that the keyboard focus went or came.
///
/// ```
/// auto* provider = new KyQEventCanvasProvider(1, window);
/// provider->setCanvas(canvas);
/// window->installEventFilter(provider);
/// ```
class KYAPPLICATION_EXPORT KyQEventCanvasProvider : public KyQEventProvider, public KyHasSlots {
public:
    using KyQEventProvider::KyQEventProvider;

    /// Null when there is none or it is gone.
    KyCanvas* getCanvas() const;
    /// Null for none. A grab ends.
    void setCanvas(KyCanvas* canvas);
    /// See setMouseFocusPolicy.
    KyMouseFocusPolicy getMouseFocusPolicy() const { return mPolicy; }
    /// eFocusGrabOnPress at the start; values out of range are ignored. A grab ends when the policy changes.
    void setMouseFocusPolicy(KyMouseFocusPolicy policy);
    /// The view that has the grab; null when none has.
    KyGraphicsViewMultiPass* getGrabbingView() const;

    bool eventFilter(QObject* watched, QEvent* event) override;
    /// Takes position and touch points through the canvas's stereo point transform, then sends the event. Its native
    /// event is a QEvent or null.
    void setInputEvent(KyInputEvent& event) override;

    /// Ends the view's grab; the canvas tells it by its signal.
    void onGraphicsViewMultiPassRemoved(KyGraphicsViewMultiPass* view);

protected:
    // Both tell by the canvas's signals.
    void touchCanceled(bool asMouse) override;
    void pointerLeft() override;

private:
    template <class Signal, class... Args>
    void tell(Signal& (KyCanvas::*getSignal)(), Args... args);
    void place(KyInputEvent& event, const KyCanvas& canvas);
    bool send(KyInputEvent& event, KyCanvas& canvas);
    bool sendToPicked(KyInputEvent& event, KyCanvas& canvas);
    bool offer(KyInputEvent& event, KyGraphicsViewMultiPass& view);
    KyGraphicsViewMultiPass* getFocusedView(const KyInputEvent& event) const;
    void startGrab(KyGraphicsViewMultiPass& view, std::uint8_t holder);
    void endGrab(std::uint8_t holder);

    KyObjectReference mCanvas;
    KyConnection mRemovals;
    KyObjectReference mGrabbingView;
    KyObjectReference mPressedView;
    KyMouseFocusPolicy mPolicy = eFocusGrabOnPress;
    /// What keeps the grab: a mouse button, a touch, a touch that plays a button, or several of them.
    std::uint8_t mGrabHolders = 0;
    int mPointerX = 0;
    int mPointerY = 0;
};

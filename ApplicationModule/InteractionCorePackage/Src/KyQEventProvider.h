// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyApplicationExport.h"

#include "KyEventProvider.h"

#include "KyInputEvent.h"

#include <QObject>
#include <QPoint>
#include <QPointer>

#include <cstdint>
#include <map>
#include <optional>

class QContextMenuEvent;
class QGraphicsSceneMouseEvent;
class QGraphicsSceneWheelEvent;
class QHelpEvent;
class QInputMethodEvent;
class QInputMethodQueryEvent;
class QKeyEvent;
class QMouseEvent;
class QTouchEvent;
class QWheelEvent;

/// A Qt event filter that turns events of a widget, a window or a graphics scene into input events and passes them on,
/// here to the event handler. It lives as long as what it watches and belongs to whoever made it; GUI thread.
///
/// Touch events are consumed while they are accepted, and what a handler used of an input method. Everything else goes
/// on to the watched object, unless the event made somebody delete that: then it is accepted, so that Qt does not ask
/// that one's parent.
///
/// ```
/// auto* provider = new KyQEventProvider(1, widget);
/// provider->setEventHandler(handler);
/// widget->setAttribute(Qt::WA_AcceptTouchEvents);
/// widget->installEventFilter(provider);
/// ```
///
/// Positions are pixels of the canvas: Qt's position, rounded, times the scale. With a pixel ratio other than 1 Qt's
/// fraction of a pixel is kept until ratio and scale have been applied. What no int can hold becomes the nearest that
/// does, and what is not a number becomes 0. Events of a scene are placed in the viewport that they came by.
///
/// A window gets no context menu events from Qt for the mouse, as widgets do: there a click with the right button,
/// without a drag, sends one after its release.
///
/// A canceled touch sends nothing. QGraphicsView does not tell its scene of one: there the sequence ends with the next
/// one's begin.
class KYAPPLICATION_EXPORT KyQEventProvider : public QObject, public KyEventProvider {
public:
    /// Positions as Qt gives them.
    KyQEventProvider();
    /// Multiplies positions by the scale.
    explicit KyQEventProvider(unsigned scale, QObject* parent = nullptr);
    ~KyQEventProvider() override;

    bool eventFilter(QObject* watched, QEvent* event) override;
    /// Where every converted event goes: here sendInputEvent().
    virtual void setInputEvent(KyInputEvent& event);

    /// What positions are multiplied by, as given at construction.
    unsigned getScale() const { return mScale; }
    /// Canvas pixels for one of Qt's device-independent pixels, 1 at the start.
    double getPixelRatio() const { return mPixelRatio; }
    /// Ignored unless finite and above 0.
    void setPixelRatio(double ratio);

    /// See setTouchToMouseConversion.
    bool getTouchToMouseConversion() const { return hasFlag(cConvertTouch); }
    /// Off at the start. On, touches come as the left mouse button: the finger with the lowest identity of those that
    /// began the sequence presses, moves and releases, the others count for nothing. A sequence ends as it began.
    void setTouchToMouseConversion(bool convert);
    /// On at the start. Off, touches are left to Qt, which makes mouse events of them.
    bool acceptTouchEvent() const { return hasFlag(cAcceptTouch); }
    void setAcceptTouchEvent(bool accept);
    /// See avoidMouseTraking.
    bool isMouseTrackingAvoided() const { return hasFlag(cAvoidTracking); }
    /// Off at the start. On, moves without a mouse button down are not sent.
    void avoidMouseTraking(bool avoid) { setFlag(cAvoidTracking, avoid); }

    /// @{
    /// Converts the event and hands it to setInputEvent(KyInputEvent&).
    void mousePressed(QMouseEvent* event);
    void mouseReleased(QMouseEvent* event);
    void mouseDoubleClicked(QMouseEvent* event);
    void mouseMove(QMouseEvent* event);
    void wheel(QWheelEvent* event);
    void keyPressed(QKeyEvent* event);
    void keyReleased(QKeyEvent* event);
    /// @}
    /// Begin, update and end; the touch of a sequence that is converted goes out as a mouse event. A cancel ends the
    /// sequence; other types are ignored.
    void touch(QTouchEvent* event);
    /// Comes as an event of its own type, with Qt's as native event.
    void inputMethodQuery(QInputMethodQueryEvent* event);
    /// What an input method writes comes as the type of its queries; the native event tells them apart.
    void inputMethod(QInputMethodEvent* event);
    /// The scene is the one that got the event; it is asked whether the event's widget is still there.
    void mousePressed(QGraphicsSceneMouseEvent* event, QObject* scene = nullptr);
    /// @{
    /// See mousePressed.
    void mouseReleased(QGraphicsSceneMouseEvent* event, QObject* scene = nullptr);
    void mouseDoubleClicked(QGraphicsSceneMouseEvent* event, QObject* scene = nullptr);
    void mouseMove(QGraphicsSceneMouseEvent* event, QObject* scene = nullptr);
    void wheel(QGraphicsSceneWheelEvent* event, QObject* scene = nullptr);
    /// @}

    /// Position, state and button; the type stays.
    void convertMouseEvent(QMouseEvent* event, KyInputEvent& input) const;
    /// As above, with the screen position mapped into the event's widget; without one that lives it stays as it is.
    void convertGraphicsSceneMouseEvent(QGraphicsSceneMouseEvent* event, KyInputEvent& input,
                                        QObject* scene = nullptr) const;
    /// State and button; the type stays. A key that is a button is part of the state when the type is a key press.
    void convertKeyEvent(QKeyEvent* event, KyInputEvent& input) const;
    /// Type, position of the first finger, modifiers and the touch points, sorted by identity.
    static void convertTouchEvent(QTouchEvent* event, KyInputEvent& input, unsigned scale = 1, double pixelRatio = 1);

protected:
    /// A touch sequence ended without an end: nothing of it was sent. `asMouse`: it had been sent as a mouse button.
    virtual void touchCanceled(bool asMouse);
    /// The pointer left what is watched; nothing is sent.
    virtual void pointerLeft();

private:
    struct Dispatch;

    static constexpr std::uint8_t cConvertTouch = 1;
    static constexpr std::uint8_t cAvoidTracking = 4;
    static constexpr std::uint8_t cAcceptTouch = 8;
    /// Positions are those of Qt: asked for with every event.
    static constexpr std::uint8_t cKeepsPixels = 16;

    bool hasFlag(std::uint8_t flag) const { return (mFlags & flag) != 0; }
    void setFlag(std::uint8_t flag, bool on) {
        mFlags = static_cast<std::uint8_t>(on ? mFlags | flag : mFlags & ~flag);
    }
    void sendMouse(QMouseEvent& event, KyInputEvent::Type type);
    void sendMouse(QGraphicsSceneMouseEvent& event, KyInputEvent::Type type, QObject* scene);
    void sendKey(QKeyEvent& event, KyInputEvent::Type type);
    bool sendInputMethod(QEvent& event);
    void contextMenu(QContextMenuEvent* event);
    void sendMenuOfWindow(const QMouseEvent& release);
    void toolTip(QHelpEvent* event);
    bool filterTouch(QTouchEvent& event);
    void cancelTouch();
    void sendTouch(QTouchEvent& event);
    void sendTouchAsMouse(const KyInputEvent& touch);

    std::map<int, std::uint32_t> mKeyBits;
    std::uint8_t mFlags = cAcceptTouch;
    bool mIsTouching = false;
    bool mIsTouchConverted = false;
    unsigned mScale = 1;
    double mPixelRatio = 1;
    /// What was watched last: asking Qt for a guard with each event would cost more than to convert it.
    QPointer<QObject> mWatched;
    /// Where the right button went down in a window, on the desktop.
    std::optional<QPoint> mMenuPress;
    /// The finger that plays the mouse, and where it was last.
    std::optional<KyTouchPoint> mMouseFinger;
};

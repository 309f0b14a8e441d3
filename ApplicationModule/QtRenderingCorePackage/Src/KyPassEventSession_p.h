// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyPassEventMaker_p.h"
#include "KyPassEventTarget_p.h"
#include "KyPassToolTip_p.h"

#include "KyObjectReference.h"
#include "KySignal.h"

#include <array>
#include <cstdint>
#include <memory>
#include <optional>
#include <utility>

class KyBaseGraphicsPass;
class KyCanvas;
class KyGraphicsViewMultiPass;
class QInputMethodQueryEvent;

/// What goes on between the pointer and the keys on one side and one pass on the other: who has a button or a finger
/// down, what is hovered, who has the keyboard. Held by whoever uses it, because a pass may end its handler.
class KyPassEventSession : public std::enable_shared_from_this<KyPassEventSession>, public KyHasSlots {
public:
    /// Null for passes of other kinds.
    static std::shared_ptr<KyPassEventSession> create(KyBaseGraphicsPass* pass);

    KyPassEventSession(KyBaseGraphicsPass* pass, std::unique_ptr<KyPassEventTarget> target)
        : mPass(pass)
        , mTarget(std::move(target)) {}

    /// Null when it is gone.
    KyObject* getPass() const { return mPass.get(); }
    bool isGrabbing() const { return mHasMouse || mTouch != TouchUse::eNone; }
    bool hasKeyboardFocus() const { return getPass() && mTarget->hasFocusItem(); }
    void setInputMethodEnabled(bool isEnabled) { mIsInputMethodEnabled = isEnabled; }

    /// True when the event was used.
    bool handle(const KyInputEvent& event, KyGraphicsViewMultiPass& view);
    /// See KyQtPassEventHandler.
    bool takeKeyboard(KyGraphicsViewMultiPass& view);
    static bool dropLastKeyboard();
    void leave();

private:
    /// Keeps what is used alive while Qt works with it.
    struct Use;
    using Handler = bool (KyPassEventSession::*)(const KyInputEvent& event);
    enum class TouchUse { eNone, eTouch, eMouse };

    static Handler findHandler(KyInputEvent::Type type);

    bool handleKey(const KyInputEvent& event);
    bool handlePress(const KyInputEvent& event);
    bool handleRelease(const KyInputEvent& event);
    bool handleMove(const KyInputEvent& event);
    bool handleWheel(const KyInputEvent& event);
    bool handleTouchBegin(const KyInputEvent& event);
    bool handleTouchUpdate(const KyInputEvent& event);
    bool handleTouchEnd(const KyInputEvent& event);
    bool handleContextMenu(const KyInputEvent& event);
    bool handleToolTip(const KyInputEvent& event);
    bool handleInputMethod(const KyInputEvent& event);

    // What was sent elsewhere.
    void onEventSent(const KyInputEvent* event);
    void onViewRemoved(KyGraphicsViewMultiPass* view);
    void onTouchCanceled(bool asMouse);
    void onKeyboardFocus(bool isGained);
    void missPress(const KyInputEvent& event);
    void missMove(const KyInputEvent& event);
    void missTouch();
    void missKey(const KyInputEvent& event);

    bool isUsable() const { return getPass() && mTarget->getReceiver(); }
    bool isReached(const KyInputEvent& event) const;
    void enter(KyGraphicsViewMultiPass& view);
    bool deliver(const KyInputEvent& event);
    void placePopupsSoon();
    bool answerQuery(QInputMethodQueryEvent& query) const;
    void endLostMouse(const KyInputEvent& event);
    void cancelMouse();
    void cancelTouch();
    void release(std::uint32_t button);
    bool beginTouchAsMouse(const KyInputEvent& event);
    void continueTouchAsMouse(const KyInputEvent& event);
    void liftFinger(const KyInputEvent& event);
    void takePointer();
    void takeKeyboard();
    void setFocused(bool isFocused);
    void dropKeyboard();
    void listenTo(KyCanvas* canvas);

    KyObjectReference mPass;
    std::unique_ptr<KyPassEventTarget> mTarget;
    /// Those of the last event.
    KyObjectReference mView;
    KyPassEventMap mMap;

    KyPassEventMaker mMaker;
    KyPassToolTip mToolTip;
    bool mIsInputMethodEnabled = false;
    /// A press was used, and buttons are down since: these.
    bool mHasMouse = false;
    std::uint32_t mButtons = 0;
    /// A press was delivered and not used: somebody else has the button.
    bool mHasIdlePress = false;
    bool mIsHovered = false;
    /// The event that is being sent came here.
    bool mIsAsked = false;
    /// Had the keyboard when the window lost it.
    bool mWantsKeyboard = false;
    TouchUse mTouch = TouchUse::eNone;
    /// That plays the mouse, until it is lifted.
    std::optional<int> mFinger;
    KyObjectReference mCanvas;
    std::array<KyConnection, 5> mConnections;
};

// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyQEventCanvasProvider.h"

#include "KyQtEventConversion_p.h"

#include "KyCanvas.h"
#include "KyGraphicsViewMultiPass.h"

#include "KyHolder.h"

#include <QContextMenuEvent>
#include <QFocusEvent>
#include <QPointer>

#include <algorithm>
#include <vector>

namespace {

constexpr std::uint8_t cHeldByMouse = 1;
constexpr std::uint8_t cHeldByTouch = 2;
constexpr std::uint8_t cHeldByConvertedTouch = 4;
constexpr std::uint8_t cHeldByAny = 7;

std::uint32_t getButtonsDown(const KyInputEvent& event) {
    return event.getState() & KyInputEvent::cMouseButtons;
}

bool isMousePress(const KyInputEvent& event) {
    return event.getType() == KyInputEvent::eMousePressed || event.getType() == KyInputEvent::eMouseDoubleClicked;
}

/// A real button and a touch that plays one do not end each other's grab.
std::uint8_t getMouseHolder(const KyInputEvent& event) {
    const auto* native = static_cast<const QEvent*>(event.getNativeEvent());
    const bool isTouch = native && KyQtEventConversion::getTouchType(native->type()) != KyInputEvent::eUndefined;
    return isTouch ? cHeldByConvertedTouch : cHeldByMouse;
}

/// What the event begins to hold a grab with; 0 for nothing.
std::uint8_t getNewHolder(const KyInputEvent& event) {
    if (isMousePress(event))
        return getMouseHolder(event);
    return event.getType() == KyInputEvent::eTouchBegan && !event.getTouchPoints().empty() ? cHeldByTouch : 0;
}

/// What holds a grab no longer when the event comes, which still goes to the grabbing view.
std::uint8_t getEndingHolder(const KyInputEvent& event) {
    if (event.getType() == KyInputEvent::eMouseReleased && getButtonsDown(event) == 0)
        return getMouseHolder(event);
    return event.getType() == KyInputEvent::eTouchEnded ? cHeldByTouch : 0;
}

/// What held a grab whose end never came; the event goes where it would have gone after that.
std::uint8_t getLostHolder(const KyInputEvent& event) {
    if (isMousePress(event) && (getButtonsDown(event) & ~event.getButton()) == 0)
        return getMouseHolder(event);
    return event.getType() == KyInputEvent::eTouchBegan ? cHeldByTouch : 0;
}

/// Qt places it where the pointer is, which may be anywhere.
bool isMenuByKey(const KyInputEvent& event) {
    const auto* native = static_cast<const QEvent*>(event.getNativeEvent());
    return event.getType() == KyInputEvent::eContextMenu && native && native->type() == QEvent::ContextMenu &&
           static_cast<const QContextMenuEvent*>(native)->reason() == QContextMenuEvent::Keyboard;
}

bool hasPosition(const KyInputEvent& event) {
    const KyInputEvent::Type type = event.getType();
    if (isMenuByKey(event))
        return false;
    if (event.isTouch())
        return !event.getTouchPoints().empty();
    return type != KyInputEvent::eKeyPressed && type != KyInputEvent::eKeyReleased &&
           type != KyInputEvent::eInputMethodQuery;
}

template <class T>
T* getLiving(const KyObjectReference& reference) {
    KyObject* object = reference.get();
    return object && !object->isEnding() ? static_cast<T*>(object) : nullptr;
}

KyGraphicsViewMultiPass* getView(const KyObjectReference& reference) {
    return getLiving<KyGraphicsViewMultiPass>(reference);
}

} // namespace

KyCanvas* KyQEventCanvasProvider::getCanvas() const {
    return getLiving<KyCanvas>(mCanvas);
}

KyGraphicsViewMultiPass* KyQEventCanvasProvider::getGrabbingView() const {
    return getView(mGrabbingView);
}

void KyQEventCanvasProvider::setCanvas(KyCanvas* canvas) {
    if (canvas && canvas == getCanvas())
        return;
    mRemovals.disconnect();
    endGrab(cHeldByAny);
    mPressedView = {};
    mCanvas = KyObjectReference(canvas);
    if (canvas)
        mRemovals = canvas->viewRemovedSignal().connect(this, &KyQEventCanvasProvider::onGraphicsViewMultiPassRemoved);
}

void KyQEventCanvasProvider::setMouseFocusPolicy(KyMouseFocusPolicy policy) {
    if (policy < 0 || policy >= eNbMouseFocusPolicies || policy == mPolicy)
        return;
    mPolicy = policy;
    endGrab(cHeldByAny);
}

void KyQEventCanvasProvider::setInputEvent(KyInputEvent& event) {
    KyCanvas* canvas = getCanvas();
    if (!canvas)
        return;
    // A handler may drop the canvas; one that nobody holds must not end with this.
    const KyHolder<KyCanvas> kept(canvas->getNbReferences() > 0 ? canvas : nullptr);
    place(event, *canvas);
    event.setInternalEventReturn(false);
    // Who hears of what was sent may have used it as well.
    if (send(event, *canvas))
        event.setInternalEventReturn(true);
}

void KyQEventCanvasProvider::place(KyInputEvent& event, const KyCanvas& canvas) {
    int x = hasPosition(event) ? event.getX() : mPointerX;
    int y = hasPosition(event) ? event.getY() : mPointerY;
    mPointerX = x;
    mPointerY = y;
    canvas.transformStereoPoint(x, y);
    event.setPosition(x, y);
    for (KyTouchPoint& point : event.editTouchPoints())
        canvas.transformStereoPoint(point.x, point.y);
}

bool KyQEventCanvasProvider::send(KyInputEvent& event, KyCanvas& canvas) {
    if (mPolicy == eFocusCanvas)
        return canvas.handleEvent(event);
    endGrab(getLostHolder(event));
    const KyHolder<KyGraphicsViewMultiPass> focused(getFocusedView(event));
    endGrab(getEndingHolder(event));
    event.setCovered(false);
    const bool isUsed = focused ? offer(event, *focused) : sendToPicked(event, canvas);
    canvas.eventSentSignal().send(&event);
    return isUsed;
}

bool KyQEventCanvasProvider::sendToPicked(KyInputEvent& event, KyCanvas& canvas) {
    std::vector<KyHolder<KyGraphicsViewMultiPass>> views;
    for (KyGraphicsViewMultiPass* view : canvas.pickViews(event.getX(), event.getY()))
        views.emplace_back(view);
    const QPointer<KyQEventCanvasProvider> guard(this);
    return std::ranges::any_of(views, [this, &event, &canvas, &guard](const auto& view) {
        return guard && view->getCanvas() == &canvas && offer(event, *view);
    });
}

bool KyQEventCanvasProvider::offer(KyInputEvent& event, KyGraphicsViewMultiPass& view) {
    if (!view.isEnabledWithParents())
        return false;
    const QPointer<KyQEventCanvasProvider> guard(this);
    const std::uint8_t holder = getNewHolder(event);
    const auto added = static_cast<std::uint8_t>(holder & ~mGrabHolders);
    // Before the view handles it: a handler that runs an event loop of its own sees the release come and go.
    if (added != 0)
        startGrab(view, added);
    const bool isUsed = view.handleEvent(event);
    if (!guard || holder == 0)
        return isUsed;
    if (isUsed && view.getCanvas())
        mPressedView = KyObjectReference(&view);
    else if (getGrabbingView() == &view)
        endGrab(added);
    return isUsed;
}

KyGraphicsViewMultiPass* KyQEventCanvasProvider::getFocusedView(const KyInputEvent& event) const {
    if (KyGraphicsViewMultiPass* view = getGrabbingView())
        return view;
    return mPolicy == eFocusGrabOnPress && !hasPosition(event) ? getView(mPressedView) : nullptr;
}

void KyQEventCanvasProvider::startGrab(KyGraphicsViewMultiPass& view, std::uint8_t holder) {
    if (mPolicy != eFocusGrabOnPress)
        return;
    mGrabbingView = KyObjectReference(&view);
    mGrabHolders |= holder;
}

void KyQEventCanvasProvider::endGrab(std::uint8_t holder) {
    mGrabHolders &= static_cast<std::uint8_t>(~holder);
    if (mGrabHolders == 0)
        mGrabbingView = {};
}

bool KyQEventCanvasProvider::eventFilter(QObject* watched, QEvent* event) {
    const bool isGained = event->type() == QEvent::FocusIn;
    // A popup on the desktop is part of what has the focus.
    if ((isGained || event->type() == QEvent::FocusOut) &&
        static_cast<QFocusEvent*>(event)->reason() != Qt::PopupFocusReason) {
        const QPointer<QObject> watchedGuard(watched);
        tell(&KyCanvas::keyboardFocusSignal, isGained);
        return !watchedGuard;
    }
    return KyQEventProvider::eventFilter(watched, event);
}

template <class Signal, class... Args>
void KyQEventCanvasProvider::tell(Signal& (KyCanvas::*getSignal)(), Args... args) {
    KyCanvas* const canvas = getCanvas();
    // A slot may drop the canvas; one that nobody holds must not end with this.
    const KyHolder<KyCanvas> kept(canvas && canvas->getNbReferences() > 0 ? canvas : nullptr);
    if (canvas)
        (canvas->*getSignal)().send(args...);
}

void KyQEventCanvasProvider::touchCanceled(bool asMouse) {
    endGrab(asMouse ? cHeldByConvertedTouch : cHeldByTouch);
    tell(&KyCanvas::touchCanceledSignal, asMouse);
}

void KyQEventCanvasProvider::pointerLeft() {
    tell(&KyCanvas::pointerLeftSignal);
}

void KyQEventCanvasProvider::onGraphicsViewMultiPassRemoved(KyGraphicsViewMultiPass* view) {
    if (mGrabbingView.get() == view)
        endGrab(cHeldByAny);
    if (mPressedView.get() == view)
        mPressedView = {};
}

// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyPassEventSession_p.h"

#include "KyWindow.h"

#include "KyBaseGraphicsPass.h"
#include "KyCanvas.h"
#include "KyGraphicsViewMultiPass.h"

#include <QCoreApplication>
#include <QGraphicsView>
#include <QGuiApplication>
#include <QInputMethod>
#include <QInputMethodQueryEvent>
#include <QTimer>
#include <QTouchEvent>

#include <algorithm>
#include <array>

namespace {

/// There is one pointer and one keyboard for all passes: what took them last.
std::weak_ptr<KyPassEventSession> gPointerSession;
std::weak_ptr<KyPassEventSession> gKeyboardSession;

std::uint32_t getButtonsDown(const KyInputEvent& event) {
    return event.getState() & KyInputEvent::cMouseButtons;
}

template <class Event>
Event* getNative(const KyInputEvent& event, QEvent::Type type) {
    auto* native = static_cast<QEvent*>(event.getNativeEvent());
    return native && native->type() == type ? static_cast<Event*>(native) : nullptr;
}

bool isByKeyboard(const KyInputEvent& event) {
    const auto* native = getNative<QContextMenuEvent>(event, QEvent::ContextMenu);
    return native && native->reason() == QContextMenuEvent::Keyboard;
}

double getPixelRatio(const KyObject* canvas) {
    for (unsigned i = 0; i < KyWindow::getNbWindows(); ++i)
        if (KyWindow::getWindow(i)->getCanvas() == canvas)
            return KyWindow::getWindow(i)->getPixelRatio();
    return 1.0;
}

} // namespace

std::shared_ptr<KyPassEventSession> KyPassEventSession::create(KyBaseGraphicsPass* pass) {
    auto target = KyPassEventTarget::create(pass);
    return target ? std::make_shared<KyPassEventSession>(pass, std::move(target)) : nullptr;
}

KyPassEventSession::Handler KyPassEventSession::findHandler(KyInputEvent::Type type) {
    using Session = KyPassEventSession;
    // By the number of the type.
    static constexpr std::array<Handler, KyInputEvent::eNbTypes> cHandlers = {nullptr,
                                                                              &Session::handleKey,
                                                                              &Session::handleKey,
                                                                              &Session::handlePress,
                                                                              &Session::handleRelease,
                                                                              &Session::handlePress,
                                                                              &Session::handleWheel,
                                                                              &Session::handleMove,
                                                                              &Session::handleTouchBegin,
                                                                              &Session::handleTouchUpdate,
                                                                              &Session::handleTouchEnd,
                                                                              &Session::handleContextMenu,
                                                                              &Session::handleToolTip,
                                                                              &Session::handleInputMethod};
    const auto index = static_cast<std::size_t>(type);
    return index < cHandlers.size() ? cHandlers[index] : nullptr;
}

bool KyPassEventSession::handle(const KyInputEvent& event, KyGraphicsViewMultiPass& view) {
    const Handler handler = findHandler(event.getType());
    if (!handler || !getPass() || !mTarget->getReceiver())
        return false;
    mView = KyObjectReference(&view);
    listenTo(view.getCanvas());
    mMap = mTarget->adapt(view);
    mTarget->activate();
    return (this->*handler)(event);
}

void KyPassEventSession::listenTo(KyCanvas* canvas) {
    if (canvas == mCanvas.get())
        return;
    mLeaving.disconnect();
    mCanvas = KyObjectReference(canvas);
    if (canvas)
        mLeaving = canvas->pointerLeftSignal().connect(this, &KyPassEventSession::leave);
}

bool KyPassEventSession::isReached(const KyInputEvent& event) const {
    const auto* const view = static_cast<KyGraphicsViewMultiPass*>(mView.get());
    const auto* const pass = static_cast<KyBaseGraphicsPass*>(mPass.get());
    if (!view || !pass)
        return false;
    const KyRect<int> area = pass->getAreaPixels(view);
    const int x = event.getX() - area.origin.x, y = event.getY() - area.origin.y;
    if (x < 0 || y < 0 || x >= area.width || y >= area.height)
        return false;
    return mTarget->isOpaque({static_cast<float>(x), static_cast<float>(y)}, *view);
}

bool KyPassEventSession::deliver(const KyInputEvent& event) {
    const auto made = getPass() ? mMaker.make(event, mMap) : nullptr;
    if (!made)
        return false;
    if (event.getType() != KyInputEvent::eMouseMoved)
        placePopupsSoon();
    return mTarget->deliver(*made);
}

/// Also in the event loop of a menu that is waited for.
void KyPassEventSession::placePopupsSoon() {
    QTimer::singleShot(0, mTarget->getReceiver(), [weak = weak_from_this()] {
        if (const auto session = weak.lock(); session && session->getPass())
            session->mTarget->placePopups();
    });
}

bool KyPassEventSession::handlePress(const KyInputEvent& event) {
    mToolTip.hide();
    endLostMouse(event);
    const bool hadMouse = mHasMouse;
    if (!hadMouse && !isReached(event)) {
        dropKeyboard();
        return false;
    }
    // Before: what opens a menu and waits for it sees the release come and go.
    mHasMouse = true;
    mButtons = getButtonsDown(event);
    const bool isUsed = deliver(event);
    if (isUsed)
        takeKeyboard();
    else if (!hadMouse)
        mHasIdlePress = std::exchange(mHasMouse, false);
    return isUsed || hadMouse;
}

bool KyPassEventSession::handleRelease(const KyInputEvent& event) {
    const bool isLast = getButtonsDown(event) == 0;
    if (!mHasMouse) {
        if (isLast && std::exchange(mHasIdlePress, false))
            deliver(event);
        return false;
    }
    mHasMouse = !isLast;
    mButtons = getButtonsDown(event);
    deliver(event);
    if (isLast && !isReached(event))
        leave();
    return true;
}

bool KyPassEventSession::handleMove(const KyInputEvent& event) {
    endLostMouse(event);
    if (mHasMouse) {
        deliver(event);
        return true;
    }
    if (getButtonsDown(event) != 0)
        return false;
    if (!isReached(event)) {
        leave();
        return false;
    }
    takePointer();
    const bool isUsed = deliver(event);
    if (QGraphicsView* shown = getPass() ? mTarget->getGraphicsView() : nullptr)
        mToolTip.follow(*shown, mMap.toLocal(event.getX(), event.getY()));
    return isUsed;
}

bool KyPassEventSession::hasLostMouse(const KyInputEvent& event) const {
    const bool isMove = event.getType() == KyInputEvent::eMouseMoved;
    return mHasMouse && (getButtonsDown(event) & ~(isMove ? 0 : event.getButton())) == 0;
}

/// A release that went to another window: who has the mouse must not keep it.
void KyPassEventSession::endLostMouse(const KyInputEvent& event) {
    if (!hasLostMouse(event))
        return;
    mHasMouse = false;
    for (std::uint32_t button = KyInputEvent::cLeftButton; button <= KyInputEvent::cExtraButton2; button *= 2) {
        if (!(mButtons & button))
            continue;
        KyInputEvent release = event;
        release.setType(KyInputEvent::eMouseReleased);
        mButtons &= ~button;
        release.setState((event.getState() & ~KyInputEvent::cMouseButtons) | mButtons);
        release.setButton(button);
        deliver(release);
    }
}

bool KyPassEventSession::handleWheel(const KyInputEvent& event) {
    mToolTip.hide();
    return (mHasMouse || isReached(event)) && deliver(event);
}

bool KyPassEventSession::handleContextMenu(const KyInputEvent& event) {
    mToolTip.hide();
    const bool isForUs = isByKeyboard(event) ? mTarget->hasFocusItem() : mHasMouse || isReached(event);
    if (!isForUs || !deliver(event))
        return false;
    takeKeyboard();
    return true;
}

bool KyPassEventSession::handleToolTip(const KyInputEvent& event) {
    if (isGrabbing() || !isReached(event))
        return false;
    QGraphicsView* const shown = mTarget->getGraphicsView();
    return shown ? mToolTip.show(*shown, mMap.toLocal(event.getX(), event.getY())) : deliver(event);
}

bool KyPassEventSession::handleKey(const KyInputEvent& event) {
    mToolTip.hide();
    return mTarget->hasFocusItem() && deliver(event);
}

bool KyPassEventSession::handleInputMethod(const KyInputEvent& event) {
    QObject* const receiver = mTarget->getInputMethodReceiver();
    if (!mIsInputMethodEnabled || !receiver || !mTarget->hasFocusItem())
        return false;
    if (auto* query = getNative<QInputMethodQueryEvent>(event, QEvent::InputMethodQuery))
        return answerQuery(*query);
    const auto made = mMaker.make(event, mMap);
    return made && QCoreApplication::sendEvent(receiver, made.get()) && made->isAccepted();
}

bool KyPassEventSession::answerQuery(QInputMethodQueryEvent& query) const {
    QInputMethodQueryEvent own(query.queries());
    QCoreApplication::sendEvent(mTarget->getInputMethodReceiver(), &own);
    const double ratio = getPixelRatio(mCanvas.get());
    for (std::uint32_t bit = 1; bit != 0; bit <<= 1) {
        const auto kind = static_cast<Qt::InputMethodQuery>(static_cast<int>(bit));
        if (!(query.queries() & kind))
            continue;
        QVariant value = own.value(kind);
        if (value.userType() == QMetaType::QRectF || value.userType() == QMetaType::QRect) {
            const QRectF pixels = mMap.toCanvas(mTarget->mapFromInputMethod(value.toRectF()));
            value = QRectF(pixels.topLeft() / ratio, pixels.size() / ratio);
        }
        query.setValue(kind, value);
    }
    query.accept();
    return true;
}

bool KyPassEventSession::handleTouchBegin(const KyInputEvent& event) {
    mToolTip.hide();
    endLostTouch(event);
    if (event.getTouchPoints().empty())
        return false;
    if (!isReached(event)) {
        dropKeyboard();
        return false;
    }
    // Before: it may come to its end while it is delivered.
    mTouch = TouchUse::eTouch;
    const bool isUsed = deliver(event);
    if (!isUsed && mTouch == TouchUse::eTouch)
        mTouch = beginTouchAsMouse(event) ? TouchUse::eMouse : TouchUse::eNone;
    if (isUsed || mTouch != TouchUse::eNone)
        takeKeyboard();
    return isUsed || mTouch != TouchUse::eNone;
}

bool KyPassEventSession::beginTouchAsMouse(const KyInputEvent& event) {
    const int finger = event.getTouchPoints().front().id;
    mTouch = TouchUse::eMouse;
    mFinger = finger;
    if (deliver(KyPassEventMaker::toMouse(event, finger, KyInputEvent::eMousePressed)))
        return true;
    liftFinger(event);
    return false;
}

void KyPassEventSession::liftFinger(const KyInputEvent& event) {
    if (const auto finger = std::exchange(mFinger, std::nullopt))
        deliver(KyPassEventMaker::toMouse(event, *finger, KyInputEvent::eMouseReleased));
}

void KyPassEventSession::continueTouchAsMouse(const KyInputEvent& event) {
    const auto& points = event.getTouchPoints();
    const auto found = mFinger ? std::ranges::find(points, *mFinger, &KyTouchPoint::id) : points.end();
    if (found == points.end())
        return;
    if (found->state == KyTouchPoint::eReleased)
        liftFinger(event);
    else
        deliver(KyPassEventMaker::toMouse(event, *mFinger, KyInputEvent::eMouseMoved));
}

bool KyPassEventSession::handleTouchUpdate(const KyInputEvent& event) {
    if (mTouch == TouchUse::eTouch)
        deliver(event);
    else if (mTouch == TouchUse::eMouse)
        continueTouchAsMouse(event);
    return mTouch != TouchUse::eNone;
}

bool KyPassEventSession::handleTouchEnd(const KyInputEvent& event) {
    const TouchUse use = std::exchange(mTouch, TouchUse::eNone);
    if (use == TouchUse::eTouch)
        deliver(event);
    else if (use == TouchUse::eMouse)
        liftFinger(event);
    return use != TouchUse::eNone;
}

void KyPassEventSession::endLostTouch(const KyInputEvent& event) {
    const TouchUse use = std::exchange(mTouch, TouchUse::eNone);
    liftFinger(event);
    const auto* native = getNative<QTouchEvent>(event, QEvent::TouchBegin);
    if (use != TouchUse::eTouch || !native)
        return;
    QTouchEvent cancel(QEvent::TouchCancel, native->device());
    mTarget->deliver(cancel);
}

void KyPassEventSession::leave() {
    if (isGrabbing())
        return;
    mToolTip.hide();
    QObject* const receiver = getPass() ? mTarget->getReceiver() : nullptr;
    if (!std::exchange(mIsHovered, false) || !receiver)
        return;
    QEvent event(QEvent::Leave);
    QCoreApplication::sendEvent(receiver, &event);
}

void KyPassEventSession::takePointer() {
    const auto other = std::exchange(gPointerSession, weak_from_this()).lock();
    mIsHovered = true;
    if (other && other.get() != this)
        other->leave();
}

void KyPassEventSession::takeKeyboard() {
    const auto other = std::exchange(gKeyboardSession, weak_from_this()).lock();
    if (other && other.get() != this)
        other->dropKeyboard();
    if (getPass())
        mTarget->setFocused(true);
    if (mIsInputMethodEnabled)
        QGuiApplication::inputMethod()->update(Qt::ImQueryAll);
}

void KyPassEventSession::dropKeyboard() {
    if (getPass())
        mTarget->setFocused(false);
    if (mIsInputMethodEnabled)
        QGuiApplication::inputMethod()->update(Qt::ImQueryAll);
}

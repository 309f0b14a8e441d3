// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyPassEventSession_p.h"

#include "KyPassEventUse_p.h"
#include "KyQtPass.h"
#include "KyWindow.h"

#include "KyBaseGraphicsPass.h"
#include "KyCanvas.h"
#include "KyGraphicsViewMultiPass.h"

#include <QCoreApplication>
#include <QGraphicsView>
#include <QInputMethodQueryEvent>
#include <QTimer>

#include <algorithm>
#include <array>

namespace {

/// There is one pointer for all passes: what took it last.
std::weak_ptr<KyPassEventSession> gPointerSession;

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
    if (!target)
        return nullptr;
    auto session = std::make_shared<KyPassEventSession>(pass, std::move(target));
    if (KyQtPass* const qtPass = KyQtPass::cast(pass))
        qtPass->needUpdateSignal().connect(*session, [tip = &session->mToolTip](KyQtPass*) { tip->check(); });
    return session;
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
    if (!handler || !isUsable())
        return false;
    const Use use(*this);
    enter(view);
    const bool isUsed = (this->*handler)(event);
    // Not before: what handles an event may wait for others.
    mIsAsked = true;
    return isUsed;
}

void KyPassEventSession::enter(KyGraphicsViewMultiPass& view) {
    mView = KyObjectReference(&view);
    listenTo(view.getCanvas());
    mMap = mTarget->adapt(view);
    mTarget->activate();
}

/// An event that went elsewhere comes like one beside the picture.
void KyPassEventSession::onEventSent(const KyInputEvent* event) {
    if (std::exchange(mIsAsked, false) || !isUsable())
        return;
    const Use use(*this);
    switch (event->getType()) {
    case KyInputEvent::eKeyPressed:
    case KyInputEvent::eKeyReleased:
        missKey(*event);
        break;
    case KyInputEvent::eMousePressed:
    case KyInputEvent::eMouseDoubleClicked:
        missPress(*event);
        break;
    case KyInputEvent::eMouseReleased:
        endLostMouse(*event);
        break;
    case KyInputEvent::eMouseMoved:
        missMove(*event);
        break;
    case KyInputEvent::eTouchBegan:
        missTouch();
        break;
    case KyInputEvent::eTouchEnded:
        cancelTouch();
        break;
    default:
        break;
    }
}

/// A menu that is waited for could not be closed any more.
void KyPassEventSession::onViewRemoved(KyGraphicsViewMultiPass* view) {
    if (view != mView.get() || !isUsable())
        return;
    const Use use(*this);
    cancelMouse();
    cancelTouch();
    dropKeyboard();
    leave();
}

void KyPassEventSession::listenTo(KyCanvas* canvas) {
    if (canvas == mCanvas.get())
        return;
    for (KyConnection& connection : mConnections)
        connection.disconnect();
    mCanvas = KyObjectReference(canvas);
    if (!canvas)
        return;
    mConnections = {canvas->pointerLeftSignal().connect(this, &KyPassEventSession::leave),
                    canvas->eventSentSignal().connect(this, &KyPassEventSession::onEventSent),
                    canvas->viewRemovedSignal().connect(this, &KyPassEventSession::onViewRemoved),
                    canvas->touchCanceledSignal().connect(this, &KyPassEventSession::onTouchCanceled),
                    canvas->keyboardFocusSignal().connect(this, &KyPassEventSession::onKeyboardFocus)};
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

/// Closes popups and takes the focus away, unless it is another button of those that are held here.
void KyPassEventSession::missPress(const KyInputEvent& event) {
    mToolTip.hide();
    endLostMouse(event);
    if (!mHasMouse)
        dropKeyboard();
}

bool KyPassEventSession::handlePress(const KyInputEvent& event) {
    mToolTip.hide();
    endLostMouse(event);
    const bool hadMouse = mHasMouse;
    // Somebody else has the first button, and with it all of the mouse.
    if (!hadMouse && (getButtonsDown(event) & ~event.getButton()) != 0)
        return false;
    if (!hadMouse && !isReached(event)) {
        missPress(event);
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

void KyPassEventSession::missMove(const KyInputEvent& event) {
    endLostMouse(event);
    if (getButtonsDown(event) == 0)
        leave();
}

bool KyPassEventSession::handleMove(const KyInputEvent& event) {
    endLostMouse(event);
    if (mHasMouse) {
        deliver(event);
        return true;
    }
    if (getButtonsDown(event) != 0)
        return false;
    if (event.isCovered() || !isReached(event)) {
        leave();
        return false;
    }
    event.setCovered(true);
    takePointer();
    const bool isUsed = deliver(event);
    if (QGraphicsView* shown = getPass() ? mTarget->getGraphicsView() : nullptr)
        mToolTip.follow(*shown, mMap.toLocal(event.getX(), event.getY()));
    return isUsed;
}

/// A release that went to another window: who has the mouse must not keep it.
void KyPassEventSession::endLostMouse(const KyInputEvent& event) {
    const bool isMove = event.getType() == KyInputEvent::eMouseMoved;
    if ((getButtonsDown(event) & ~(isMove ? 0 : event.getButton())) == 0)
        cancelMouse();
}

/// By releases beside the picture, where no click is meant.
void KyPassEventSession::cancelMouse() {
    const bool hadMouse = std::exchange(mHasMouse, false);
    if (!std::exchange(mHasIdlePress, false) && !hadMouse)
        return;
    mTarget->cancelMouse();
    for (std::uint32_t button = KyInputEvent::cLeftButton; button <= KyInputEvent::cExtraButton2; button *= 2)
        if (mButtons & button) {
            mButtons &= ~button;
            release(button);
        }
}

void KyPassEventSession::release(std::uint32_t button) {
    KyInputEvent event;
    event.setType(KyInputEvent::eMouseReleased);
    event.setState(mButtons);
    event.setButton(button);
    event.setPosition(static_cast<int>(mMap.origin.x()) - 1, static_cast<int>(mMap.origin.y()) - 1);
    deliver(event);
}

bool KyPassEventSession::handleWheel(const KyInputEvent& event) {
    mToolTip.hide();
    return (mHasMouse || isReached(event)) && deliver(event);
}

bool KyPassEventSession::handleContextMenu(const KyInputEvent& event) {
    mToolTip.hide();
    KyInputEvent placed = event;
    const bool isForFocus = isByKeyboard(event);
    if (isForFocus) {
        const QPoint place = mMap.toCanvas(mTarget->getFocusRect()).center().toPoint();
        placed.setPosition(place.x(), place.y());
    }
    const bool isForUs = isForFocus ? mTarget->hasFocusItem() : mHasMouse || isReached(event);
    if (!isForUs || !deliver(placed))
        return false;
    takeKeyboard();
    return true;
}

bool KyPassEventSession::handleToolTip(const KyInputEvent& event) {
    if (isGrabbing() || event.isCovered() || !isReached(event))
        return false;
    event.setCovered(true);
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

void KyPassEventSession::leave() {
    if (isGrabbing())
        return;
    mToolTip.hide();
    QObject* const receiver = getPass() ? mTarget->getReceiver() : nullptr;
    if (!std::exchange(mIsHovered, false) || !receiver)
        return;
    const Use use(*this);
    QEvent event(QEvent::Leave);
    QCoreApplication::sendEvent(receiver, &event);
}

void KyPassEventSession::takePointer() {
    const auto other = std::exchange(gPointerSession, weak_from_this()).lock();
    mIsHovered = true;
    if (other && other.get() != this)
        other->leave();
}

// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyQEventProvider.h"

#include "KyQtEventConversion_p.h"
#include "KyQtEventTable_p.h"

#include "KyException.h"

#include <QContextMenuEvent>
#include <QGuiApplication>
#include <QHelpEvent>
#include <QInputMethodQueryEvent>
#include <QKeyEvent>
#include <QPointer>
#include <QStyleHints>
#include <QTouchEvent>
#include <QWheelEvent>

#include <algorithm>
#include <array>
#include <utility>

namespace {

using KeyBit = std::pair<const int, std::uint32_t>;

constexpr std::array cKeyBits{
    KeyBit{Qt::Key_Up, 64},           KeyBit{Qt::Key_Down, 128},
    KeyBit{Qt::Key_Left, 256},        KeyBit{Qt::Key_Right, 512},
    KeyBit{Qt::Key_PageUp, 1024},     KeyBit{Qt::Key_PageDown, 2048},
    KeyBit{Qt::Key_Plus, 4096},       KeyBit{Qt::Key_Minus, 8192},
    KeyBit{Qt::Key_F1, 0x4000},       KeyBit{Qt::Key_F2, 0x8000},
    KeyBit{Qt::Key_F3, 0x10000},      KeyBit{Qt::Key_F4, 0x20000},
    KeyBit{Qt::Key_F5, 0x40000},      KeyBit{Qt::Key_F6, 0x80000},
    KeyBit{Qt::Key_F7, 0x100000},     KeyBit{Qt::Key_F8, 0x200000},
    KeyBit{Qt::Key_F9, 0x400000},     KeyBit{Qt::Key_F10, 0x800000},
    KeyBit{Qt::Key_F11, 0x1000000},   KeyBit{Qt::Key_F12, 0x2000000},
    KeyBit{Qt::Key_Enter, 0x4000000}, KeyBit{Qt::Key_Return, 0x4000000},
};

KyInputEvent makeInput(QEvent& event, KyInputEvent::Type type) {
    KyInputEvent input;
    input.setType(type);
    input.setNativeEvent(&event);
    return input;
}

std::uint32_t getCurrentState(Qt::KeyboardModifiers modifiers) {
    return KyQtEventConversion::getState(QGuiApplication::mouseButtons(), modifiers);
}

} // namespace

/// The handlers by the number of Qt's event type: one look into a table for all that goes by.
struct KyQEventProvider::Dispatch {
    /// True when the event goes no further.
    using Handler = bool (*)(KyQEventProvider& provider, QObject* watched, QEvent* event);

    static KyPixelScale getPixels(const KyQEventProvider& provider) {
        return {provider.mScale, provider.mPixelRatio, provider.hasFlag(cKeepsPixels)};
    }

    template <class Event, void (KyQEventProvider::*Method)(Event*)>
    static bool call(KyQEventProvider& provider, QObject*, QEvent* event) {
        (provider.*Method)(static_cast<Event*>(event));
        return false;
    }
    template <class Event, void (KyQEventProvider::*Method)(Event*, QObject*)>
    static bool callForScene(KyQEventProvider& provider, QObject* watched, QEvent* event) {
        (provider.*Method)(static_cast<Event*>(event), watched);
        return false;
    }
    static bool callPress(KyQEventProvider& provider, QObject* watched, QEvent* event) {
        auto* const mouse = static_cast<QMouseEvent*>(event);
        if (mouse->button() == Qt::RightButton && watched->isWindowType())
            provider.mMenuPress = mouse->globalPos();
        provider.mousePressed(mouse);
        return false;
    }
    static bool callRelease(KyQEventProvider& provider, QObject* watched, QEvent* event) {
        auto* const mouse = static_cast<QMouseEvent*>(event);
        const QPointer<KyQEventProvider> guard(&provider);
        const QPointer<QObject> window(watched);
        provider.mouseReleased(mouse);
        if (guard && window && mouse->button() == Qt::RightButton)
            provider.sendMenuOfWindow(*mouse);
        return false;
    }
    static bool callTouch(KyQEventProvider& provider, QObject*, QEvent* event) {
        return provider.filterTouch(*static_cast<QTouchEvent*>(event));
    }
    static bool callInputMethod(KyQEventProvider& provider, QObject*, QEvent* event) {
        return provider.sendInputMethod(*event);
    }
    static bool callLeave(KyQEventProvider& provider, QObject*, QEvent*) {
        provider.pointerLeft();
        return false;
    }
    static bool callTouchCancel(KyQEventProvider& provider, QObject*, QEvent*) {
        provider.cancelTouch();
        return false;
    }

    static constexpr std::pair<QEvent::Type, Handler> cRows[] = {
        {QEvent::MouseButtonPress, &callPress},
        {QEvent::MouseButtonRelease, &callRelease},
        {QEvent::MouseButtonDblClick, &call<QMouseEvent, &KyQEventProvider::mouseDoubleClicked>},
        {QEvent::MouseMove, &call<QMouseEvent, &KyQEventProvider::mouseMove>},
        {QEvent::Wheel, &call<QWheelEvent, &KyQEventProvider::wheel>},
        {QEvent::KeyPress, &call<QKeyEvent, &KyQEventProvider::keyPressed>},
        {QEvent::KeyRelease, &call<QKeyEvent, &KyQEventProvider::keyReleased>},
        {QEvent::GraphicsSceneMousePress, &callForScene<QGraphicsSceneMouseEvent, &KyQEventProvider::mousePressed>},
        {QEvent::GraphicsSceneMouseRelease, &callForScene<QGraphicsSceneMouseEvent, &KyQEventProvider::mouseReleased>},
        {QEvent::GraphicsSceneMouseDoubleClick,
         &callForScene<QGraphicsSceneMouseEvent, &KyQEventProvider::mouseDoubleClicked>},
        {QEvent::GraphicsSceneMouseMove, &callForScene<QGraphicsSceneMouseEvent, &KyQEventProvider::mouseMove>},
        {QEvent::GraphicsSceneWheel, &callForScene<QGraphicsSceneWheelEvent, &KyQEventProvider::wheel>},
        {QEvent::TouchBegin, &callTouch},
        {QEvent::TouchUpdate, &callTouch},
        {QEvent::TouchEnd, &callTouch},
        {QEvent::TouchCancel, &callTouchCancel},
        {QEvent::ContextMenu, &call<QContextMenuEvent, &KyQEventProvider::contextMenu>},
        {QEvent::ToolTip, &call<QHelpEvent, &KyQEventProvider::toolTip>},
        {QEvent::InputMethodQuery, &callInputMethod},
        {QEvent::InputMethod, &callInputMethod},
        {QEvent::Leave, &callLeave},
        {QEvent::GraphicsSceneHoverLeave, &callLeave},
    };

    static Handler find(QEvent::Type type) {
        static constexpr KyQtEventTable<Handler> cHandlers(cRows);
        return cHandlers.find(type);
    }
};

KyQEventProvider::KyQEventProvider()
    : KyQEventProvider(1) {}

KyQEventProvider::KyQEventProvider(unsigned scale, QObject* parent)
    : QObject(parent)
    , mKeyBits(cKeyBits.begin(), cKeyBits.end())
    , mScale(scale) {
    setFlag(cKeepsPixels, KyPixelScale{scale, 1}.isPlain);
}

KyQEventProvider::~KyQEventProvider() = default;

void KyQEventProvider::setPixelRatio(double ratio) {
    if (!std::isfinite(ratio) || ratio <= 0)
        return;
    mPixelRatio = ratio;
    setFlag(cKeepsPixels, KyPixelScale{mScale, ratio}.isPlain);
}

void KyQEventProvider::setTouchToMouseConversion(bool convert) {
    setFlag(cConvertTouch, convert);
    if (convert)
        KyException::create("KyQEventProvider::setTouchToMouseConversion() : Enabling touch conversion on Windows will "
                            "probably result in double mouse events reception.");
}

void KyQEventProvider::setAcceptTouchEvent(bool accept) {
    setFlag(cAcceptTouch, accept);
    // The end of what goes on now would not be seen.
    if (!accept)
        cancelTouch();
}

bool KyQEventProvider::eventFilter(QObject* watched, QEvent* event) {
    const Dispatch::Handler handler = Dispatch::find(event->type());
    if (!handler)
        return QObject::eventFilter(watched, event);
    if (mWatched != watched)
        mWatched = watched;
    // The handler may delete what is watched, and this: Qt must not go on with the one, we not with the other.
    const QPointer<QObject> guard(mWatched);
    const bool isTaken = handler(*this, watched, event);
    const bool isDeleted = guard != watched;
    // Qt would look for the parent of what is gone.
    if (isDeleted)
        event->accept();
    return isTaken || isDeleted;
}

void KyQEventProvider::setInputEvent(KyInputEvent& event) {
    sendInputEvent(event);
}

void KyQEventProvider::mousePressed(QMouseEvent* event) {
    sendMouse(*event, KyInputEvent::eMousePressed);
}

void KyQEventProvider::mouseReleased(QMouseEvent* event) {
    sendMouse(*event, KyInputEvent::eMouseReleased);
}

void KyQEventProvider::mouseDoubleClicked(QMouseEvent* event) {
    sendMouse(*event, KyInputEvent::eMouseDoubleClicked);
}

void KyQEventProvider::mouseMove(QMouseEvent* event) {
    if (event->buttons() != Qt::NoButton || !isMouseTrackingAvoided())
        sendMouse(*event, KyInputEvent::eMouseMoved);
}

void KyQEventProvider::mousePressed(QGraphicsSceneMouseEvent* event, QObject* scene) {
    sendMouse(*event, KyInputEvent::eMousePressed, scene);
}

void KyQEventProvider::mouseReleased(QGraphicsSceneMouseEvent* event, QObject* scene) {
    sendMouse(*event, KyInputEvent::eMouseReleased, scene);
}

void KyQEventProvider::mouseDoubleClicked(QGraphicsSceneMouseEvent* event, QObject* scene) {
    sendMouse(*event, KyInputEvent::eMouseDoubleClicked, scene);
}

void KyQEventProvider::mouseMove(QGraphicsSceneMouseEvent* event, QObject* scene) {
    if (event->buttons() != Qt::NoButton || !isMouseTrackingAvoided())
        sendMouse(*event, KyInputEvent::eMouseMoved, scene);
}

void KyQEventProvider::sendMouse(QMouseEvent& event, KyInputEvent::Type type) {
    KyInputEvent input = makeInput(event, type);
    KyQtEventConversion::convertMouse(event, input, Dispatch::getPixels(*this));
    if (mIsTouching)
        input.setRepeatsTouch(KyQtEventConversion::isSynthesized(event));
    setInputEvent(input);
}

void KyQEventProvider::sendMouse(QGraphicsSceneMouseEvent& event, KyInputEvent::Type type, QObject* scene) {
    KyInputEvent input = makeInput(event, type);
    convertGraphicsSceneMouseEvent(&event, input, scene);
    if (mIsTouching)
        input.setRepeatsTouch(KyQtEventConversion::isSynthesized(event));
    setInputEvent(input);
}

void KyQEventProvider::wheel(QWheelEvent* event) {
    KyInputEvent input = makeInput(*event, KyInputEvent::eWheel);
    KyQtEventConversion::convertWheel(*event, input, Dispatch::getPixels(*this));
    setInputEvent(input);
}

void KyQEventProvider::wheel(QGraphicsSceneWheelEvent* event, QObject* scene) {
    KyInputEvent input = makeInput(*event, KyInputEvent::eWheel);
    KyQtEventConversion::convertSceneWheel(*event, input, Dispatch::getPixels(*this), scene);
    setInputEvent(input);
}

void KyQEventProvider::keyPressed(QKeyEvent* event) {
    sendKey(*event, KyInputEvent::eKeyPressed);
}

void KyQEventProvider::keyReleased(QKeyEvent* event) {
    sendKey(*event, KyInputEvent::eKeyReleased);
}

void KyQEventProvider::sendKey(QKeyEvent& event, KyInputEvent::Type type) {
    KyInputEvent input = makeInput(event, type);
    convertKeyEvent(&event, input);
    setInputEvent(input);
}

void KyQEventProvider::contextMenu(QContextMenuEvent* event) {
    KyInputEvent input = makeInput(*event, KyInputEvent::eContextMenu);
    KyQtEventConversion::setPosition(event->pos(), input, Dispatch::getPixels(*this));
    input.setState(getCurrentState(event->modifiers()));
    setInputEvent(input);
}

void KyQEventProvider::sendMenuOfWindow(const QMouseEvent& release) {
    const auto press = std::exchange(mMenuPress, std::nullopt);
    const int tolerance = QGuiApplication::styleHints()->startDragDistance();
    if (!press || (release.globalPos() - *press).manhattanLength() >= tolerance)
        return;
    QContextMenuEvent event(QContextMenuEvent::Mouse, release.pos(), release.globalPos(), release.modifiers());
    contextMenu(&event);
}

void KyQEventProvider::toolTip(QHelpEvent* event) {
    KyInputEvent input = makeInput(*event, KyInputEvent::eToolTip);
    KyQtEventConversion::setPosition(event->pos(), input, Dispatch::getPixels(*this));
    input.setState(getCurrentState(QGuiApplication::keyboardModifiers()));
    setInputEvent(input);
}

void KyQEventProvider::inputMethodQuery(QInputMethodQueryEvent* event) {
    sendInputMethod(*event);
}

void KyQEventProvider::inputMethod(QInputMethodEvent* event) {
    sendInputMethod(*event);
}

bool KyQEventProvider::sendInputMethod(QEvent& event) {
    KyInputEvent input = makeInput(event, KyInputEvent::eInputMethodQuery);
    setInputEvent(input);
    // What is watched would answer as well, over what was answered.
    return input.getInternalEventReturn();
}

void KyQEventProvider::touch(QTouchEvent* event) {
    if (event->type() == QEvent::TouchCancel)
        cancelTouch();
    else if (KyQtEventConversion::getTouchType(event->type()) != KyInputEvent::eUndefined)
        sendTouch(*event);
}

void KyQEventProvider::sendTouch(QTouchEvent& event) {
    KyInputEvent input = makeInput(event, KyInputEvent::eUndefined);
    convertTouchEvent(&event, input, mScale, mPixelRatio);
    const auto& points = input.getTouchPoints();
    if (!mIsTouching || input.getType() == KyInputEvent::eTouchBegan) {
        mIsTouchConverted = getTouchToMouseConversion();
        mMouseFinger = points.empty() ? std::nullopt : std::optional(points.front());
    }
    mIsTouching = input.getType() != KyInputEvent::eTouchEnded;
    if (mIsTouchConverted)
        sendTouchAsMouse(input);
    else
        setInputEvent(input);
}

void KyQEventProvider::sendTouchAsMouse(const KyInputEvent& touch) {
    if (!mMouseFinger)
        return;
    const auto& points = touch.getTouchPoints();
    const auto found = std::ranges::find(points, mMouseFinger->id, &KyTouchPoint::id);
    if (found != points.end())
        mMouseFinger = *found;
    const bool isLifted = found == points.end() || found->state == KyTouchPoint::eReleased || !mIsTouching;
    const bool isPressed = touch.getType() == KyInputEvent::eTouchBegan;
    KyInputEvent input;
    input.setNativeEvent(touch.getNativeEvent());
    input.setPosition(mMouseFinger->x, mMouseFinger->y);
    input.setType(isLifted    ? KyInputEvent::eMouseReleased
                  : isPressed ? KyInputEvent::eMousePressed
                              : KyInputEvent::eMouseMoved);
    input.setState(touch.getState() | (isLifted ? 0 : KyInputEvent::cLeftButton));
    input.setButton(isLifted || isPressed ? KyInputEvent::cLeftButton : 0);
    if (isLifted)
        mMouseFinger.reset();
    setInputEvent(input);
}

bool KyQEventProvider::filterTouch(QTouchEvent& event) {
    if (!acceptTouchEvent())
        return false;
    event.accept();
    touch(&event);
    return true;
}

void KyQEventProvider::cancelTouch() {
    if (!mIsTouching)
        return;
    mIsTouching = false;
    mMouseFinger.reset();
    touchCanceled(mIsTouchConverted);
}

void KyQEventProvider::touchCanceled(bool) {}

void KyQEventProvider::pointerLeft() {}

void KyQEventProvider::convertMouseEvent(QMouseEvent* event, KyInputEvent& input) const {
    KyQtEventConversion::convertMouse(*event, input, Dispatch::getPixels(*this));
}

void KyQEventProvider::convertGraphicsSceneMouseEvent(QGraphicsSceneMouseEvent* event, KyInputEvent& input,
                                                      QObject* scene) const {
    KyQtEventConversion::convertSceneMouse(*event, input, Dispatch::getPixels(*this), scene);
}

void KyQEventProvider::convertKeyEvent(QKeyEvent* event, KyInputEvent& input) const {
    const auto found = mKeyBits.find(event->key());
    const std::uint32_t bit = found != mKeyBits.end() ? found->second : 0;
    input.setButton(bit);
    input.setState(getCurrentState(event->modifiers()) | (input.getType() == KyInputEvent::eKeyPressed ? bit : 0));
}

void KyQEventProvider::convertTouchEvent(QTouchEvent* event, KyInputEvent& input, unsigned scale, double pixelRatio) {
    KyQtEventConversion::convertTouch(*event, input, {scale, pixelRatio});
}
